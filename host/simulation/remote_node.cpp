#include "host/simulation/remote_node.h"

#include <algorithm>

#include "host/simulation/element_map.h"

namespace simulation {

namespace {

constexpr std::size_t kLargestReply = 2048;  // data bytes; far above a host's request, well below a line's buffer

std::uint8_t functionOf(const RemoteFrame &frame) {
    if (frame.write) {
        return 6;
    }
    return elementKind(frame.elementType) == ElementKind::Coil ? 1 : 3;
}

/// One coil, register or register bit of a request.
struct Place {
    int address;
    int bit;  // of the register; BitInWord writes only
};

std::optional<Place> placeOf(const RemoteFrame &frame, ElementKind kind, int i) {
    const std::int64_t start = frame.address;
    std::int64_t element = start + i;
    int bit = 0;
    int word = 0;
    if (kind == ElementKind::Double) {
        element = start + i / 2;
        word = i % 2;
    } else if (kind == ElementKind::BitInWord && start >= 0) {
        bit = static_cast<int>(element % 16);
        element = frame.write ? element / 16 : start / 16 + i;  // a read asks for whole words
    }
    const std::optional<int> address = modbusAddress(frame.elementType, element);
    if (!address) {
        return std::nullopt;
    }
    return Place{*address + word, bit};
}

/// Every place of a request in the order of its data; empty when one of them does not exist.
std::optional<std::vector<Place>> placesOf(const RemoteFrame &frame, ElementKind kind) {
    // A read counts words even where the values are pairs of them; a write counts values.
    const bool pairs = kind == ElementKind::Double || (kind == ElementKind::WordPair && frame.write);
    const int units = pairs ? 2 * frame.count : frame.count;
    std::vector<Place> places;
    for (int i = 0; i < units; ++i) {
        const std::optional<Place> place = placeOf(frame, kind, i);
        if (!place) {
            return std::nullopt;
        }
        places.push_back(*place);
    }
    return places;
}

Bytes readData(ElementKind kind, const std::vector<Place> &places, const modbus_mapping_t &mapping) {
    Bytes data;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (kind == ElementKind::Coil) {
            if (i % 8 == 0) {
                data.push_back(0);
            }
            if (mapping.tab_bits[places[i].address] != 0) {
                data.back() = static_cast<std::uint8_t>(data.back() | 1U << i % 8);
            }
        } else {
            const std::uint16_t value = mapping.tab_registers[places[i].address];
            data.push_back(static_cast<std::uint8_t>(value >> 8U));
            data.push_back(static_cast<std::uint8_t>(value & 0xFFU));
        }
    }
    return data;
}

void writeData(ElementKind kind, const std::vector<Place> &places, const Bytes &data, modbus_mapping_t &mapping) {
    const auto byteAt = [&data](std::size_t i) { return i < data.size() ? unsigned{data[i]} : 0U; };  // missing: 0
    const bool pairs = kind == ElementKind::Double || kind == ElementKind::WordPair;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (kind == ElementKind::Coil) {
            mapping.tab_bits[places[i].address] = static_cast<std::uint8_t>(byteAt(i / 8) >> i % 8 & 1U);
            continue;
        }
        std::uint16_t &target = mapping.tab_registers[places[i].address];
        if (kind == ElementKind::BitInWord) {
            const unsigned bit = 1U << static_cast<unsigned>(places[i].bit);
            target = static_cast<std::uint16_t>(byteAt(i) != 0 ? target | bit : target & ~bit);
        } else {
            // The data has the low word of a pair first, the registers have the high one first.
            const std::size_t word = pairs ? i ^ 1U : i;
            target = static_cast<std::uint16_t>(byteAt(2 * word) | byteAt(2 * word + 1) << 8U);
        }
    }
}

}  // namespace

Bytes remoteException(const RemoteFrame &frame, std::uint8_t station, std::uint8_t code) {
    return exceptionReply(station, functionOf(frame), code);
}

Bytes serveRemoteFrame(const RemoteFrame &frame, std::uint8_t station, ControllerMemory &memory) {
    const std::optional<ElementKind> kind = elementKind(frame.elementType);
    const std::optional<std::vector<Place>> places = kind ? placesOf(frame, *kind) : std::nullopt;
    const auto isForbidden = [&memory](const Place &place) { return memory.refuses(place.address, 1); };
    if (!places || std::any_of(places->begin(), places->end(), isForbidden)) {
        return remoteException(frame, station, kIllegalAddress);
    }

    Bytes reply{station, functionOf(frame)};
    const std::lock_guard<std::mutex> lock(memory.mutex);
    if (frame.write) {
        writeData(*kind, *places, frame.data, *memory.mapping);
        for (const int word : {frame.address, frame.count}) {
            const unsigned low = static_cast<unsigned>(word) & 0xFFFFU;
            reply.push_back(static_cast<std::uint8_t>(low >> 8U));
            reply.push_back(static_cast<std::uint8_t>(low & 0xFFU));
        }
    } else {
        const Bytes data = readData(*kind, *places, *memory.mapping);
        if (data.size() > kLargestReply) {
            return remoteException(frame, station, kIllegalValue);
        }
        reply.push_back(static_cast<std::uint8_t>(data.size() & 0xFFU));
        reply.insert(reply.end(), data.begin(), data.end());
    }
    appendCrc(reply);
    return reply;
}

}  // namespace simulation
