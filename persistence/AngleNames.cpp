#include "persistence/AngleNames.h"

#include "platform/Text.h"

namespace shotweaver {

std::string normalizedName(std::string_view name) {
    return normalizedNFC(lowercased(trimmed(name)));
}

std::optional<std::string> findAngle(std::string_view name,
                                     const std::vector<ImportedAngle>& angles) {
    const std::string wanted = normalizedName(name);
    std::optional<std::string> found;
    for (const ImportedAngle& angle : angles) {
        if (normalizedName(angle.name) != wanted) continue;
        if (found) return std::nullopt;
        found = angle.id;
    }
    return found;
}

} // namespace shotweaver
