#include "editor/ContentView.h"
#include "editor/ContentViewChange.h"
#include "editor/ItemAccessGrant.h"
#include "planning/ProjectDefaults.h"
#include "planning/ProjectFile.h"
#include "platform/FileURL.h"

#include <fmt/format.h>

#include <future>

namespace shotweaver {

void ContentView::appear() {
    if (fields_.didRestore) return;
    preemptRestore();
    restoreSession();
    try {
        storedPresets();
    } catch (const std::exception&) {
        showError("Saved presets could not be read. Their stored data has been kept.");
    }
}

void ContentView::preemptRestore() {
    change([](EditorFields& fields) { fields.didRestore = true; });
}

namespace {

struct LoadedProject {
    ImportedProject imported;
    std::shared_ptr<const CutEngine> engine;
};

LoadedProject loadProject(const std::string& xml) {
    ProjectImport import = readProject(xml);
    ImportedProject imported = import.summary;
    return {std::move(imported), std::make_shared<const CutEngine>(std::move(import))};
}

struct LoadedSession {
    SavedEditSession session;
    LoadedProject project;
};

/// Reads a stored session. Its project, which takes as long as the rest, is loaded beside it.
LoadedSession loadSession(const std::string& bytes) {
    LoadedSession loaded;
    if (auto document = readSessionDocument(bytes)) {
        auto project = std::async([&document] { return loadProject(*document); });
        loaded.session = readSessionButDocument(bytes);
        loaded.project = project.get();
        loaded.session.sourceXML = *std::move(document);
    } else {
        loaded.session = readSession(bytes);
        loaded.project = loadProject(loaded.session.sourceXML);
    }
    validateSession(loaded.session, *loaded.project.engine);
    return loaded;
}

} // namespace

void ContentView::restoreSession() {
    try {
        const auto bytes = sessionFile_.read();
        if (!bytes) return;
        auto [session, project] = loadSession(*bytes);
        change([&session = session, &project = project, this](EditorFields& fields) {
            fields.sourceXML = std::move(session.sourceXML);
            fields.engine = std::move(project.engine);
            fields.imported = std::move(project.imported);
            fields.history = std::move(session.history);
            fields.restoredSettings = session.settings;
            applySettings(session.settings);
            const EditRevision* const current = fields.history.current();
            fields.cuts.clear();
            if (current && current->settings == session.settings) fields.cuts = current->cuts;
            fields.status =
                "Restored your last session from its saved XML snapshot. Import a fresh XML if the "
                "Final Cut project has changed.";
            projectDidChange();
        });
    } catch (const std::exception& failure) {
        report(failure, "The previous session could not be restored. Its saved file has been kept. "
                        "You can import an XML to start a new session. ");
    }
}

void ContentView::importProject(std::string data) {
    perform([&] {
        LoadedProject project = loadProject(data);
        const EditSettings settings =
            importedSettings(project.imported, *project.engine, currentSettings());
        change([&](EditorFields& fields) {
            fields.sourceXML = std::move(data);
            fields.history = {};
            fields.chosenPreset.clear();
            fields.presetNotice.clear();
            fields.imported = std::move(project.imported);
            fields.engine = std::move(project.engine);
            applySettings(settings);
            fields.cuts.clear();
            fields.status.clear();
            projectDidChange();
            saveIsWanted_ = true;
        });
    });
}

/// Forgets what was worked out of the former project.
void ContentView::projectDidChange() {
    encoder_.reset();
    forgetCoverage();
    cutTexts_.reset();
    importWarning_.reset();
    const std::vector<std::string> obstacles = fields_.engine->exportObstacles();
    if (obstacles.empty()) return;
    importWarning_ = obstacles.front();
    if (obstacles.size() > 1)
        *importWarning_ += fmt::format(" There are {} more like it.", obstacles.size() - 1);
}

void ContentView::readProjectFile(const std::string& path) {
    perform([&] {
        const ItemAccessGrant access(environment_.host, path);
        importProject(readAll(*openProjectFile(environment_.files, path)));
    });
}

void ContentView::chooseProjectFile() {
    perform([&] {
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
