#include "engine/AngleNames.h"

#include "platform/Text.h"

namespace shotweaver {

std::string normalizedName(std::string_view name) {
    return normalizedNFC(lowercased(trimmed(name)));
}

AngleNames::AngleNames(const std::vector<ImportedAngle>& angles) {
    for (const ImportedAngle& angle : angles) {
        const auto [entry, isNew] = ids_.try_emplace(normalizedName(angle.name), angle.id);
        if (!isNew) entry->second.reset();
    }
}

std::optional<std::string> AngleNames::idOf(std::string_view name) const {
    const auto entry = ids_.find(normalizedName(name));
    return entry == ids_.end() ? std::nullopt : entry->second;
}

bool AngleNames::isRepeated(std::string_view name) const {
    const auto entry = ids_.find(normalizedName(name));
    return entry != ids_.end() && !entry->second;
}

} // namespace shotweaver
