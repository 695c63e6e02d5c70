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

// 1: an odd number of bits is set.
unsigned int parityOf(unsigned int bits) {
    bits ^= bits >> 16;
    bits ^= bits >> 8;
    bits ^= bits >> 4;
    return 0x6996u >> (bits & 0xFu) & 1u;
}

// The eight steps of one byte at once. The generator is (x + 1)(x^15 + x + 1): the second factor moves the byte to two
// places, the first adds the generator where the number of its bits is odd.
unsigned int crcWithByte(unsigned int crc, unsigned int byte) {
    const unsigned int bits = (crc ^ byte) & 0xFFu;
    return crc >> 8 ^ bits << 6 ^ bits << 7 ^ (parityOf(bits) != 0 ? 0xC001u : 0u);
}

// Four bytes as the wire carries them: the lowest bit first, which is the highest power.
unsigned int wordAt(const unsigned char *data) {
    return data[0] | static_cast<unsigned int>(data[1]) << 8 | static_cast<unsigned int>(data[2]) << 16 |
           static_cast<unsigned int>(data[3]) << 24;
}

// Four bytes that leave the same remainder, after the initial value, as the first 4 * words bytes; words is not 0.
// Of x^15 + x + 1 alone, x^32 leaves only x^4 + x^2, so that a word is passed in a few shifts; of x + 1 the number of
// bits decides, counted meanwhile.
unsigned int sameRemainder(const unsigned char *data, unsigned int words) {
    unsigned int rest = wordAt(data) ^ 0xFFFFu;
    unsigned int allBits = rest;
    for (unsigned int i = 1; i < words; ++i) {
        data += 4;
        const unsigned int word = wordAt(data);
        const unsigned int carried = rest ^ rest << 28 ^ rest << 30;
        rest = word ^ carried >> 4 ^ carried >> 2;
        allBits ^= word;
    }
    return parityOf(rest ^ allBits) != 0 ? rest ^ 0xC0010000u : rest;  // x^15 + x + 1 itself changes the number alone
}

}  // namespace

int CalSUM(unsigned char *data, unsigned short length) {
    return int(sumOf(data, length) & 0xFFFFu);
}

int CalCRC(unsigned char *data, unsigned short length) {
    unsigned int crc = 0xFFFF;
    unsigned int next = 0;
    if (length >= 8) {
        const unsigned int rest = sameRemainder(data, length / 4u);
        crc = 0;
        for (unsigned int shift = 0; shift < 32; shift += 8) {
            crc = crcWithByte(crc, rest >> shift);
        }
        next = length / 4u * 4u;
    }
    for (; next < length; ++next) {
        crc = crcWithByte(crc, data[next]);
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
