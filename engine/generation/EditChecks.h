#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace shotweaver {

/// Where the free part of an edit lies, in frames of the project: after the opening shot and before
/// the closing one.
struct BookendFrames {
    std::int64_t opening = 0;
    std::int64_t closingStart = 0;
};

// Each but the last throws `FinalCutImportError` with the sentence of the first failed check.

/// Refuses an audio angle whose sound does not cover the whole project.
void checkAudioCoverage(const CutEngine& engine, std::string_view audio);

/// The length of an opening or closing shot, at least 1 frame; 0 without one.
std::int64_t bookendFrames(const CutEngine& engine, const std::optional<BookendShot>& shot);

/// The sections sorted by start (a stable sort): inside of [openingFrames, closingStart), not
/// overlapping, each within footage of its camera.
std::vector<FixedCameraSection> validateSections(const CutEngine& engine,
                                                 std::vector<FixedCameraSection> sections,
                                                 std::int64_t openingFrames,
                                                 std::int64_t closingStart);

/// Checks the selected cameras and the numbers of a rough edit.
void checkInputs(const CutEngine& engine, const GenerationInputs& inputs);

/// Checks that opening and closing shot fit into the project and into their cameras' footage.
BookendFrames checkBookends(const CutEngine& engine, const GenerationInputs& inputs);

enum class CutFault { none, invalid, incomplete };

/// Checks that cuts follow each other from frame 0 to the project's end, each within its camera's
/// footage. The first fault counts: an invalid cut, or else an end before the project's.
CutFault checkCuts(const CutEngine& engine, const std::vector<Cut>& cuts);

} // namespace shotweaver
