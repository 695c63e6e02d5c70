// A command as it comes in: a line of JSON. Pure; any thread.
#ifndef DRAVO_HOST_GATEWAY_COMMAND_TEXT_H
#define DRAVO_HOST_GATEWAY_COMMAND_TEXT_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

struct CommandText {
    QByteArray id = "null";  // as given, so that no digit is lost; null where there is none
    bool isWrite = false;    // else a read
    QString name;            // "write" or "read"; empty where that cannot be told
    QString label;
    QStringList values;  // as they would be typed
    QStringList faults;  // all that is wrong; empty: it is a command
};

/// Reads {"write": {"label": "mixer speed", "values": [750]}, "id": 7} or {"read": {"label": "mixer speed"}}.
/// Members that it does not know are faults: one that is misspelt must not be left out of a write.
CommandText readCommand(const QByteArray &line);

#endif  // DRAVO_HOST_GATEWAY_COMMAND_TEXT_H
