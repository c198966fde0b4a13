#include "editor/ContentView.h"
#include "editor/ItemAccessGrant.h"
#include "planning/ProjectDefaults.h"
#include "planning/ProjectFile.h"
#include "platform/Base64.h"
#include "platform/FileURL.h"

#include <fmt/format.h>

namespace shotweaver {

void ContentView::appear() {
    if (didRestore_) return;
    preemptRestore();
    restoreSession();
    try {
        storedPresets();
    } catch (const std::exception&) {
        showError("Saved presets could not be read. Their stored data has been kept.");
    }
}

void ContentView::preemptRestore() {
    didRestore_ = true;
}

namespace {

std::shared_ptr<const Project> loadProject(std::string_view xml) {
    return std::make_shared<const Project>(xml);
}

} // namespace

void ContentView::restoreSession() {
    try {
        const auto bytes = sessionFile_.read();
        if (!bytes) return;
        SavedEditSession session = readSession(*bytes);
        std::shared_ptr<const Project> project = loadProject(session.sourceXML);
        validateSession(session, project->engine);
        change([&](EditorFields& fields) {
            fields.sourceXML = base64(session.sourceXML);
            fields.project = std::move(project);
            fields.history = std::move(session.history);
            fields.kept = std::move(session.keptShots);
            hasForgottenCuts_ = true;
            fields.settings = std::move(session.settings);
            const EditRevision* const current = fields.history.current();
            fields.showsCurrentEdit = current && current->settings == fields.settings;
            fields.status =
                "Restored your last session from its saved XML snapshot. Import a fresh XML if the "
                "Final Cut project has changed.";
            // Judged here: at the change's end it would take the status away again.
            saveIsWanted_ = saveIsWanted_ || fields.settings != judgedSettings_;
            judgedSettings_ = fields.settings;
            projectDidChange();
        });
    } catch (const std::exception& failure) {
        showFailure(failure,
                    "The previous session could not be restored. Its saved file has been kept. You "
                    "can import an XML to start a new session. ");
    }
}

void ContentView::importProject(std::string data) {
    reportingFailures([&] {
        std::shared_ptr<const Project> project = loadProject(data);
        EditSettings settings = importedSettings(*project, fields_.settings);
        change([&](EditorFields& fields) {
            fields.sourceXML = base64(data);
            fields.history = {};
            fields.kept.clear();
            fields.chosenPreset.clear();
            fields.presetNotice.clear();
            fields.project = std::move(project);
            fields.settings = std::move(settings);
            fields.showsCurrentEdit = false;
            fields.status.clear();
            projectDidChange();
            saveIsWanted_ = true;
        });
    });
}

/// Forgets what was worked out of the former project.
void ContentView::projectDidChange() {
    encoder_ = {};
    handChange_.reset();
    forgetCoverage();
    cutTexts_.reset();
    findings_ = preflight(*fields_.project);
}

void ContentView::readProjectFile(const std::string& path) {
    reportingFailures([&] {
        const BusySign busy = environment_.host.showBusy();
        const ItemAccessGrant access(environment_.host, path);
        importProject(readAll(*openProjectFile(environment_.files, path)));
    });
}

void ContentView::chooseProjectFile() {
    reportingFailures([&] {
        const auto path = environment_.host.chooseItem({chooseProjectText, "", true, true, false});
        if (path) readProjectFile(*path);
    });
}

bool ContentView::handleDroppedURLs(const std::vector<std::string>& urls) {
    const auto path = urls.size() == 1 ? pathOfFileURL(urls.front()) : std::nullopt;
    if (!path) {
        showError("Drop one Final Cut XML file or bundle at a time.");
        return false;
    }
    if (!hasProjectExtension(*path)) {
        showError(chooseProjectText);
        return false;
    }
    readProjectFile(*path);
    return true;
}

} // namespace shotweaver
