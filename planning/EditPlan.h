#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"
#include "engine/generation/CoverageReport.h"
#include "engine/generation/FixedParts.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// The included additional cameras, in angle order: video angles other than the main camera.
std::vector<std::string> selectedOtherCameras(const EditSettings& settings, const Project& project);

/// The typed sections in project frames, in row order. Throws `FinalCutImportError` for the first
/// timecode that cannot be read.
std::vector<FixedCameraSection> fixedCameraSections(const EditSettings& settings,
                                                    const Project& project);

/// Settings as the engine takes them. Throws like `fixedCameraSections`. Nothing else is checked.
GenerationInputs generationInputs(const EditSettings& settings, const Project& project);

/// The parts that the settings fix, in order; none where they cannot be laid, as those of an edit
/// that came from elsewhere may.
std::vector<FixedPart> plannedParts(const EditSettings& settings, const Project& project);

/// Generates as the editor does: shot length ranges with the minimum above the maximum are refused,
/// then the audio angle is checked. `kept` are shots of an earlier edit that stay. Throws
/// `FinalCutImportError`.
std::vector<Cut> generateCutList(const EditSettings& settings, const Project& project,
                                 std::vector<Cut> kept, RandomSource& random,
                                 const UUIDMaker& makeUUID);

/// The coverage of the planned selection; a message in its place when a timecode cannot be read or
/// the fixed parts do not fit.
SelectedCoverage coverageReport(const EditSettings& settings, const Project& project,
                                const std::vector<Cut>& kept);

/// The first problem of the planned selection's coverage as a sentence, or nothing. `report` is
/// what `coverageReport` gave; `locale` (a BCP 47 tag) writes the gap's seconds.
std::optional<std::string> coverageWarning(const SelectedCoverage& report,
                                           const EditSettings& settings, const Project& project,
                                           const std::string& locale);

} // namespace shotweaver
