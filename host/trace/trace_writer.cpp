#include "host/trace/trace_writer.h"

#include <chrono>

namespace {

constexpr qint64 kMegabyte = 1000000;
constexpr qint64 kClockWasSetUs = 5000;  // less is the time between two looks

template <typename Clock>
qint64 us() {
    using namespace std::chrono;
    return duration_cast<microseconds>(Clock::now().time_since_epoch()).count();
}

}  // namespace

Failure TraceWriter::open(const TraceSettings &settings) {
    if (settings.file.isEmpty()) {
        return Failure();
    }
    const bool packets = settings.file.endsWith(QLatin1String(".pcapng"), Qt::CaseInsensitive);
    format_ = packets ? &kPacketTrace : &kTextTrace;
    return output_.open(settings.file, format_->head(), settings.megabytes.value_or(0) * kMegabyte);
}

qint64 TraceWriter::write(const TracedFrame &frame) {
    const qint64 aheadUs = us<std::chrono::system_clock>() - us<std::chrono::steady_clock>();
    if (qAbs(aheadUs - wallAheadUs_) > kClockWasSetUs) {
        wallAheadUs_ = aheadUs;
    }
    const qint64 wallUs = frame.us + wallAheadUs_;
    if (output_.isOpen()) {
        append(frame, wallUs);
    }
    return wallUs;
}

void TraceWriter::append(const TracedFrame &frame, qint64 wallUs) {
    bool leftOut = false;
    if (Failure failure = output_.append(format_->record(frame, wallUs, leftOut_), &leftOut)) {
        tell_(failure.text());
        return;
    }
    leftOut_ = leftOut ? leftOut_ + 1 : 0;
    if (leftOut && !toldOfGap_) {
        toldOfGap_ = true;
        tell_(QStringLiteral("the trace leaves frames out: whoever reads it is too slow"));
    }
}
