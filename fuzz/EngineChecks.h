#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"

#include <vector>

namespace shotweaver::fuzz {

/// What every engine promises: frame terms in range, and for exactly the summary's angles sorted
/// coverage inside of the project.
void checkEngine(const CutEngine& engine, const ImportedProject& summary);

/// What every generated edit promises: gap-free from 0 to the project's end, each cut in its
/// camera's footage, opening, sections and closing where they were asked for, only selected cameras
/// in between, and none of them back before its return time.
void checkGeneratedCuts(const CutEngine& engine, const GenerationInputs& inputs,
                        const std::vector<Cut>& cuts);

} // namespace shotweaver::fuzz
