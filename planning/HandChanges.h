#pragma once

#include "engine/EditRevision.h"
#include "engine/Project.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// Changes that a person makes to one row of a cut list. Rows count from 0 and must exist.

/// Why a row's camera cannot be changed in its place: it is the opening, the closing or a fixed
/// section of the revision. Nothing when it can.
std::optional<std::string> cameraIsFixed(const EditRevision& revision, std::size_t row,
                                         const Project& project);

/// Why the cut between the row before and this one cannot be moved; nothing when it can.
std::optional<std::string> startIsFixed(const EditRevision& revision, std::size_t row,
                                        const Project& project);

/// Where a camera lacks footage during a cut, in a sentence; nothing when it has footage for all of
/// it.
std::optional<std::string> missingFootage(const Cut& cut, const std::string& camera,
                                          const Project& project);

/// By how many frames the cut between the row before (there must be one) and this one can move
/// instead of `frames`: the nearest that leaves both a frame and footage.
std::int64_t possibleRoll(const std::vector<Cut>& cuts, std::size_t row, std::int64_t frames,
                          const CutEngine& engine);

} // namespace shotweaver
