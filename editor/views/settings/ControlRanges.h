#pragma once

#include "widgets/Controls.h"

namespace shotweaver {

/// What the controls of the settings step through.

inline constexpr ControlRange waitRange{0, 600, 10}; // seconds
inline constexpr ControlRange frequencyRange{1, 10, 1};
inline constexpr ControlRange shareRange{10, 90, 5};      // percent
inline constexpr ControlRange shotLengthRange{1, 120, 1}; // seconds

} // namespace shotweaver
