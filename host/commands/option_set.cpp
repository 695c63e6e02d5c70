#include "host/commands/option_set.h"

#include <CLI/CLI.hpp>

#include "host/commands/option_file.h"
#include "host/tags/value_text.h"

namespace {

const char kOptionFile[] = "config";
// More than a command line holds. An option of any number of values would read "[1,2]" as two.
constexpr int kAnyNumber = 1 << 20;

QString longName(const QString &name) {
    return QLatin1String("--") + name;
}

CLI::Option *optionOf(CLI::App *command, const QString &name) {
    return command->get_option_no_throw(longName(name).toStdString());
}

CLI::Option *newOption(CLI::App *command, const QString &name, const QString &help) {
    return command->add_option(name.toStdString())->description(help.toStdString());
}

/// Whether option files may set it: command empty: for any command.
bool fileMayName(const CLI::App &program, const QString &command, const QString &name) {
    if (name == QLatin1String(kOptionFile) || name == QLatin1String("help")) {
        return false;
    }
    for (const CLI::App *known : program.get_subcommands({})) {
        if ((command.isEmpty() || command.toStdString() == known->get_name()) &&
            known->get_option_no_throw(longName(name).toStdString()) != nullptr) {
            return true;
        }
    }
    return false;
}

/// The help with an addition at the end of its first sentence: "Stop bits (1). ...".
QString withAddition(const QString &help, const QString &addition) {
    const int end = help.indexOf(QStringLiteral(". "));
    return QString(help).insert(end < 0 ? help.size() - 1 : end, addition);
}

QString boundsText(Bounds bounds) {
    return QStringLiteral(", %1 to %2").arg(bounds.lowest).arg(bounds.highest);
}

}  // namespace

OptionSet::Take takeNumber(Bounds bounds, const std::function<void(int)> &put) {
    return [=](const QString &text) -> QStringList {
        const std::optional<qint64> number = wholeNumber(text);
        if (!number || *number < bounds.lowest || *number > bounds.highest) {
            return {QStringLiteral("'%1': give a whole number from %2 to %3")
                        .arg(text)
                        .arg(bounds.lowest)
                        .arg(bounds.highest)};
        }
        put(int(*number));
        return {};
    };
}

void OptionSet::add(const char *name, const char *valueName, const QString &help, const Take &take) {
    const QString faultName = longName(QLatin1String(name));
    CLI::Option *option = newOption(command_, faultName, help);
    option->type_name(valueName)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    defined_.push_back(
        {option, faultName, false, [take](const QStringList &texts) { return take(texts.first()); }, {}});
}

void OptionSet::addText(const char *name, const char *valueName, QString *target, const QString &help) {
    const QString missing = QStringLiteral("names no %1").arg(QString::fromLatin1(valueName).toLower());
    add(name, valueName, help, [target, missing](const QString &text) {
        *target = text;
        return text.isEmpty() ? QStringList{missing} : QStringList();
    });
}

void OptionSet::addNumber(const char *name, const char *valueName, Bounds bounds, int *target, const QString &help) {
    add(name, valueName, withAddition(help, boundsText(bounds) + QStringLiteral(" (%1)").arg(*target)),
        takeNumber(bounds, [target](int number) { *target = number; }));
}

void OptionSet::addNumber(const char *name, const char *valueName, Bounds bounds, std::optional<int> *target,
                          const QString &help) {
    add(name, valueName, withAddition(help, boundsText(bounds)),
        takeNumber(bounds, [target](int number) { *target = number; }));
}

void OptionSet::addOneOf(const char *name, const QStringList &choices, const QString &standard, const QString &help,
                         const std::function<void(int)> &take) {
    add(name, choices.join(QLatin1Char('|')).toLatin1().constData(),
        standard.isEmpty() ? help : withAddition(help, QStringLiteral(" (%1)").arg(standard)),
        [choices, take](const QString &text) -> QStringList {
            const int place = choices.indexOf(text);
            if (place < 0) {
                return {QStringLiteral("'%1': give one of %2").arg(text, choices.join(QStringLiteral(", ")))};
            }
            take(place);
            return {};
        });
}

void OptionSet::addArgument(const char *name, const QString &help, const Take &take) {
    CLI::Option *option = newOption(command_, QLatin1String(name), help);
    option->required();
    defined_.push_back(
        {option, QLatin1String(name), false, [take](const QStringList &texts) { return take(texts.first()); }, {}});
}

void OptionSet::addArguments(const char *name, const QString &help, QStringList *target) {
    CLI::Option *option = newOption(command_, QLatin1String(name), help);
    option->required()->expected(kAnyNumber)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    defined_.push_back({option,
                        QLatin1String(name),
                        true,
                        [target](const QStringList &texts) {
                            *target = texts;
                            return QStringList();
                        },
                        {}});
}

void OptionSet::exclude(const char *one, const char *other, const QString &fault) {
    exclusions_.push_back([=] {
        const bool both =
            !optionOf(command_, QLatin1String(one))->empty() && !optionOf(command_, QLatin1String(other))->empty();
        return both ? QStringList{fault} : QStringList();
    });
}

void OptionSet::addOptionFile() {
    addText(
        kOptionFile, "FILE", &optionFile_,
        QStringLiteral("Options from a file of lines NAME = VALUE; those below a line [COMMAND] are for that command "
                       "alone. The command line overrides them."));
}

QStringList OptionSet::take() {
    const CLI::Option *file = optionOf(command_, QLatin1String(kOptionFile));
    QStringList faults =
        file->results().size() == 1 ? takeOptionFile(QString::fromStdString(file->results().front())) : QStringList();
    bool complete = true;
    bool argumentsGood = true;
    for (const Defined &defined : defined_) {
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
        faults.append(QString::fromStdString(command_->get_name()) + QLatin1String(" takes ") + argumentNames());
    } else if (argumentsGood) {
        for (const auto &check : checks_) {
            faults += check();
        }
    }
    return faults;
}

QString OptionSet::argumentNames() const {
    QStringList names;
    for (const Defined &defined : defined_) {
        if (defined.option->get_positional()) {
            names.append(defined.repeats ? defined.name + QLatin1String("...") : defined.name);
        }
    }
    return names.join(QLatin1Char(' '));
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
            CLI::Option *target = optionOf(command_, option.name);
            if (option.command == section && target != nullptr && target->empty()) {
                setFromFile(target, option.value, where + QStringLiteral("line %1: ").arg(option.line));
            }
        }
    }
    for (const FileOption &option : file.options) {
        if (!fileMayName(*command_->get_parent(), option.command, option.name)) {
            faults.append(where +
                          QStringLiteral("line %1: there is no option '%2'%3")
                              .arg(option.line)
                              .arg(option.name, option.command.isEmpty()
                                                    ? QString()
                                                    : QStringLiteral(" of a command '%1'").arg(option.command)));
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
