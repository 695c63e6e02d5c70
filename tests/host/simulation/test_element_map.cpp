// The simulated controller has its own account of the address map. It agrees with the driver's for every element of
// every type, up to where the controller's memory ends.
#include "host/simulation/element_map.h"

#include <gtest/gtest.h>

#include "korvel_dravo_elements.h"
#include "korvel_dravo_port.h"

namespace {

using Kind = simulation::ElementKind;

TEST(ElementMap, AgreesWithTheDriversForEveryElement) {
    // In the order of dravo::ElementClass.
    const Kind kinds[] = {Kind::Coil, Kind::Word, Kind::Double, Kind::WordPair, Kind::BitInWord};
    for (int code = 0; code < dravo::kElementTypeCount; ++code) {
        const dravo::ElementType &type = dravo::kElementTypes[code];
        EXPECT_EQ(simulation::elementKind(code), kinds[type.elementClass]) << "type " << code;
        int wireType = type.registerType;
        for (int element = 0; element <= 65536; ++element) {
            const int address = get_offset_address(wireType, element);
            const int shown = address + type.scale <= 65536 ? address : -1;  // -1: beyond the memory
            ASSERT_EQ(simulation::modbusAddress(code, element).value_or(-1), shown) << code << '@' << element;
        }
        EXPECT_FALSE(simulation::modbusAddress(code, -1)) << "type " << code;
        EXPECT_FALSE(simulation::modbusAddress(code, 0x7FFFFFFF)) << "type " << code;
    }
    for (const int code : {-1, int(dravo::kElementTypeCount)}) {
        EXPECT_FALSE(simulation::elementKind(code) || simulation::modbusAddress(code, 0)) << code;
    }
}

}  // namespace
