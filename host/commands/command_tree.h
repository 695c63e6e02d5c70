// The commands with their options as the parser's tree, the one source of everything that is told about them: help now,
// man pages and completion from the same tree. Main thread.
#ifndef DRAVO_HOST_COMMANDS_COMMAND_TREE_H
#define DRAVO_HOST_COMMANDS_COMMAND_TREE_H

#include <memory>

#include "host/commands/command.h"

/// As first word it does what --help does.
constexpr char kHelpWord[] = "help";

struct CommandTree {
    struct Branch {
        const Command *command;
        CLI::App *parser;
        std::unique_ptr<OptionSet> options;
    };
    std::shared_ptr<CLI::App> program;
    std::vector<Branch> branches;
};

/// All commands; what their options take goes into settings, which outlives the tree.
CommandTree buildCommandTree(Options *settings);

struct CommandLine {
    const Command *command = nullptr;
    Options settings;
    QString text;        // help or version: print this and leave well
    QStringList faults;  // everything wrong with command line and option file; empty: run the command
};

/// @param arguments  the program's, its name first.
CommandLine parseCommandLine(const QStringList &arguments);

#endif  // DRAVO_HOST_COMMANDS_COMMAND_TREE_H
