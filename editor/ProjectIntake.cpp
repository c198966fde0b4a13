#include "editor/ContentView.h"
#include "editor/ItemAccessGrant.h"
#include "editor/PanelTexts.h"
#include "engine/FinalCutImportError.h"
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
        const std::string before = fields_.error ? *fields_.error + "\n\n" : "";
        showError(before + "Saved presets could not be read. Their stored data has been kept.");
    }
}

void ContentView::preemptRestore() {
    didRestore_ = true;
}

namespace {

std::shared_ptr<const Project> loadProject(std::string_view xml) {
    return std::make_shared<const Project>(xml);
}

struct LoadedSession {
    SavedEditSession session;
    std::shared_ptr<const Project> project;
};

LoadedSession loadSession(std::string_view bytes) {
    LoadedSession loaded{readSession(bytes), {}};
    loaded.project = loadProject(loaded.session.sourceXML);
    validateSession(loaded.session, loaded.project->engine);
    return loaded;
}

} // namespace

void ContentView::restoreSession() {
    try {
        const auto bytes = sessionFile_.read();
        if (!bytes) return;
        LoadedSession loaded = loadSession(*bytes);
        change([&](EditorFields& fields) {
            takeSession(fields, std::move(loaded.session), std::move(loaded.project));
            fields.status = panelTexts::restored;
            restoreIsNews_ = true;
        });
    } catch (const std::exception& failure) {
        showFailure(failure,
                    "The previous session could not be restored. Its saved file has been kept. You "
                    "can import an XML to start a new session. ");
    }
}

void ContentView::takeSession(EditorFields& fields, SavedEditSession session,
                              std::shared_ptr<const Project> project) {
    fields.sourceXML = base64(session.sourceXML);
    fields.project = std::move(project);
    fields.history = std::move(session.history);
    fields.kept = std::move(session.keptShots);
    hasForgottenCuts_ = true;
    fields.settings = std::move(session.settings);
    const EditRevision* const current = fields.history.current();
    fields.showsCurrentEdit = current && current->settings == fields.settings;
    // Judged here: at the change's end it would take the status away again.
    saveIsWanted_ = saveIsWanted_ || fields.settings != judged_.settings;
    judged_.settings = fields.settings;
    projectDidChange();
}

void ContentView::importProject(std::string data) {
    reportingFailures([&] {
        std::shared_ptr<const Project> project = loadProject(data);
        EditSettings settings = importedSettings(*project, fields_.settings);
        const std::optional<ReplacedSession> replaced = keepSession();
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
            fields.replaced = replaced;
            projectDidChange();
            saveIsWanted_ = true;
        });
    });
}

/// Keeps the session that is about to be replaced, also one that was not restored: nothing without
/// one.
std::optional<ReplacedSession> ContentView::keepSession() {
    if (saveIsWanted_ || fields_.sessionSaveError) writeSession();
    const Project* const former = project();
    const bool isNamed = former && !former->summary.name.empty();
    const std::string name = isNamed ? former->summary.name : "your last session";
    try {
        if (!sessionFile_.keep()) return std::nullopt;
        return ReplacedSession{fmt::format("Replaced {}.", name), true};
    } catch (const std::exception& failure) {
        return ReplacedSession{
            fmt::format("Replaced {}, which could not be kept: {}", name, textOf(failure)), false};
    }
}

void ContentView::bringBackSession() {
    try {
        if (!fields_.replaced || !fields_.replaced->isKept) return;
        const BusySign busy = environment_.host.showBusy();
        const auto bytes = sessionFile_.readKept();
        if (!bytes) throw FinalCutImportError::invalid("It is not there any more.");
        LoadedSession loaded = loadSession(*bytes);
        if (saveIsWanted_ || fields_.sessionSaveError) writeSession();
        const std::string replaced = this->project()->summary.name;
        sessionFile_.exchangeWithKept();
        change([&](EditorFields& fields) {
            takeSession(fields, std::move(loaded.session), std::move(loaded.project));
            fields.status = fmt::format("Brought back {}.", fields.project->summary.name);
            fields.replaced = ReplacedSession{fmt::format("Replaced {}.", replaced), true};
            fields.chosenPreset.clear();
            fields.presetNotice.clear();
            saveIsWanted_ = false; // it is stored as it is
        });
    } catch (const std::exception& failure) {
        showFailure(failure, "The replaced session could not be brought back. ");
    }
}

/// Forgets what was worked out of the former project.
void ContentView::projectDidChange() {
    encoder_ = {};
    handChange_.reset();
    fields_.exportedFile.clear();
    undoSteps_.clear();
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

void ContentView::openExample() {
    if (hasExample()) readProjectFile(environment_.exampleProject);
}

bool ContentView::hasExample() const {
    return !environment_.exampleProject.empty();
}

void ContentView::chooseProjectFile() {
    reportingFailures([&] {
        const auto path = environment_.host.chooseItem({chooseProjectText, "", true, true, false});
        if (path) readProjectFile(*path);
    });
}

namespace {

std::optional<std::string> pathOfOneFile(const std::vector<std::string>& urls) {
    return urls.size() == 1 ? pathOfFileURL(urls.front()) : std::nullopt;
}

} // namespace

bool ContentView::takesURLs(const std::vector<std::string>& urls) {
    const auto path = pathOfOneFile(urls);
    return path && hasProjectExtension(*path);
}

bool ContentView::handleDroppedURLs(const std::vector<std::string>& urls) {
    const auto path = pathOfOneFile(urls);
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
