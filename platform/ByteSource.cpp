#include "platform/ByteSource.h"

namespace shotweaver {

std::string readAll(ByteSource& source) {
    constexpr std::size_t readBlock = std::size_t{1} << 18U;
    std::string bytes;
    while (true) {
        const std::size_t size = bytes.size();
        bytes.resize(size + readBlock);
        const std::size_t count = source.read(bytes.data() + size, readBlock);
        bytes.resize(size + count);
        if (count == 0) return bytes;
    }
}

} // namespace shotweaver
