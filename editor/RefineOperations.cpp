#include "editor/ContentView.h"

#include "editor/ItemAccessGrant.h"
#include "engine/FinalCutImportError.h"
#include "engine/export/ExportFiles.h"
#include "engine/generation/EditChecks.h"
#include "planning/CutListCsv.h"
#include "planning/CutReasons.h"
#include "planning/EditPlan.h"
#include "planning/HandChanges.h"
#include "platform/Files.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>
#include <utility>

namespace shotweaver {

void ContentView::keptDidChange() {
    forgetCoverage();
    handChange_.reset();
    saveIsWanted_ = true;
    restoreIsNews_ = false;
}

void ContentView::toggleKept(const std::vector<std::size_t>& rows) {
    const std::vector<Cut>& cuts = fields_.cuts();
    std::vector<UUID> chosen;
    for (const std::size_t row : rows)
        if (row < cuts.size()) chosen.push_back(cuts[row].id);
    if (chosen.empty()) return;
    change(
        [&](EditorFields& fields) {
            const bool areKept = std::all_of(chosen.begin(), chosen.end(), [&](const UUID& id) {
                return fields.kept.contains(id);
            });
            for (const UUID& id : chosen)
                areKept ? void(fields.kept.erase(id)) : void(fields.kept.insert(id));
            keptDidChange();
        },
        Saving::soon);
}

void ContentView::keepCamera(const std::string& camera) {
    change(
        [&](EditorFields& fields) {
            for (const Cut& cut : fields.cuts())
                if (cut.angle == camera) fields.kept.insert(cut.id);
            keptDidChange();
        },
        Saving::soon);
}

void ContentView::letGoOfAll() {
    change(
        [&](EditorFields& fields) {
            for (const Cut& cut : fields.keptCuts())
                fields.kept.erase(cut.id);
            keptDidChange();
        },
        Saving::soon);
}

/// Identifiers of cuts that are in no revision any more leave the set.
void ContentView::dropForgottenKept() {
    if (!std::exchange(hasForgottenCuts_, false) || fields_.kept.empty()) return;
    KeptShots known;
    for (const EditRevision& revision : fields_.history.items)
        for (const Cut& cut : keptCuts(revision.cuts, fields_.kept))
            known.insert(cut.id);
    fields_.kept = std::move(known);
}

void ContentView::shuffleRows(const std::vector<std::size_t>& rows) {
    reportingFailures([&] {
        const std::vector<Cut>& cuts = fields_.cuts();
        const std::set<std::size_t> chosen(rows.begin(), rows.end());
        std::vector<Cut> others;
        for (std::size_t row = 0; row < cuts.size(); ++row)
            if (!chosen.contains(row)) others.push_back(cuts[row]);
        if (!fields_.project || others.size() == cuts.size()) return;
        std::vector<Cut> shuffled =
            generateCutList(fields_.settings, *fields_.project, std::move(others),
                            environment_.random, environment_.makeUUID);
        change([&](EditorFields& fields) { appendRevision(fields, std::move(shuffled)); });
    });
}

void ContentView::setCutCamera(std::size_t row, const std::string& camera) {
    reportingFailures([&] {
        std::vector<Cut> cuts = fields_.cuts();
        if (row >= cuts.size() || cuts[row].angle == camera || cameraIsFixed(row) ||
            missingFootage(cuts[row], camera, *fields_.project))
            return;
        cuts[row].angle = camera;
        cuts[row].id = environment_.makeUUID();
        const std::vector<UUID> changed{cuts[row].id};
        changeByHand(row, std::move(cuts), changed);
    });
}

void ContentView::rollCut(std::size_t row, std::int64_t frames) {
    reportingFailures([&] {
        std::vector<Cut> cuts = fields_.cuts();
        if (row >= cuts.size() || startIsFixed(row)) return;
        const std::int64_t moved = possibleRoll(cuts, row, frames, fields_.project->engine);
        if (moved == 0) return;
        Cut& before = cuts[row - 1];
        Cut& after = cuts[row];
        before.duration += moved;
        after.start += moved;
        after.duration -= moved;
        before.id = environment_.makeUUID();
        after.id = environment_.makeUUID();
        const std::vector<UUID> changed{before.id, after.id};
        changeByHand(row, std::move(cuts), changed);
    });
}

/// Whether the last change was made by hand to this row.
bool ContentView::continuesHandChange(std::size_t row) const {
    const EditRevision* const current = fields_.history.current();
    return handChange_ && handChange_->row == row && current &&
           current->id == handChange_->revision;
}

void ContentView::changeByHand(std::size_t row, std::vector<Cut> cuts,
                               const std::vector<UUID>& changed) {
    if (checkCuts(fields_.project->engine, cuts) != CutFault::none)
        throw FinalCutImportError::invalid(
            "The cut list contains invalid timing or unavailable footage.");
    change([&](EditorFields& fields) {
        if (continuesHandChange(row)) --fields.history.index;
        fields.kept.insert(changed.begin(), changed.end());
        appendRevision(fields, std::move(cuts));
        handChange_ = HandChange{fields.history.current()->id, row};
    });
}

void ContentView::saveCutList() {
    reportingFailures([&] {
        if (!fields_.shownEdit()) return;
        // Made before the dialog, during which another project may arrive.
        const std::string csv =
            cutListCsv(fields_.cuts(), *fields_.project, fields_.kept, cutReasons());
        const std::string name = fields_.project->summary.name;
        const auto folder = environment_.host.chooseItem(
            {"Choose a folder for the cut list. Existing files will be kept.", "Save", false, true,
             true});
        if (!folder) return;
        const ItemAccessGrant access(environment_.host, *folder);
        const std::string path = writeCutListFile(environment_.files, *folder, csv, name);
        change([&](EditorFields& fields) {
            fields.status = fmt::format("Saved the cut list as {}.", fileName(path));
        });
    });
}

const std::vector<std::vector<std::string>>& ContentView::cutReasons() const {
    if (!cutReasons_)
        cutReasons_ = explainCuts(fields_.shownEdit()->settings, *fields_.project, fields_.cuts(),
                                  fields_.kept);
    return *cutReasons_;
}

std::string ContentView::cutReason(std::size_t row) const {
    if (row >= fields_.cuts().size()) return "";
    return fmt::format("{}", fmt::join(cutReasons()[row], " "));
}

bool ContentView::isKept(std::size_t row) const {
    const std::vector<Cut>& cuts = fields_.cuts();
    return row < cuts.size() && fields_.kept.contains(cuts[row].id);
}

std::optional<std::string> ContentView::cameraIsFixed(std::size_t row) const {
    return shotweaver::cameraIsFixed(*fields_.shownEdit(), row, *fields_.project);
}

std::optional<std::string> ContentView::startIsFixed(std::size_t row) const {
    return shotweaver::startIsFixed(*fields_.shownEdit(), row, *fields_.project);
}

} // namespace shotweaver
