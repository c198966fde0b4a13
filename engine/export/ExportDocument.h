#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "platform/Uuid.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// A cut list as a new FCPXML project, UTF-8. `audioAngle` is heard throughout; the engine's
/// `audioID` when absent. The cost grows with the input plus the output.
///
/// Throws `FinalCutImportError` with the sentence of the first failed check.
std::string exportDocument(const CutEngine& engine, const std::vector<Cut>& cuts,
                           const std::optional<std::string>& audioAngle, const UUIDMaker& makeUUID);

} // namespace shotweaver
