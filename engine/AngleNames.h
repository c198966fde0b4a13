#pragma once

#include "engine/ImportedProject.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// The form in which names of angles and presets are compared: without white space at both ends,
/// in lower case, canonically equivalent texts alike.
std::string normalizedName(std::string_view name);

/// Angles by their normalised names. Making one normalises every angle's name: keep it for as many
/// names as there are to look up.
class AngleNames {
  public:
    explicit AngleNames(const std::vector<ImportedAngle>& angles);

    /// The identifier of the one angle with that name once both are normalised; nothing when no
    /// angle or more than one has it.
    std::optional<std::string> idOf(std::string_view name) const;

    /// Whether more than one angle has that name.
    bool isRepeated(std::string_view name) const;

  private:
    std::map<std::string, std::optional<std::string>> ids_; // nothing for a repeated name
};

} // namespace shotweaver
