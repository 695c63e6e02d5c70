#include "fuzz/driver_choices.h"

#include <algorithm>
#include <climits>

#include "fuzz/driver_types.h"
#include "korvel_dravo_port.h"

int Choices::number() {
    // clang-format off
    static const int edges[] = {
        INT_MIN, INT_MIN + 1, -65536, -300, -17, -2, -1, 0, 1, 2, 7, 8, 9, 11, 12, 15, 16, 17, 255, 256, 257,
        1023, 1024, 2047, 2048, 7999, 8000, 23536, 65535, 65536, INT_MAX - 1, INT_MAX,
        kMaxElementCount - 1, kMaxElementCount, kMaxElementCount + 1};
    // clang-format on
    switch (below(4)) {
        case 0:
            return edges[below(sizeof edges / sizeof edges[0])];
        case 1:
            return smallNumber();
        case 2:
            return static_cast<int>(static_cast<unsigned>(smallNumber()) << 16 | static_cast<unsigned>(smallNumber()));
        default:
            return below(40);
    }
}

QByteArray Choices::bytes(int most) {
    QByteArray chosen(std::min<int>(below(most + 1), static_cast<int>(end_ - next_)), '\0');
    for (char &byteChosen : chosen) {
        byteChosen = static_cast<char>(byte());
    }
    return chosen;
}

QString Choices::addressText(int elemType) {
    static const int bounds[] = {256, 1024, 2048, 8000, 65536, INT_MAX};
    const int manner = below(16);
    if (manner == 0) {
        return QString::fromLatin1(bytes(12));
    }
    if (manner == 1) {
        return QString::number(number());
    }
    const bool bit = reference::classOf(elemType) == reference::BitInWord;
    const int address = manner < 8 ? bounds[below(6)] / (bit && manner == 2 ? 16 : 1) - below(24) : smallNumber();
    const QString word = QString::number(address, elemType == 0 || elemType == 1 ? 8 : 10);
    return bit ? word + QLatin1Char('.') + QString::number(below(18)) : word;
}
