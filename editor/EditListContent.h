#pragma once

#include "engine/Project.h"
#include "persistence/EditHistory.h"

#include <string>
#include <vector>

namespace shotweaver {

/// An edit of the history in the list of edits.
struct EditRow {
    std::string name;     // "Edit 2"
    double created = 0;   // seconds since 2001-01-01 00:00:00 UTC
    std::string cuts;     // how many
    std::string share;    // the main camera's, of the whole project: "68%"
    std::string settings; // "Settings changed" where they are not those of the edit before

    bool operator==(const EditRow&) const = default;
};

/// All edits, oldest first.
std::vector<EditRow> editRows(const EditHistory& history, const Project& project);

} // namespace shotweaver
