#include "editor/CoverageContent.h"

#include "platform/Locale.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

CoverageBar angleBar(const std::string& id, const EditSettings& settings, const Project& project) {
    const bool isUsed = isUsedByPlan(settings, id);
    return {project.label(id) + (isUsed ? "" : " (excluded)"),
            isUsed ? CoverageBar::Colour::used : CoverageBar::Colour::unused,
            project.engine.coverage.at(id)};
}

std::optional<CoverageBar> audioBar(const EditSettings& settings, const Project& project) {
    if (settings.audio.empty()) return std::nullopt;
    const CoverageMap& sound = project.engine.audioCoverage;
    const auto found = sound.find(settings.audio);
    return CoverageBar{"Audio: " + project.label(settings.audio), CoverageBar::Colour::audio,
                       found == sound.end() ? Coverage{} : found->second};
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
                                const Project& project, const std::string& locale) {
    const CutEngine& engine = project.engine;
    CoverageContent content;
    content.axisStart = engine.timecode(0);
    content.axisEnd = engine.timecode(engine.length);
    for (const ImportedAngle& angle : project.videoAngles)
        content.angles.push_back(angleBar(angle.id, settings, project));
    content.audio = audioBar(settings, project);
    // With a message nothing is known of the gaps.
    content.gaps = {"Selected video gaps", CoverageBar::Colour::gap,
                    report.message ? Coverage{} : uncoveredRanges(report.covered, engine.length)};
    content.summary = summaryOf(report, content.gaps.ranges, engine, locale);
    return content;
}

bool isUsedByPlan(const EditSettings& settings, const std::string& camera) {
    return camera == settings.mainCamera || settings.otherCameras.contains(camera) ||
           (settings.opening.isEnabled && camera == settings.opening.camera) ||
           (settings.closing.isEnabled && camera == settings.closing.camera) ||
           std::any_of(settings.sections.begin(), settings.sections.end(),
                       [&](const SectionDraft& section) { return section.camera == camera; });
}

std::string rangeText(const FrameRange& range, const CutEngine& engine) {
    return fmt::format("{} to {}", engine.timecode(range.lowerBound),
                       engine.timecode(range.upperBound));
}

std::string gapText(const FrameRange& gap, const Project& project) {
    std::vector<std::string> cameras;
    for (const ImportedAngle& angle : project.videoAngles) {
        const std::vector<FrameRange> parts =
            project.engine.coveredParts(angle.id, gap.lowerBound, gap.upperBound);
        if (parts.empty()) continue;
        const bool isWhole = parts == std::vector<FrameRange>{gap};
        cameras.push_back(project.label(angle.id) + (isWhole ? "" : " (in part)"));
    }
    return fmt::format("{}\n{}", rangeText(gap, project.engine),
                       cameras.empty() ? "No camera recorded here."
                                       : "Recorded here: " + joined(cameras, ", "));
}

std::string accessibleRanges(const Coverage& ranges, const CutEngine& engine) {
    if (ranges.empty()) return "No sections";
    std::vector<std::string> texts;
    for (const FrameRange& range : ranges)
        texts.push_back(rangeText(range, engine));
    return joined(texts, ", ");
}

} // namespace shotweaver
