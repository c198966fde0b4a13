#pragma once

#include "engine/SettingLimits.h"
#include "widgets/ControlRange.h"

namespace shotweaver {

/// The permitted settings in the steps of their controls.
constexpr ControlRange inSteps(const Limits& limits, double step) {
    return {limits.least, limits.most, step};
}

inline constexpr ControlRange waitRange = inSteps(limits::returnSeconds, 10);
inline constexpr ControlRange frequencyRange = inSteps(limits::frequency, 1);
inline constexpr ControlRange shareRange = inSteps(limits::mainShare, 5);
inline constexpr ControlRange shotLengthRange = inSteps(limits::shotSeconds, 1);

} // namespace shotweaver
