#pragma once

#include <cstddef>

namespace shotweaver {

/// What a setting may be, both bounds included.
struct Limits {
    double least;
    double most;

    /// False for a not-a-number.
    constexpr bool contains(double value) const { return value >= least && value <= most; }
};

/// The permitted settings. Checks, controls and the flags' help all take them from here.
namespace limits {

inline constexpr Limits mainShare{10, 90};      // percent
inline constexpr Limits averageShot{4, 20};     // seconds
inline constexpr Limits shotSeconds{1, 120};    // shot ranges, opening and closing
inline constexpr Limits returnSeconds{0, 600};  // waits
inline constexpr Limits frequency{1, 10};       // weights
inline constexpr std::size_t cutTimes = 20'000; // how many at most

} // namespace limits

} // namespace shotweaver
