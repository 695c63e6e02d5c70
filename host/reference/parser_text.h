// What the parser's tree says of commands and options, as this program's texts. Pure; any thread.
#ifndef DRAVO_HOST_REFERENCE_PARSER_TEXT_H
#define DRAVO_HOST_REFERENCE_PARSER_TEXT_H

#include <CLI/CLI.hpp>
#include <QtCore/QStringList>

struct OptionText {
    bool isArgument;
    QStringList names;    // "-h", "--help"; of an argument its one name
    QString value;        // "FILE"; empty: takes none, or one of the choices
    QStringList choices;  // "driver", "time"
    QString help;
};

std::vector<OptionText> optionTexts(const CLI::App &command);

#endif  // DRAVO_HOST_REFERENCE_PARSER_TEXT_H
