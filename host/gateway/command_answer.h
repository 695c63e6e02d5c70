// The record that answers a command. Pure; any thread.
#ifndef DRAVO_HOST_GATEWAY_COMMAND_ANSWER_H
#define DRAVO_HOST_GATEWAY_COMMAND_ANSWER_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include "host/tags/tag_list.h"

enum class CommandOutcome {
    Done,     // a write was carried out, a read brought the values
    Refused,  // nothing was carried out
    Failed,   // no values; a write may have been carried out
    NotSure   // the same: nobody looked at the answer, or it may be the adapter's echo
};

struct CommandAnswer {
    QByteArray id = "null";  // JSON
    QString command;         // "write", "read" or, where that could not be told, empty
    QString label;
    CommandOutcome outcome = CommandOutcome::Done;
    QString why;   // empty: done
    int code = 0;  // the driver's result code, and the controller's exception; 0: none
    int exceptionCode = 0;
};

/// The faults on one line: the first few of them, and how many more there are.
QString faultsText(const QStringList &faults);

/// One JSON object a line, with "record": "command", which no other record has.
/// @param variable  whose values these are; null: the record tells no values.
QByteArray answerRecord(const CommandAnswer &answer, const Tag *variable, const QByteArray &values,
                        const QString &time);

#endif  // DRAVO_HOST_GATEWAY_COMMAND_ANSWER_H
