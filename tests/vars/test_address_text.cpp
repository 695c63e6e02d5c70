#include <gtest/gtest.h>

#include "korvel_dravo_port.h"
#include "support/frame_text.h"

namespace {

const char kTexts[] = R"(
    15 > 12.3 > 195            ; 15 > 0.0 > 0         ; 16 > 12 > -1          ; 16 > 1.2.3 > -1; 16 >  > -1
    17 > 12. > 192             ; 17 > .5 > 5          ; 17 > . > 0            ; 17 > x.3 > 3   ; 20 > 2.20 > 52
    20 > -1.5 > -11            ; 15 > 1.x > 16        ; 15 > 99999999999.3 > 3; 0 > 17 > 15    ; 1 > 8 > -1
    0 >  > -1                  ; 1 > 777 > 511        ; 0 > 1.5 > -1          ; 0 > -7 > -7    ; 2 > 10 > 10
    7 > 0010 > 10              ; 7 > -5 > -5          ; 7 > 1.5 > -1          ; 7 >  > -1      ; 7 > 0x10 > -1
    7 > 2147483647 > 2147483647; 7 > 2147483648 > -1  ; 14 > 9 > 9            ; 18 > 8 > 8     ; 19 > 8 > 8
    21 > 5.1 > -1              ; 21 > 5 > 5           ; 22 > 10 > 10          ; 30 > 10 > 10   ; -1 > 10 > 10
    -2147483648 > 10 > 10      ; 2147483647 > 1.5 > -1; 15 > 134217727.15 > 2147483647 ; 15 > 134217727.16 > -1
    15 > 2147483647.15 > -1    ; 15 > -134217728.0 > -2147483648; 15 > -134217728.-1 > -1)";

TEST(AddressText, EveryRule) {
    for (const Row &row : rows(kTexts)) {
        const int type = row.number(0), address = row.number(2);
        const QString text = QString::fromLatin1(row[1]);
        EXPECT_EQ(StringAddressToInt(type, text), address) << row.text;
        EXPECT_EQ(PLCAddressChangeIntef(type, text), address) << row.text;
        EXPECT_EQ(text, QString::fromLatin1(row[1]));
    }
}

}  // namespace
