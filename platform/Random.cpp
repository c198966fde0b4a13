#include "platform/Random.h"

#include "platform/PlatformError.h"

#include <cerrno>

#include <sys/random.h>

namespace shotweaver {

std::uint64_t SecureRandom::bits() {
    if (next_ == block_.size()) refill();
    return block_[next_++];
}

void SecureRandom::refill() {
    // getentropy gives at most 256 bytes a call, whole or not at all.
    constexpr std::size_t wordsPerCall = 256 / sizeof(std::uint64_t);
    static_assert(std::tuple_size_v<decltype(block_)> % wordsPerCall == 0);
    for (std::size_t word = 0; word < block_.size(); word += wordsPerCall) {
        while (getentropy(&block_[word], 256) != 0) {
            if (errno != EINTR)
                throw PlatformError("The system's secure random numbers are not available.");
        }
    }
    next_ = 0;
}

} // namespace shotweaver
