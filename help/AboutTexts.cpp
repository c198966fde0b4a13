#include "help/AboutTexts.h"

#include <fmt/format.h>

namespace shotweaver {

std::string versionText(const std::optional<std::string>& version,
                        const std::optional<std::string>& build) {
    return fmt::format("Version {} (Beta) (Build {})", version.value_or("0.1"),
                       build.value_or("1"));
}

} // namespace shotweaver
