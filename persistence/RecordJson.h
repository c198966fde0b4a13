#pragma once

#include "engine/EditRevision.h"
#include "engine/EditSettings.h"
#include "persistence/EditHistory.h"
#include "platform/JsonReader.h"

#include <string>

namespace shotweaver {

/// The stored JSON of the records: objects whose keys are the field names, all required when
/// reading; unknown keys are ignored. Readers throw `PlatformError` with a sentence that says
/// where, writers for a number that is not finite.

std::string settingsText(const EditSettings& settings);
EditSettings readSettings(const JsonReader& json);

/// `settings` with the keys that the object has in place of the old values; every key is optional.
EditSettings readSettingsOver(const JsonReader& json, EditSettings settings);

std::string revisionText(const EditRevision& revision);
EditRevision readRevision(const JsonReader& json);

EditHistory readHistory(const JsonReader& json);

} // namespace shotweaver
