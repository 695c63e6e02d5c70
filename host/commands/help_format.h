// Help texts of 80 columns from the parser's tree. The parser's own formatter breaks no line.
#ifndef DRAVO_HOST_COMMANDS_HELP_FORMAT_H
#define DRAVO_HOST_COMMANDS_HELP_FORMAT_H

#include <CLI/CLI.hpp>
#include <string>

/// A command's arguments as its usage line shows them: " TYPE ADDRESS VALUE..."; empty when it has none.
std::string argumentNames(const CLI::App &command);

/// Text of 80 columns broken at blanks, its own line ends kept; each line but the first starts with indent blanks.
std::string brokenLines(const std::string &text, std::size_t indent);

class HelpFormat : public CLI::FormatterBase {
public:
    std::string make_help(const CLI::App *app, std::string name, CLI::AppFormatMode mode) const override;
};

#endif  // DRAVO_HOST_COMMANDS_HELP_FORMAT_H
