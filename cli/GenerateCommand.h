#pragma once

#include "cli/Command.h"

namespace shotweaver {

/// "generate": makes a rough edit, and exports it when an output folder is given.
Verb addGenerate(CLI::App& program);

} // namespace shotweaver
