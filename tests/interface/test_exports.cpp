// Every export is found by its plain name, or by its mangled name where it has C++ linkage, and what has no name to the
// outside is not found.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "korvel_dravo_port.h"
#include "loaded_library.h"

namespace {

const char *const kExports[] = {
    "SetComInfo",
    "FlashLocalRegister",
    "RegistCallBackFuncIntf",
    "ComCommunication",
    "DataCom",
    "EnableEthernet",
    "EnCommStation",
    "PLCAddressChangeIntef",
    "AddListReadVar",
    "ReCreatReadVarList",
    "AddListOnceReadVar",
    "AddListWriteVar",
    "GetRegisterData",
    "SetRegisterData",
    "QueryFinishFlag",
    "PLC_driver",
    "LB",
    "LW",
    "RWI",
    "_Z18StringAddressToInti7QString",
    "_Z9getPlcRegi",
    "_Z11updateRwVarP6RW_VAR",
    "_Z18get_offset_addressRiS_",
    "_Z12WhetherGroupiiP6RW_VARP5QListIS_E",
    "_Z24function_rw_var_add_readR5QListI6RW_VARERS0_",
    "_Z22function_rw_var_reviseR5QListI6RW_VARERS0_",
    "_Z25function_rw_var_add_writeR5QListI6RW_VARERS0_",
    "_Z6CalSUMPht",
    "_Z6CalCRCPht",
    "_Z6CalLRCPht",
    "_Z6CalXORPht",
    "_Z14DigitalToASCIIi",
    "_Z14ASCIIToDigitali",
};

const char *const kNotExported[] = {"ExtendFindSameVar", "_Z17ExtendFindSameVarR19ControlInformationM",
                                    "_ZN22Communication_ProtocolC1Ev", "_ZN5QListI6RW_VAR6appendERKS0_", "malloc"};

TEST(Exports, EveryNameIsFound) {
    const LoadedLibrary library;
    for (const char *name : kExports) {
        EXPECT_NE(library.symbol(name), nullptr) << name;
    }
}

TEST(Exports, NothingElseIsFound) {
    const LoadedLibrary library;
    for (const char *name : kNotExported) {
        EXPECT_EQ(library.symbol(name), nullptr) << name;
    }
}

// Argument passing: integers, strings by value and by reference, pointers, 16-bit lengths.
TEST(Exports, FunctionsTakeTheirArguments) {
    const LoadedLibrary library;
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };

    const auto toInt = library.entry<decltype(StringAddressToInt)>("_Z18StringAddressToInti7QString");
    EXPECT_EQ(toInt(15, text("12.3")), 195);
    const auto toAddress = library.entry<decltype(PLCAddressChangeIntef)>("PLCAddressChangeIntef");
    EXPECT_EQ(toAddress(0, text("17")), 15);

    unsigned char bytes[] = {0x01, 0x03, 0x00, 0x64, 0x00, 0x02};
    EXPECT_EQ(library.entry<decltype(CalCRC)>("_Z6CalCRCPht")(bytes, 6), 0xd485);
    EXPECT_EQ(library.entry<decltype(CalSUM)>("_Z6CalSUMPht")(bytes, 6), 0x6a);
    EXPECT_EQ(library.entry<decltype(CalLRC)>("_Z6CalLRCPht")(bytes, 6), 0x96);
    EXPECT_EQ(library.entry<decltype(CalXOR)>("_Z6CalXORPht")(bytes, 6), 0x64);
    EXPECT_EQ(library.entry<decltype(DigitalToASCII)>("_Z14DigitalToASCIIi")(10), 'A');
    EXPECT_EQ(library.entry<decltype(ASCIIToDigital)>("_Z14ASCIIToDigitali")('F'), 15);
    EXPECT_EQ(library.entry<decltype(getPlcReg)>("_Z9getPlcRegi")(12), 7);
    EXPECT_EQ(library.entry<decltype(QueryFinishFlag)>("QueryFinishFlag")(), 1);

    int type = 7;
    int address = 100;
    EXPECT_EQ(library.entry<decltype(get_offset_address)>("_Z18get_offset_addressRiS_")(type, address), 100);

    RW_VAR request = RW_VAR();
    request.address = 10;
    request.count = 50;
    QList<RW_VAR> pieces;
    library.entry<decltype(WhetherGroup)>("_Z12WhetherGroupiiP6RW_VARP5QListIS_E")(50, 20, &request, &pieces);
    ASSERT_EQ(pieces.size(), 3);
    EXPECT_EQ(pieces.at(2).address, 50);
    EXPECT_EQ(pieces.at(2).count, 10);
}

TEST(Exports, ClosingUnloadsTheLibrary) {
    { const LoadedLibrary library; }
    void *const stillLoaded = dlopen(DRAVO_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
    EXPECT_EQ(stillLoaded, nullptr);
}

}  // namespace
