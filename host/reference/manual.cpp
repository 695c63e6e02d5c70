#include "host/reference/manual.h"

#include <QtCore/QCoreApplication>

#include "host/commands/element_types_help.h"
#include "host/commands/exit_status.h"
#include "host/commands/help_format.h"
#include "host/reference/parser_text.h"
#include "host/reference/roff.h"

namespace {

const QString kProgram = QStringLiteral("dravo-host");

QString pageName(const QString &command) {
    return kProgram + QLatin1Char('-') + command;
}

QString lowerFirst(QString text) {
    return text.replace(0, 1, text.left(1).toLower());
}

QString boldNames(const QStringList &names, const QString &between) {
    QStringList bold;
    for (const QString &name : names) {
        bold.append(roffBold(name));
    }
    return bold.join(between);
}

QString tagOf(const OptionText &option) {
    if (option.isArgument) {
        return roffItalic(option.names.first());
    }
    const QString names = boldNames(option.names, QStringLiteral(", "));
    const QString value =
        option.choices.isEmpty() ? roffItalic(option.value) : boldNames(option.choices, QStringLiteral("|"));
    return option.value.isEmpty() && option.choices.isEmpty() ? names : names + QLatin1Char(' ') + value;
}

/// Options or arguments of a command under a heading; nothing where it has none.
void addOptions(RoffPage *page, const QString &heading, const CLI::App &command, bool arguments) {
    bool first = true;
    for (const OptionText &option : optionTexts(command)) {
        if (option.isArgument == arguments) {
            if (first) {
                page->section(heading);
            }
            first = false;
            page->tag(tagOf(option));
            page->text(option.help);
        }
    }
}

void addHead(RoffPage *page, const QString &name, const QString &summary, const QString &usage) {
    page->section(QStringLiteral("NAME"));
    page->line(roffEscaped(name) + QStringLiteral(" \\- ") + roffEscaped(lowerFirst(summary)));
    page->section(QStringLiteral("SYNOPSIS"));
    page->line(usage);
}

void addExitStatus(RoffPage *page) {
    page->section(QStringLiteral("EXIT STATUS"));
    for (const ExitMeaning &meaning : kExitMeanings) {
        page->tag(roffBold(QString::number(meaning.status)));
        page->text(QString::fromLatin1(meaning.text));
    }
}

void addSeeAlso(RoffPage *page, const QStringList &pages) {
    page->section(QStringLiteral("SEE ALSO"));
    for (const QString &name : pages) {
        page->line(roffBold(name) + QStringLiteral("(1)") + QLatin1String(name == pages.last() ? "" : ","));
    }
}

RoffPage newPage(const QString &name, const QString &date) {
    return RoffPage(name, date, kProgram + QLatin1Char(' ') + QCoreApplication::applicationVersion());
}

QByteArray commandPage(const CommandTree::Branch &branch, const QString &date) {
    const Command &command = *branch.command;
    const QString name = pageName(QLatin1String(command.name));
    RoffPage page = newPage(name, date);
    const QString arguments = QString::fromStdString(argumentNames(*branch.parser));
    addHead(&page, name, QString::fromUtf8(command.summary),
            roffBold(kProgram + QLatin1Char(' ') + QLatin1String(command.name)) + roffItalic(arguments) +
                QStringLiteral(" [\\fIoptions\\fR]"));
    page.section(QStringLiteral("DESCRIPTION"));
    page.text(QString::fromUtf8(command.description));
    addOptions(&page, QStringLiteral("ARGUMENTS"), *branch.parser, true);
    addOptions(&page, QStringLiteral("OPTIONS"), *branch.parser, false);
    addExitStatus(&page);
    addSeeAlso(&page, {kProgram});
    return page.source();
}

QByteArray programPage(const CommandTree &tree, const QString &date) {
    RoffPage page = newPage(kProgram, date);
    addHead(&page, kProgram, QStringLiteral("Values of controllers on a Modbus RTU line"),
            roffBold(kProgram) + QStringLiteral(" \\fICOMMAND\\fR [\\fIoptions\\fR]"));
    page.section(QStringLiteral("DESCRIPTION"));
    page.text(QString::fromStdString(tree.program->get_description()));
    page.section(QStringLiteral("COMMANDS"));
    QStringList pages;
    for (const CommandTree::Branch &branch : tree.branches) {
        pages.append(pageName(QLatin1String(branch.command->name)));
        page.tag(roffBold(QLatin1String(branch.command->name)) +
                 roffItalic(QString::fromStdString(argumentNames(*branch.parser))));
        page.text(QString::fromUtf8(branch.command->summary) + QLatin1Char('.'));
    }
    page.tag(roffBold(QLatin1String(kHelpWord)) + QStringLiteral(" [\\fICOMMAND\\fR|") +
             roffBold(QLatin1String(kTypesTopic)) + QLatin1Char(']'));
    page.text(QStringLiteral("Help on the program, on a command or on the element types."));
    addOptions(&page, QStringLiteral("OPTIONS"), *tree.program, false);
    page.section(QStringLiteral("ELEMENT TYPES"));
    page.text(elementTypesNotes().join(QStringLiteral("\n\n")));
    page.line(QStringLiteral(".PP"));
    page.columns(elementTypesTable());
    addExitStatus(&page);
    page.section(QStringLiteral("FILES"));
    page.tag(roffItalic(QStringLiteral("/usr/share/dravo-host/sample_tags.csv")));
    page.text(
        QStringLiteral("The built-in sample tag list, to start from; below the prefix of an installation elsewhere."));
    addSeeAlso(&page, pages);
    return page.source();
}

}  // namespace

std::vector<ManualPage> manualPages(const CommandTree &tree, const QString &date) {
    std::vector<ManualPage> pages{{kProgram, programPage(tree, date)}};
    for (const CommandTree::Branch &branch : tree.branches) {
        pages.push_back({pageName(QLatin1String(branch.command->name)), commandPage(branch, date)});
    }
    return pages;
}
