#include "vars/write_cut.h"

#include "support/record_text.h"

namespace {

TEST(WriteCut, ListFunctionCutsDataWithTheRequest) {
    const char kCases[] = R"(
        write                             | given                         | entries
        words                             | 9@254+4=0001020304050607      | 9@254+2=00010203 9@256+2=04050607
        words, data end below the bound   | 8@254+3=3412                  | 8@254+2=3412 8@256+1
        double words                      | 13@255+2=0102030405060708     | 13@255+1=01020304 13@256+1=05060708
        bits, whole bytes                 | 3@248+16=a53c                 | 3@248+8=a5 3@256+8=3c
        bits that move inside their bytes | 3@253+16=a53c                 | 3@253+3=a5 3@256+13=9407
        bits, data short                  | 3@253+16=a5                   | 3@253+3=a5 3@256+13=1400
        a type not cut here               | 7@7999+2=34127856ff           | 7@7999+2=34127856ff)";
    expectColumn(kCases, "entries", [](const TableRow &row) {
        QList<RW_VAR> list;
        RW_VAR work = record(row["given"]);
        function_rw_var_add_write(list, work);
        EXPECT_EQ(listText({work}), listText({list.last()})) << "the record ends as the second part";
        return listText(list);
    });
}

TEST(WriteCut, DriverCutsAtEveryBoundOfTheAddressMap) {
    const char kCases[] = R"(
        write                           | given                             | entries
        words across the gap            | 7@7999+2=34127856                 | 7@7999+1=3412 7@8000+1=7856
        one bit cut off its neighbours  | 2@2047+2=ffff                     | 2@2047+1=01 2@2048+1=01
        one bit that is off             | 6@255+3=06                        | 6@255+1=00 6@256+2=03
        several bits keep theirs        | 3@253+16=a53c                     | 3@253+3=a5 3@256+13=9407
        pair up to the bound            | 12@7998+1=78563412                | 12@7998+1=78563412
        pair across it, high half first | 12@7999+1=78563412                | 7@7999+1=3412 7@8000+1=7856
        pairs on both sides             | 14@254+2=0100000002000000         | 14@254+1=01000000 14@256+1=02000000
        pairs, one of them across       | 14@253+3=010000007856341205000000 | 14@253+1=01000000 8@255+1=3412 8@256+1=7856 14@257+1=05000000
        pairs on a type without a bound | 21@7999+1=78563412                | 21@7999+1=78563412)";
    expectColumn(kCases, "entries", [](const TableRow &row) {
        QList<RW_VAR> list;
        appendDriverWrite(list, record(row["given"]));
        return listText(list);
    });
}

}  // namespace
