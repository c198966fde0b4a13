#pragma once

#include "platform/Environment.h"

#include <optional>
#include <string>

namespace shotweaver {

/// Hands an exported XML to Final Cut Pro and waits for what the system says to it. The path may be
/// relative to the working folder. Gives why that failed, a sentence, or nothing after success.
std::optional<std::string> handOff(const std::string& xmlPath, const Environment& environment);

} // namespace shotweaver
