#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"

#include <string>

namespace shotweaver {

/// The settings that an import leaves: cameras, frequencies and the audio angle derived from the
/// project, waits, sections and cut times emptied, opening and closing off; everything else as it
/// was in `previous`. Throws `FinalCutImportError` when fewer than two angles have picture.
EditSettings importedSettings(const Project& project, EditSettings previous);

/// Makes `camera` the main camera; the former one, if it is a video angle, becomes an included
/// additional camera.
void chooseMainCamera(EditSettings& settings, const std::string& camera, const Project& project);

} // namespace shotweaver
