#pragma once

#include <functional>
#include <optional>
#include <string>

namespace shotweaver {

/// Looks up an environment variable; nothing when it is not set.
using Environment = std::function<std::optional<std::string>(const char* name)>;

/// The process's own environment.
Environment systemEnvironment();

} // namespace shotweaver
