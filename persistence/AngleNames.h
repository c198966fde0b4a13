#pragma once

#include "engine/ImportedProject.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// The form in which names of angles and presets are compared: without white space at both ends,
/// in lower case, canonically equivalent texts alike.
std::string normalizedName(std::string_view name);

/// The identifier of the one angle with that name once both are normalised; nothing when no angle
/// or more than one has it.
std::optional<std::string> findAngle(std::string_view name,
                                     const std::vector<ImportedAngle>& angles);

} // namespace shotweaver
