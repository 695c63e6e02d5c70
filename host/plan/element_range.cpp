#include "host/plan/element_range.h"

#include "korvel_dravo_elements.h"

QString elementRangeText(const dravo::Elements &elements) {
    const dravo::ElementType *type = dravo::findElementType(elements.elemType);
    const int base = type != nullptr ? type->textBase : 10;
    const QString last = elements.count > 1
                             ? QLatin1Char('-') + QString::number(elements.address + elements.count - 1, base)
                             : QString();
    return QString::number(elements.elemType) + QLatin1Char(' ') + QString::number(elements.address, base) + last;
}
