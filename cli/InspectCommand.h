#pragma once

#include "cli/Command.h"

namespace shotweaver {

/// "inspect": summarises a project. A project that imports but whose engine is refused is still
/// summarised: the result then has both an output and a failure.
Verb addInspect(CLI::App& program);

} // namespace shotweaver
