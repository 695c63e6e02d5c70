// What a scan asks: which stations, with which settings of the line.
#ifndef DRAVO_HOST_SCAN_SCAN_SETTINGS_H
#define DRAVO_HOST_SCAN_SCAN_SETTINGS_H

#include <vector>

#include "host/pump/serial_port.h"

struct ScanSettings {
    std::vector<int> stations;                    // 1 to 247, each once; empty: the line's standard
    std::vector<int> bauds{19200, 9600, 115200};  // each once
    std::vector<QSerialPort::Parity> parities{QSerialPort::EvenParity, QSerialPort::NoParity};
    int timeoutMs = 200;
    int retries = 1;  // times that a station without an answer is asked again
    bool json = false;
};

inline QString parityName(QSerialPort::Parity parity) {
    return parity == QSerialPort::EvenParity  ? QStringLiteral("even")
           : parity == QSerialPort::OddParity ? QStringLiteral("odd")
                                              : QStringLiteral("none");
}

#endif  // DRAVO_HOST_SCAN_SCAN_SETTINGS_H
