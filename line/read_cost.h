// Time that a read takes on the line. Pure; any thread.
#ifndef DRAVO_LINE_READ_COST_H
#define DRAVO_LINE_READ_COST_H

#include <QtCore/QtGlobal>

namespace dravo {

struct LineCost {
    int baud;               // bits per second, 1 to 10,000,000; values beyond count as the nearest
    int bitsPerCharacter;   // with start, parity and stop bits, 1 to 20
    int requestCharacters;  // 8; 22 for a remote frame
    qint64 turnaroundUs;    // what the controller takes to answer, beyond the silence: 0 to 10,000,000
};

/// A read is its request, the reply's data and 5 characters around them, two silences and the turnaround. A silence
/// is 3.5 characters, above 19200 baud 1.75 ms.
class ReadCost {
public:
    explicit ReadCost(const LineCost &line);

    /// In units of a microsecond divided by the baud rate: exact, so every build comes to the same plan. Below 2^47,
    /// so sums of 65,536 reads fit.
    qint64 exact(int dataBytes) const { return perRead_ + perByte_ * dataBytes; }
    /// In microseconds, rounded up.
    qint64 us(int dataBytes) const { return (exact(dataBytes) + baud_ - 1) / baud_; }

private:
    qint64 baud_;
    qint64 perByte_;
    qint64 perRead_;  // without data
};

}  // namespace dravo

#endif  // DRAVO_LINE_READ_COST_H
