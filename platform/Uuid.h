#pragma once

#include "platform/Random.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace shotweaver {

/// A universally unique identifier (RFC 4122).
struct UUID {
    std::array<std::uint8_t, 16> bytes{};

    /// 36 characters, upper-case hexadecimal digits in the 8-4-4-4-12 grouping.
    std::string text() const;

    /// 32 upper-case hexadecimal digits without hyphens.
    std::string compactText() const;

    /// Reads the 36-character form; digits of either case.
    static std::optional<UUID> parse(std::string_view text);

    /// A random (version 4) identifier.
    static UUID random(RandomSource& source);

    bool operator==(const UUID&) const = default;
    bool operator<(const UUID& other) const { return bytes < other.bytes; } // as their texts
};

/// Makes fresh identifiers; passed to whatever creates records.
using UUIDMaker = std::function<UUID()>;

/// Random identifiers from the system's secure source.
UUIDMaker secureUUIDs();

} // namespace shotweaver
