// Scans the open line: asks every station with every setting. Main thread, which is the communication thread as well.
#ifndef DRAVO_HOST_COMMANDS_SCAN_LINE_H
#define DRAVO_HOST_COMMANDS_SCAN_LINE_H

#include "host/commands/open_line.h"
#include "host/scan/progress.h"
#include "host/scan/scan_report.h"

class LineScan {
public:
    /// settings: with stations. settings and line outlive the scan.
    LineScan(const Options &settings, OpenLine *line);

    /// At most how long run() takes.
    qint64 longestUs() const;
    /// Until all is asked or a signal comes. @return none, or why the device is lost.
    Failure run();
    const ScanResult &result() const { return result_; }

private:
    dravo::LineSettings lineAt(const PortSettings &at) const;
    int rounds() const { return settings_.scan.retries + 1; }
    Failure scanAt(const PortSettings &at);
    Failure ask(const PortSettings &at, dravo::Line *engine, Sweep *sweep);
    static void takeLate(const dravo::LineStatistics &statistics, Sweep *sweep);
    void show(const PortSettings &at, int station, const Sweep &sweep);
    void keep(const PortSettings &at, const Sweep &sweep);
    void say(const QString &text);

    const Options &settings_;
    OpenLine *line_;
    std::vector<PortSettings> toScan_;
    int settingsPassed_ = 0;  // scanned, or unusable
    ScanResult result_;
    Progress progress_;
};

#endif  // DRAVO_HOST_COMMANDS_SCAN_LINE_H
