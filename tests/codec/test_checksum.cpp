#include <algorithm>
#include <climits>
#include <random>
#include <vector>

#include "support/record_text.h"

namespace {

TEST(Checksum, KnownBuffers) {
    const std::tuple<const char *, QByteArray, int, int, int, int> cases[] = {
        // sum, CRC, LRC, exclusive-or
        {"no bytes", bytes(""), 0, 0xFFFF, 256, 0},
        {"low byte of the sum 0", bytes("01ff"), 0x100, 0x6040, 256, 0xFE},
        {"check value of the CRC", bytes("313233343536373839"), 477, 0x4B37, 0x23, 0x31},
        {"sums wrap at 65536", QByteArray(65535, '\xFF'), 65281, 0x00FF, 255, 0xFF},
    };
    for (auto [name, data, sum, crc, lrc, exclusiveOr] : cases) {
        auto *first = reinterpret_cast<unsigned char *>(data.data());
        const auto length = static_cast<unsigned short>(data.size());
        EXPECT_EQ(CalSUM(first, length), sum) << name;
        EXPECT_EQ(CalCRC(first, length), crc) << name;
        EXPECT_EQ(CalLRC(first, length), lrc) << name;
        EXPECT_EQ(CalXOR(first, length), exclusiveOr) << name;
    }
}

TEST(Checksum, CrcIsThatOfTheDefinition) {
    const auto bitByBit = [](const std::vector<unsigned char> &data, size_t length) {
        unsigned crc = 0xFFFF;
        for (size_t bit = 0; bit < 8 * length; ++bit) {
            const unsigned in = data[bit / 8] >> bit % 8;
            crc = ((crc ^ in) & 1) != 0 ? crc >> 1 ^ 0xA001 : crc >> 1;
        }
        return static_cast<int>(crc);
    };
    std::independent_bits_engine<std::mt19937, 8, unsigned> random{1};
    for (int round = 0; round < 50; ++round) {
        for (unsigned short length = 0; length <= 300; ++length) {
            std::vector<unsigned char> data(length);
            std::generate(data.begin(), data.end(), random);
            ASSERT_EQ(CalCRC(data.data(), length), bitByBit(data, length)) << length;
        }
    }
}

TEST(Checksum, HexDigits) {
    const int digits[][2] = {{0, 48},           {9, 57}, {10, 65}, {15, 70}, {16, 71}, {-1, 47}, {INT_MIN, -2147483600},
                             {INT_MAX, INT_MAX}};
    for (const auto &[value, character] : digits) {
        EXPECT_EQ(DigitalToASCII(value), character) << value;
    }
    const int characters[][2] = {{47, 0},  {48, 0},  {57, 9}, {63, 15},   {64, 0},      {65, 10},
                                 {70, 15}, {97, 42}, {-1, 0}, {255, 200}, {INT_MIN, 0}, {INT_MAX, 2147483592}};
    for (const auto &[character, value] : characters) {
        EXPECT_EQ(ASCIIToDigital(character), value) << character;
    }
}

}  // namespace
