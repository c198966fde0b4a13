#include "editor/ContentView.h"
#include "engine/FinalCutImportError.h"

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

std::int64_t wholeFrames(const CutEngine& engine, double seconds) {
    return std::llround(engine.frameDuration.frames(seconds));
}

std::int64_t framesOf(const Bookend& shot, const CutEngine& engine) {
    return shot.isEnabled ? wholeFrames(engine, shot.seconds) : 0;
}

/// Where a new section may begin: after the opening, and after the last row when its end can be
/// read.
std::int64_t nextSectionStart(const EditSettings& settings, const CutEngine& engine) {
    const std::int64_t opening = framesOf(settings.opening, engine);
    if (settings.sections.empty()) return opening;
    try {
        return std::max(engine.frameForTimecode(settings.sections.back().end), opening);
    } catch (const FinalCutImportError&) {
        return opening;
    }
}

} // namespace

void ContentView::addSection() {
    constexpr double proposedSeconds = 30;
    change([&](EditorFields& fields) {
        if (!fields.project) return;
        const CutEngine& engine = fields.project->engine;
        EditSettings& settings = fields.settings;
        const std::int64_t start = nextSectionStart(settings, engine);
        const std::int64_t limit = engine.length - framesOf(settings.closing, engine);
        if (start >= limit) {
            fields.error = "There is no room for another section after the existing sections and "
                           "opening or closing shots.";
            return;
        }
        const std::int64_t end = std::min(start + wholeFrames(engine, proposedSeconds), limit);
        settings.sections.push_back({environment_.makeUUID(), "", settings.mainCamera,
                                     engine.timecode(start), engine.timecode(end)});
    });
}

void ContentView::removeSection(std::size_t row) {
    edit([&](EditSettings& settings) {
        if (row < settings.sections.size())
            settings.sections.erase(settings.sections.begin() + static_cast<std::ptrdiff_t>(row));
    });
}

void ContentView::editSection(std::size_t row, const std::function<void(SectionDraft&)>& change,
                              Saving saving) {
    edit(
        [&](EditSettings& settings) {
            if (row < settings.sections.size()) change(settings.sections[row]);
        },
        saving);
}

} // namespace shotweaver
