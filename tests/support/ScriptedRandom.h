#pragma once

#include "platform/Random.h"
#include "platform/Uuid.h"

#include <cstdint>
#include <stdexcept>
#include <vector>

namespace shotweaver::test {

/// Draws that a test writes down, each a number in [0, 1) of 53 bits. Running out of them is a
/// fault of the code (it drew too often) or of the test.
class ScriptedRandom final : public RandomSource {
  public:
    explicit ScriptedRandom(std::vector<double> units) : units_(std::move(units)) {}

    std::uint64_t bits() override {
        if (next_ == units_.size()) throw std::logic_error("one draw too many");
        return static_cast<std::uint64_t>(units_[next_++] * 0x1p53);
    }

    std::size_t drawn() const { return next_; }

  private:
    std::vector<double> units_;
    std::size_t next_ = 0;
};

/// Identifiers 00000000-…-01, -02 and so on.
inline UUIDMaker countingUUIDs() {
    return [next = std::uint8_t{0}]() mutable {
        UUID uuid;
        uuid.bytes.back() = ++next;
        return uuid;
    };
}

} // namespace shotweaver::test
