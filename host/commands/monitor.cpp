#include "host/commands/monitor.h"

#include <QtCore/QDateTime>

#include "host/pump/stop_signal.h"
#include "host/tags/result_text.h"
#include "host/tags/value_text.h"

namespace {
constexpr int kSliceMs = 50;
}

// Called between requests and while one waits, so that keys and signals are served on a dead line too. What it starts
// (a write) the driver takes at its next turn.
void Monitor::serve() {
    const bool timeOver = settings_.seconds && clock_.elapsed() >= *settings_.seconds * qint64(1000);
    leaving_ = leaving_ || timeOver || stopRequested();
    model_.setBytes(link_->bytesOut(), link_->bytesIn());
    if (screen_ == nullptr || leaving_) {
        return;
    }
    const Screen::Wish wish = screen_->poll(model_, clock_.elapsed());
    leaving_ = wish.kind == Screen::Wish::Kind::Leave;
    if (wish.kind == Screen::Wish::Kind::Write) {
        writeSelected(wish);
    }
}

Failure Monitor::run() {
    if (screen_ == nullptr) {
        if (Failure failure = output_.write(recordHeader(settings_.format.value_or(RecordFormat::Table)))) {
            return failure;
        }
    }
    for (serve(); !leaving(); serve()) {
        const Exchange exchange = session_.step([this] {
            serve();
            return !leaving();
        });
        if (exchange.status == Exchange::Status::LineLost) {
            return link_->loss();
        }
        if (exchange.status == Exchange::Status::Judged) {
            judge(exchange);
        }
        if (doneInPass_ == requestsPerPass_) {
            if (Failure failure = recordPass()) {
                return failure;
            }
            awaitNextPass();
        }
    }
    return Failure();
}

void Monitor::judge(const Exchange &exchange) {
    model_.judged(exchange.code, exchange.exceptionCode);
    if (exchange.cyclic) {
        model_.finished(exchange.range, exchange.code, exchange.exceptionCode, clock_.elapsed());
        ++doneInPass_;
    }
    reportWrite(exchange);
}

Failure Monitor::recordPass() {
    model_.passDone(double(clock_.elapsed() - passStartMs_));
    doneInPass_ = 0;
    if (screen_ != nullptr) {
        return Failure();
    }
    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    QByteArray records;
    for (const Variable &variable : model_.variables()) {
        ShownVariable shown = model_.shown(variable, clock_.elapsed());
        shown.pass = model_.passes();
        shown.time = time;
        records += record(settings_.format.value_or(RecordFormat::Table), shown);
    }
    return output_.write(records);
}

void Monitor::awaitNextPass() {
    leaving_ = leaving_ || (settings_.passes && model_.passes() >= *settings_.passes);
    const qint64 next = passStartMs_ + settings_.periodMs.value_or(0);
    for (serve(); !leaving() && clock_.elapsed() < next && pendingWrite_ == 0; serve()) {
        sleepUnlessStopped(int(qMin<qint64>(kSliceMs, next - clock_.elapsed())));
    }
    passStartMs_ = clock_.elapsed();
}

void Monitor::writeSelected(const Screen::Wish &wish) {
    Variable variable = model_.variables().at(wish.variable);
    const QStringList texts = wish.values.simplified().split(QLatin1Char(' '));
    TypedValues values = valueBytes(variable.kind, texts);
    if (texts.size() > variable.count) {
        values.faults.append(QStringLiteral("%1 values for a variable of %2").arg(texts.size()).arg(variable.count));
    }
    if (!values.faults.isEmpty()) {
        screen_->say(values.faults.first());
        return;
    }
    variable.count = texts.size();
    resolve(&variable);  // fewer values of a usable variable are usable
    pendingWrite_ = session_.write(variable, values.bytes);
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
