#include "planning/EditTexts.h"

#include "engine/generation/CameraUsage.h"
#include "platform/NumberText.h"

#include <fmt/format.h>

#include <cmath>

namespace shotweaver {

namespace {

/// Frames in percent of the project.
double shareOf(std::int64_t frames, const Project& project) {
    return static_cast<double>(frames) / static_cast<double>(project.engine.length) * 100;
}

} // namespace

std::string summaryLine(const std::vector<Cut>& cuts, const EditSettings& settings,
                        const Project& project) {
    const std::int64_t mainFrames = usageOf(cameraUsage(cuts), settings.mainCamera).frames;
    return fmt::format("{} cuts · Main camera: {}% · Audio: {}", cuts.size(),
                       std::llround(shareOf(mainFrames, project)), project.label(settings.audio));
}

std::vector<UsageRow> usageRows(const std::vector<Cut>& cuts, const Project& project) {
    const CameraUsageMap usage = cameraUsage(cuts);
    std::vector<UsageRow> rows;
    for (const ImportedAngle& angle : project.videoAngles) {
        const CameraUsage used = usageOf(usage, angle.id);
        rows.push_back(
            {project.label(angle.id), fixedDecimal(project.engine.seconds(used.frames), 2) + " sec",
             fixedDecimal(shareOf(used.frames, project), 1) + "%", std::to_string(used.shots)});
    }
    return rows;
}

} // namespace shotweaver
