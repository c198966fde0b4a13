#include "planning/ShareForecast.h"

#include "engine/SettingLimits.h"
#include "engine/generation/ShotLengths.h"

#include <cmath>

namespace shotweaver {

namespace {

SecondsRange mainRange(const EditSettings& settings) {
    return {settings.mainMinimum, settings.mainMaximum};
}

SecondsRange otherRange(const EditSettings& settings) {
    return {settings.otherMinimum, settings.otherMaximum};
}

double meanLength(double share, const SecondsRange& range, const SecondsRange& opposite,
                  double averageShot) {
    const double place = placeOfMean(share, range, opposite, averageShot);
    return range.lower + place * (range.upper - range.lower);
}

bool meetsTarget(const EditSettings& settings) {
    return std::abs(100 * expectedMainShare(settings) - settings.mainShare) <= 1;
}

EditSettings with(EditSettings settings, const RangeAdvice& advice) {
    (advice.isMain ? settings.mainMinimum : settings.otherMinimum) = advice.range.lower;
    (advice.isMain ? settings.mainMaximum : settings.otherMaximum) = advice.range.upper;
    return settings;
}

/// Tries the nearest first, on the lower side before the upper one.
std::optional<RangeAdvice> nearestRange(const EditSettings& settings, bool isMain) {
    constexpr auto farthest = static_cast<int>(2 * limits::shotSeconds.most);
    const SecondsRange now = isMain ? mainRange(settings) : otherRange(settings);
    for (int halves = 1; halves <= farthest; ++halves) { // of a second, by which the middle moves
        for (const int moved : {-halves, halves}) {
            const int wider = halves % 2;
            const int lower = (moved - wider) / 2; // without a rest
            const RangeAdvice advice{isMain, {now.lower + lower, now.upper + lower + wider}};
            if (limits::shotSeconds.contains(advice.range.lower) &&
                limits::shotSeconds.contains(advice.range.upper) &&
                meetsTarget(with(settings, advice)))
                return advice;
        }
    }
    return std::nullopt;
}

} // namespace

double expectedMainShare(const EditSettings& settings) {
    const double share = settings.mainShare / 100;
    double main =
        meanLength(share, mainRange(settings), otherRange(settings), settings.averageShot);
    const double other =
        meanLength(1 - share, otherRange(settings), mainRange(settings), settings.averageShot);
    if (settings.doubleMain) main *= 1.25;
    return main / (main + other);
}

std::optional<RangeAdvice> rangeForTarget(const EditSettings& settings) {
    if (meetsTarget(settings)) return std::nullopt;
    const auto others = nearestRange(settings, false);
    return others ? others : nearestRange(settings, true);
}

} // namespace shotweaver
