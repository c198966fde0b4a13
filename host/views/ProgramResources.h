#pragma once

#include "host/ExtensionDescription.h"

#include <string>

namespace shotweaver {

/// The program's description of itself, which is built into it.
ExtensionDescription extensionDescription();

/// Where the manual lies: with the program's other files, beside the folder that holds it. Nothing
/// says that it is there.
std::string manualPath();

} // namespace shotweaver
