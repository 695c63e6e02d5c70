#include "host/command_line.h"

namespace {

// The parser takes "-5" for an option. No option here starts with a digit, so such an argument is a value: it travels
// through the parser behind a character that nobody types.
const QChar kShield = QChar(0x1F);

bool looksNegative(const QString &argument) {
    return argument.size() > 1 && argument.at(0) == QLatin1Char('-') && argument.at(1).isDigit();
}

QString unshielded(const QString &text) {
    return text.startsWith(kShield) ? text.mid(1) : text;
}

}  // namespace

bool wholeNumber(const QString &text, int lowest, int highest, int *number) {
    bool good = false;
    const bool hex = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    const int value = text.toInt(&good, hex ? 16 : 10);
    if (!good || value < lowest || value > highest) {
        return false;
    }
    *number = value;
    return true;
}

void CommandLine::add(const QString &name, const QString &valueName, const QString &help) {
    parser_.addOption(QCommandLineOption(name, help, valueName));
    names_.append(name);
}

bool CommandLine::parse(const QStringList &arguments) {
    parser_.addOption(
        QCommandLineOption({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and end.")));
    QStringList shielded;
    for (const QString &argument : arguments) {
        shielded.append(looksNegative(argument) ? kShield + argument : argument);
    }
    if (!parser_.parse(shielded)) {
        fault(parser_.errorText());
        return false;
    }
    if (helpAsked()) {
        return false;
    }
    for (const QString &name : qAsConst(names_)) {
        if (parser_.values(name).size() > 1) {
            fault(QStringLiteral("--%1 is given %2 times").arg(name).arg(parser_.values(name).size()));
        }
    }
    return true;
}

// The parser's own usage line shows the program's path and puts the options before the command.
QString CommandLine::helpText(const QString &usage) const {
    const QString text = parser_.helpText();
    return usage + text.mid(text.indexOf(QLatin1Char('\n')));
}

bool CommandLine::has(const QString &name) const {
    return names_.contains(name) && parser_.isSet(name);
}

QString CommandLine::text(const QString &name) const {
    return unshielded(parser_.value(name));
}

QStringList CommandLine::positionals() const {
    QStringList texts;
    for (const QString &text : parser_.positionalArguments()) {
        texts.append(unshielded(text));
    }
    return texts;
}

void CommandLine::takeNumber(const QString &name, int lowest, int highest, int *target) {
    if (has(name) && !wholeNumber(text(name), lowest, highest, target)) {
        fault(QStringLiteral("--%1 '%2': give a whole number from %3 to %4")
                  .arg(name, text(name))
                  .arg(lowest)
                  .arg(highest));
    }
}

void CommandLine::takeChoice(const QString &name, const QStringList &choices, int *target) {
    if (!has(name)) {
        return;
    }
    const int place = choices.indexOf(text(name));
    if (place < 0) {
        fault(QStringLiteral("--%1 '%2': give one of %3").arg(name, text(name), choices.join(QStringLiteral(", "))));
    } else {
        *target = place;
    }
}
