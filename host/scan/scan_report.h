// What a scan has found, as a table and as JSON. Pure; any thread.
#ifndef DRAVO_HOST_SCAN_SCAN_REPORT_H
#define DRAVO_HOST_SCAN_SCAN_REPORT_H

#include "host/scan/scan_settings.h"
#include "host/scan/sweep.h"

struct Finding {
    PortSettings at;
    StationAnswer answer;
};

struct ScanResult {
    std::vector<Finding> findings;
    int stations = 0;      // asked at each setting
    int settings = 0;      // to scan
    int settingsDone = 0;  // scanned to the end
    qint64 strangers = 0;  // frames that nobody had asked for

    /// Whether any station answers, be it late.
    bool anyAnswers() const;
};

QString scanTable(const ScanResult &result, int timeoutMs);
/// One object.
QByteArray scanJson(const ScanResult &result);

/// Numbers as an option takes them: "1-3,17".
QString numberList(const std::vector<int> &numbers);

#endif  // DRAVO_HOST_SCAN_SCAN_REPORT_H
