#include "host/statistics/statistics_file.h"

#include <fcntl.h>

#include <cerrno>

#include "host/statistics/statistics_records.h"

namespace {
constexpr mode_t kMode = 0666;  // as far as the umask allows
}

Failure StatisticsFile::open(const QString &fileName, bool csv) {
    name_ = fileName;
    csv_ = csv;
    const int flags = O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int descriptor = ::open(QFile::encodeName(fileName).constData(), flags, kMode);
    if (descriptor < 0) {
        return Failure::ofSystem(QStringLiteral("cannot open the statistics file %1").arg(fileName), errno);
    }
    const QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered;
    if (!file_.open(descriptor, mode, QFileDevice::AutoCloseHandle)) {
        return Failure(QStringLiteral("cannot open the statistics file %1: %2").arg(fileName, file_.errorString()));
    }
    return csv && file_.size() == 0 ? put(statisticsCsvHeader()) : Failure();
}

// Each record by itself: a pipe takes one whole or not at all.
Failure StatisticsFile::write(const QVector<StatisticsRow> &rows, const QString &time) {
    Failure failure;
    for (const QByteArray &record : csv_ ? statisticsCsv(rows, time) : statisticsJson(rows, time)) {
        failure = failure ? failure : put(record);
    }
    return failure;
}

Failure StatisticsFile::put(const QByteArray &record) {
    if (file_.write(record) == record.size()) {
        return Failure();
    }
    Failure failure(QStringLiteral("no more statistics go to %1: %2").arg(name_, file_.errorString()));
    file_.close();
    return failure;
}
