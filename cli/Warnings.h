#pragma once

#include "engine/import/Preflight.h"

#include <string>
#include <vector>

namespace shotweaver {

/// A line "warning: …" for each finding.
std::string warningLines(const std::vector<Finding>& findings);

} // namespace shotweaver
