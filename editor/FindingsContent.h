#pragma once

#include "engine/import/Preflight.h"

#include <string>
#include <vector>

namespace shotweaver {

/// What the panel shows of a preflight's findings.

/// How many there are of each kind, in a line; empty when there are none.
std::string findingsLine(const std::vector<Finding>& findings);

/// The findings, one a paragraph, each with its kind. Of very many the first ones, and how many
/// more there are.
std::string findingsText(const std::vector<Finding>& findings);

} // namespace shotweaver
