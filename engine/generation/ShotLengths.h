#pragma once

#include "engine/EditSettings.h"
#include "engine/FrameDuration.h"

#include <cstdint>
#include <optional>

namespace shotweaver {

/// Where in a range of shot lengths their mean lies, 0.1 to 0.9 (0 is the shortest): where it
/// stands to the opposite kind's middle as the shares do, or as near to that as the range allows.
/// One half in a range without width.
///
///     share         of this kind, a fraction; the opposite kind has the rest
///     opposite      without one its mean is `averageShot`, seconds
double placeOfMean(double share, const SecondsRange& range,
                   const std::optional<SecondsRange>& opposite, double averageShot);

/// How the length of a main or an additional shot is drawn, in frames.
struct ShotKind {
    double pacing = 0; // before the pacing factor, not rounded
    bool hasRange = false;
    std::int64_t minimum = 0; // of the range, which may hold no whole frame
    std::int64_t maximum = 0;
    double exponent = 0; // shapes the draw within the range so that its mean is where it should be

    /// The shortest and the longest that is drawn, but for doubling.
    std::int64_t least() const;
    std::int64_t most() const;
};

ShotKind mainShotKind(const GenerationInputs& inputs, const FrameDuration& frameDuration);
ShotKind otherShotKind(const GenerationInputs& inputs, const FrameDuration& frameDuration);

} // namespace shotweaver
