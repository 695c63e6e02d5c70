#include "host/scan/progress.h"

#include <unistd.h>

#include <cstdio>

namespace {
constexpr int kWidth = 79;  // in the last column of a terminal the line would break
}

Progress::Progress() : terminal_(isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
    clear();
}

void Progress::show(const QString &text) {
    const QString line = text.left(kWidth);
    if (terminal_ && line != shown_) {
        std::fprintf(stderr, "\r%s", line.leftJustified(shown_.size()).toLocal8Bit().constData());
        std::fflush(stderr);
        shown_ = line;
    }
}

void Progress::clear() {
    if (!shown_.isEmpty()) {
        std::fprintf(stderr, "\r%*s\r", int(shown_.size()), "");
        std::fflush(stderr);
        shown_.clear();
    }
}
