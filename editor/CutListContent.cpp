#include "editor/CutListContent.h"

#include "planning/EditorTexts.h"
#include "planning/ProjectDefaults.h"

#include <fmt/format.h>

#include <string_view>
#include <unordered_map>

namespace shotweaver {

CutTexts::CutTexts(const ImportedProject& imported, std::shared_ptr<const CutEngine> engine,
                   const std::string& locale)
    : engine_(std::move(engine)), number_(locale) {
    for (const ImportedAngle& angle : imported.angles)
        labels_.emplace(angle.id, angleLabel(angle.id, imported));
}

CutRow CutTexts::row(const Cut& cut) const {
    const auto label = labels_.find(cut.angle);
    return {label == labels_.end() ? cut.angle : label->second, engine_->timecode(cut.start),
            number_.text(engine_->seconds(cut.duration))};
}

std::string CutTexts::line(const Cut& cut) const {
    const CutRow texts = row(cut);
    return fmt::format("{} · {} · {} seconds", texts.camera, texts.start, texts.duration);
}

std::vector<CutLane> cutLanes(const std::vector<Cut>& cuts, const ImportedProject& imported,
                              const CutEngine& engine) {
    const std::vector<ImportedAngle> angles = videoAngles(imported, engine);
    std::vector<CutLane> lanes;
    std::unordered_map<std::string_view, std::size_t> laneByAngle;
    for (const ImportedAngle& angle : angles) {
        laneByAngle.emplace(angle.id, lanes.size());
        lanes.push_back({angleLabel(angle.id, imported), {}, {}});
    }
    for (std::size_t row = 0; row < cuts.size(); ++row) {
        const Cut& cut = cuts[row];
        const auto found = laneByAngle.find(cut.angle);
        if (found == laneByAngle.end()) continue;
        CutLane& lane = lanes[found->second];
        lane.ranges.push_back({cut.start, cut.start + cut.duration});
        lane.rows.push_back(row);
    }
    return lanes;
}

} // namespace shotweaver
