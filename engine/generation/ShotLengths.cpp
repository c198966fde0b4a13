#include "engine/generation/ShotLengths.h"

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

ShotKind shotKind(double share, const std::optional<SecondsRange>& range,
                  const std::optional<SecondsRange>& opposite, double averageShot,
                  const FrameDuration& frameDuration) {
    ShotKind kind;
    kind.pacing = frameDuration.frames(2 * averageShot * share);
    if (!range) return kind;
    kind.hasRange = true;
    kind.minimum = static_cast<std::int64_t>(std::ceil(frameDuration.frames(range->lower)));
    kind.maximum = static_cast<std::int64_t>(std::floor(frameDuration.frames(range->upper)));
    kind.exponent = 1 / placeOfMean(share, *range, opposite, averageShot) - 1;
    return kind;
}

} // namespace

double placeOfMean(double share, const SecondsRange& range,
                   const std::optional<SecondsRange>& opposite, double averageShot) {
    if (!(range.upper - range.lower > 0)) return 0.5;
    const double oppositeMean = opposite ? (opposite->lower + opposite->upper) / 2 : averageShot;
    const double desiredMean = share * oppositeMean / (1 - share);
    const double place = (desiredMean - range.lower) / (range.upper - range.lower);
    return place > 0.1 ? std::min(place, 0.9) : 0.1;
}

std::int64_t ShotKind::least() const {
    return hasRange ? minimum : std::llround(0.75 * pacing);
}

std::int64_t ShotKind::most() const {
    return hasRange ? maximum : std::llround(1.25 * pacing);
}

ShotKind mainShotKind(const GenerationInputs& inputs, const FrameDuration& frameDuration) {
    return shotKind(inputs.mainShare, inputs.mainRange, inputs.otherRange, inputs.averageShot,
                    frameDuration);
}

ShotKind otherShotKind(const GenerationInputs& inputs, const FrameDuration& frameDuration) {
    return shotKind(1 - inputs.mainShare, inputs.otherRange, inputs.mainRange, inputs.averageShot,
                    frameDuration);
}

} // namespace shotweaver
