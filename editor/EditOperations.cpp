#include "editor/ContentView.h"
#include "editor/ItemAccessGrant.h"
#include "engine/export/ExportDocument.h"
#include "engine/export/SettingsRecord.h"
#include "planning/EditPlan.h"
#include "platform/Files.h"

#include <fmt/format.h>

#include <iterator>

namespace shotweaver {

void ContentView::generateEdit() {
    reportingFailures([&] {
        if (!fields_.project) return;
        std::vector<Cut> cuts =
            generateCutList(fields_.settings, *fields_.project, fields_.keptCuts(),
                            environment_.random, environment_.makeUUID);
        change([&](EditorFields& fields) { appendRevision(fields, std::move(cuts)); });
    });
}

/// Makes cuts with the settings as they are the current edit.
void ContentView::appendRevision(EditorFields& fields, std::vector<Cut> cuts) {
    // Those after the current one are dropped, and with them cuts that may be kept.
    hasForgottenCuts_ |= fields.history.index + 1 < std::ssize(fields.history.items);
    fields.history.append(
        {environment_.makeUUID(), environment_.now(), fields.settings, std::move(cuts)});
    fields.showsCurrentEdit = true;
    fields.status.clear();
    fields.exportedFile.clear();
    undoSteps_.endStep();
    keptDidChange();
}

/// The first step back after a change of the settings brings the current edit back.
void ContentView::goBack() {
    showRevision(fields_.showsCurrentEdit ? fields_.history.index - 1 : fields_.history.index);
}

void ContentView::goForward() {
    showRevision(fields_.history.index + 1);
}

void ContentView::showRevision(std::int64_t position) {
    const EditRevision* const revision = fields_.history.revision(position);
    if (!revision) return;
    change([&](EditorFields& fields) {
        fields.history.index = position;
        fields.settings = revision->settings;
        fields.showsCurrentEdit = true;
        fields.chosenPreset.clear();
        fields.presetNotice.clear();
        keptDidChange();
    });
}

void ContentView::exportEdit() {
    reportingFailures([&] {
        const EditRevision* const shown = fields_.shownEdit();
        if (!fields_.project || !shown || fields_.settings != shown->settings) return;
        // Kept, and checked, before the dialog, during which another project may arrive.
        const std::shared_ptr<const Project> project = fields_.project;
        const EditRevision revision = *shown;
        const ExportDocument document(project->engine, revision.cuts, revision.settings.audio,
                                      environment_.makeUUID);
        const std::string record = settingsRecordText(*project, revision, fields_.kept);

        const auto folder = environment_.host.chooseItem(
            {"Choose a folder for the XML and settings record. The XML will then open in Final Cut "
             "Pro. Existing exports will be kept.",
             "Export", false, true, true});
        if (!folder) return;
        const BusySign busy = environment_.host.showBusy();
        const ItemAccessGrant access(environment_.host, *folder);
        handOver(writeExportFiles(
            environment_.files, *folder, [&](ByteSink& sink) { document.write(sink); }, record,
            project->summary.name));
    });
}

void ContentView::handOver(const ExportedFiles& files) {
    // Set first: when Final Cut Pro is missing, the completion runs before this returns.
    change([&](EditorFields& fields) {
        fields.status = fmt::format("Saved {} and {}. Opening Final Cut Pro…", fileName(files.xml),
                                    fileName(files.record));
        fields.exportedFile = files.xml;
    });
    environment_.host.openInFinalCut(
        files.xml, [weak = std::weak_ptr(self_), path = files.xml](const auto& error) {
            if (const auto self = weak.lock()) (*self)->handOverDidEnd(path, error);
        });
}

void ContentView::handOverDidEnd(const std::string& path, const std::optional<HostError>& error) {
    change([&](EditorFields& fields) {
        if (!error) {
            fields.status = "XML and settings saved. Sent the XML to Final Cut Pro for import.";
            return;
        }
        fields.status = "XML and settings were saved. Final Cut Pro could not be opened.";
        fields.error = fmt::format("Your export is saved at {}. Open it in Final Cut manually. {}",
                                   path, error->description);
    });
}

void ContentView::showExport() {
    if (fields_.exportedFile.empty()) return;
    environment_.host.showInFolder(fields_.exportedFile,
                                   [weak = std::weak_ptr(self_)](const auto& error) {
                                       const auto self = weak.lock();
                                       if (self && error) (*self)->showError(error->description);
                                   });
}

} // namespace shotweaver
