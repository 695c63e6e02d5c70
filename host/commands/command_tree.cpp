#include "host/commands/command_tree.h"

#include <CLI/CLI.hpp>
#include <QtCore/QCoreApplication>

#include "host/commands/help_format.h"

namespace {

const char kDescription[] =
    "Reads and writes the values of controllers through the driver library, over a serial port or, without --port, "
    "over a simulated line with simulated controllers.";

const char kFooter[] =
    "dravo-host COMMAND --help lists the options of a command.\n"
    "Exit status: 0 done, 1 a request failed or was refused or the device was lost, 2 usage or tag list, 3 the port "
    "could "
    "not be opened.";

// The parser looks at the last element first. Of "--name=" it would take the next argument for the value, and "-inf"
// for options of one letter, which a blank before it prevents.
std::vector<std::string> parserArguments(const QStringList &arguments) {
    std::vector<std::string> reversed;
    for (int i = arguments.size() - 1; i > 0; --i) {
        const QString &argument = arguments.at(i);
        if (argument.startsWith(QLatin1String("--")) && argument.indexOf(QLatin1Char('=')) == argument.size() - 1) {
            reversed.emplace_back();
            reversed.push_back(argument.chopped(1).toStdString());
        } else {
            reversed.push_back((argument == QLatin1String("-inf") ? " " : "") + argument.toStdString());
        }
    }
    return reversed;
}

QString commandNames() {
    QStringList names;
    for (const Command *command : commands()) {
        names.append(QLatin1String(command->name));
    }
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

/// What the parser found no place for.
QStringList leftOver(const CommandTree &tree, const CommandTree::Branch &branch) {
    QStringList faults;
    const CLI::App *const parsers[] = {branch.parser, tree.program.get()};
    for (const CLI::App *app : parsers) {
        for (const std::string &argument : app->remaining()) {
            const QString text = QString::fromStdString(argument);
            if (text != QLatin1String("--")) {
                faults.append(text.startsWith(QLatin1Char('-')) ? QStringLiteral("there is no option '%1'").arg(text)
                                                                : QStringLiteral("unexpected argument '%1'").arg(text));
            }
        }
    }
    return faults;
}

}  // namespace

CommandTree buildCommandTree(Options *settings) {
    CommandTree tree;
    tree.program = std::make_shared<CLI::App>(kDescription, "dravo-host");
    CLI::App &program = *tree.program;
    program.formatter(std::make_shared<HelpFormat>());
    program.set_help_flag("-h,--help", "Show this help and end.");
    program.set_version_flag("--version", "dravo-host " + QCoreApplication::applicationVersion().toStdString(),
                             "Show the version and end.");
    program.footer(kFooter);
    program.require_subcommand(1);
    for (const Command *command : commands()) {
        CLI::App *parser =
            program.add_subcommand(command->name, std::string(command->summary) + "\n\n" + command->description);
        tree.branches.push_back({command, parser, std::make_unique<OptionSet>(parser)});
        OptionSet &options = *tree.branches.back().options;
        command->addOptions(&options, settings);
        options.addOptionFile();
    }
    return tree;
}

CommandLine parseCommandLine(const QStringList &arguments) {
    CommandLine line;
    const CommandTree tree = buildCommandTree(&line.settings);
    QString refusal;
    try {
        tree.program->parse(parserArguments(arguments));
    } catch (const CLI::CallForHelp &) {
        line.text = QString::fromStdString(tree.program->help());
        return line;
    } catch (const CLI::CallForVersion &version) {
        line.text = QString::fromUtf8(version.what()) + QLatin1Char('\n');
        return line;
    } catch (const CLI::ArgumentMismatch &) {
        // Only the last option of all can lack its value; what comes before it has been parsed.
        line.faults.append(QStringLiteral("%1 is given no value").arg(arguments.last()));
    } catch (const CLI::ParseError &refused) {
        refusal = QString::fromUtf8(refused.what());
    }
    if (arguments.contains(QLatin1String("++"))) {  // to the parser, the end of a command
        line.faults.append(QStringLiteral("unexpected argument '++'"));
    }
    for (const CommandTree::Branch &branch : tree.branches) {
        if (branch.parser->parsed()) {
            line.command = branch.command;
            line.faults += leftOver(tree, branch) + branch.options->take();
        }
    }
    if (line.command == nullptr) {
        const QString first = arguments.value(1);
        line.faults = QStringList{first.isEmpty() ? QStringLiteral("give a command: ") + commandNames()
                                                  : QStringLiteral("there is no command '%1'").arg(first)};
    } else if (line.faults.isEmpty() && !refusal.isEmpty()) {
        line.faults.append(refusal);
    }
    return line;
}
