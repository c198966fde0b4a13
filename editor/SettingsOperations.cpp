#include "editor/ContentView.h"
#include "editor/ItemAccessGrant.h"
#include "engine/FinalCutImportError.h"
#include "planning/CutPoints.h"
#include "platform/Files.h"

#include <fmt/format.h>

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

void ContentView::chooseCutTimes() {
    reportingFailures([&] {
        const auto path = environment_.host.chooseItem(
            {"Choose a text file of times, one a line, in seconds or as timecode.", "", true, false,
             false});
        if (!path || !fields_.project) return;
        const BusySign busy = environment_.host.showBusy();
        const ItemAccessGrant access(environment_.host, *path);
        const std::string name = fileName(*path);
        FileSource file(environment_.files, *path);
        std::vector<double> times = readCutTimes(file, name, *fields_.project);
        if (times.empty())
            throw FinalCutImportError::invalid(fmt::format("{} has no times.", name));
        change([&](EditorFields& fields) {
            fields.timesFile = {name, times};
            fields.settings.cutTimes = std::move(times);
        });
    });
}

std::string ContentView::cutTimesText() const {
    const std::vector<double>& times = fields_.settings.cutTimes;
    if (times.empty()) return "";
    const std::string count =
        fmt::format("{} {}", times.size(), times.size() == 1 ? "time" : "times");
    const bool isNamed = fields_.timesFile.times == times;
    return isNamed ? fmt::format("{} · {}", fields_.timesFile.name, count) : count;
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
