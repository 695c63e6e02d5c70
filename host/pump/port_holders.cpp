#include "host/pump/port_holders.h"

#include <unistd.h>

#include <QtCore/QFile>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

// What is of another user, or ends meanwhile, cannot be read.
bool holds(const fs::path &process, const fs::path &device) {
    std::error_code unreadable;
    fs::directory_iterator file(process / "fd", unreadable);
    for (; !unreadable && file != fs::directory_iterator(); file.increment(unreadable)) {
        std::error_code gone;
        if (fs::read_symlink(file->path(), gone) == device) {
            return true;
        }
    }
    return false;
}

QString described(const fs::path &process) {
    QFile name(QString::fromStdString(process / "comm"));
    const QString text =
        name.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(name.readAll().simplified()) : QString();
    return QStringLiteral("%1 (process %2)")
        .arg(text.isEmpty() ? QStringLiteral("a program") : text, QString::fromStdString(process.filename()));
}

}  // namespace

QStringList portHolders(const QString &device) {
    QStringList holders;
    std::error_code failed;
    const fs::path path = fs::canonical(QFile::encodeName(device).toStdString(), failed);
    if (failed) {
        return holders;
    }
    fs::directory_iterator process("/proc", failed);
    for (; !failed && process != fs::directory_iterator(); process.increment(failed)) {
        const QString number = QString::fromStdString(process->path().filename());
        if (number.toInt() > 0 && number.toInt() != getpid() && holds(process->path(), path)) {
            holders.append(described(process->path()));
        }
    }
    return holders;
}
