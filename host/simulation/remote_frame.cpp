#include "host/simulation/remote_frame.h"

#include <numeric>

#include "host/simulation/element_map.h"

namespace simulation {

namespace {

constexpr std::size_t kHeadBytes = 21;
constexpr std::size_t kShortest = kHeadBytes + 1;

unsigned beU16(const Bytes &bytes, std::size_t at) {
    return static_cast<unsigned>(bytes[at] << 8 | bytes[at + 1]);
}

std::size_t dataBytes(ElementKind kind, std::size_t count) {
    switch (kind) {
        case ElementKind::Coil:
            return (count + 7) / 8;
        case ElementKind::Word:
            return 2 * count;
        case ElementKind::BitInWord:
            return count;
        case ElementKind::WordPair:
        case ElementKind::Double:
            break;
    }
    return 4 * count;
}

}  // namespace

std::optional<RemoteFrame> parseRemoteFrame(const Bytes &bytes) {
    if (bytes.size() < kShortest || bytes[0] != bytes.size() % 256) {
        return std::nullopt;
    }
    const unsigned sum = std::accumulate(bytes.begin(), bytes.end() - 1, 0U);
    if (bytes.back() != sum % 256) {
        return std::nullopt;
    }
    RemoteFrame frame{};
    frame.data.assign(bytes.begin() + kHeadBytes, bytes.end() - 1);
    frame.write = bytes[2] != 0 || !frame.data.empty();
    frame.station = bytes[4];
    frame.elementType = static_cast<int>(beU16(bytes, 5));
    frame.address = static_cast<std::int32_t>(beU16(bytes, 7) << 16 | beU16(bytes, 9));
    frame.count = static_cast<int>(beU16(bytes, 11));
    return frame;
}

std::size_t remoteFrameLength(const Bytes &bytes) {
    if (bytes.size() < kShortest) {
        return 0;
    }
    const std::optional<ElementKind> kind = elementKind(static_cast<int>(beU16(bytes, 5)));
    if (!kind) {
        return 0;
    }
    const std::size_t data = bytes[2] != 0 ? dataBytes(*kind, beU16(bytes, 11)) : 0;
    const std::size_t length = kShortest + data;
    return bytes[0] == length % 256 ? length : 0;
}

}  // namespace simulation
