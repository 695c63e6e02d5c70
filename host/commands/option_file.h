// Option files: lines "name = value"; those behind a line "[command]" are for that command alone. Blank lines and lines
// that start with # or ; say nothing; a value may stand in double quotes. Any thread.
#ifndef DRAVO_HOST_COMMANDS_OPTION_FILE_H
#define DRAVO_HOST_COMMANDS_OPTION_FILE_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QVector>

struct FileOption {
    int line;         // from 1
    QString command;  // empty: every command that has the option
    QString name;
    QString value;
};

struct OptionFile {
    QVector<FileOption> options;
    QStringList faults;  // "line 3: ..."
};

/// UTF-8 text.
OptionFile parseOptionFile(const QByteArray &text);
OptionFile loadOptionFile(const QString &fileName);

#endif  // DRAVO_HOST_COMMANDS_OPTION_FILE_H
