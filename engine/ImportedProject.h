#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// One angle of the multicam, as the editor shows it.
struct ImportedAngle {
    std::string id;
    std::string name;
    std::string cameras;                  // names joined with ", "; empty when there are none
    std::int64_t clipCount = 0;           // media clips, those in compound clips included
    std::int64_t gapCount = 0;            // gaps directly in the angle
    std::optional<double> firstRecording; // smallest offset in seconds, as written

    bool operator==(const ImportedAngle&) const = default;
};

/// What the editor shows of an imported project.
struct ImportedProject {
    std::string name;
    std::string version; // of the FCPXML format
    double duration = 0; // seconds
    double framesPerSecond = 0;
    std::vector<ImportedAngle> angles;
    std::string audioAngles; // names of the angles that are heard, joined with ", "
    std::vector<std::string> missingLocations; // clips whose recording the export cannot locate

    bool operator==(const ImportedProject&) const = default;
};

} // namespace shotweaver
