#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"
#include "persistence/EditHistory.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// Times and the file that they were read from.
struct TimesFile {
    std::string name;
    std::vector<double> times;
};

/// A session that an import has replaced.
struct ReplacedSession {
    std::string line;    // "Replaced Sunday Service."
    bool isKept = false; // so that it can be brought back

    bool operator==(const ReplacedSession&) const = default;
};

/// Everything that the panel shows and binds to. `ContentView` owns and changes it.
struct EditorFields {
    EditSettings settings;                  // as the controls show them
    std::shared_ptr<const Project> project; // null before the first one
    std::optional<std::string> sourceXML;   // the project's document in base64, as it is saved
    EditHistory history;
    bool showsCurrentEdit = false; // whether the current revision's cuts are on show
    KeptShots kept;                // of all revisions
    TimesFile timesFile;           // that was read last; the settings may have other times

    std::optional<std::string> error; // the alert's text
    std::string status;
    std::optional<std::string> sessionSaveError;
    std::optional<ReplacedSession> replaced; // by the last import
    std::string exportedFile;                // path of the last export's XML; empty for none
    bool dropTargeted = false;
    bool showingHelp = false;
    bool showingAbout = false;

    std::string presetData;   // the presets as stored
    std::string chosenPreset; // identifier, empty for none
    bool showSavePreset = false;
    std::string presetName; // typed in the save sheet
    std::string presetNotice;

    /// The revision on show; null while none is.
    const EditRevision* shownEdit() const { return showsCurrentEdit ? history.current() : nullptr; }

    /// The kept cuts of the current revision, also while it is not on show: an edit is generated
    /// around them.
    std::vector<Cut> keptCuts() const {
        const EditRevision* const edit = history.current();
        return edit ? shotweaver::keptCuts(edit->cuts, kept) : std::vector<Cut>{};
    }

    /// The cuts on show: those of the current revision, or none.
    const std::vector<Cut>& cuts() const {
        static const std::vector<Cut> none;
        const EditRevision* const edit = shownEdit();
        return edit ? edit->cuts : none;
    }
};

} // namespace shotweaver
