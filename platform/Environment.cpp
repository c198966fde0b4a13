#include "platform/Environment.h"

#include <cstdlib>

namespace shotweaver {

Environment systemEnvironment() {
    return [](const char* name) -> std::optional<std::string> {
        const char* const value = std::getenv(name);
        if (value == nullptr) return std::nullopt;
        return value;
    };
}

} // namespace shotweaver
