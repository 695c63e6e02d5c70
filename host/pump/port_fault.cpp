#include "host/pump/port_fault.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtSerialPort/QSerialPortInfo>
#include <cerrno>
#include <system_error>
#include <vector>

#include "host/pump/port_holders.h"

namespace {

constexpr int kMostNamed = 5;
constexpr size_t kRecordBytes = 65536;  // of a group with many members

QString missing() {
    QStringList ports;
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts()) {
        ports.append(port.systemLocation());
    }
    if (ports.isEmpty()) {
        return QStringLiteral("there is no such device, nor any serial port: is the adapter plugged in?");
    }
    const QString more = ports.size() > kMostNamed ? QStringLiteral(" and more") : QString();
    return QStringLiteral("there is no such device; there are %1%2, see dravo-host ports")
        .arg(ports.mid(0, kMostNamed).join(QStringLiteral(", ")), more);
}

QString busy(const QString &path) {
    const QStringList holders = portHolders(path);
    return holders.isEmpty()
               ? QStringLiteral("another program has it open")
               : QStringLiteral("%1 %2 it open")
                     .arg(holders.join(QStringLiteral(", ")), QLatin1String(holders.size() == 1 ? "has" : "have"));
}

QString userName(uid_t user) {
    std::vector<char> bytes(kRecordBytes);
    passwd record{};
    passwd *found = nullptr;
    getpwuid_r(user, &record, bytes.data(), bytes.size(), &found);
    return found != nullptr ? QString::fromLocal8Bit(found->pw_name) : QString::number(user);
}

struct Group {
    QString name;
    bool hasUser = false;  // by its list; the login may be from before
};

Group groupOf(gid_t number) {
    std::vector<char> bytes(kRecordBytes);
    group record{};
    group *found = nullptr;
    getgrgid_r(number, &record, bytes.data(), bytes.size(), &found);
    Group named{QString::number(number)};
    if (found != nullptr) {
        named.name = QString::fromLocal8Bit(found->gr_name);
        const QByteArray user = userName(geteuid()).toLocal8Bit();
        for (char **member = found->gr_mem; *member != nullptr; ++member) {
            named.hasUser = named.hasUser || user == *member;
        }
    }
    return named;
}

/// 0: it opens, and is a terminal.
int reasonAgainst(const QByteArray &path) {
    const int device = open(path.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (device < 0) {
        return errno;
    }
    const int reason = isatty(device) != 0 ? 0 : errno;
    close(device);
    return reason;
}

QString systemText(int reason) {
    return QString::fromStdString(std::generic_category().message(reason));
}

}  // namespace

QString portPermission(const QString &path) {
    struct stat file {};
    constexpr mode_t kBoth = S_IRGRP | S_IWGRP;
    const bool known = stat(QFile::encodeName(path).constData(), &file) == 0;
    if (!known || (file.st_mode & kBoth) != kBoth || file.st_gid == 0) {
        return QStringLiteral("only user '%1' may open it").arg(userName(known ? file.st_uid : 0));
    }
    const Group group = groupOf(file.st_gid);
    return group.hasUser
               ? QStringLiteral("it is for group '%1', which you are in from your next login on").arg(group.name)
               : QStringLiteral("it is for group '%1': sudo usermod -aG %1 $USER, then log in again").arg(group.name);
}

QString portFault(const QString &path, const QString &otherwise) {
    switch (const int reason = reasonAgainst(QFile::encodeName(path))) {
        case 0:  // root may open what another program has for itself, and cannot lock it
            return portHolders(path).isEmpty() ? otherwise : busy(path);
        case ENOENT:
        case ENOTDIR:
            return missing();
        case EACCES:
        case EPERM:
            return QStringLiteral("no permission: ") + portPermission(path);
        case EBUSY:
            return busy(path);
        case ENOTTY:
        case EISDIR:
            return QStringLiteral("it is no serial port");
        case EIO:
        case ENXIO:
        case ENODEV:
            return QStringLiteral("there is no hardware behind it (%1)").arg(systemText(reason));
        default:
            return systemText(reason);
    }
}
