#include "host/commands/exit_status.h"

#include <cstdio>

#include "host/screen/output.h"

void tell(const QString &text) {
    std::fprintf(stderr, "dravo-host: %s\n", text.toLocal8Bit().constData());
}

int fail(ExitStatus status, const Failure &failure) {
    tell(failure.text());
    return status;
}

int refuse(const QStringList &faults) {
    for (const QString &fault : faults) {
        fail(kExitUsage, Failure(fault));
    }
    return kExitUsage;
}

int print(const QString &text) {
    return printBytes(text.toLocal8Bit());
}

int printBytes(const QByteArray &bytes) {
    Output output;
    const Failure failure = output.write(bytes);
    if (failure && !output.readerGone()) {
        fail(kExitFailed, failure);
    }
    return failure ? kExitFailed : kExitDone;
}
