#include "host/simulation/element_map.h"

#include <array>
#include <limits>

#include "host/simulation/controller_memory.h"

namespace simulation {

namespace {

struct Area {
    ElementKind kind;
    int first;           // where element 0 lies
    std::int64_t bound;  // first element of the second part; kOnePart: there is none
    int boundFirst;      // where element bound lies
};

constexpr std::int64_t kOnePart = std::numeric_limits<std::int64_t>::max();

constexpr std::array<Area, 22> kAreas{{
    {ElementKind::Coil, 1200, kOnePart, 0},       {ElementKind::Coil, 0, kOnePart, 0},
    {ElementKind::Coil, 2000, 2048, 12000},       {ElementKind::Coil, 4400, 256, 30000},
    {ElementKind::Coil, 6000, 1024, 31000},       {ElementKind::Coil, 8000, 256, 11000},
    {ElementKind::Coil, 9200, 256, 10000},        {ElementKind::Word, 0, 8000, 50000},  // 7
    {ElementKind::Word, 8000, 256, 12000},        {ElementKind::Word, 9000, 256, 11000},
    {ElementKind::Word, 9500, kOnePart, 0},       {ElementKind::Word, 8500, kOnePart, 0},
    {ElementKind::WordPair, 0, 8000, 50000},  // 12
    {ElementKind::Double, 9300, 256, 10000},      {ElementKind::WordPair, 8000, 256, 12000},
    {ElementKind::BitInWord, 0, 8000, 50000},     {ElementKind::BitInWord, 8000, 256, 12000},
    {ElementKind::BitInWord, 8500, kOnePart, 0},  // 17
    {ElementKind::WordPair, 8500, kOnePart, 0},   {ElementKind::Word, 13000, kOnePart, 0},
    {ElementKind::BitInWord, 13000, kOnePart, 0}, {ElementKind::WordPair, 13000, kOnePart, 0},
}};

const Area *areaOf(int elementType) {
    const bool known = elementType >= 0 && elementType < static_cast<int>(kAreas.size());
    return known ? &kAreas[static_cast<std::size_t>(elementType)] : nullptr;
}

}  // namespace

std::optional<ElementKind> elementKind(int elementType) {
    const Area *area = areaOf(elementType);
    return area != nullptr ? std::optional<ElementKind>(area->kind) : std::nullopt;
}

std::optional<int> modbusAddress(int elementType, std::int64_t element) {
    const Area *area = areaOf(elementType);
    if (area == nullptr || element < 0) {
        return std::nullopt;
    }
    const int registers = area->kind == ElementKind::Double ? 2 : 1;
    const std::int64_t address = element < area->bound ? area->first + registers * element
                                                       : area->boundFirst + registers * (element - area->bound);
    if (address + registers > kAddressSpace) {
        return std::nullopt;
    }
    return static_cast<int>(address);
}

}  // namespace simulation
