#pragma once

#include "engine/EditSettings.h"

#include <optional>

namespace shotweaver {

/// The main camera's part of the screen time, 0 to 1, that shots of these lengths come to on
/// average. Return times, gaps in the footage and fixed parts are not looked at.
double expectedMainShare(const EditSettings& settings);

/// A shot length range to set in place of one of the two.
struct RangeAdvice {
    bool isMain; // of the main camera, or of the others
    SecondsRange range;

    bool operator==(const RangeAdvice&) const = default;
};

/// Nothing when the expected share is within a point of the target. Otherwise the range with which
/// it would be: the other cameras' moved by whole seconds, as wide as it is or a second wider,
/// within what is allowed; the one whose middle moves least, and the lower of two; or else the main
/// camera's by the same rule; nothing when none is.
std::optional<RangeAdvice> rangeForTarget(const EditSettings& settings);

} // namespace shotweaver
