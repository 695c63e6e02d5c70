#include <gtest/gtest.h>

#include <climits>

#include "korvel_dravo_port.h"
#include "support/driver_scene.h"

namespace {

struct StartCase {
    int type, address, start;
};

// Both sides of every bound; types without one at the bounds of the others; codes that have no address of their own.
const StartCase kStarts[] = {
    {2, 0, 2000},      {2, 2047, 4047},   {2, 2048, 12000},  {3, 0, 4400},      {3, 255, 4655},    {3, 256, 30000},
    {4, 0, 6000},      {4, 1023, 7023},   {4, 1024, 31000},  {5, 0, 8000},      {5, 255, 8255},    {5, 256, 11000},
    {6, 0, 9200},      {6, 255, 9455},    {6, 256, 10000},   {7, 0, 0},         {7, 7999, 7999},   {7, 8000, 50000},
    {7, 23535, 65535}, {8, 0, 8000},      {8, 255, 8255},    {8, 256, 12000},   {9, 0, 9000},      {9, 255, 9255},
    {9, 256, 11000},   {12, 7999, 7999},  {12, 8000, 50000}, {13, 0, 9300},     {13, 255, 9810},   {13, 256, 10000},
    {14, 255, 8255},   {14, 256, 12000},  {0, 0, 1200},      {0, 2048, 3248},   {1, 0, 0},         {1, 8000, 8000},
    {10, 0, 9500},     {10, 256, 9756},   {11, 0, 8500},     {11, 256, 8756},   {18, 0, 8500},     {18, 256, 8756},
    {19, 0, 13000},    {19, 8000, 21000}, {21, 0, 13000},    {21, 8000, 21000}, {15, 100, 0},      {16, 100, 0},
    {17, 100, 0},      {20, 100, 0},      {22, 100, 0},      {-1, 100, 0},      {INT_MAX, 100, 0}, {INT_MIN, 100, 0}};

TEST(ElementTypes, StartAddressOnBothSidesOfEveryBound) {
    for (const StartCase &row : kStarts) {
        int type = row.type;
        int address = row.address;
        EXPECT_EQ(get_offset_address(type, address), row.start) << "type " << row.type << " address " << row.address;
        EXPECT_EQ(type, row.type);
        EXPECT_EQ(address, row.address);
    }
}

TEST(ElementTypes, StartAddressOfExtremeAddressesKeepsTheLow16Bits) {
    static const StartCase kExtremes[] = {{0, INT_MAX, 0x04AF},  {7, INT_MAX, 0xA40F},  {7, 23536, 0x0000},
                                          {13, INT_MAX, 0x250E}, {13, INT_MIN, 0x2454}, {2, INT_MIN, 0x07D0},
                                          {21, INT_MAX, 0x32C7}, {1, INT_MIN, 0x0000}};
    for (StartCase row : kExtremes) {
        EXPECT_EQ(get_offset_address(row.type, row.address) & 0xFFFF, row.start) << row.type << "@" << row.address;
    }
}

TEST(ElementTypes, RegisterTypeOfEveryCode) {
    static const int kRegisterTypes[22] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 7, 13, 8, 7, 8, 11, 11, 19, 19, 19};
    for (int type = 0; type < 22; ++type) {
        EXPECT_EQ(getPlcReg(type), kRegisterTypes[type]) << "type " << type;
    }
    for (const int type : {-1, 22, 255, 268, INT_MIN, INT_MAX}) {
        EXPECT_EQ(getPlcReg(type), type);
    }
}

const char kNormalised[] = R"(
    0@5+3 > 0@5+3     ; 6@255+9 > 6@255+9; 7@100+3 > 7@100+3 ; 11@1+1 > 11@1+1  ; 19@1+-7 > 19@1+-7
    12@10+3 > 7@10+4  ; 12@10+4 > 7@10+4 ; 14@10+1 > 8@10+2  ; 18@10+5 > 11@10+6; 21@10+1 > 19@10+2
    21@10+0 > 19@10+0 ; 14@10+-1 > 8@10+0; 12@10+-3 > 7@10+-2; 13@10+5 > 13@10+3; 13@10+4 > 13@10+2
    13@10+2 > 13@10+1 ; 13@10+1 > 13@10+1; 13@10+0 > 13@10+0 ; 16@37+20 > 8@2+2 ; 15@15+2 > 7@0+2
    15@16+16 > 7@1+1  ; 17@31+17 > 11@1+2; 20@31+18 > 19@1+3 ; 20@52+1 > 19@3+1 ; 15@-1+1 > 7@0+0
    15@-17+40 > 7@-1+3)";

TEST(ElementTypes, NormalisedVariables) {
    for (const Row &row : rows(kNormalised)) {
        RW_VAR var = record(row[0]);
        EXPECT_EQ(updateRwVar(&var), 0);
        EXPECT_EQ(listText({var}), row[1]) << row.text;
    }
}

TEST(ElementTypes, CodesOutsideTheTableAreRefusedUnchanged) {
    for (const int type : {22, -1, 255, 256 + 12, INT_MIN, INT_MAX}) {
        RW_VAR var = record(type, 37, 3);
        EXPECT_EQ(updateRwVar(&var), 1);
        EXPECT_EQ(var.elemType, type);
        EXPECT_EQ(var.address, 37);
        EXPECT_EQ(var.count, 3);
    }
}

}  // namespace
