// The options and arguments of one command: each is defined once, with its bounds or choices, its default and its help,
// and the help shown is made of that. Main thread.
#ifndef DRAVO_HOST_COMMANDS_OPTION_SET_H
#define DRAVO_HOST_COMMANDS_OPTION_SET_H

#include <QtCore/QStringList>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// The option that names an option file.
constexpr char kOptionFileOption[] = "config";

struct Bounds {
    int lowest;
    int highest;
};

class OptionSet {
public:
    /// command: outlives this object.
    explicit OptionSet(CLI::App *command) : command_(command) {}
    OptionSet(const OptionSet &) = delete;
    OptionSet &operator=(const OptionSet &) = delete;

    /// Puts what is given into something. @return every fault of it, without the option's name.
    using Take = std::function<QStringList(const QString &text)>;

    // Options. valueName stands for the value in the help; help is whole
    // sentences, the first of which gets bounds and default. target keeps its value, the default that the help states,
    // when the option is not given or has a fault.

    void add(const char *name, const char *valueName, const QString &help, const Take &take);
    void addText(const char *name, const char *valueName, QString *target, const QString &help);
    void addNumber(const char *name, const char *valueName, Bounds bounds, int *target, const QString &help);
    void addNumber(const char *name, const char *valueName, Bounds bounds, std::optional<int> *target,
                   const QString &help);
    /// Takes no value on the command line; in an option file "on" or "off".
    void addFlag(const char *name, bool *target, const QString &help);
    template <typename Choice, typename Target>
    void addChoice(const char *name, const std::vector<std::pair<const char *, Choice>> &choices, Target *target,
                   const QString &help) {
        QStringList names;
        QString standard;
        for (const auto &[text, value] : choices) {
            names.append(QLatin1String(text));
            standard = Target(value) == *target ? QString::fromLatin1(text) : standard;
        }
        addOneOf(name, names, standard, help,
                 [choices, target](int place) { *target = choices[std::size_t(place)].second; });
    }

    // Arguments, all required, in the order in which they are added.

    void addArgument(const char *name, const QString &help, const Take &take);
    /// The last one: one or more.
    void addArguments(const char *name, const QString &help, QStringList *target);

    /// A check once everything is taken, left out when the arguments alone have faults. @return its faults.
    void addCheck(const std::function<QStringList()> &check) { checks_.push_back(check); }
    /// Two options that do not go together; fault says so.
    void exclude(const char *one, const char *other, const QString &fault);

    void addOptionFile();
    /// Whether the command line or the option file sets it; for checks. False for what the command does not have.
    bool given(const char *name) const;

    /// Takes the parsed command line and, where it says nothing, the option file that it names. @return every fault.
    /// argumentsKnown: false where the parser may have taken other words for the arguments; nothing is said of them
    /// then.
    QStringList take(bool argumentsKnown);

private:
    struct Defined {
        CLI::Option *option;
        QString name;  // as faults name it
        bool repeats;
        std::function<QStringList(const QStringList &texts)> take;
        QString origin;  // "FILE, line 3: " for what comes from an option file
    };
    void define(CLI::Option *option, const QString &name, bool repeats,
                const std::function<QStringList(const QStringList &)> &take);
    void addOneOf(const char *name, const QStringList &choices, const QString &standard, const QString &help,
                  const std::function<void(int)> &take);
    CLI::Option *find(const QString &name) const;  // null: no such option
    QStringList takeOptionFile(const QString &fileName);
    void setFromFile(CLI::Option *option, const QString &value, const QString &origin);

    CLI::App *command_;
    QString optionFile_;
    std::vector<Defined> defined_;
    std::vector<std::function<QStringList()>> exclusions_;
    std::vector<std::function<QStringList()>> checks_;
};

/// Takes a whole number within bounds, decimal or 0x hexadecimal.
OptionSet::Take takeNumber(Bounds bounds, const std::function<void(int)> &put);

#endif  // DRAVO_HOST_COMMANDS_OPTION_SET_H
