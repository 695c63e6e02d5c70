// The file that statistics go to: JSON lines, or CSV. It is added to, so that a run that is started again loses none.
// Main thread.
#ifndef DRAVO_HOST_STATISTICS_STATISTICS_FILE_H
#define DRAVO_HOST_STATISTICS_STATISTICS_FILE_H

#include <QtCore/QFile>

#include "host/failure.h"
#include "host/statistics/run_statistics.h"

class StatisticsFile {
public:
    /// Never waits: a named pipe without a reader is a failure.
    Failure open(const QString &fileName, bool csv);
    bool isOpen() const { return file_.isOpen(); }

    /// One record for each row. After the first failure it is closed.
    Failure write(const QVector<StatisticsRow> &rows, const QString &time);

private:
    Failure put(const QByteArray &record);

    QFile file_;
    QString name_;
    bool csv_ = false;
};

#endif  // DRAVO_HOST_STATISTICS_STATISTICS_FILE_H
