#include "host/variable.h"

namespace {

constexpr int kBroadcast = 0;
constexpr int kLastStation = 247;
constexpr int kLastModbusAddress = 65535;

bool isElementType(int elemType) {
    return elemType >= 0 && elemType <= 21;
}

bool isBitInWord(int elemType) {
    return elemType == 15 || elemType == 16 || elemType == 17 || elemType == 20;
}

QString addressRule(int elemType) {
    if (isBitInWord(elemType)) {
        return QStringLiteral("word.bit");
    }
    return elemType <= 1 ? QStringLiteral("an octal number") : QStringLiteral("a decimal number");
}

// A frame carries the low 16 bits of an address, so beyond the last one it would reach other memory. No type maps an
// element below its own number, which makes the first comparison safe for any element.
bool beyondController(const Variable &variable) {
    const qint64 first = StringAddressToInt(variable.elemType, variable.addressText);
    if (first + driverCount(variable) > kLastModbusAddress * qint64(16)) {
        return true;
    }
    const ElementRange range = elementRange(variable);
    if (qint64(range.address) + range.count - 1 > kLastModbusAddress) {
        return true;
    }
    int elemType = range.elemType;
    int last = range.address + range.count - 1;
    const int registers = elemType == 13 ? 2 : 1;
    return get_offset_address(elemType, last) + registers - 1 > kLastModbusAddress;
}

}  // namespace

ValueKind valueKind(int elemType) {
    if (elemType <= 6 || isBitInWord(elemType)) {
        return ValueKind::Bit;
    }
    const bool doubleWord = elemType == 12 || elemType == 13 || elemType == 14 || elemType == 18 || elemType == 21;
    return doubleWord ? ValueKind::DoubleWord : ValueKind::Word;
}

int driverCount(const Variable &variable) {
    return valueKind(variable.elemType) == ValueKind::DoubleWord ? variable.count * 2 : variable.count;
}

QVector<VariableFault> variableFaults(const Variable &variable) {
    QVector<VariableFault> faults;
    const bool typeGood = isElementType(variable.elemType);
    const bool countGood = variable.count >= 1 && variable.count <= kMaxValues;
    if (!typeGood) {
        faults.append({QStringLiteral("type"), QStringLiteral("must be 0 to 21")});
    }
    if (typeGood && StringAddressToInt(variable.elemType, variable.addressText) < 0) {
        faults.append({QStringLiteral("address"), QStringLiteral("'%1' is no address of type %2, which takes %3")
                                                      .arg(variable.addressText)
                                                      .arg(variable.elemType)
                                                      .arg(addressRule(variable.elemType))});
    } else if (typeGood && countGood && beyondController(variable)) {
        faults.append({QStringLiteral("address"),
                       QStringLiteral("reaches beyond the controller's 65536 %1")
                           .arg(variable.elemType <= 6 ? QStringLiteral("coils") : QStringLiteral("registers"))});
    }
    if (variable.station <= kBroadcast || variable.station > kLastStation) {
        faults.append({QStringLiteral("station"), QStringLiteral("must be 1 to %1").arg(kLastStation)});
    }
    if (!countGood) {
        faults.append({QStringLiteral("count"), QStringLiteral("must be 1 to %1").arg(kMaxValues)});
    }
    return faults;
}

RW_VAR readRecord(const Variable &variable) {
    RW_VAR record{};
    record.label = variable.label;
    record.addressText = variable.addressText;
    record.elemType = variable.elemType;
    record.address = StringAddressToInt(variable.elemType, variable.addressText);
    record.station = variable.station;
    record.count = driverCount(variable);
    return record;
}

ElementRange elementRange(const Variable &variable) {
    RW_VAR record = readRecord(variable);
    updateRwVar(&record);
    return {record.station, record.elemType, record.address, record.count};
}

ElementRange elementsOfValue(const Variable &variable, int index) {
    ElementRange range = elementRange(variable);
    if (isBitInWord(variable.elemType)) {
        range.address = (StringAddressToInt(variable.elemType, variable.addressText) + index) / 16;
        range.count = 1;
    } else {
        range.count /= variable.count;
        range.address += index * range.count;
    }
    return range;
}
