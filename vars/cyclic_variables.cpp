#include "vars/cyclic_variables.h"

#include <algorithm>

#include "vars/address_text.h"
#include "vars/variable_record.h"

namespace {

bool comesFirst(const CyclicVariable &left, const CyclicVariable &right) {
    return left.place != right.place ? left.place < right.place : left.index < right.index;
}

// Fills work with the entry's numbers, normalised. False: the entry is to be left out.
bool normalise(const ReadVarEntry &entry, const ComInfo &comInfo, RW_VAR &work) {
    work.address = elementAddress(entry.elemType, entry.addressText);
    work.elemType = entry.elemType;
    work.count = entry.count;
    return work.address >= 0 && stationInForce(comInfo, entry.station) != 0 && entry.count <= kMaxElementCount &&
           updateRwVar(&work) == 0;
}

quint64 placeOf(int ownStation, const RW_VAR &work) {
    return quint64(ownStation) << 40 | quint64(work.elemType) << 32 | quint64(work.address);
}

}  // namespace

std::vector<CyclicVariable> sortedVariables(const QList<ReadVarEntry> &entries, const ComInfo &comInfo) {
    std::vector<CyclicVariable> variables(size_t(entries.size()));  // its whole room at once
    std::vector<CyclicVariable>::iterator next = variables.begin();
    RW_VAR work = RW_VAR();
    for (int i = 0; i < entries.size(); ++i) {
        const ReadVarEntry &entry = entries.at(i);  // only looked at: it may be longer than the fields known here
        if (normalise(entry, comInfo, work)) {
            const int ownStation = comInfo.useVarStation ? entry.station : 0;
            const CyclicVariable variable = {placeOf(ownStation, work), work.count, i};
            *next++ = variable;
        }
    }
    variables.erase(next, variables.end());
    std::sort(variables.begin(), variables.end(), comesFirst);
    return variables;
}
