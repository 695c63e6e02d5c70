#include <gtest/gtest.h>

#include "korvel_dravo_port.h"
#include "support/frame_text.h"

namespace {

struct ChecksumCase {
    QByteArray data;
    int sum, crc, lrc, exclusiveOr;
};

TEST(Checksum, KnownBuffers) {
    const ChecksumCase cases[] = {{bytes(""), 0, 0xFFFF, 256, 0},
                                  {bytes("00"), 0, 0x40BF, 256, 0},
                                  {bytes("01ff"), 0x100, 0x6040, 256, 0xFE},
                                  {bytes("010204"), 7, 0xA320, 0xF9, 7},
                                  {bytes("01030000000a"), 14, 0xCDC5, 0xF2, 8},
                                  {bytes("313233343536373839"), 477, 0x4B37, 0x23, 0x31},
                                  {QByteArray(65535, '\xFF'), 65281, 0x00FF, 255, 0xFF}};  // sums wrap at 65536
    for (const ChecksumCase &row : cases) {
        QByteArray data = row.data;
        auto *first = reinterpret_cast<unsigned char *>(data.data());
        const auto length = static_cast<unsigned short>(data.size());
        EXPECT_EQ(CalSUM(first, length), row.sum);
        EXPECT_EQ(CalCRC(first, length), row.crc);
        EXPECT_EQ(CalLRC(first, length), row.lrc);
        EXPECT_EQ(CalXOR(first, length), row.exclusiveOr);
    }
}

TEST(Checksum, HexDigits) {
    for (const Row &row : rows("0 > 48; 9 > 57; 10 > 65; 15 > 70; 16 > 71; -1 > 47; -2147483648 > -2147483600")) {
        EXPECT_EQ(DigitalToASCII(row.number(0)), row.number(1)) << row.text;
    }
    for (const Row &row : rows("48 > 0; 57 > 9; 58 > 10; 63 > 15; 64 > 0; 65 > 10; 70 > 15; 71 > 16; 97 > 42; 47 > 0;"
                               "-1 > 0; -2147483648 > 0; 255 > 200; 2147483647 > 2147483592")) {
        EXPECT_EQ(ASCIIToDigital(row.number(0)), row.number(1)) << row.text;
    }
    DigitalToASCII(2147483647);  // no digit: only the sanitizers look at it
}

}  // namespace
