// Records on standard output: one per value and pass, as an aligned table, CSV or one JSON object a line.
#ifndef DRAVO_HOST_RECORD_OUTPUT_H
#define DRAVO_HOST_RECORD_OUTPUT_H

#include "host/monitor_model.h"
#include "host/options.h"

class RecordOutput {
public:
    explicit RecordOutput(Format format) : format_(format) {}

    /// Writes the header line, where the format has one. @return as writeOut.
    bool writeHeader() const;
    /// Writes and flushes the records of the pass just done. @return as writeOut.
    bool writePass(const MonitorModel &model) const;

private:
    QByteArray record(const MonitorModel &model, const Variable &variable, const QString &time) const;

    Format format_;
};

/// Writes text to standard output and flushes it. @return false: it could not be written, errno has the reason.
bool writeOut(const QByteArray &text);

#endif  // DRAVO_HOST_RECORD_OUTPUT_H
