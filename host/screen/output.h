// Standard output. Main thread.
#ifndef DRAVO_HOST_SCREEN_OUTPUT_H
#define DRAVO_HOST_SCREEN_OUTPUT_H

#include <QtCore/QByteArray>

#include "host/failure.h"

class Output {
public:
    /// Writes text and flushes it.
    Failure write(const QByteArray &text);

    /// Whether the last write failed because nobody reads any more: a reader that has seen enough, such as head.
    bool readerGone() const { return readerGone_; }

private:
    bool readerGone_ = false;
};

#endif  // DRAVO_HOST_SCREEN_OUTPUT_H
