#pragma once

#include "engine/EditRevision.h"
#include "engine/Project.h"

#include <string>
#include <vector>

namespace shotweaver {

/// Why each cut is there, in one or more short sentences: what can be told from the cuts and the
/// settings. What was drawn is not known. Nothing is required of the cuts but that the project has
/// their footage: they may be changed by hand, or made with other settings.
std::vector<std::vector<std::string>> explainCuts(const EditSettings& settings,
                                                  const Project& project,
                                                  const std::vector<Cut>& cuts,
                                                  const KeptShots& kept);

} // namespace shotweaver
