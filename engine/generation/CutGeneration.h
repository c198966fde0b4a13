#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "platform/Random.h"
#include "platform/Uuid.h"

#include <vector>

namespace shotweaver {

/// A rough edit: an ordered, gap-free cut list from frame 0 to the project's end. Draws from
/// `random` for each free shot, in this order: the weighted choice, the pacing factor, the length
/// within the range (when the kind has one), the doubling (main shots with `doubleMain` only).
///
/// A free shot that nothing shortens ends at the cut point nearest to its drawn end, among those
/// that its kind's lengths allow. A note's shot shows its camera from there on; for it only the
/// length is drawn.
///
/// Kept cuts are laid as they are. The free shots beside a kept cut or a note's shot, up to the
/// next fixed part or note, are laid up to 16 times with the next draws, until none is too short
/// and no side shows one camera on both; or else the best of them stays.
///
/// Throws `FinalCutImportError` with the sentence of the first failed check.
std::vector<Cut> generateCuts(const CutEngine& engine, const GenerationInputs& inputs,
                              RandomSource& random, const UUIDMaker& makeUUID);

} // namespace shotweaver
