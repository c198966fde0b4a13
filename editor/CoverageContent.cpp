#include "editor/CoverageContent.h"

#include "planning/EditorTexts.h"
#include "planning/ProjectDefaults.h"
#include "platform/Locale.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

CoverageBar angleBar(const std::string& id, const EditSettings& settings,
                     const ImportedProject& imported, const CutEngine& engine) {
    const bool isUsed = isUsedByPlan(settings, id);
    return {angleLabel(id, imported) + (isUsed ? "" : " (excluded)"),
            isUsed ? CoverageBar::Colour::used : CoverageBar::Colour::unused,
            engine.coverage.at(id)};
}

std::optional<CoverageBar> audioBar(const EditSettings& settings, const ImportedProject& imported,
                                    const CutEngine& engine) {
    if (settings.audio.empty()) return std::nullopt;
    const auto found = engine.audioCoverage.find(settings.audio);
    return CoverageBar{"Audio: " + angleLabel(settings.audio, imported), CoverageBar::Colour::audio,
                       found == engine.audioCoverage.end() ? Coverage{} : found->second};
}

CoverageSummary summaryOf(const SelectedCoverage& report, const Coverage& gaps,
                          const CutEngine& engine, const std::string& locale) {
    if (report.message) return {CoverageSummary::Kind::message, *report.message, {}};
    if (gaps.empty())
        return {CoverageSummary::Kind::complete,
                "Selected cameras cover the whole project, including all fixed camera sections.",
                {}};
    const DecimalFormat number(locale);
    std::vector<std::string> lines;
    for (const FrameRange& gap : gaps)
        lines.push_back(fmt::format("{} · {} seconds", rangeText(gap, engine),
                                    number.text(engine.seconds(gap.length()))));
    return {CoverageSummary::Kind::gaps, fmt::format("{} uncovered video section(s)", gaps.size()),
            std::move(lines)};
}

} // namespace

CoverageContent coverageContent(const SelectedCoverage& report, const EditSettings& settings,
                                const ImportedProject& imported, const CutEngine& engine,
                                const std::string& locale) {
    CoverageContent content;
    content.axisStart = engine.timecode(0);
    content.axisEnd = engine.timecode(engine.length);
    for (const std::string& id : videoAngleIDs(imported, engine))
        content.angles.push_back(angleBar(id, settings, imported, engine));
    content.audio = audioBar(settings, imported, engine);
    // With a message nothing is known of the gaps.
    content.gaps = {"Selected video gaps", CoverageBar::Colour::gap,
                    report.message ? Coverage{} : uncoveredRanges(report.covered, engine.length)};
    content.summary = summaryOf(report, content.gaps.ranges, engine, locale);
    return content;
}

bool isUsedByPlan(const EditSettings& settings, const std::string& camera) {
    return camera == settings.mainCamera || settings.otherCameras.contains(camera) ||
           (settings.openingEnabled && camera == settings.openingCamera) ||
           (settings.closingEnabled && camera == settings.closingCamera) ||
           std::any_of(settings.sections.begin(), settings.sections.end(),
                       [&](const SectionDraft& section) { return section.camera == camera; });
}

std::string rangeText(const FrameRange& range, const CutEngine& engine) {
    return fmt::format("{} to {}", engine.timecode(range.lowerBound),
                       engine.timecode(range.upperBound));
}

std::string accessibleRanges(const Coverage& ranges, const CutEngine& engine) {
    if (ranges.empty()) return "No sections";
    std::vector<std::string> texts;
    for (const FrameRange& range : ranges)
        texts.push_back(rangeText(range, engine));
    return joined(texts, ", ");
}

} // namespace shotweaver
