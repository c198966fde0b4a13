#include "editor/CutListContent.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

CutTexts::CutTexts(std::shared_ptr<const Project> project, const std::string& locale)
    : project_(std::move(project)), number_(locale) {}

std::string noteLine(const CameraNote& note, const Project& project) {
    return fmt::format("Marker “{}” · {}", note.name, project.engine.timecode(note.frame));
}

CutRow CutTexts::row(const Cut& cut) const {
    const CutEngine& engine = project_->engine;
    return {project_->label(cut.angle), engine.timecode(cut.start),
            number_.text(engine.seconds(cut.duration))};
}

std::string CutTexts::line(const Cut& cut) const {
    const CutRow texts = row(cut);
    return fmt::format("{} · {} · {} seconds", texts.camera, texts.start, texts.duration);
}

int usageTableHeight(std::size_t cameras) {
    constexpr std::size_t rowHeight = 24;
    constexpr std::size_t margins = 12;
    constexpr std::size_t highest = 125;
    return static_cast<int>(std::min((cameras + 1) * rowHeight + margins, highest));
}

} // namespace shotweaver
