#include "host/commands/help_format.h"

#include <algorithm>

namespace {

constexpr std::size_t kWidth = 80;

struct Entry {
    std::string name;
    std::string help;
};

/// A titled list in two columns; empty when it has no entry.
std::string section(const std::string &title, const std::vector<Entry> &entries) {
    std::size_t indent = 0;
    for (const Entry &entry : entries) {
        indent = std::max(indent, entry.name.size() + 4);
    }
    std::string text = entries.empty() ? std::string() : "\n" + title + ":\n";
    for (const Entry &entry : entries) {
        std::string name = "  " + entry.name;
        name.resize(indent, ' ');
        text += name + brokenLines(entry.help, indent);
    }
    return text;
}

std::string firstLine(const std::string &text) {
    return text.substr(0, text.find('\n'));
}

}  // namespace

std::string brokenLines(const std::string &text, std::size_t indent) {
    std::string result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        for (std::size_t end = kWidth - indent; line.size() > end;) {
            const std::size_t blank = line.rfind(' ', end);
            if (blank == std::string::npos) {
                break;
            }
            result += line.substr(0, blank) + '\n' + std::string(indent, ' ');
            line.erase(0, blank + 1);
        }
        result += line + '\n' + std::string(indent, ' ');
    }
    return result.substr(0, result.find_last_not_of(" \n") + 1) + '\n';
}

std::string argumentNames(const CLI::App &command) {
    std::string names;
    for (const CLI::Option *option : command.get_options()) {
        if (option->get_positional()) {
            names += " " + option->get_name(true) + (option->get_expected_max() > 1 ? "..." : "");
        }
    }
    return names;
}

std::string HelpFormat::make_help(const CLI::App *app, std::string /*name*/, CLI::AppFormatMode /*mode*/) const {
    std::vector<Entry> commands;
    for (const CLI::App *command : app->get_subcommands({})) {
        commands.push_back({command->get_name() + argumentNames(*command), firstLine(command->get_description())});
    }
    std::vector<Entry> arguments;
    std::vector<Entry> options;
    for (const CLI::Option *option : app->get_options()) {
        if (option->get_positional()) {
            arguments.push_back({option->get_name(true), option->get_description()});
        } else {
            options.push_back(
                {option->get_name(false, true) + " " + option->get_type_name(), option->get_description()});
        }
    }
    const std::string program = commands.empty()
                                    ? app->get_parent()->get_name() + " " + app->get_name() + argumentNames(*app)
                                    : app->get_name();
    return "Usage: " + program + (commands.empty() ? "" : " COMMAND") + " [options]\n" +
           brokenLines(app->get_description(), 0) + section("Commands", commands) + section("Arguments", arguments) +
           section("Options", options) + (commands.empty() ? "" : "\n" + brokenLines(app->get_footer(), 0));
}
