#include "host/commands/element_types_help.h"

#include "host/commands/help_format.h"
#include "korvel_dravo_elements.h"

namespace {

using dravo::ElementType;

constexpr int kLastModbusAddress = 65535;
constexpr int kLastBitOfWord = 15;

const char *className(dravo::ElementClass elementClass) {
    switch (elementClass) {
        case dravo::BitClass:
            return "bit";
        case dravo::WordClass:
            return "word";
        case dravo::DoubleWordClass:
            return "32-bit";
        case dravo::WordPairClass:
            return "32-bit pair";
        case dravo::BitInWordClass:
            break;
    }
    return "bit in word";
}

/// The last element of the upper segment whose registers or coils all exist.
int lastElement(const ElementType &type) {
    const ElementType &carrier = dravo::kElementTypes[type.registerType];
    const int last = (kLastModbusAddress + 1) / carrier.scale - 1 - carrier.upperOffset;
    return type.elementClass == dravo::WordPairClass ? last - 1 : last;
}

QString addressText(const ElementType &type, int address, int bit) {
    const QString text = QString::number(address, type.textBase);
    return type.elementClass == dravo::BitInWordClass ? QStringLiteral("%1.%2").arg(text).arg(bit) : text;
}

const char *addressForm(const ElementType &type) {
    return type.elementClass == dravo::BitInWordClass ? "word.bit" : type.textBase == 8 ? "octal" : "decimal";
}

/// "coil a + 1200", "registers 2 * (a + 4650) and the next".
QString placeOnLine(const ElementType &type, int offset) {
    const QString sum = offset == 0 ? QStringLiteral("a") : QStringLiteral("a + %1").arg(offset);
    if (type.scale == 1) {
        return QLatin1String(type.elementClass == dravo::BitClass ? "coil " : "register ") + sum;
    }
    return QStringLiteral("registers %1 * (%2) and the next").arg(type.scale).arg(sum);
}

QString row(const QString &code, const QString &name, const QString &form, const QString &from, const QString &to,
            const QString &place) {
    return QStringLiteral("%1  %2%3%4%5").arg(code, 4).arg(name, -13).arg(form, -10).arg(from, -6).arg(to, -10) + place;
}

QStringList rowsOf(int code) {
    const ElementType &type = dravo::kElementTypes[code];
    const QString number = QString::number(code);
    const QString name = QLatin1String(className(type.elementClass));
    const QString form = QLatin1String(addressForm(type));
    const QString last = addressText(type, lastElement(type), kLastBitOfWord);
    const QString first = addressText(type, 0, 0);
    if (type.registerType != code) {
        const bool pair = type.elementClass == dravo::WordPairClass;
        return {
            row(number, name, form, first, last,
                QLatin1String(pair ? "two words of type " : "a word of type ") + QString::number(type.registerType))};
    }
    if (type.bound == dravo::kNoBound) {
        return {row(number, name, form, first, last, placeOnLine(type, type.upperOffset))};
    }
    return {row(number, name, form, first, addressText(type, type.bound - 1, 0), placeOnLine(type, type.lowerOffset)),
            row(QString(), QString(), QString(), addressText(type, type.bound, 0), last,
                placeOnLine(type, type.upperOffset))};
}

}  // namespace

QStringList elementTypesNotes() {
    return {QStringLiteral("TYPE and the column type of a tag list are a number of this table. Address texts are "
                           "octal, decimal or a word with one of its bits; from and to are the first and the last."),
            QStringLiteral("a is the element address. Coils and holding registers are numbered from 0, as they stand "
                           "in a frame.")};
}

QStringList elementTypesTable() {
    QStringList table{row(QStringLiteral("type"), QStringLiteral("element"), QStringLiteral("address"),
                          QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("on the line"))};
    for (int code = 0; code < dravo::kElementTypeCount; ++code) {
        table += rowsOf(code);
    }
    return table;
}

QString elementTypesHelp() {
    const std::string notes = brokenLines(elementTypesNotes().join(QStringLiteral("\n\n")).toStdString(), 0);
    return QString::fromStdString(notes) + QLatin1Char('\n') + elementTypesTable().join(QLatin1Char('\n')) +
           QLatin1Char('\n');
}
