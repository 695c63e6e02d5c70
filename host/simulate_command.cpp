#include <unistd.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <cerrno>
#include <cstring>

#include "host/commands.h"
#include "host/open_line.h"
#include "host/record_output.h"
#include "host/stop_signal.h"

namespace {

constexpr int kSliceMs = 200;

/// A symbolic link to a device, gone with this object.
class DeviceLink {
public:
    DeviceLink() = default;
    DeviceLink(const DeviceLink &) = delete;
    DeviceLink &operator=(const DeviceLink &) = delete;
    ~DeviceLink() {
        if (target() == device_ && !device_.isEmpty()) {  // else another run has taken the name over
            unlink(path_.constData());
        }
    }

    /// An empty name makes no link. A link that an earlier run left behind is replaced, any other file is not.
    /// @return empty, or why not.
    QString make(const QString &name, const std::string &device) {
        path_ = QFile::encodeName(name);
        if (name.isEmpty()) {
            return QString();
        }
        if (target().startsWith("/dev/pts/")) {
            unlink(path_.constData());
        }
        if (symlink(device.c_str(), path_.constData()) != 0) {
            return QStringLiteral("cannot make the link %1: %2")
                .arg(name, QString::fromLocal8Bit(std::strerror(errno)));
        }
        device_ = QByteArray::fromStdString(device);
        return QString();
    }

private:
    QByteArray target() const {
        QByteArray text(4096, '\0');
        const ssize_t length = readlink(path_.constData(), text.data(), size_t(text.size()));
        return text.left(length < 0 ? 0 : int(length));
    }

    QByteArray path_;
    QByteArray device_;
};

}  // namespace

int runSimulate(const Options &options) {
    std::string error;
    const std::unique_ptr<SimulatedLine> line = SimulatedLine::start(simulationFor(options), &error);
    if (!line) {
        return fail(kExitPort, QStringLiteral("the simulated line does not start: ") + QString::fromStdString(error));
    }
    DeviceLink first;
    DeviceLink second;
    QString refused = first.make(options.links.at(0), line->device());
    if (refused.isEmpty()) {
        refused = second.make(options.links.at(1), line->secondDevice());
    }
    if (!refused.isEmpty()) {
        return fail(kExitPort, refused);
    }
    writeOut(QByteArray::fromStdString("device " + line->device() + "\nsecond device " + line->secondDevice() + "\n"));
    QElapsedTimer clock;
    clock.start();
    while (!stopRequested() && (options.seconds == 0 || clock.elapsed() < options.seconds * qint64(1000))) {
        sleepUnlessStopped(kSliceMs);
    }
    return kExitDone;
}
