// Every symbol that interface/ states is found by its plain name (mangled where it has C++ linkage), and what is not
// for the outside is not found.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "korvel_dravo_port.h"
#include "loaded_library.h"

namespace {

TEST(Exports, StatedNamesAreFoundAndNoOthers) {
    const LoadedLibrary library;
    std::ifstream stated(DRAVO_SYMBOLS);
    int found = 0;
    for (std::string line, kind, size, name; std::getline(stated, line);) {
        std::istringstream(line) >> kind >> size >> name;
        if (kind != "soname") {
            EXPECT_NE(library.symbol(name.c_str()), nullptr) << name;
            ++found;
        }
    }
    EXPECT_EQ(found, 15 + 4 + 14);  // entry points, data objects, utilities
    for (const char *name : {"ExtendFindSameVar", "_Z17ExtendFindSameVarR19ControlInformationM",
                             "_ZN22Communication_ProtocolC1Ev", "_ZN5QListI6RW_VAR6appendERKS0_", "malloc"}) {
        EXPECT_EQ(library.symbol(name), nullptr) << name;
    }
}

// Argument passing: strings by value, references, pointers, 16-bit lengths.
TEST(Exports, FunctionsTakeTheirArguments) {
    const LoadedLibrary library;
    const auto toAddress = library.entry<decltype(PLCAddressChangeIntef)>("PLCAddressChangeIntef");
    EXPECT_EQ(toAddress(15, QString::fromLatin1("12.3")), 195);
    unsigned char bytes[] = {0x01, 0x03, 0x00, 0x64, 0x00, 0x02};
    EXPECT_EQ(library.entry<decltype(CalCRC)>("_Z6CalCRCPht")(bytes, 6), 0xd485);
    int type = 7;
    int address = 8000;
    EXPECT_EQ(library.entry<decltype(get_offset_address)>("_Z18get_offset_addressRiS_")(type, address), 50000);
    RW_VAR request = RW_VAR();
    request.count = 50;
    QList<RW_VAR> pieces;
    library.entry<decltype(WhetherGroup)>("_Z12WhetherGroupiiP6RW_VARP5QListIS_E")(50, 20, &request, &pieces);
    EXPECT_EQ(pieces.size(), 3);
}

}  // namespace
