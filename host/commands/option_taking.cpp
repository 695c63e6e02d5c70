// Takes what the command line and the option file give, and tells all that is wrong with it.
#include <CLI/CLI.hpp>

#include "host/commands/help_format.h"
#include "host/commands/option_file.h"
#include "host/commands/option_set.h"

namespace {

/// Whether option files may set it: command empty: for any command.
bool fileMayName(const CLI::App &program, const QString &command, const QString &name) {
    if (name == QLatin1String(kOptionFileOption) || name == QLatin1String("help")) {
        return false;
    }
    for (const CLI::App *known : program.get_subcommands({})) {
        if ((command.isEmpty() || command.toStdString() == known->get_name()) &&
            known->get_option_no_throw("--" + name.toStdString()) != nullptr) {
            return true;
        }
    }
    return false;
}

QString whatThereIsNot(const CLI::App &program, const FileOption &option) {
    if (option.command.isEmpty()) {
        return QStringLiteral("there is no option '%1'").arg(option.name);
    }
    const std::string command = option.command.toStdString();
    const std::vector<const CLI::App *> known =
        program.get_subcommands([&command](const CLI::App *one) { return one->get_name() == command; });
    return known.empty()
               ? QStringLiteral("there is no command '%1'").arg(option.command)
               : QStringLiteral("'%1' has no option '%2' that a file can give").arg(option.command, option.name);
}

}  // namespace

CLI::Option *OptionSet::find(const QString &name) const {
    return command_->get_option_no_throw("--" + name.toStdString());
}

bool OptionSet::given(const char *name) const {
    const CLI::Option *option = find(QLatin1String(name));
    return option != nullptr && !option->empty();
}

QStringList OptionSet::take(bool argumentsKnown) {
    const CLI::Option *file = find(QLatin1String(kOptionFileOption));
    QStringList faults =
        file->results().size() == 1 ? takeOptionFile(QString::fromStdString(file->results().front())) : QStringList();
    bool complete = true;
    bool argumentsGood = argumentsKnown;
    for (const Defined &defined : defined_) {
        if (defined.option->get_positional() && !argumentsKnown) {
            continue;
        }
        QStringList texts;
        for (const std::string &text : defined.option->results()) {
            texts.append(QString::fromStdString(text));
        }
        complete = complete && !(defined.option->get_required() && texts.isEmpty());
        if (texts.size() > 1 && !defined.repeats) {
            faults.append(QStringLiteral("%1 is given %2 times").arg(defined.name).arg(texts.size()));
        } else if (!texts.isEmpty()) {
            for (const QString &fault : defined.take(texts)) {
                faults.append(defined.origin + defined.name + QLatin1Char(' ') + fault);
                argumentsGood = argumentsGood && !defined.option->get_positional();
            }
        }
    }
    for (const auto &exclusion : exclusions_) {
        faults += exclusion();
    }
    if (!complete) {
        faults.append(QString::fromStdString(command_->get_name() + " takes" + argumentNames(*command_)));
    } else if (argumentsGood) {
        for (const auto &check : checks_) {
            faults += check();
        }
    }
    return faults;
}

QStringList OptionSet::takeOptionFile(const QString &fileName) {
    const OptionFile file = loadOptionFile(fileName);
    const QString where = QStringLiteral("option file %1: ").arg(fileName);
    QStringList faults;
    for (const QString &fault : file.faults) {
        faults.append(where + fault);
    }
    const QString ownName = QString::fromStdString(command_->get_name());
    for (const QString &section : {ownName, QString()}) {  // what is for this command alone goes first
        for (const FileOption &option : file.options) {
            CLI::Option *target = find(option.name);
            if (option.command == section && target != nullptr && target->empty()) {
                setFromFile(target, option.value, where + QStringLiteral("line %1: ").arg(option.line));
            }
        }
    }
    for (const FileOption &option : file.options) {
        if (!fileMayName(*command_->get_parent(), option.command, option.name)) {
            faults.append(where + QStringLiteral("line %1: ").arg(option.line) +
                          whatThereIsNot(*command_->get_parent(), option));
        }
    }
    return faults;
}

void OptionSet::setFromFile(CLI::Option *option, const QString &value, const QString &origin) {
    for (Defined &defined : defined_) {
        if (defined.option == option) {
            option->add_result(value.toStdString());
            defined.origin = origin;
        }
    }
}
