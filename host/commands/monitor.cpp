#include "host/commands/monitor.h"

#include <QtCore/QDateTime>
#include <algorithm>

#include "host/commands/exit_status.h"
#include "host/commands/port_words.h"
#include "host/pump/pump.h"
#include "host/pump/stop_signal.h"
#include "host/statistics/statistics_table.h"

namespace {
constexpr int kSliceMs = 50;
constexpr int kTableWidth = 80;
constexpr qint64 kSecondUs = 1000000;  // from one try to open a lost device to the next
constexpr qint64 kDrawEveryUs = 200000;
constexpr int kFinalExceptions = 3;  // 1 to 3: the controller does not do it

QStringList latestFirst(QStringList lines) {
    std::reverse(lines.begin(), lines.end());
    return lines;
}

}  // namespace

Monitor::Monitor(const Options &settings, const QVector<Tag> &variables, OpenLine *line, Terminal *terminal,
                 MonitorStreams *streams)
    : settings_(settings),
      line_(line),
      terminal_(terminal),
      startUs_(nowUs()),
      engine_(lineSettings(settings), startUs_),
      model_(variables, engine_, startUs_),
      screen_(model_, portWords(settings.port)),
      streams_(streams),
      statistics_(variablesOf(variables), engine_, startUs_),
      nextRecordUs_(startUs_ + settings.everySeconds.value_or(0) * kSecondUs) {
    screen_.addPage({'s', QStringLiteral("statistics"), [this](const Tag &, int width, qint64 us) {
                         return statisticsTable(statistics_.rows(us), width);
                     }});
    screen_.addPage({'t', QStringLiteral("trace"), [this](const Tag &tag, int, qint64) {
                         return latestFirst(line_->trace().recent().lines(tag.station));
                     }});
    engine_.watch(variablesOf(model_.variables()), startUs_);
    line_->trace().setTell([this](const QString &text) { tellUser(text, Tone::Bad); });
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
    if (terminal_ != nullptr && !leaving_) {
        serveScreen();
    }
}

void Monitor::serveStreams() {
    if (gateway_ && !leaving_) {
        gateway_->serve(model_.isLost());
        leaving_ = settings_.untilInputEnds && gateway_->isOver();
        if (gateway_->inputEnded() && !settings_.untilInputEnds && !toldInputEnded_) {
            toldInputEnded_ = true;
            tellUser(QStringLiteral("the commands have ended"), Tone::Plain);
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
        tellUser(failure.text(), Tone::Bad);
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

void Monitor::serveScreen() {
    bool isDue = nowUs() - drawnUs_ >= kDrawEveryUs;
    for (Key key; !leaving_ && terminal_->takeKey(&key);) {
        isDue = true;
        const Screen::Wish wish = screen_.press(key, nowUs());
        leaving_ = wish.kind == Screen::Wish::Kind::Leave;
        if (wish.kind == Screen::Wish::Kind::Write) {
            writeSelected(wish);
        }
    }
    if (isDue) {
        drawnUs_ = nowUs();
        terminal_->paint(screen_.lines(terminal_->size(), drawnUs_));
    }
}

void Monitor::tellUser(const QString &text, Tone tone) {
    if (terminal_ != nullptr) {
        screen_.say(text, tone, nowUs());
    } else {
        tell(text);
    }
}

Failure Monitor::run() {
    if (terminal_ == nullptr) {
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
            tellUser(lost.text() + QStringLiteral("; opening it again"), Tone::Bad);
            reopen();
        }
    }
    return unwritten_;
}

bool Monitor::take(const dravo::LineEvent &event) {
    model_.take(event, nowUs());
    if (event.kind == dravo::LineEvent::PassDone) {
        passDone(event.passUs);
    } else if (event.kind == dravo::LineEvent::ReadsChanged) {
        tellUser(event.text, Tone::Warning);
    } else if (event.kind == dravo::LineEvent::Operation && gateway_) {
        gateway_->finish(event);
    } else if (event.kind == dravo::LineEvent::Operation) {
        reportWrite(event);
    }
    return !leaving_ && !unwritten_;
}

void Monitor::passDone(qint64 us) {
    statistics_.passDone(us, nowUs());
    leaving_ = settings_.passes && model_.passes() >= *settings_.passes;
    if (terminal_ != nullptr) {
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
                tellUser(told = failure.text(), Tone::Bad);
            }
            nextTryUs = nowUs() + kSecondUs;
        }
    }
    if (!model_.isLost()) {
        engine_.restart(nowUs());
        tellUser(QStringLiteral("the device is open again"), Tone::Good);
    }
}

void Monitor::writeSelected(const Screen::Wish &wish) {
    const Tag &variable = model_.variables().at(wish.variable);
    // On a lost device it would be carried out at some later time.
    const int operation = model_.isLost() ? 0 : engine_.write(variable, wish.values);
    if (operation != 0) {
        asked_.insert(operation, variable.label);
        tellUser(QStringLiteral("writing %1 ...").arg(variable.label), Tone::Plain);
        return;
    }
    tellUser(QStringLiteral("%1 is not written: %2")
                 .arg(variable.label, model_.isLost() ? QStringLiteral("the device is lost")
                                                      : QStringLiteral("too much is waiting, or one write cannot "
                                                                       "carry so many values")),
             Tone::Bad);
}

void Monitor::reportWrite(const dravo::LineEvent &end) {
    const QString label = asked_.take(end.operation);
    if (end.done) {
        tellUser(QStringLiteral("%1 is written").arg(label), Tone::Good);
        return;
    }
    const bool isFinal = end.failure == dravo::LineEvent::Refused && end.exceptionCode <= kFinalExceptions;
    const QString doubt = isFinal ? QStringLiteral("it or a part of it is not carried out")
                                  : QStringLiteral("it may have been carried out");
    const QString reason = end.failure == dravo::LineEvent::NotSure
                               ? QStringLiteral("nothing shows yet whether the adapter echoes, --echo says it")
                               : dravo::describeResult(end.code, end.exceptionCode);
    const QString text = QStringLiteral("write of %1 failed, %2, code %3: %4");
    tellUser(text.arg(label, doubt, QString::number(end.code), reason), Tone::Bad);
}
