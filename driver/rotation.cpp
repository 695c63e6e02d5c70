#include "driver/rotation.h"

// A list without spare room moves every pointer to move one: below so many entries that is still quicker than a record
// that is freed and allocated anew.
const int kMovedInPlace = 256;

void headToTail(QList<RW_VAR> &list) {
    if (list.size() <= kMovedInPlace) {
        list.move(0, list.size() - 1);
    } else {
        list.append(list.takeFirst());
    }
}
