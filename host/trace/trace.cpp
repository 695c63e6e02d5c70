#include "host/trace/trace.h"

Failure Trace::open(const TraceSettings &settings, bool remote) {
    const auto take = [this](const TracedFrame &frame) { recent_.add(frame, writer_.write(frame)); };
    log_.emplace(take, remote);
    return writer_.open(settings);
}

void Trace::lineClosed() {
    if (log_) {
        log_->ended();
    }
}
