#include "host/monitor.h"

#include <cerrno>
#include <cstring>

#include "host/result_text.h"
#include "host/stop_signal.h"
#include "host/value_text.h"

namespace {
constexpr int kSliceMs = 50;
}

// Called between requests and while one waits, so that keys and signals are served on a dead line too. What it starts
// (a write) the driver takes at its next turn.
bool Monitor::goOn() {
    const bool timeOver = options_.seconds > 0 && model_.nowMs() >= options_.seconds * qint64(1000);
    leaving_ = leaving_ || timeOver || stopRequested();
    if (screen_ != nullptr && !leaving_) {
        const Screen::Wish wish = screen_->poll(model_);
        leaving_ = wish.kind == Screen::Wish::Kind::Leave;
        if (wish.kind == Screen::Wish::Kind::Write) {
            writeSelected(wish);
        }
    }
    return !leaving_;
}

QString Monitor::run() {
    if (screen_ == nullptr && !output_.writeHeader()) {
        return outputLost();
    }
    while (goOn()) {
        const Exchange exchange = session_.step([this] { return goOn(); });
        if (exchange.status == Exchange::Status::LineLost) {
            return QStringLiteral("the line is lost: ") + link_.lossReason();
        }
        if (exchange.status != Exchange::Status::Judged) {
            continue;  // interrupted: goOn() has the word
        }
        model_.judged(exchange);
        reportWrite(exchange);
        doneInPass_ += exchange.cyclic ? 1 : 0;
        if (doneInPass_ == requestsPerPass_) {
            if (!recordPass()) {
                return outputLost();
            }
            awaitNextPass();
        }
    }
    return QString();
}

bool Monitor::recordPass() {
    model_.passDone(double(model_.nowMs() - passStartMs_));
    doneInPass_ = 0;
    return screen_ != nullptr || output_.writePass(model_);
}

void Monitor::awaitNextPass() {
    leaving_ = leaving_ || (options_.passes > 0 && model_.statistics().passes() >= options_.passes);
    const qint64 next = passStartMs_ + options_.periodMs;
    while (goOn() && model_.nowMs() < next && pendingWrite_ == 0) {
        sleepUnlessStopped(int(qMin<qint64>(kSliceMs, next - model_.nowMs())));
    }
    passStartMs_ = model_.nowMs();
}

// A reader that has seen enough, such as head, is no failure.
QString Monitor::outputLost() {
    readerGone_ = errno == EPIPE;
    return readerGone_ ? QString() : QStringLiteral("cannot write: ") + QString::fromLocal8Bit(std::strerror(errno));
}

void Monitor::writeSelected(const Screen::Wish &wish) {
    Variable variable = model_.variables().at(wish.variable);
    const QStringList texts = wish.values.simplified().split(QLatin1Char(' '));
    QStringList faults;
    const QByteArray bytes = valueBytes(valueKind(variable.elemType), texts, &faults);
    if (texts.size() > variable.count) {
        faults.append(QStringLiteral("%1 values for a variable of %2").arg(texts.size()).arg(variable.count));
    }
    if (!faults.isEmpty()) {
        screen_->say(faults.first());
        return;
    }
    variable.count = texts.size();
    pendingWrite_ = session_.write(variable, bytes);
    screen_->say(QStringLiteral("writing %1 ...").arg(variable.label));
}

void Monitor::reportWrite(const Exchange &exchange) {
    if (pendingWrite_ == 0 || session_.outcome(pendingWrite_) == DriverSession::OperationState::Pending) {
        return;
    }
    const bool done = session_.outcome(pendingWrite_) == DriverSession::OperationState::Done;
    screen_->say(done ? QStringLiteral("written")
                      : QStringLiteral("write failed, code %1: %2")
                            .arg(exchange.code)
                            .arg(describeResult(exchange.code, exchange.exceptionCode)));
    pendingWrite_ = 0;
}
