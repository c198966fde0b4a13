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
    return fmt::format("{} cuts · Main camera: {}% · Audio: {}", cuts.size(),
                       mainSharePercent(cuts, settings, project), project.label(settings.audio));
}

std::int64_t mainSharePercent(const std::vector<Cut>& cuts, const EditSettings& settings,
                              const Project& project) {
    const std::int64_t mainFrames = usageOf(cameraUsage(cuts), settings.mainCamera).frames;
    return std::llround(shareOf(mainFrames, project));
}

std::optional<std::string> markersText(const Markers& markers) {
    const auto counted = [](std::size_t count) {
        return fmt::format("{} {}", count, count == 1 ? "marker" : "markers");
    };
    const std::size_t named = markers.notes.size();
    const std::size_t all = markers.cutPoints.size() + named;
    if (named > 0) return fmt::format("{}, {} of them named like a camera", counted(all), named);
    if (all > 0) return counted(all);
    if (markers.onTitles > 0)
        return fmt::format("{} on titles, none on the multicam clip. In Final Cut, select the clip "
                           "before you press M.",
                           counted(markers.onTitles));
    return std::nullopt;
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
