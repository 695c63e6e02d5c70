#include "host/commands/command_tree.h"

#include <CLI/CLI.hpp>
#include <QtCore/QCoreApplication>

#include "host/commands/element_types_help.h"
#include "host/commands/exit_status.h"
#include "host/commands/help_format.h"

namespace {

const char kDescription[] =
    "Reads and writes the values of controllers through the driver library, over a serial port or, without --port, "
    "over a simulated line with simulated controllers.";

std::string footer() {
    std::string text = "dravo-host help COMMAND lists the options of a command, dravo-host help ";
    text += kTypesTopic;
    text += " the element types.\nExit status: ";
    for (const ExitMeaning &meaning : kExitMeanings) {
        text += (meaning.status == 0 ? "" : ", ") + std::to_string(meaning.status) + ' ' + meaning.text;
    }
    return text + '.';
}

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
QStringList leftOver(const CommandTree &tree, const CLI::App *command) {
    QStringList texts;
    const CLI::App *const parsers[] = {command, tree.program.get()};
    for (const CLI::App *app : parsers) {
        for (const std::string &argument : app->remaining()) {
            texts.append(QString::fromStdString(argument));
        }
    }
    texts.removeAll(QStringLiteral("--"));
    return texts;
}

bool looksLikeOption(const QString &argument) {
    return argument.startsWith(QLatin1Char('-')) && argument.size() > 1 && !argument.at(1).isDigit();
}

/// Behind an option that there is not stands a word, perhaps its value: nobody can tell which words are the arguments.
bool argumentsInDoubt(const QStringList &arguments, const QStringList &unknown) {
    for (int i = 1; i + 1 < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (looksLikeOption(argument) && unknown.contains(argument) && !looksLikeOption(arguments.at(i + 1))) {
            return true;
        }
    }
    return false;
}

/// Of what was found no place for, each thing once.
QStringList leftOverFaults(const QStringList &texts, bool inDoubt) {
    QStringList faults;
    for (const QString &text : texts) {
        if (looksLikeOption(text)) {
            faults.append(QStringLiteral("there is no option '%1'").arg(text));
        } else if (!inDoubt) {
            faults.append(QStringLiteral("unexpected argument '%1'").arg(text));
        }
    }
    return faults;
}

/// "help read" says the same as "--help read".
QStringList withHelpAsOption(QStringList arguments) {
    if (arguments.value(1) == QLatin1String(kHelpWord)) {
        arguments[1] = QStringLiteral("--help");
    }
    return arguments;
}

/// Help on the program, on a command, or on the topic that is no command.
void takeHelp(const CLI::App &program, CommandLine *line) {
    const std::vector<std::string> topics = program.remaining();
    if (topics.empty() || topics.front().front() == '-' || !program.get_subcommands().empty()) {
        line->text = QString::fromStdString(program.help());
    } else if (topics.front() == kTypesTopic) {
        line->text = elementTypesHelp();
    } else {
        line->faults.append(QStringLiteral("there is no help on '%1': give a command or '%2'")
                                .arg(QString::fromStdString(topics.front()), QLatin1String(kTypesTopic)));
    }
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
    program.footer(footer());
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

CommandLine parseCommandLine(const QStringList &given) {
    CommandLine line;
    const CommandTree tree = buildCommandTree(&line.settings);
    const QStringList arguments = withHelpAsOption(given);
    QString refusal;
    try {
        tree.program->parse(parserArguments(arguments));
    } catch (const CLI::CallForHelp &) {
        takeHelp(*tree.program, &line);
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
            const QStringList unknown = leftOver(tree, branch.parser);
            const bool inDoubt = argumentsInDoubt(arguments, unknown);
            line.faults += leftOverFaults(unknown, inDoubt) + branch.options->take(!inDoubt);
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
