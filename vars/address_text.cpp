#include "vars/address_text.h"

#include <QtCore/QStringList>

#include <climits>

#include "codec/element_types.h"
#include "korvel_dravo_port.h"

namespace {

const int kPlainDigits = 9;  // their value fits an int in any base up to 10

// A few digits and nothing else, as nearly all addresses are: the number that QString::toInt gives after a longer way.
bool isPlainNumber(const QChar *text, int length, int base, int &number) {
    if (length < 1 || length > kPlainDigits) {
        return false;
    }
    number = 0;
    for (const QChar *const end = text + length; text != end; ++text) {
        const int digit = text->unicode() - '0';
        if (digit < 0 || digit >= base) {
            return false;
        }
        number = number * base + digit;
    }
    return true;
}

int addressOfBit(int word, int bit) {
    const qint64 address = qint64(word) * 16 + bit;
    return address < INT_MIN || address > INT_MAX ? kNoAddress : int(address);
}

// "word.bit". A part that is no number counts as 0; a bit above 15 carries into the word.
int bitInWordAddress(const QString &text) {
    const int dot = text.indexOf(QLatin1Char('.'));
    int word = 0;
    int bit = 0;
    if (dot >= 0 && isPlainNumber(text.constData(), dot, 10, word) &&
        isPlainNumber(text.constData() + dot + 1, text.size() - dot - 1, 10, bit)) {
        return addressOfBit(word, bit);
    }
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 2) {
        return kNoAddress;
    }
    return addressOfBit(parts.at(0).toInt(), parts.at(1).toInt());
}

}  // namespace

int elementAddress(int type, const QString &text) {
    const dravo::ElementType *row = dravo::findElementType(type);
    if (row && row->elementClass == dravo::BitInWordClass) {
        return bitInWordAddress(text);
    }
    const int base = row ? row->textBase : 10;
    int address = 0;
    bool converted = isPlainNumber(text.constData(), text.size(), base, address);
    if (!converted) {
        address = text.toInt(&converted, base);
    }
    return converted ? address : kNoAddress;
}

int StringAddressToInt(int type, QString text) {
    return elementAddress(type, text);
}

int PLCAddressChangeIntef(int elemType, QString addressText) {
    return elementAddress(elemType, addressText);
}
