#pragma once

#include "engine/EditRevision.h"
#include "engine/Project.h"

#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// A cut list for spreadsheets and other programs, as RFC 4180 has it: UTF-8, with the header
/// Start,End,Camera,Seconds,Kept,Why; times in project timecode. `reasons` is what `explainCuts`
/// gave.
std::string cutListCsv(const std::vector<Cut>& cuts, const Project& project, const KeptShots& kept,
                       const std::vector<std::vector<std::string>>& reasons);

struct CsvCutList {
    std::vector<Cut> cuts; // from the project's start to its end
    KeptShots kept;
};

/// Reads such a list, also one with ";" and with other columns, in any order: only Start and Camera
/// are needed. A shot lasts to the start of the next. Footage is not looked at.
///
/// Throws `FinalCutImportError` with the number of the first shot that is wrong, and how.
CsvCutList readCutListCsv(std::string_view text, const Project& project, const UUIDMaker& makeUUID);

} // namespace shotweaver
