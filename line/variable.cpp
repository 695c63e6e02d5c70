#include "line/variable.h"

#include "korvel_dravo_elements.h"

namespace dravo {

namespace {

const int kLastStation = 247;
const int kLastModbusAddress = 65535;
const int kBitsInWord = 16;
const int kLastType = kElementTypeCount - 1;

ValueKind kindOf(const ElementType &type) {
    switch (type.elementClass) {
        case WordClass:
            return WordValue;
        case DoubleWordClass:
        case WordPairClass:
            return DoubleWordValue;
        case BitClass:
        case BitInWordClass:
            break;
    }
    return BitValue;
}

QString addressRule(const ElementType &type) {
    if (type.elementClass == BitInWordClass) {
        return QLatin1String("word.bit");
    }
    return QLatin1String(type.textBase == 8 ? "an octal number" : "a decimal number");
}

// A frame carries the low 16 bits of an address, so beyond the last one it would reach other memory.
bool beyondController(const Elements &range) {
    const qint64 end = qint64(range.address) + range.count;
    if (end - 1 > kLastModbusAddress) {
        return true;
    }
    int elemType = range.elemType;
    int last = int(end) - 1;
    return get_offset_address(elemType, last) + findElementType(elemType)->scale - 1 > kLastModbusAddress;
}

// @return false: the elements lie beyond the controller's memory.
bool resolveElements(const ElementType &type, Variable *variable) {
    if (type.elementClass == BitInWordClass) {
        variable->firstBit = variable->elementAddress % kBitsInWord;
    }
    // No type maps an element below its own number, so what this refuses is beyond for every type.
    if (qint64(variable->elementAddress) + variable->driverCount > kLastModbusAddress * qint64(kBitsInWord)) {
        return false;
    }
    RW_VAR record = readRecord(*variable);
    updateRwVar(&record);
    const Elements elements = {record.station, record.elemType, record.address, record.count};
    variable->elements = elements;
    return !beyondController(variable->elements);
}

}  // namespace

Variable::Variable()
    : elemType(0), station(1), count(1), kind(BitValue), driverCount(0), elementAddress(-1), firstBit(0), elements() {}

QList<VariableFault> resolve(Variable *variable) {
    QList<VariableFault> faults;
    const auto fault = [&faults](const char *field, const QString &reason) {
        const VariableFault found = {QLatin1String(field), reason};
        faults.append(found);
    };
    const ElementType *type = findElementType(variable->elemType);
    const bool countGood = variable->count >= 1 && variable->count <= kMostValues;
    variable->elementAddress = StringAddressToInt(variable->elemType, variable->addressText);
    if (type && countGood) {
        variable->kind = kindOf(*type);
        variable->driverCount = variable->kind == DoubleWordValue ? variable->count * 2 : variable->count;
    }
    Variable first = *variable;  // where the count is no use, its first element still tells of the address
    first.driverCount = 1;
    if (!type) {
        fault("type", QString::fromLatin1("must be 0 to %1").arg(kLastType));
    } else if (variable->elementAddress < 0) {
        fault("address", QString::fromLatin1("'%1' is no address of type %2, which takes %3")
                             .arg(variable->addressText, QString::number(variable->elemType), addressRule(*type)));
    } else if (!resolveElements(*type, countGood ? variable : &first)) {
        fault("address", QString::fromLatin1("reaches beyond the controller's %1 %2 with a count of %3")
                             .arg(kLastModbusAddress + 1)
                             .arg(QLatin1String(type->elementClass == BitClass ? "coils" : "registers"))
                             .arg(countGood ? variable->count : 1));
    }
    if (variable->station < 1 || variable->station > kLastStation) {
        fault("station", QString::fromLatin1("must be 1 to %1").arg(kLastStation));
    }
    if (!countGood) {
        fault("count", QString::fromLatin1("must be 1 to %1").arg(kMostValues));
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

Elements elementsOf(const RW_VAR &record) {
    const Elements elements = {record.station, record.elemType, record.address, record.count};
    return elements;
}

// In a write a 32-bit value counts as one, in a read as two registers.
Elements writtenElements(const RW_VAR &record) {
    RW_VAR read = record;
    const ElementType *type = findElementType(record.elemType);
    if (type && (type->elementClass == WordPairClass || type->elementClass == DoubleWordClass)) {
        read.count *= 2;
    }
    updateRwVar(&read);
    return elementsOf(read);
}

}  // namespace dravo
