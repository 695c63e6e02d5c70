// Address texts as the host's users write them.
#include <QtCore/QStringList>

#include "codec/element_types.h"
#include "korvel_dravo_port.h"
#include "vars/address_text.h"

namespace {

// "word.bit". A part that is no number counts as 0; a bit above 15 carries into the word.
int bitInWordAddress(const QString &text) {
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 2) {
        return kNoAddress;
    }
    const qint64 address = qint64(parts.at(0).toInt()) * 16 + parts.at(1).toInt();
    return address < INT_MIN || address > INT_MAX ? kNoAddress : int(address);
}

}  // namespace

int StringAddressToInt(int type, QString text) {
    const dravo::ElementType *row = dravo::findElementType(type);
    if (row && row->elementClass == dravo::BitInWordClass) {
        return bitInWordAddress(text);
    }
    bool converted = false;
    const int address = text.toInt(&converted, row ? row->textBase : 10);
    return converted ? address : kNoAddress;
}

int PLCAddressChangeIntef(int elemType, QString addressText) {
    return StringAddressToInt(elemType, addressText);
}
