#include "editor/EditListContent.h"

#include "planning/EditTexts.h"

#include <fmt/format.h>

namespace shotweaver {

std::vector<EditRow> editRows(const EditHistory& history, const Project& project) {
    std::vector<EditRow> rows;
    const EditSettings* before = nullptr;
    for (const EditRevision& edit : history.items) {
        const bool isChanged = before && *before != edit.settings;
        rows.push_back({fmt::format("Edit {}", rows.size() + 1), edit.created,
                        fmt::format("{}", edit.cuts.size()),
                        fmt::format("{}%", mainSharePercent(edit.cuts, edit.settings, project)),
                        isChanged ? "Settings changed" : ""});
        before = &edit.settings;
    }
    return rows;
}

} // namespace shotweaver
