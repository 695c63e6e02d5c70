// The simulated controller has its own account of the address map. It agrees with the driver's for every element of
// every type, up to where the controller's memory ends.
#include "host/simulation/element_map.h"

#include <gtest/gtest.h>

#include "korvel_dravo_elements.h"
#include "korvel_dravo_port.h"

namespace {

using simulation::ElementKind;
using simulation::modbusAddress;

TEST(ElementMap, AgreesWithTheDriversForEveryElement) {
    const ElementKind kinds[] = {ElementKind::Coil, ElementKind::Word, ElementKind::Double, ElementKind::WordPair,
                                 ElementKind::BitInWord};  // in the order of dravo::ElementClass
    for (int code = 0; code < dravo::kElementTypeCount; ++code) {
        const dravo::ElementType &type = dravo::kElementTypes[code];
        EXPECT_EQ(simulation::elementKind(code), kinds[type.elementClass]) << "type " << code;
        int wireType = type.registerType;
        for (int element = 0; element <= 65536; ++element) {
            const int address = get_offset_address(wireType, element);
            const std::optional<int> expected =
                address + type.scale <= 65536 ? std::optional<int>(address) : std::nullopt;
            ASSERT_EQ(modbusAddress(code, element), expected) << "type " << code << " element " << element;
        }
        EXPECT_FALSE(modbusAddress(code, -1)) << "type " << code;
        EXPECT_FALSE(modbusAddress(code, 0x100000000)) << "type " << code;
    }
    for (const int code : {-1, int(dravo::kElementTypeCount)}) {
        EXPECT_FALSE(simulation::elementKind(code)) << code;
        EXPECT_FALSE(modbusAddress(code, 0)) << code;
    }
}

}  // namespace
