// What every element must read as: one number per element, kept beside the driver's cache.
#ifndef DRAVO_FUZZ_DRIVER_VALUES_H
#define DRAVO_FUZZ_DRIVER_VALUES_H

#include <unordered_map>
#include <vector>

#include "korvel_dravo_port.h"

namespace reference {

class Values {
public:
    /// Station, type and address in 8, 8 and 16 bits.
    typedef quint32 Key;

    void storeReply(const Protocol &request, const QByteArray &reply);
    /// Values of a write record.
    void storeWritten(const RW_VAR &var);
    /// As GetRegisterData hands them out. Elements never seen become zeros.
    QByteArray read(int type, int station, qint64 address, int count);

    const std::unordered_map<Key, quint32> &all() const { return values_; }
    /// Those touched since the last call.
    std::vector<Key> takeTouched();
    static int sizeOf(Key key);

private:
    quint32 &at(int station, int type, qint64 address);
    void setBit(int station, int type, qint64 bitAddress, bool on);

    std::unordered_map<Key, quint32> values_;
    std::vector<Key> touched_;
};

}  // namespace reference

#endif  // DRAVO_FUZZ_DRIVER_VALUES_H
