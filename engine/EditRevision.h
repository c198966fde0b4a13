#pragma once

#include "engine/EditSettings.h"
#include "platform/Uuid.h"

#include <set>
#include <vector>

namespace shotweaver {

/// One generated edit with the settings it was made with. A revision never changes: what has been
/// saved of it is not encoded again. What is decided later about its cuts stands beside the
/// history.
struct EditRevision {
    UUID id;
    double created = 0; // seconds since 2001-01-01 00:00:00 UTC
    EditSettings settings;
    std::vector<Cut> cuts;

    bool operator==(const EditRevision&) const = default;
};

/// Identifiers of the shots that shuffling leaves alone, in whatever revisions they are.
using KeptShots = std::set<UUID>;

/// The cuts that are among the kept shots, in their order.
std::vector<Cut> keptCuts(const std::vector<Cut>& cuts, const KeptShots& kept);

} // namespace shotweaver
