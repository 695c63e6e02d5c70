// What read and write share: one variable named on the command line, and one operation on it after the other. Main
// thread.
#ifndef DRAVO_HOST_COMMANDS_ACCESS_H
#define DRAVO_HOST_COMMANDS_ACCESS_H

#include "host/commands/open_line.h"
#include "host/commands/option_set.h"

/// The arguments TYPE and ADDRESS.
void addVariableArguments(OptionSet *options, Options *settings);
/// Station, format and line.
void addAccessOptions(OptionSet *options, Options *settings);
/// Resolves the variable once its count is known, and its format. @return everything that keeps it from being read.
QStringList resolveVariable(Options *settings);

class Access {
public:
    explicit Access(const Options &options) : options_(options) {}
    Access(const Access &) = delete;
    Access &operator=(const Access &) = delete;

    // Each does what it says and prints what came of it. @return the exit status.

    int open();
    int write(const QByteArray &values);
    int read(const QString &prefix);

    /// While nobody knows whether the adapter echoes, the reply to a write of one element could be its echo. Three
    /// reads that are answered at once tell; that they fail does not matter.
    void learnWhetherEchoes();

private:
    /// How an operation ended. A failure where it did not: interrupted, device lost.
    Failure complete(int operation, dravo::LineEvent *end);
    Failure outcome(int operation, bool *refused = nullptr);
    int report(const QString &what, const QByteArray &values) const;

    const Options &options_;
    OpenLine line_;
    std::optional<dravo::Line> engine_;
};

#endif  // DRAVO_HOST_COMMANDS_ACCESS_H
