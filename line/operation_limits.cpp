#include "line/operation_limits.h"

#include "korvel_dravo_elements.h"

namespace dravo {

namespace {

const int kRegistersWritten = 123;
const int kRegistersRead = 125;

ElementClass classOf(const Variable &variable) {
    const ElementType *type = findElementType(variable.elemType);
    return type ? type->elementClass : WordClass;
}

}  // namespace

int operationFrameLimit(const Variable &variable, bool isWrite, int frameLimit) {
    switch (classOf(variable)) {
        case DoubleWordClass:
            return qMin(frameLimit, (isWrite ? kRegistersWritten : kRegistersRead) / 2);
        case WordPairClass:
            return isWrite ? qMin(frameLimit, kRegistersWritten / 2) : qMax(1, frameLimit / 2 * 2);
        case BitClass:
        case WordClass:
        case BitInWordClass:
            break;
    }
    return isWrite ? qMin(frameLimit, kRegistersWritten) : frameLimit;
}

int operationRequests(const Variable &variable, bool isWrite, int frameLimit) {
    const ElementClass elementClass = classOf(variable);
    if (isWrite && elementClass == BitInWordClass) {
        return variable.count;
    }
    const int limit = operationFrameLimit(variable, isWrite, frameLimit) * (elementClass == BitClass ? 8 : 1);
    return variable.elements.count / limit + 2;  // one more at the end, one at a bound of the address map
}

}  // namespace dravo
