#include "engine/CutEngine.h"
#include "engine/FinalCutImportError.h"
#include "engine/generation/CameraUsage.h"

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

/// A planned shot's frames, at least 1. Its seconds are not checked here, so they may be anything.
std::int64_t plannedFrames(const CutEngine& engine, const std::optional<BookendShot>& shot) {
    if (!shot) return 0;
    constexpr double largest = 0x1p62;
    const double frames = engine.frameDuration.frames(shot->seconds);
    if (!(frames > 1)) return 1;
    return std::llround(std::min(frames, largest));
}

void append(std::vector<FrameRange>& ranges, const std::vector<FrameRange>& more) {
    ranges.insert(ranges.end(), more.begin(), more.end());
}

} // namespace

CameraUsageMap cameraUsage(const std::vector<Cut>& cuts) {
    CameraUsageMap usage;
    const Cut* previous = nullptr;
    for (const Cut& cut : cuts) {
        CameraUsage& entry = usage[cut.angle];
        entry.id = cut.angle;
        entry.frames += cut.duration;
        const bool continues = previous && previous->angle == cut.angle &&
                               previous->start + previous->duration == cut.start;
        if (!continues) ++entry.shots;
        previous = &cut;
    }
    return usage;
}

CameraUsage usageOf(const CameraUsageMap& usage, std::string_view angle) {
    const auto found = usage.find(angle);
    return found == usage.end() ? CameraUsage{std::string(angle)} : found->second;
}

std::vector<FrameRange> CutEngine::coveredParts(std::string_view angle, std::int64_t from,
                                                std::int64_t to) const {
    const Coverage& footage = coverageOf(angle);
    auto range = std::upper_bound(
        footage.begin(), footage.end(), from,
        [](std::int64_t frame, const FrameRange& each) { return frame < each.upperBound; });
    std::vector<FrameRange> parts;
    for (; range != footage.end() && range->lowerBound < to; ++range) {
        const FrameRange part{std::max(from, range->lowerBound), std::min(to, range->upperBound)};
        if (part.lowerBound < part.upperBound) parts.push_back(part);
    }
    return parts;
}

SelectedCoverage
CutEngine::selectedCoverage(const std::vector<std::string>& cameras,
                            const std::optional<BookendShot>& opening,
                            const std::optional<BookendShot>& closing,
                            const std::vector<FixedCameraSection>& sections) const {
    const std::int64_t openingFrames = plannedFrames(*this, opening);
    const std::int64_t closingStart = length - plannedFrames(*this, closing);
    if (closingStart < openingFrames)
        return {{}, "Opening and closing shots exceed the project length. Shorten them."};

    std::vector<FixedCameraSection> sorted;
    try {
        sorted = validateSections(sections, openingFrames, closingStart);
    } catch (const FinalCutImportError& error) {
        return {{}, error.what()};
    }

    SelectedCoverage report;
    const auto addCameras = [&](std::int64_t from, std::int64_t to) {
        for (const std::string& camera : cameras)
            append(report.covered, coveredParts(camera, from, to));
    };
    std::int64_t cursor = openingFrames;
    for (const FixedCameraSection& section : sorted) {
        addCameras(cursor, section.start);
        append(report.covered, coveredParts(section.angle, section.start, section.end));
        cursor = section.end;
    }
    addCameras(cursor, closingStart);
    if (opening) append(report.covered, coveredParts(opening->angle, 0, openingFrames));
    if (closing) append(report.covered, coveredParts(closing->angle, closingStart, length));
    return report;
}

} // namespace shotweaver
