// The checksums of both frame forms, and the hexadecimal digits that the library offers its host.
#include <climits>

#include "korvel_dravo_port.h"

namespace {

unsigned int sumOf(const unsigned char *data, unsigned short length) {
    unsigned int sum = 0;
    for (unsigned int i = 0; i < length; ++i) {
        sum += data[i];
    }
    return sum;
}

}  // namespace

int CalSUM(unsigned char *data, unsigned short length) {
    return int(sumOf(data, length) & 0xFFFFu);
}

int CalCRC(unsigned char *data, unsigned short length) {
    unsigned int crc = 0xFFFF;
    for (unsigned int i = 0; i < length; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1u) ? (crc >> 1) ^ 0xA001u : crc >> 1;
        }
    }
    return int(crc);
}

int CalLRC(unsigned char *data, unsigned short length) {
    return int(~sumOf(data, length) & 0xFFu) + 1;
}

int CalXOR(unsigned char *data, unsigned short length) {
    unsigned int result = 0;
    for (unsigned int i = 0; i < length; ++i) {
        result ^= data[i];
    }
    return int(result);
}

int DigitalToASCII(int value) {
    return value <= 9 ? value + 0x30 : value > INT_MAX - 0x37 ? INT_MAX : value + 0x37;
}

int ASCIIToDigital(int character) {
    if (character < 0x30 || character == 0x40) {
        return 0;
    }
    return character < 0x40 ? character - 0x30 : character - 0x37;
}
