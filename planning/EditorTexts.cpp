#include "planning/EditorTexts.h"

#include "engine/generation/CameraUsage.h"
#include "planning/ProjectDefaults.h"
#include "platform/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

/// Frames in percent of the project.
double shareOf(std::int64_t frames, const CutEngine& engine) {
    return static_cast<double>(frames) / static_cast<double>(engine.length) * 100;
}

} // namespace

std::string angleLabel(std::string_view id, const ImportedProject& imported) {
    const auto angle = std::find_if(imported.angles.begin(), imported.angles.end(),
                                    [&](const ImportedAngle& each) { return each.id == id; });
    if (angle == imported.angles.end()) return std::string(id);
    if (angle->cameras.empty()) return angle->name;
    return fmt::format("{} ({})", angle->name, angle->cameras);
}

std::string summaryLine(const std::vector<Cut>& cuts, const EditSettings& settings,
                        const ImportedProject& imported, const CutEngine& engine) {
    const std::int64_t mainFrames = usageOf(cameraUsage(cuts), settings.mainCamera).frames;
    return fmt::format("{} cuts · Main camera: {}% · Audio: {}", cuts.size(),
                       std::llround(shareOf(mainFrames, engine)),
                       angleLabel(settings.audio, imported));
}

std::vector<UsageRow> usageRows(const std::vector<Cut>& cuts, const ImportedProject& imported,
                                const CutEngine& engine) {
    const CameraUsageMap usage = cameraUsage(cuts);
    std::vector<UsageRow> rows;
    for (const std::string& angle : videoAngleIDs(imported, engine)) {
        const CameraUsage used = usageOf(usage, angle);
        rows.push_back(
            {angleLabel(angle, imported), fixedDecimal(engine.seconds(used.frames), 2) + " sec",
             fixedDecimal(shareOf(used.frames, engine), 1) + "%", std::to_string(used.shots)});
    }
    return rows;
}

int usageTableHeight(std::size_t cameras) {
    constexpr std::size_t rowHeight = 24;
    constexpr std::size_t margins = 12;
    constexpr std::size_t highest = 125;
    return static_cast<int>(std::min((cameras + 1) * rowHeight + margins, highest));
}

} // namespace shotweaver
