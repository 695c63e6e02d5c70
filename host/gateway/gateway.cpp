#include "host/gateway/gateway.h"

#include <QtCore/QDateTime>

#include "host/tags/quoted_text.h"
#include "host/tags/value_text.h"

namespace {

constexpr int kLinesAtOnce = 64;  // then the line has its turn
constexpr int kMostPending = 1000;
constexpr int kLastFinalException = 3;  // up to this one the controller has done nothing, and never will
const QString kUnknown = QStringLiteral("; it may have been carried out");

CommandAnswer answerTo(const CommandText &command) {
    CommandAnswer answer;
    answer.id = command.id;
    answer.command = command.name;
    answer.label = command.label;
    return answer;
}

/// What became of an operation that is not done.
void judge(const dravo::LineEvent &end, bool isWrite, int count, CommandAnswer *answer) {
    const bool refused = end.failure == dravo::LineEvent::Refused && end.exceptionCode <= kLastFinalException;
    answer->code = end.code;
    answer->exceptionCode = end.exceptionCode;
    answer->why = dravo::describeResult(end.code, end.exceptionCode);
    answer->outcome = CommandOutcome::Failed;
    if (end.failure == dravo::LineEvent::NotSure) {
        answer->outcome = CommandOutcome::NotSure;
        answer->why = QStringLiteral(
            "the same came back, and nothing shows whether the adapter echoes: say --echo off, or on if it does");
    } else if (refused && (!isWrite || count == 1)) {
        answer->outcome = CommandOutcome::Refused;
    } else if (isWrite) {
        answer->why += refused ? QStringLiteral("; other parts may have been carried out") : kUnknown;
    }
}

}  // namespace

Gateway::Gateway(const QVector<Tag> &variables, dravo::Line *line, LineInput *input, const Answer &answer)
    : variables_(variables), line_(line), input_(input), answer_(answer) {
    for (int i = 0; i < variables.size(); ++i) {
        places_[variables.at(i).label].append(i);
    }
}

void Gateway::serve(bool isLost) {
    QByteArray text;
    for (int i = 0; i < kLinesAtOnce; ++i) {
        const LineInput::Taken taken = input_->take(&text);
        if (taken == LineInput::Taken::TooLong) {
            refuse(CommandAnswer(), QStringLiteral("the line is longer than %1 bytes").arg(LineInput::kLongest));
        } else if (taken == LineInput::Taken::Line) {
            take(text, isLost);
        } else {
            inputEnded_ = taken == LineInput::Taken::Ended;
            return;
        }
    }
}

// A blank line asks for nothing.
void Gateway::take(const QByteArray &text, bool isLost) {
    if (text.trimmed().isEmpty()) {
        return;
    }
    const CommandText command = readCommand(text);
    const QStringList faults = command.faults.isEmpty() ? start(command, isLost) : command.faults;
    if (!faults.isEmpty()) {
        refuse(answerTo(command), faultsText(faults));
    }
}

QStringList Gateway::start(const CommandText &command, bool isLost) {
    const QVector<int> places = places_.value(command.label);
    if (places.size() != 1) {
        return {places.isEmpty()
                    ? QStringLiteral("no variable is named %1").arg(quoted(command.label))
                    : QStringLiteral("%1 variables are named %2").arg(places.size()).arg(quoted(command.label))};
    }
    const Tag &variable = variables_.at(places.first());
    QStringList faults;
    const TypedValues values = valueBytes(variable.kind, variable.format, command.values);
    if (command.isWrite && command.values.size() != variable.count) {
        faults.append(QStringLiteral("%1 values for a variable of %2").arg(command.values.size()).arg(variable.count));
    }
    faults += values.faults;
    if (isLost) {
        faults.append(QStringLiteral("the device is lost"));
    }
    return faults.isEmpty() ? queue(variable, {answerTo(command), command.isWrite, places.first(), values.bytes})
                            : faults;
}

QStringList Gateway::queue(const Tag &variable, Pending pending) {
    if (pending_.size() >= kMostPending) {
        return {QStringLiteral("%1 commands are waiting already").arg(pending_.size())};
    }
    const int operation = pending.isWrite ? line_->write(variable, pending.values) : line_->readOnce(variable);
    if (operation == 0) {
        return {QLatin1String(pending_.isEmpty() ? "so many values are more than one command can carry"
                                                 : "too much is waiting already")};
    }
    pending_.insert(operation, pending);
    return {};
}

bool Gateway::finish(const dravo::LineEvent &end) {
    if (!pending_.contains(end.operation)) {
        return false;
    }
    Pending pending = pending_.take(end.operation);
    const Tag &variable = variables_.at(pending.variable);
    if (end.done) {
        tell(pending.answer, &variable, pending.isWrite ? pending.values : dravo::Line::values(variable));
    } else {
        judge(end, pending.isWrite, variable.count, &pending.answer);
        tell(pending.answer);
    }
    return true;
}

void Gateway::abandon(const QString &why) {
    for (Pending &pending : pending_) {
        pending.answer.outcome = pending.isWrite ? CommandOutcome::NotSure : CommandOutcome::Failed;
        pending.answer.why = pending.isWrite ? why + kUnknown : why;
        tell(pending.answer);
    }
    pending_.clear();
}

void Gateway::refuse(CommandAnswer answer, const QString &why) {
    answer.outcome = CommandOutcome::Refused;
    answer.why = why;
    tell(answer);
}

void Gateway::tell(const CommandAnswer &answer, const Tag *variable, const QByteArray &values) {
    answer_(answerRecord(answer, variable, values, QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)));
}
