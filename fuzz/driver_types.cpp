#include "fuzz/driver_types.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <climits>

namespace reference {

Class classOf(int type) {
    static const char letters[] = "BBBBBBBWWWWWPDPIIIPWIP";  // of types 0 to 21
    switch (type >= 0 && type <= 21 ? letters[type] : ' ') {
        case 'B':
            return Bit;
        case 'W':
            return Word;
        case 'D':
            return DoubleWord;
        case 'P':
            return Pair;
        case 'I':
            return BitInWord;
        default:
            return NoType;
    }
}

int wireType(int type) {
    if (type == 12 || type == 15) {
        return 7;
    }
    if (type == 14 || type == 16) {
        return 8;
    }
    if (type == 17 || type == 18) {
        return 11;
    }
    return type == 20 || type == 21 ? 19 : type;
}

qint64 startAddress(int type, qint64 address) {
    if (classOf(type) == BitInWord) {
        return 0;
    }
    switch (wireType(type)) {
        case 0:
            return address + 1200;
        case 1:
            return address;
        case 2:
            return address < 2048 ? 2000 + address : 12000 + (address - 2048);
        case 3:
            return address < 256 ? 4400 + address : 30000 + (address - 256);
        case 4:
            return address < 1024 ? 6000 + address : 31000 + (address - 1024);
        case 5:
            return address < 256 ? 8000 + address : 11000 + (address - 256);
        case 6:
            return address < 256 ? 9200 + address : 10000 + (address - 256);
        case 7:
            return address < 8000 ? address : 50000 + (address - 8000);
        case 8:
            return address < 256 ? 8000 + address : 12000 + (address - 256);
        case 9:
            return address < 256 ? 9000 + address : 11000 + (address - 256);
        case 10:
            return address + 9500;
        case 11:
            return address + 8500;
        case 13:
            return address < 256 ? 9300 + address * 2 : 10000 + (address - 256) * 2;
        case 19:
            return address + 13000;
        default:
            return 0;
    }
}

int bound(int type) {
    if (classOf(type) == BitInWord) {
        return INT_MIN;
    }
    return wireType(type) == 7 ? 8000 : listFunctionBound(wireType(type));
}

int listFunctionBound(int type) {
    switch (type) {
        case 2:
            return 2048;
        case 4:
            return 1024;
        case 3:
        case 5:
        case 6:
        case 8:
        case 9:
        case 13:
            return 256;
        default:
            return INT_MIN;
    }
}

int elementAddress(int type, const QString &text) {
    if (classOf(type) == BitInWord) {
        const QStringList parts = text.split(QLatin1Char('.'));
        const qint64 address = parts.size() == 2 ? parts[0].toInt() * 16LL + parts[1].toInt() : -1;
        return address < INT_MIN || address > INT_MAX ? -1 : int(address);
    }
    bool converted = false;
    const int address = text.toInt(&converted, type == 0 || type == 1 ? 8 : 10);
    return converted ? address : -1;
}

bool normalise(RW_VAR &var) {
    const qint64 count = var.count;
    switch (classOf(var.elemType)) {
        case Bit:
        case Word:
            return true;
        case Pair:
            var.count = narrowed((count + 1) / 2 * 2);
            break;
        case DoubleWord:
            var.count = narrowed((count + 1) / 2);
            break;
        case BitInWord:
            var.count = narrowed((var.address % 16 + count + 15) / 16);
            var.address /= 16;
            break;
        case NoType:
            return false;
    }
    var.elemType = wireType(var.elemType);
    return true;
}

int narrowed(qint64 value) {
    return int(std::clamp<qint64>(value, INT_MIN, INT_MAX));
}

}  // namespace reference
