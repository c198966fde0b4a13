#pragma once

#include "host/Workspace.h"

#include <optional>
#include <string>

namespace shotweaver {

/// Hands an exported XML to the workspace's Final Cut Pro and waits for what the workspace says to
/// it. The path may be relative to the working folder. Gives why that failed, a sentence, or
/// nothing after success.
std::optional<std::string> handOff(const std::string& xmlPath, Workspace& workspace);

} // namespace shotweaver
