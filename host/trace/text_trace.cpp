// The trace as text.
#include "host/trace/text_line.h"
#include "host/trace/trace_format.h"

namespace {

QByteArray head() {
    return "# time in UTC, > sent or < received, what became of it, | bytes\n";
}

QByteArray record(const TracedFrame &frame, qint64 wallUs, qint64 leftOut) {
    const QByteArray gap = leftOut > 0 ? "# left out: " + QByteArray::number(leftOut) + " frames\n" : QByteArray();
    return gap + traceLine(frame, wallUs).toUtf8() + '\n';
}

}  // namespace

const TraceFormat kTextTrace{&head, &record};
