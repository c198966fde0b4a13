#include "editor/ContentView.h"
#include "editor/ContentViewChange.h"
#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "planning/ProjectDefaults.h"

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

std::int64_t wholeFrames(const CutEngine& engine, double seconds) {
    return std::llround(framesForSeconds(seconds, engine.frameNumerator, engine.frameDenominator));
}

/// Where a new section may begin: after the opening, and after the last row when its end can be
/// read.
std::int64_t nextSectionStart(const EditorFields& fields) {
    const std::int64_t opening =
        fields.openingEnabled ? wholeFrames(*fields.engine, fields.openingSeconds) : 0;
    if (fields.fixedSections.empty()) return opening;
    try {
        return std::max(fields.engine->frameForTimecode(fields.fixedSections.back().end), opening);
    } catch (const FinalCutImportError&) {
        return opening;
    }
}

} // namespace

void ContentView::chooseMainCamera(const std::string& camera) {
    EditSettings settings = currentSettings();
    shotweaver::chooseMainCamera(settings, camera, videoAngleIDs());
    applySettings(settings);
}

void ContentView::chooseAudio(const std::string& angle) {
    change([&](EditorFields& fields) { fields.audioAngle = angle; });
}

void ContentView::setWait(const std::string& camera, double seconds) {
    change([&](EditorFields& fields) { fields.returnTimes[camera] = seconds; });
}

void ContentView::setIncluded(const std::string& camera, bool isIncluded) {
    change([&](EditorFields& fields) {
        if (isIncluded)
            fields.otherCameras.insert(camera);
        else
            fields.otherCameras.erase(camera);
    });
}

void ContentView::setFrequency(const std::string& camera, double weight) {
    change([&](EditorFields& fields) { fields.frequencies[camera] = weight; });
}

void ContentView::setShare(double percent) {
    change([&](EditorFields& fields) { fields.aShare = percent; });
}

void ContentView::setMainMinimum(double seconds) {
    change([&](EditorFields& fields) {
        fields.mainMinimum = seconds;
        fields.mainMaximum = std::max(fields.mainMaximum, seconds);
    });
}

void ContentView::setMainMaximum(double seconds) {
    change([&](EditorFields& fields) {
        fields.mainMaximum = seconds;
        fields.mainMinimum = std::min(fields.mainMinimum, seconds);
    });
}

void ContentView::setOtherMinimum(double seconds) {
    change([&](EditorFields& fields) {
        fields.otherMinimum = seconds;
        fields.otherMaximum = std::max(fields.otherMaximum, seconds);
    });
}

void ContentView::setOtherMaximum(double seconds) {
    change([&](EditorFields& fields) {
        fields.otherMaximum = seconds;
        fields.otherMinimum = std::min(fields.otherMinimum, seconds);
    });
}

void ContentView::setDoubleMain(bool isDoubled) {
    change([&](EditorFields& fields) { fields.doubleMain = isDoubled; });
}

void ContentView::setOpeningEnabled(bool isEnabled) {
    change([&](EditorFields& fields) { fields.openingEnabled = isEnabled; });
}

void ContentView::setOpeningCamera(const std::string& camera) {
    change([&](EditorFields& fields) { fields.openingCamera = camera; });
}

void ContentView::setOpeningSeconds(double seconds) {
    change([&](EditorFields& fields) { fields.openingSeconds = seconds; });
}

void ContentView::setClosingEnabled(bool isEnabled) {
    change([&](EditorFields& fields) { fields.closingEnabled = isEnabled; });
}

void ContentView::setClosingCamera(const std::string& camera) {
    change([&](EditorFields& fields) { fields.closingCamera = camera; });
}

void ContentView::setClosingSeconds(double seconds) {
    change([&](EditorFields& fields) { fields.closingSeconds = seconds; });
}

void ContentView::addSection() {
    constexpr double proposedSeconds = 30;
    change([&](EditorFields& fields) {
        if (!fields.engine) return;
        const CutEngine& engine = *fields.engine;
        const std::int64_t start = nextSectionStart(fields);
        const std::int64_t limit =
            engine.length -
            (fields.closingEnabled ? wholeFrames(engine, fields.closingSeconds) : 0);
        if (start >= limit) {
            fields.error = "There is no room for another section after the existing sections and "
                           "opening or closing shots.";
            return;
        }
        const std::int64_t end = std::min(start + wholeFrames(engine, proposedSeconds), limit);
        fields.fixedSections.push_back({environment_.makeUUID(), "", fields.cameraA,
                                        engine.timecode(start), engine.timecode(end)});
    });
}

template <class Body>
void ContentView::changeSection(std::size_t row, Body body, Saving saving) {
    change(
        [&](EditorFields& fields) {
            if (row < fields.fixedSections.size()) body(fields.fixedSections[row]);
        },
        saving);
}

void ContentView::removeSection(std::size_t row) {
    change([&](EditorFields& fields) {
        auto& sections = fields.fixedSections;
        if (row < sections.size())
            sections.erase(sections.begin() + static_cast<std::ptrdiff_t>(row));
    });
}

void ContentView::setSectionName(std::size_t row, const std::string& name) {
    changeSection(
        row, [&](SectionDraft& section) { section.name = name; }, Saving::soon);
}

void ContentView::setSectionCamera(std::size_t row, const std::string& camera) {
    changeSection(
        row, [&](SectionDraft& section) { section.camera = camera; }, Saving::now);
}

void ContentView::setSectionStart(std::size_t row, const std::string& timecode) {
    changeSection(
        row, [&](SectionDraft& section) { section.start = timecode; }, Saving::soon);
}

void ContentView::setSectionEnd(std::size_t row, const std::string& timecode) {
    changeSection(
        row, [&](SectionDraft& section) { section.end = timecode; }, Saving::soon);
}

} // namespace shotweaver
