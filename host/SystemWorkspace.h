#pragma once

#include "host/Workspace.h"
#include "platform/Environment.h"

#include <memory>

namespace shotweaver {

/// The workspace of the system that this is built for.
std::unique_ptr<Workspace> systemWorkspace(Environment environment);

} // namespace shotweaver
