// One command's options on top of QCommandLineParser: each at most once, numbers in a range, negative numbers as
// values.
#ifndef DRAVO_HOST_COMMAND_LINE_H
#define DRAVO_HOST_COMMAND_LINE_H

#include <QtCore/QCommandLineParser>
#include <QtCore/QStringList>

class CommandLine {
public:
    /// Adds an option that takes a value. lowest and highest are stated in the help by the caller.
    void add(const QString &name, const QString &valueName, const QString &help);

    /// @return false: the command line is not to be looked at further (see faults(), or help is asked for).
    bool parse(const QStringList &arguments);

    bool helpAsked() const { return parser_.isSet(QStringLiteral("help")); }
    /// @param usage  the line that shows how the command is written.
    QString helpText(const QString &usage) const;
    QCommandLineParser &parser() { return parser_; }

    bool has(const QString &name) const;
    QString text(const QString &name) const;
    QStringList positionals() const;

    /// Puts the option's number into target; leaves it when the option is not given; notes a fault when it is no whole
    /// number from lowest to highest.
    void takeNumber(const QString &name, int lowest, int highest, int *target);
    /// Puts the choice's place into target; notes a fault when it is none of choices.
    void takeChoice(const QString &name, const QStringList &choices, int *target);

    void fault(const QString &text) { faults_.append(text); }
    const QStringList &faults() const { return faults_; }

private:
    QCommandLineParser parser_;
    QStringList names_;
    QStringList faults_;
};

/// A whole number, decimal or 0x hexadecimal, from lowest to highest. @return false: text is none.
bool wholeNumber(const QString &text, int lowest, int highest, int *number);

#endif  // DRAVO_HOST_COMMAND_LINE_H
