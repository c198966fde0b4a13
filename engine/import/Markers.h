#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/ImportedProject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace shotweaver {

/// Where a chapter begins.
struct Chapter {
    std::int64_t frame = 0;
    std::string name; // trimmed; may be empty

    bool operator==(const Chapter&) const = default;
};

/// What the markers of the imported clip ask for. To-do markers are not meant, and chapter markers
/// only as chapters.
struct Markers {
    /// Of those that are not named like a camera: frames inside (0, length), ascending, each once.
    std::vector<std::int64_t> cutPoints;
    /// In [0, length), by frame; those at one frame as in the document.
    std::vector<CameraNote> notes;
    /// How many stand on connected titles, where the clip itself has none.
    std::size_t onTitles = 0;
    /// In [0, length), by frame; those at one frame as in the document.
    std::vector<Chapter> chapters;
};

/// Reads the clip's markers. A name is a camera's when it is that of exactly one of `videoAngles`,
/// as `AngleNames` compares them. Times go to the nearest frame, halves away from the clip's start;
/// a marker whose time cannot be read is passed over.
Markers readMarkers(const CutEngine& engine, const std::vector<ImportedAngle>& videoAngles);

} // namespace shotweaver
