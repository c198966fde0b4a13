#include "platform/ByteSource.h"

#include <algorithm>

namespace shotweaver {

std::string readAll(ByteSource& source) {
    constexpr std::size_t readBlock = std::size_t{1} << 18U;
    std::string bytes;
    // Large files would be copied again and again while the text grows.
    constexpr std::size_t largestReserve = std::size_t{1} << 30U;
    bytes.reserve(std::min(source.expectedSize(), largestReserve) + readBlock);
    while (true) {
        const std::size_t size = bytes.size();
        bytes.resize(size + readBlock);
        const std::size_t count = source.read(bytes.data() + size, readBlock);
        bytes.resize(size + count);
        if (count == 0) return bytes;
    }
}

} // namespace shotweaver
