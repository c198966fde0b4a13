#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/ImportedProject.h"

#include <string>
#include <vector>

namespace shotweaver {

/// The angles with picture somewhere in the project, in angle order.
std::vector<ImportedAngle> videoAngles(const ImportedProject& imported, const CutEngine& engine);

/// The angles with sound somewhere in the project, in angle order.
std::vector<ImportedAngle> audioAngles(const ImportedProject& imported, const CutEngine& engine);

/// Identifiers of the video angles, in angle order.
std::vector<std::string> videoAngleIDs(const ImportedProject& imported, const CutEngine& engine);

/// The settings that an import leaves: cameras, frequencies and the audio angle derived from the
/// project, waits and sections emptied, opening and closing off; everything else as it was in
/// `previous`. Throws `FinalCutImportError` when fewer than two angles have picture.
EditSettings importedSettings(const ImportedProject& imported, const CutEngine& engine,
                              EditSettings previous);

/// Makes `camera` the main camera; the former one, if it is a video angle, becomes an included
/// additional camera.
void chooseMainCamera(EditSettings& settings, const std::string& camera,
                      const std::vector<std::string>& videoAngles);

} // namespace shotweaver
