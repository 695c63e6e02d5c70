#include "host/commands/option_set.h"

#include <CLI/CLI.hpp>

#include "host/tags/number_text.h"

namespace {

// More than a command line holds. An option of any number of values would read "[1,2]" as two.
constexpr int kAnyNumber = 1 << 20;

QString longName(const QString &name) {
    return QLatin1String("--") + name;
}

CLI::Option *newOption(CLI::App *command, const QString &name, const QString &help) {
    return command->add_option(name.toStdString())->description(help.toStdString());
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

void OptionSet::define(CLI::Option *option, const QString &name, bool repeats,
                       const std::function<QStringList(const QStringList &)> &take) {
    defined_.push_back({option, name, repeats, take, QString()});
}

void OptionSet::add(const char *name, const char *valueName, const QString &help, const Take &take) {
    const QString faultName = longName(QLatin1String(name));
    CLI::Option *option = newOption(command_, faultName, help);
    option->type_name(valueName)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    define(option, faultName, false, [take](const QStringList &texts) { return take(texts.first()); });
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

void OptionSet::addFlag(const char *name, bool *target, const QString &help) {
    const QString faultName = longName(QLatin1String(name));
    CLI::Option *option = command_->add_flag(faultName.toStdString())->description(help.toStdString());
    option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    define(option, faultName, false, [target](const QStringList &texts) -> QStringList {
        const QString &text = texts.first();
        *target = text == QLatin1String("on") || text == QLatin1String("true");  // the parser's own word for a flag
        return *target || text == QLatin1String("off") ? QStringList()
                                                       : QStringList{QStringLiteral("'%1': give on or off").arg(text)};
    });
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
    CLI::Option *option = newOption(command_, QLatin1String(name), help)->required();
    define(option, QLatin1String(name), false, [take](const QStringList &texts) { return take(texts.first()); });
}

void OptionSet::addArguments(const char *name, const QString &help, QStringList *target) {
    CLI::Option *option = newOption(command_, QLatin1String(name), help)->required();
    option->expected(kAnyNumber)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    define(option, QLatin1String(name), true, [target](const QStringList &texts) {
        *target = texts;
        return QStringList();
    });
}

void OptionSet::exclude(const char *one, const char *other, const QString &fault) {
    exclusions_.push_back([=] {
        const bool both = given(one) && given(other);
        return both ? QStringList{fault} : QStringList();
    });
}

void OptionSet::addOptionFile() {
    addText(
        kOptionFileOption, "FILE", &optionFile_,
        QStringLiteral("Options from a file of lines NAME = VALUE; those below a line [COMMAND] are for that command "
                       "alone. The command line overrides them."));
}
