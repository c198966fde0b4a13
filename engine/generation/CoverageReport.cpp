#include "engine/generation/CoverageReport.h"

#include "engine/FinalCutImportError.h"
#include "engine/generation/EditChecks.h"
#include "engine/generation/FixedParts.h"

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

/// Of the cameras between the parts, and of its own camera in each part; those of the opening and
/// the closing come last.
std::vector<FrameRange> coverageAround(const CutEngine& engine,
                                       const std::vector<std::string>& cameras,
                                       const std::vector<FixedPart>& parts) {
    std::vector<FrameRange> covered;
    std::vector<FrameRange> atEnds;
    const auto addCameras = [&](std::int64_t from, std::int64_t to) {
        for (const std::string& camera : cameras)
            append(covered, engine.coveredParts(camera, from, to));
    };
    std::int64_t cursor = 0;
    for (const FixedPart& part : parts) {
        const bool isAtEnd =
            part.kind == FixedPart::Kind::opening || part.kind == FixedPart::Kind::closing;
        addCameras(cursor, part.start);
        append(isAtEnd ? atEnds : covered, engine.coveredParts(part.angle, part.start, part.end));
        cursor = part.end;
    }
    addCameras(cursor, engine.length);
    append(covered, atEnds);
    return covered;
}

} // namespace

SelectedCoverage selectedCoverage(const CutEngine& engine, const std::vector<std::string>& cameras,
                                  const std::optional<BookendShot>& opening,
                                  const std::optional<BookendShot>& closing,
                                  const std::vector<FixedCameraSection>& sections,
                                  const std::vector<Cut>& kept) {
    const std::int64_t openingFrames = plannedFrames(engine, opening);
    const std::int64_t closingStart = engine.length - plannedFrames(engine, closing);
    if (closingStart < openingFrames)
        return {{}, "Opening and closing shots exceed the project length. Shorten them."};

    try {
        const auto sorted = validateSections(engine, sections, openingFrames, closingStart);
        const auto parts =
            fixedParts(engine, {openingFrames, closingStart}, opening, closing, sorted, kept);
        return {coverageAround(engine, cameras, parts), std::nullopt};
    } catch (const FinalCutImportError& error) {
        return {{}, error.what()};
    }
}

} // namespace shotweaver
