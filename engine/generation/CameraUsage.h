#pragma once

#include "engine/EditSettings.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace shotweaver {

/// How much of a cut list shows one angle.
struct CameraUsage {
    std::string id;
    std::int64_t frames = 0; // on screen
    std::int64_t shots = 0;  // visible ones: a cut that continues its own angle is not one more

    bool operator==(const CameraUsage&) const = default;
};

/// Usage by angle identifier, of the angles that occur in the cuts.
using CameraUsageMap = std::map<std::string, CameraUsage, std::less<>>;

CameraUsageMap cameraUsage(const std::vector<Cut>& cuts);

/// An angle's usage; no frames and no shots when it does not occur.
CameraUsage usageOf(const CameraUsageMap& usage, std::string_view angle);

} // namespace shotweaver
