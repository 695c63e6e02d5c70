#include "vars/request_merge.h"

#include "codec/element_types.h"

namespace {

void appendRead(QList<RW_VAR> &list, RW_VAR &var, int bound) {
    if (crossesBound(var, bound)) {
        list.append(cutAtBound(var, bound));
    }
    list.append(var);
}

void reviseLast(QList<RW_VAR> &list, RW_VAR &var, int bound) {
    if (!crossesBound(var, bound)) {
        list.last().count = var.count;
        return;
    }
    list.last().count = cutAtBound(var, bound).count;
    list.append(var);
}

}  // namespace

RW_VAR cutAtBound(RW_VAR &var, int bound) {
    RW_VAR first = var;
    first.count = bound - var.address;
    var.address = bound;
    var.count -= first.count;
    return first;
}

void function_rw_var_add_read(QList<RW_VAR> &list, RW_VAR &var) {
    appendRead(list, var, listFunctionBound(var.elemType));
}

void function_rw_var_revise(QList<RW_VAR> &list, RW_VAR &var) {
    reviseLast(list, var, listFunctionBound(var.elemType));
}

void appendDriverRead(QList<RW_VAR> &list, const RW_VAR &var) {
    RW_VAR rest = var;
    appendRead(list, rest, dravo::addressMapBound(var.elemType));
}

void reviseDriverRead(QList<RW_VAR> &list, const RW_VAR &var) {
    RW_VAR rest = var;
    reviseLast(list, rest, dravo::addressMapBound(var.elemType));
}
