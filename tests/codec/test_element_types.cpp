#include "support/driver_scene.h"

namespace {

// Both sides of every bound; types without one at the bounds of the others; those without an address of their own.
const char kStarts[] = R"(
    2@0 > 2000   ; 2@2047 > 4047; 2@2048 > 12000; 3@255 > 4655  ; 3@256 > 30000; 4@1023 > 7023; 4@1024 > 31000
    5@255 > 8255 ; 5@256 > 11000; 6@255 > 9455  ; 6@256 > 10000 ; 7@0 > 0      ; 7@7999 > 7999; 7@8000 > 50000
    8@255 > 8255 ; 8@256 > 12000; 9@255 > 9255  ; 9@256 > 11000 ; 13@255 > 9810; 13@256 > 10000
    12@7999 > 7999; 12@8000 > 50000; 14@255 > 8255 ; 14@256 > 12000; 0@2048 > 3248; 1@8000 > 8000
    10@256 > 9756; 11@256 > 8756; 18@256 > 8756 ; 19@8000 > 21000; 21@8000 > 21000
    15@100 > 0   ; 16@100 > 0   ; 17@100 > 0    ; 20@100 > 0    ; 7@23535 > 65535; 7@23536 > 0
    0@2147483647 > 1199; 7@2147483647 > 41999; 13@2147483647 > 9486; 13@-2147483648 > 9300; 2@-2147483648 > 2000)";

TEST(ElementTypes, StartAddress) {
    for (const Row &row : rows(kStarts)) {
        const RW_VAR var = record(row.fields[0] + "+0");
        int type = var.elemType;
        int address = var.address;
        EXPECT_EQ(get_offset_address(type, address) & 0xFFFF, row.number(1)) << row.text;
        EXPECT_EQ(type, var.elemType);
        EXPECT_EQ(address, var.address);
    }
}

const char kNormalised[] = R"(
    0@5+3 > 0@5+3     ; 6@255+9 > 6@255+9; 7@100+3 > 7@100+3 ; 11@1+1 > 11@1+1  ; 19@1+-7 > 19@1+-7
    12@10+3 > 7@10+4  ; 12@10+4 > 7@10+4 ; 14@10+1 > 8@10+2  ; 18@10+5 > 11@10+6; 21@10+1 > 19@10+2
    21@10+0 > 19@10+0 ; 14@10+-1 > 8@10+0; 12@10+-3 > 7@10+-2; 13@10+5 > 13@10+3; 13@10+4 > 13@10+2
    13@10+0 > 13@10+0 ; 16@37+20 > 8@2+2 ; 15@15+2 > 7@0+2   ; 15@16+16 > 7@1+1 ; 17@31+17 > 11@1+2
    20@52+1 > 19@3+1  ; 15@-1+1 > 7@0+0  ; 15@-17+40 > 7@-1+3)";

TEST(ElementTypes, RegisterTypeAndNormalisedVariable) {
    static const int kRegisterTypes[22] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 7, 13, 8, 7, 8, 11, 11, 19, 19, 19};
    for (int type = 0; type < 22; ++type) {
        EXPECT_EQ(getPlcReg(type), kRegisterTypes[type]) << "type " << type;
    }
    for (const Row &row : rows(kNormalised)) {
        RW_VAR var = record(row[0]);
        EXPECT_EQ(updateRwVar(&var), 0);
        EXPECT_EQ(listText({var}), row[1]) << row.text;
    }
}

TEST(ElementTypes, CodesOutsideTheTableStayAsTheyAre) {
    for (const char *text : {"22@37+3", "-1@37+3", "255@37+3", "268@37+3", "-2147483648@37+3", "2147483647@37+3"}) {
        RW_VAR var = record(text);
        EXPECT_EQ(getPlcReg(var.elemType), var.elemType);
        EXPECT_EQ(get_offset_address(var.elemType, var.address), 0) << text;
        EXPECT_EQ(updateRwVar(&var), 1);
        EXPECT_EQ(listText({var}), text);
    }
}

}  // namespace
