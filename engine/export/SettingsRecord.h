#pragma once

#include "engine/EditRevision.h"
#include "engine/Project.h"

#include <string>

namespace shotweaver {

/// The plain-text record of an edit: project, settings, actual usage and cut list in readable
/// lines. UTF-8, every line ended by a line feed.
std::string settingsRecordText(const Project& project, const EditRevision& revision,
                               const KeptShots& kept);

} // namespace shotweaver
