#pragma once

#include "engine/CutEngine.h"

#include <string>
#include <vector>

namespace shotweaver {

/// Final Cut Pro imports no document that does not say its version.
inline constexpr const char* missingVersion =
    "The imported XML does not state its FCPXML version, so no project can be made from it. Export "
    "XML again from Final Cut.";

/// What would stop an export whatever the cut list, with the imported audio: no format version,
/// times on the multicam clip that cannot be read, annotations off the frame grid. One sentence
/// each, in document order.
std::vector<std::string> exportObstacles(const CutEngine& engine);

} // namespace shotweaver
