#include "host/tags/variable_faults.h"

#include <QtCore/QStringList>

#include "host/tags/quoted_text.h"
#include "korvel_dravo_elements.h"

namespace {

constexpr int kLastBit = 15;

/// Empty: the text is a word and one of its bits. The driver takes a part that is no number for 0, and a bit number
/// that a word does not have for a bit of another word.
QString bitInWordFault(const dravo::Variable &variable) {
    const QStringList parts = variable.addressText.split(QLatin1Char('.'));
    bool wordGood = false;
    bool bitGood = false;
    const int word = parts.value(0).toInt(&wordGood);
    const int bit = parts.value(1).toInt(&bitGood);
    if (!wordGood || !bitGood || word < 0 || bit < 0) {
        return QStringLiteral("is no word.bit such as 12.3");
    }
    if (bit <= kLastBit) {
        return QString();
    }
    const int bitsInWord = kLastBit + 1;
    return QStringLiteral("has a bit number that is not 0 to %1; bit %2 from word %3 on is %4.%5")
        .arg(QString::number(kLastBit), QString::number(bit), QString::number(word),
             QString::number(variable.elementAddress / bitsInWord),
             QString::number(variable.elementAddress % bitsInWord));
}

QString valueOf(const dravo::Variable &variable, const QString &field) {
    const int number = field == QLatin1String("type")      ? variable.elemType
                       : field == QLatin1String("station") ? variable.station
                                                           : variable.count;
    return field == QLatin1String("address") ? variable.addressText : QString::number(number);
}

}  // namespace

QList<dravo::VariableFault> resolveWritten(dravo::Variable *variable) {
    QList<dravo::VariableFault> faults = dravo::resolve(variable);
    bool addressGood = true;
    for (dravo::VariableFault &fault : faults) {
        addressGood = addressGood && fault.field != QLatin1String("address");
        fault.reason = valueAndReason(valueOf(*variable, fault.field), fault.reason);
    }
    const dravo::ElementType *type = dravo::findElementType(variable->elemType);
    if (addressGood && type != nullptr && type->elementClass == dravo::BitInWordClass) {
        const QString reason = bitInWordFault(*variable);
        if (!reason.isEmpty()) {
            faults.append({QStringLiteral("address"), valueAndReason(variable->addressText, reason)});
        }
    }
    return faults;
}

std::optional<dravo::ValueKind> kindOfType(int elemType) {
    dravo::Variable one;
    one.elemType = elemType;
    one.addressText = QStringLiteral("0");
    dravo::resolve(&one);  // the kind follows from type and count, whatever the address is
    return dravo::findElementType(elemType) != nullptr ? std::optional<dravo::ValueKind>(one.kind) : std::nullopt;
}
