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

void ContentView::appendSection(std::string name, std::int64_t start, std::int64_t end) {
    change([&](EditorFields& fields) {
        const CutEngine& engine = fields.project->engine;
        const std::int64_t limit = engine.length - framesOf(fields.settings.closing, engine);
        if (start >= limit || start > end) {
            fields.error = "There is no room for another section after the existing sections and "
                           "opening or closing shots.";
            return;
        }
        fields.settings.sections.push_back({environment_.makeUUID(), std::move(name),
                                            fields.settings.mainCamera, engine.timecode(start),
                                            engine.timecode(std::min(end, limit))});
    });
}

void ContentView::addSection() {
    constexpr double proposedSeconds = 30;
    if (!fields_.project) return;
    const CutEngine& engine = fields_.project->engine;
    const std::int64_t start = nextSectionStart(fields_.settings, engine);
    appendSection("", start, start + wholeFrames(engine, proposedSeconds));
}

void ContentView::addChapterSection(std::size_t chapter) {
    if (!fields_.project || chapter >= fields_.project->markers.chapters.size()) return;
    const Project& project = *fields_.project;
    const FrameRange range = chapterRange(chapter, project);
    const std::int64_t opening = framesOf(fields_.settings.opening, project.engine);
    // A chapter that the opening covers has no room.
    const std::int64_t start = std::max(range.lowerBound, opening + (opening >= range.upperBound));
    appendSection(project.markers.chapters[chapter].name, start, range.upperBound);
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
                              Saving saving, std::string_view control) {
    edit(
        [&](EditSettings& settings) {
            if (row < settings.sections.size()) change(settings.sections[row]);
        },
        saving, control);
}

} // namespace shotweaver
