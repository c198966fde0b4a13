#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/generation/EditChecks.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// A shot whose camera and start nothing draws and nothing merges with, in frames of the project:
/// [start, end).
struct FixedPart {
    enum class Kind { opening, closing, section, kept, note };

    Kind kind;
    std::string angle;
    std::int64_t start;
    std::int64_t end;           // of a note's shot the latest: its length is drawn
    std::optional<UUID> keptID; // of the kept cut that it is, or that lies in the same place
};

/// Whether a cut is all of a part, in place and camera.
bool isPlaceOf(const Cut& cut, const FixedPart& part);

/// The parts in order. `sections` and `bookends` are checked already; `opening` and `closing` say
/// which camera they show. A kept cut that equals another part in place and camera becomes that
/// part.
///
/// Throws `FinalCutImportError` for the first kept cut, by start, that lacks footage, or else that
/// overlaps the opening, the closing, a section or an earlier kept cut.
std::vector<FixedPart> fixedParts(const CutEngine& engine, const BookendFrames& bookends,
                                  const std::optional<BookendShot>& opening,
                                  const std::optional<BookendShot>& closing,
                                  const std::vector<FixedCameraSection>& sections,
                                  std::vector<Cut> kept);

/// The parts with the notes, which are in order, between them. Those inside a part are passed over,
/// and of several at one frame all but the first.
///
/// Throws `FinalCutImportError` for the first note whose camera lacks footage at its frame.
std::vector<FixedPart> withNotes(const CutEngine& engine, const std::vector<FixedPart>& parts,
                                 const std::vector<CameraNote>& notes);

} // namespace shotweaver
