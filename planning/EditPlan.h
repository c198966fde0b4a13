#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/ImportedProject.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// The included additional cameras, in angle order: video angles other than the main camera.
std::vector<std::string> selectedOtherCameras(const EditSettings& settings,
                                              const ImportedProject& imported,
                                              const CutEngine& engine);

/// The typed sections in project frames, in row order. Throws `FinalCutImportError` for the first
/// timecode that cannot be read.
std::vector<FixedCameraSection> fixedCameraSections(const EditSettings& settings,
                                                    const CutEngine& engine);

/// Settings as the engine takes them. Throws like `fixedCameraSections`. Nothing else is checked.
GenerationInputs generationInputs(const EditSettings& settings, const ImportedProject& imported,
                                  const CutEngine& engine);

/// Generates as the editor does: shot length ranges with the minimum above the maximum are refused,
/// then the audio angle is checked. Throws `FinalCutImportError`.
std::vector<Cut> generateCutList(const EditSettings& settings, const ImportedProject& imported,
                                 const CutEngine& engine, RandomSource& random,
                                 const UUIDMaker& makeUUID);

/// The coverage of the planned selection; a message in its place when a timecode cannot be read or
/// the fixed parts do not fit.
SelectedCoverage coverageReport(const EditSettings& settings, const ImportedProject& imported,
                                const CutEngine& engine);

/// The first problem of the planned selection's coverage as a sentence, or nothing. `report` is
/// what `coverageReport` gave; `locale` (a BCP 47 tag) writes the gap's seconds.
std::optional<std::string> coverageWarning(const SelectedCoverage& report,
                                           const EditSettings& settings, const CutEngine& engine,
                                           const std::string& locale);

} // namespace shotweaver
