#include "host/tags/variable.h"

#include "korvel_dravo_elements.h"

namespace {

constexpr int kLastStation = 247;
constexpr int kLastModbusAddress = 65535;
constexpr int kBitsInWord = 16;
constexpr int kLastType = dravo::kElementTypeCount - 1;

ValueKind kindOf(const dravo::ElementType &type) {
    switch (type.elementClass) {
        case dravo::WordClass:
            return ValueKind::Word;
        case dravo::DoubleWordClass:
        case dravo::WordPairClass:
            return ValueKind::DoubleWord;
        case dravo::BitClass:
        case dravo::BitInWordClass:
            break;
    }
    return ValueKind::Bit;
}

QString addressRule(const dravo::ElementType &type) {
    if (type.elementClass == dravo::BitInWordClass) {
        return QLatin1String("word.bit");
    }
    return QLatin1String(type.textBase == 8 ? "an octal number" : "a decimal number");
}

// A frame carries the low 16 bits of an address, so beyond the last one it would reach other memory.
bool beyondController(const ElementRange &range) {
    const qint64 end = qint64(range.address) + range.count;
    if (end - 1 > kLastModbusAddress) {
        return true;
    }
    int elemType = range.elemType;
    int last = int(end) - 1;
    return get_offset_address(elemType, last) + dravo::findElementType(elemType)->scale - 1 > kLastModbusAddress;
}

// @return false: the elements lie beyond the controller's memory.
bool resolveElements(const dravo::ElementType &type, Variable *variable) {
    if (type.elementClass == dravo::BitInWordClass) {
        variable->firstBit = variable->elementAddress % kBitsInWord;
    }
    // No type maps an element below its own number, so what this refuses is beyond for every type.
    if (qint64(variable->elementAddress) + variable->driverCount > kLastModbusAddress * qint64(kBitsInWord)) {
        return false;
    }
    RW_VAR record = readRecord(*variable);
    updateRwVar(&record);
    variable->range = {record.station, record.elemType, record.address, record.count};
    return !beyondController(variable->range);
}

}  // namespace

Variable::Variable()
    : elemType(0),
      station(1),
      count(1),
      kind(ValueKind::Bit),
      driverCount(0),
      elementAddress(-1),
      firstBit(0),
      range() {}

QList<VariableFault> resolve(Variable *variable) {
    QList<VariableFault> faults;
    const auto fault = [&faults](const char *field, const QString &reason) {
        const VariableFault found = {QLatin1String(field), reason};
        faults.append(found);
    };
    const dravo::ElementType *type = dravo::findElementType(variable->elemType);
    const bool countGood = variable->count >= 1 && variable->count <= kMaxValues;
    variable->elementAddress = StringAddressToInt(variable->elemType, variable->addressText);
    if (type != nullptr && countGood) {
        variable->kind = kindOf(*type);
        variable->driverCount = variable->kind == ValueKind::DoubleWord ? variable->count * 2 : variable->count;
    }
    if (type == nullptr) {
        fault("type", QString::fromLatin1("must be 0 to %1").arg(kLastType));
    } else if (variable->elementAddress < 0) {
        fault("address", QString::fromLatin1("'%1' is no address of type %2, which takes %3")
                             .arg(variable->addressText, QString::number(variable->elemType), addressRule(*type)));
    } else if (countGood && !resolveElements(*type, variable)) {
        fault("address", QString::fromLatin1("reaches beyond the controller's %1 %2")
                             .arg(kLastModbusAddress + 1)
                             .arg(QLatin1String(type->elementClass == dravo::BitClass ? "coils" : "registers")));
    }
    if (variable->station < 1 || variable->station > kLastStation) {
        fault("station", QString::fromLatin1("must be 1 to %1").arg(kLastStation));
    }
    if (!countGood) {
        fault("count", QString::fromLatin1("must be 1 to %1").arg(kMaxValues));
    }
    return faults;
}

RW_VAR readRecord(const Variable &variable) {
    RW_VAR record = RW_VAR();
    record.label = variable.label;
    record.addressText = variable.addressText;
    record.elemType = variable.elemType;
    record.address = variable.elementAddress;
    record.station = variable.station;
    record.count = variable.driverCount;
    return record;
}
