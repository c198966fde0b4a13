#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"
#include "platform/ByteSource.h"

#include <cstdint>
#include <string>
#include <vector>

namespace shotweaver {

/// Where shots may rather end, as the settings ask: at markers, at times. Frames inside the
/// project, ascending, each once.
std::vector<std::int64_t> cutPoints(const EditSettings& settings, const Project& project);

/// Whether a frame is one of the markers that the settings ask to cut at.
bool isAtMarker(std::int64_t frame, const EditSettings& settings, const Project& project);

/// The note that is followed at a frame; null when there is none.
const CameraNote* noteAt(std::int64_t frame, const EditSettings& settings, const Project& project);

/// Reads a file of times, in its order: one a line, as seconds from the project's start (a number
/// as JSON has it, perhaps followed by a tab and a label) or as project timecode. Blank lines and
/// those that begin with "#" or "\" are passed over.
///
/// Throws `FinalCutImportError` for the first line that is no time, and for more than 20,000 times;
/// `name` stands for the file there. Throws what the source throws.
std::vector<double> readCutTimes(ByteSource& source, const std::string& name,
                                 const Project& project);

} // namespace shotweaver
