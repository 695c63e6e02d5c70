#include "host/reference/parser_text.h"

namespace {

QStringList namesOf(const CLI::Option &option) {
    QStringList names;
    for (const std::string &name : option.get_snames()) {
        names.append(QLatin1String("-") + QString::fromStdString(name));
    }
    for (const std::string &name : option.get_lnames()) {
        names.append(QLatin1String("--") + QString::fromStdString(name));
    }
    return names;
}

OptionText textOf(const CLI::Option &option) {
    OptionText text{option.get_positional(), namesOf(option), QString::fromStdString(option.get_type_name()), {}, {}};
    text.help = QString::fromStdString(option.get_description());
    if (text.isArgument) {
        text.names = QStringList{QString::fromStdString(option.get_name(true))};
    }
    if (text.value.contains(QLatin1Char('|'))) {
        text.choices = text.value.split(QLatin1Char('|'));
        text.value.clear();
    }
    return text;
}

}  // namespace

std::vector<OptionText> optionTexts(const CLI::App &command) {
    std::vector<OptionText> texts;
    for (const CLI::Option *option : command.get_options()) {
        texts.push_back(textOf(*option));
    }
    return texts;
}
