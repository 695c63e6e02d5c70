// The controller's element types: where each element lies in its coils and registers. Pure functions.
//
// The controller's own account of the map, made of the landmarks in its manual; it shares nothing with the driver's.
#ifndef DRAVO_ELEMENT_MAP_H
#define DRAVO_ELEMENT_MAP_H

#include <cstdint>
#include <optional>

namespace simulation {

enum class ElementKind {
    Coil,
    Word,
    WordPair,   // 32-bit values over the words of another type
    Double,     // 32-bit elements with registers of their own
    BitInWord,  // single bits of the words of another type; element address = word * 16 + bit
};

std::optional<ElementKind> elementKind(int elementType);

/// Modbus address of a coil, of a word, or of the high word of a Double. For WordPair and BitInWord, element is an
/// address of the words that carry them. Empty when there is no such type or no such element.
std::optional<int> modbusAddress(int elementType, std::int64_t element);

}  // namespace simulation

#endif
