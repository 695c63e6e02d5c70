#include "host/reference/bash_completion.h"

#include "host/commands/element_types_help.h"
#include "host/reference/parser_text.h"

namespace {

const char kHead[] = R"(# Completion of dravo-host for bash, made of the program's own help.
_dravo_host() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command='' words='' i
    if [ "$word" = = ]; then
        word=''
    elif [ "$before" = = ]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
            @commands) command=${COMP_WORDS[i]} && break ;;
        esac
    done
    COMPREPLY=()
    case "$command $before" in
)";

const char kTail[] = R"(    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _dravo_host dravo-host
)";

QByteArray choose(const QByteArray &pattern, const QString &words) {
    return "        " + pattern + ") words='" + words.toUtf8() + "' ;;\n";
}

/// What is completed behind the options of a command: choices, file names, or nothing where only the user knows.
QByteArray valueRows(const CLI::App &command) {
    QByteArray rows;
    QStringList files;
    QStringList others;
    for (const OptionText &option : optionTexts(command)) {
        const QString pattern =
            QStringLiteral("'%1 %2'").arg(QString::fromStdString(command.get_name()), option.names.last());
        if (!option.choices.isEmpty()) {
            rows += choose(pattern.toUtf8(), option.choices.join(QLatin1Char(' ')));
        } else if (option.value == QLatin1String("FILE") || option.value == QLatin1String("DEVICE")) {
            files.append(pattern);
        } else if (!option.value.isEmpty() && !option.isArgument) {
            others.append(pattern);
        }
    }
    const QString either = QStringLiteral(" | ");
    rows += files.isEmpty() ? QByteArray() : "        " + files.join(either).toUtf8() + ") compopt -o default ;;\n";
    rows += others.isEmpty() ? QByteArray() : "        " + others.join(either).toUtf8() + ") ;;\n";
    return rows;
}

QString optionNames(const CLI::App &command) {
    QStringList names;
    for (const OptionText &option : optionTexts(command)) {
        if (!option.isArgument) {
            names.append(option.names.last());
        }
    }
    return names.join(QLatin1Char(' '));
}

}  // namespace

QByteArray bashCompletion(const CommandTree &tree) {
    QStringList commands;
    QByteArray values;
    QByteArray options;
    for (const CommandTree::Branch &branch : tree.branches) {
        const QString name = QLatin1String(branch.command->name);
        commands.append(name);
        values += valueRows(*branch.parser);
        options += choose('\'' + name.toUtf8() + " '*", optionNames(*branch.parser));
    }
    const QString names = commands.join(QLatin1Char(' '));
    const QString help = QLatin1String(kHelpWord);
    const QByteArray topics =
        choose("'" + help.toUtf8() + " '* | ' --help' | ' -h'", names + QLatin1Char(' ') + QLatin1String(kTypesTopic));
    const QByteArray first =
        choose("*", names + QLatin1Char(' ') + help + QLatin1Char(' ') + optionNames(*tree.program));
    commands.append(help);
    return QByteArray(kHead).replace("@commands", commands.join(QStringLiteral(" | ")).toUtf8()) + values + topics +
           options + first + kTail;
}
