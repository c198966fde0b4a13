#include "engine/generation/CameraUsage.h"

namespace shotweaver {

CameraUsageMap cameraUsage(const std::vector<Cut>& cuts) {
    CameraUsageMap usage;
    const Cut* previous = nullptr;
    for (const Cut& cut : cuts) {
        CameraUsage& entry = usage[cut.angle];
        entry.id = cut.angle;
        entry.frames += cut.duration;
        const bool continues = previous && previous->angle == cut.angle &&
                               previous->start + previous->duration == cut.start;
        if (!continues) ++entry.shots;
        previous = &cut;
    }
    return usage;
}

CameraUsage usageOf(const CameraUsageMap& usage, std::string_view angle) {
    const auto found = usage.find(angle);
    return found == usage.end() ? CameraUsage{std::string(angle)} : found->second;
}

} // namespace shotweaver
