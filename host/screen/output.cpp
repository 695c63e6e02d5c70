#include "host/screen/output.h"

#include <cerrno>
#include <cstdio>

Failure Output::write(const QByteArray &text) {
    const bool written = std::fwrite(text.constData(), 1, size_t(text.size()), stdout) == size_t(text.size());
    if (written && std::fflush(stdout) == 0) {
        return Failure();
    }
    const int reason = errno;
    readerGone_ = reason == EPIPE;
    return Failure::ofSystem(QStringLiteral("cannot write"), reason);
}
