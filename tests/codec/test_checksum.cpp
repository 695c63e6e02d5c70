#include <gtest/gtest.h>

#include <climits>

#include "korvel_dravo_port.h"
#include "support/frame_text.h"

namespace {

struct ChecksumCase {
    const char *data;
    int sum, crc, lrc, exclusiveOr;
};

const ChecksumCase kChecksums[] = {{"", 0, 0xFFFF, 256, 0},
                                   {"5a", 0x5A, 0x7B3F, 0xA6, 0x5A},
                                   {"00", 0, 0x40BF, 256, 0},
                                   {"01ff", 0x100, 0x6040, 256, 0xFE},
                                   {"0102", 3, 0xE181, 0xFD, 3},
                                   {"010204", 7, 0xA320, 0xF9, 7},
                                   {"01030000000a", 14, 0xCDC5, 0xF2, 8},
                                   {"313233343536373839", 477, 0x4B37, 0x23, 0x31}};

TEST(Checksum, KnownBuffers) {
    for (const ChecksumCase &row : kChecksums) {
        QByteArray data = bytes(row.data);
        auto *first = reinterpret_cast<unsigned char *>(data.data());
        const auto length = static_cast<unsigned short>(data.size());
        EXPECT_EQ(CalSUM(first, length), row.sum) << row.data;
        EXPECT_EQ(CalCRC(first, length), row.crc) << row.data;
        EXPECT_EQ(CalLRC(first, length), row.lrc) << row.data;
        EXPECT_EQ(CalXOR(first, length), row.exclusiveOr) << row.data;
    }
}

TEST(Checksum, NoBytesAreNotRead) {
    EXPECT_EQ(CalSUM(nullptr, 0), 0);
    EXPECT_EQ(CalCRC(nullptr, 0), 0xFFFF);
    EXPECT_EQ(CalLRC(nullptr, 0), 256);
    EXPECT_EQ(CalXOR(nullptr, 0), 0);
}

TEST(Checksum, LongBuffersWrapAt65536) {
    QByteArray data(65535, '\xFF');
    auto *first = reinterpret_cast<unsigned char *>(data.data());
    EXPECT_EQ(CalSUM(first, 300), 10964);
    EXPECT_EQ(CalSUM(first, 65535), 65281);
    EXPECT_EQ(CalLRC(first, 65535), 255);
}

TEST(Checksum, HexDigits) {
    static const int kToCharacter[][2] = {{0, '0'}, {9, '9'}, {10, 'A'}, {15, 'F'}, {16, 0x47}, {-1, 0x2F}};
    for (const auto &row : kToCharacter) {
        EXPECT_EQ(DigitalToASCII(row[0]), row[1]);
    }
    static const int kToDigit[][2] = {
        {'0', 0},  {'9', 9},  {':', 10}, {0x3F, 15},   {0x40, 0}, {'A', 10}, {'F', 15},    {'/', 0},
        {'a', 42}, {'f', 47}, {-1, 0},   {INT_MIN, 0}, {0x2F, 0}, {'G', 16}, {0xFF, 0xC8}, {INT_MAX, INT_MAX - 0x37}};
    for (const auto &row : kToDigit) {
        EXPECT_EQ(ASCIIToDigital(row[0]), row[1]) << row[0];
    }
    EXPECT_NO_FATAL_FAILURE(DigitalToASCII(INT_MAX));
    EXPECT_EQ(DigitalToASCII(INT_MIN), INT_MIN + 0x30);
}

}  // namespace
