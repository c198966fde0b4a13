#pragma once

#include "engine/EditRevision.h"
#include "engine/EditSettings.h"
#include "persistence/EditHistory.h"
#include "platform/JsonReader.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// A revision on its own, with its kept shots after the cuts, if it has any.
std::string loneRevisionText(const EditRevision& revision, const KeptShots& kept);

/// The kept shots that a session or a lone revision tells of.
KeptShots readKeptShots(const JsonReader& json);
/// ,"keptCuts":["…","…"] or nothing.
std::string keptShotsField(const KeptShots& kept);

EditHistory readHistory(const JsonReader& json);

/// Parses a session into a document in which every edit's "cuts" are empty; they come into
/// `cutLists`, one for each edit that has some. Throws as `parseJson` does; nothing when a cut is
/// not as it should be, for `parseJson` and `readHistory` to say where.
std::optional<Json> parseSession(std::string_view json, std::vector<std::vector<Cut>>& cutLists);

} // namespace shotweaver
