#include "host/commands/monitor.h"

#include <QtCore/QDateTime>

#include "host/commands/exit_status.h"
#include "host/pump/pump.h"
#include "host/pump/stop_signal.h"
#include "host/statistics/statistics_table.h"
#include "host/tags/value_text.h"

namespace {
constexpr int kSliceMs = 50;
constexpr int kTableWidth = 80;
constexpr qint64 kSecondUs = 1000000;  // from one try to open a lost device to the next
}  // namespace

Monitor::Monitor(const Options &settings, const QVector<Tag> &variables, OpenLine *line, Screen *screen,
                 MonitorStreams *streams)
    : settings_(settings),
      line_(line),
      screen_(screen),
      startUs_(nowUs()),
      engine_(lineSettings(settings), startUs_),
      model_(variables, engine_, startUs_),
      streams_(streams),
      statistics_(variablesOf(variables), engine_, startUs_),
      nextRecordUs_(startUs_ + settings.everySeconds.value_or(0) * kSecondUs) {
    engine_.watch(variablesOf(model_.variables()), startUs_);
    line_->trace().setTell([this](const QString &text) { tellUser(text); });
    if (streams_->commands.isOpen()) {
        gateway_.emplace(model_.variables(), &engine_, &streams_->commands, [this](const QByteArray &record) {
            unwritten_ = unwritten_ ? unwritten_ : output_.write(record);
        });
    }
}

QStringList Monitor::statisticsLines() {
    return statisticsTable(statistics_.rows(nowUs()), kTableWidth);
}

// Called all the time, so that keys and signals are served on a dead line too.
void Monitor::serve() {
    const bool timeOver = settings_.seconds && nowUs() - startUs_ >= *settings_.seconds * kSecondUs;
    leaving_ = leaving_ || timeOver || stopRequested();
    serveStreams();
    if (screen_ == nullptr || leaving_) {
        return;
    }
    const Screen::Wish wish = screen_->poll(model_, nowUs());
    leaving_ = wish.kind == Screen::Wish::Kind::Leave;
    if (wish.kind == Screen::Wish::Kind::Write) {
        writeSelected(wish);
    }
}

void Monitor::serveStreams() {
    if (gateway_ && !leaving_) {
        gateway_->serve(model_.isLost());
        leaving_ = settings_.untilInputEnds && gateway_->isOver();
        if (gateway_->inputEnded() && !settings_.untilInputEnds && !toldInputEnded_) {
            toldInputEnded_ = true;
            tellUser(QStringLiteral("the commands have ended"));
        }
    }
    if (settings_.everySeconds && !leaving_ && nowUs() >= nextRecordUs_) {  // end() writes one
        recordStatistics();
        while (nextRecordUs_ <= nowUs()) {
            nextRecordUs_ += *settings_.everySeconds * kSecondUs;
        }
    }
}

void Monitor::recordStatistics() {
    const qint64 us = nowUs();
    QByteArray records;
    if (const Failure failure = streams_->record(statistics_.rows(us), &records)) {
        tellUser(failure.text());
    }
    statistics_.markRecord(us);
    if (!unwritten_ && !records.isEmpty()) {
        unwritten_ = output_.write(records);
    }
}

void Monitor::end() {
    for (dravo::LineEvent event; gateway_ && engine_.takeEvent(&event);) {
        if (event.kind == dravo::LineEvent::Operation) {
            gateway_->finish(event);
        }
    }
    if (gateway_) {
        gateway_->abandon(QStringLiteral("the run ended before it was over"));
    }
    recordStatistics();
}

void Monitor::tellUser(const QString &text) {
    if (screen_ != nullptr) {
        screen_->say(text);
    } else {
        tell(text);
    }
}

Failure Monitor::run() {
    if (screen_ == nullptr) {
        unwritten_ = output_.write(recordHeader(settings_.format.value_or(RecordFormat::Table)));
    }
    for (serve(); !leaving_ && !unwritten_; serve()) {
        const auto takeEvent = [this](const dravo::LineEvent &event) { return take(event); };
        Failure lost = pump(&line_->port(), &engine_, takeEvent, &line_->trace());
        if (lost) {
            model_.setLost(true);
            if (gateway_) {
                gateway_->abandon(QStringLiteral("the device is lost"));
            }
            if (settings_.giveUp) {
                return lost;
            }
            tellUser(lost.text() + QStringLiteral("; opening it again"));
            reopen();
        }
    }
    return unwritten_;
}

bool Monitor::take(const dravo::LineEvent &event) {
    if (event.kind == dravo::LineEvent::PassDone) {
        passDone(event.passUs);
    } else if (event.kind == dravo::LineEvent::ReadsChanged) {
        tellUser(event.text);
    } else if (event.kind == dravo::LineEvent::Operation && gateway_) {
        gateway_->finish(event);
    } else if (event.kind == dravo::LineEvent::Operation) {
        reportWrite(event);
    }
    return !leaving_ && !unwritten_;
}

void Monitor::passDone(qint64 us) {
    model_.passDone(us);
    statistics_.passDone(us, nowUs());
    leaving_ = settings_.passes && model_.passes() >= *settings_.passes;
    if (screen_ != nullptr) {
        return;
    }
    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    QByteArray records;
    for (const Tag &variable : model_.variables()) {
        ShownVariable shown = model_.shown(variable, nowUs());
        shown.pass = model_.passes();
        shown.time = time;
        records += record(settings_.format.value_or(RecordFormat::Table), shown);
    }
    unwritten_ = output_.write(records);
}

void Monitor::reopen() {
    qint64 nextTryUs = nowUs() + kSecondUs;
    QString told;  // why it does not open; once a change
    for (serve(); !leaving_ && model_.isLost(); serve()) {
        sleepUnlessStopped(kSliceMs);
        if (nowUs() >= nextTryUs) {
            const Failure failure = line_->reopen();
            model_.setLost(bool(failure));
            if (failure && failure.text() != told) {
                tellUser(told = failure.text());
            }
            nextTryUs = nowUs() + kSecondUs;
        }
    }
    if (!model_.isLost()) {
        engine_.restart(nowUs());
        tellUser(QStringLiteral("the device is open again"));
    }
}

void Monitor::writeSelected(const Screen::Wish &wish) {
    Tag variable = model_.variables().at(wish.variable);
    const QStringList texts = wish.values.simplified().split(QLatin1Char(' '));
    TypedValues values = valueBytes(variable.kind, variable.format, texts);
    if (texts.size() > variable.count) {
        values.faults.append(QStringLiteral("%1 values for a variable of %2").arg(texts.size()).arg(variable.count));
    }
    if (model_.isLost()) {  // it would be carried out at some later time
        values.faults.append(QStringLiteral("not written: the device is lost"));
    }
    if (!values.faults.isEmpty()) {
        screen_->say(values.faults.first());
        return;
    }
    variable.count = texts.size();
    dravo::resolve(&variable);  // fewer values of a usable variable are usable
    const bool queued = engine_.write(variable, values.bytes) != 0;
    screen_->say(queued ? QStringLiteral("writing %1 ...").arg(variable.label)
                        : QStringLiteral("not written: too much is waiting to be written"));
}

void Monitor::reportWrite(const dravo::LineEvent &end) {
    tellUser(end.done ? QStringLiteral("written")
                      : QStringLiteral("write failed, it may have been carried out, code %1: %2")
                            .arg(end.code)
                            .arg(dravo::describeResult(end.code, end.exceptionCode)));
}
