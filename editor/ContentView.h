#pragma once

#include "editor/CoverageContent.h"
#include "editor/CutListContent.h"
#include "editor/EditorFields.h"
#include "editor/HostServices.h"
#include "editor/Observers.h"
#include "editor/SettingsContent.h"
#include "editor/UndoSteps.h"
#include "engine/export/ExportFiles.h"
#include "engine/generation/CoverageReport.h"
#include "engine/import/Preflight.h"
#include "persistence/SavedEditSession.h"
#include "persistence/SessionFile.h"
#include "platform/FileCalls.h"
#include "platform/Random.h"
#include "platform/StateFolders.h"
#include "platform/UserDefaults.h"
#include "platform/Uuid.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// What the editor works with. The references must outlive it.
struct EditorEnvironment {
    HostServices& host;
    FileCalls& files;
    RandomSource& random;
    UUIDMaker makeUUID;
    std::function<double()> now; // seconds since 2001-01-01 00:00:00 UTC
    StateFolders folders;
    std::string locale;           // BCP 47 tag
    std::string exampleProject{}; // a file that comes with the program; empty for none
};

/// The state of the action bar.
struct ActionBar {
    std::string generateLabel;
    bool canGenerate = false;
    bool canGoBack = false;
    bool canGoForward = false;
    bool canExport = false;
    std::optional<std::string> position; // "Edit 2 of 3"
    std::optional<std::string> hint;
    std::optional<std::string> kept = std::nullopt; // "3 shots kept."

    bool operator==(const ActionBar&) const = default;
};

/// What tells a preset from others.
struct PresetIdentity {
    UUID id;
    std::string name;
};

/// The editor: the state of the panel and every operation that changes it, without a toolkit.
///
/// An operation is one change: its effect on the settings is judged once, at its end, the session
/// is saved at most once, and observers are told once. Operations throw nothing: a failure becomes
/// the fields' `error` and leaves the rest as it was. Everything runs on the main thread. No change
/// is open while the host is asked, so it may call operations from its dialogs.
class ContentView {
  public:
    explicit ContentView(EditorEnvironment environment);
    ContentView(const ContentView&) = delete;
    ContentView& operator=(const ContentView&) = delete;
    ~ContentView(); // saves what typing has left to be saved

    const EditorFields& fields() const { return fields_; }
    [[nodiscard]] Observers::Subscription observe(std::function<void()> observer);

    // Start and intake.

    /// The panel's first appearance: restores the saved session and looks at the presets, once.
    void appear();
    /// Keeps `appear` from restoring: a project is about to arrive.
    void preemptRestore();
    void restoreSession();
    void importProject(std::string data);
    /// Reads a .fcpxml file or a .fcpxmld bundle and imports it.
    void readProjectFile(const std::string& path);
    void chooseProjectFile();
    /// True when the drop is accepted, also when the file then cannot be read or imported.
    bool handleDroppedURLs(const std::vector<std::string>& urls);
    void setDropTargeted(bool isTargeted);
    /// Whether a drop of these would be read.
    static bool takesURLs(const std::vector<std::string>& urls);
    /// Opens the project that comes with the program.
    void openExample();
    bool hasExample() const;
    /// Makes the session that was replaced last the current one again, which is kept in its place.
    void bringBackSession();

    // Alert and windows.

    void showError(const std::string& text);
    /// Closing the alert: nothing else clears `error`.
    void dismissError();
    void setShowingHelp(bool isShown);
    void setShowingAbout(bool isShown);

    // Edits.

    void generateEdit();
    void goBack();
    void goForward();
    void showRevision(std::int64_t position);
    void exportEdit();
    /// Shows the file of the last export where it lies.
    void showExport();

    // Refining the edit on show. Rows are those of the cut list; what does not exist, or cannot be
    // changed, changes nothing.

    /// Keeps these shots, or lets go of them when all of them are kept.
    void toggleKept(const std::vector<std::size_t>& rows);
    void keepCamera(const std::string& camera);
    /// Lets go of the current revision's kept shots.
    void letGoOfAll();
    /// Makes a new edit in which only these shots are others.
    void shuffleRows(const std::vector<std::size_t>& rows);
    /// Shows another camera, which must have footage for all of the shot. This and the next make a
    /// new revision whose changed shots are kept; changes to one row that follow each other are one
    /// revision.
    void setCutCamera(std::size_t row, const std::string& camera);
    /// Moves the start of a shot, and the end of the one before, or as far as can be.
    void rollCut(std::size_t row, std::int64_t frames);
    /// Asks for a folder and writes the cuts on show into it as CSV.
    void saveCutList();

    // Settings.

    /// When a change is saved: as it ends, or once at the end of this event-loop turn, for what is
    /// typed.
    enum class Saving { now, soon };

    /// Changes the settings, as one change. Every control comes through here. Changes of one
    /// `control`, named by whoever shows it, that follow each other are undone together.
    void edit(const std::function<void(EditSettings&)>& change, Saving saving = Saving::now,
              std::string_view control = {});

    /// The same for one fixed section. A row that does not exist changes nothing.
    void editSection(std::size_t row, const std::function<void(SectionDraft&)>& change,
                     Saving saving = Saving::now, std::string_view control = {});
    /// Proposes one more fixed section behind the last one.
    void addSection();
    /// Adds a fixed section that lasts from a chapter of the project to the next one, or to its
    /// end. Chapters count from 0.
    void addChapterSection(std::size_t chapter);
    void removeSection(std::size_t row);
    /// Asks for a file of times, in place of those that there are.
    void chooseCutTimes();

    /// Takes the last change of the settings back, or that of a stored preset, with the edit that
    /// was on show before it; and makes it again.
    void undo();
    void redo();
    bool canUndo() const { return undoSteps_.undoable() != nullptr; }
    bool canRedo() const { return undoSteps_.redoable() != nullptr; }

    // Presets.

    void choosePreset(const std::string& id);
    void openSavePreset();
    void cancelSavePreset();
    void setPresetName(const std::string& name);
    void savePreset();
    void updatePreset();
    void applyPreset();
    void deletePreset();

    // Queries: what the panel shows of the fields, as far as it is worth keeping.

    /// The loaded project; null before the first one.
    const Project* project() const { return fields_.project.get(); }
    const std::optional<std::string>& coverageWarning() const;
    /// Only with a project.
    const CoverageContent& coverageContent() const;
    /// What Final Cut would refuse or change of the loaded project, whatever its edit; shown from
    /// the import on.
    const std::vector<Finding>& findings() const { return findings_; }
    ActionBar actionBar() const;
    /// What generating does, or why it cannot.
    std::string generateHelp() const;
    /// The line under the columns. That a session was restored is no news after the first action.
    std::string statusLine() const;
    /// What stands in the cut list's place while no edit is on show.
    std::string noCutsText() const;
    /// A row of the cut list; an empty one where there is no cut. Cheap, so that a view asks for
    /// what it shows.
    CutRow cutRow(std::size_t row) const;
    /// The same in one line; empty where there is no cut.
    std::string cutLine(std::size_t row) const;
    bool isKept(std::size_t row) const;
    /// Why the row's shot is there, in a line; empty where there is no cut.
    std::string cutReason(std::size_t row) const;
    /// Why the row's camera, or its start, cannot be changed; nothing when it can.
    std::optional<std::string> cameraIsFixed(std::size_t row) const;
    std::optional<std::string> startIsFixed(std::size_t row) const;
    /// "beats.txt · 812 times"; without the name where it is not known. Empty without times.
    std::string cutTimesText() const;
    std::vector<PickerOption> presetOptions() const;
    std::optional<EditPreset> selectedPreset() const;

    const std::string& locale() const { return environment_.locale; } // BCP 47

  private:
    /// Runs an operation's body; what it throws becomes the error.
    void reportingFailures(const std::function<void()>& body);
    /// Changes fields: one change, judged when `body` has ended. What it throws becomes the error.
    /// `body` opens no other change.
    void change(const std::function<void(EditorFields&)>& body, Saving saving = Saving::now,
                std::string_view control = {});
    void endChange(Saving saving, std::string_view control);
    void settingsDidChange();
    void writeSession();
    void saveSoon();
    void showFailure(const std::exception& failure, std::string_view prefix = "");
    static std::string textOf(const std::exception& failure);

    std::optional<UUID> shownEditID() const;
    void recordSettings(UndoStep::Settings before, std::string_view control);
    void takeStep(const UndoStep* step, UndoStep::State UndoStep::*from,
                  UndoStep::State UndoStep::*to, void (UndoSteps::*didTake)());
    void showState(EditorFields& fields, const UndoStep::Settings& state);
    void showState(EditorFields& fields, const UndoStep::Preset& from, const UndoStep::Preset& to);

    void appendRevision(EditorFields& fields, std::vector<Cut> cuts);
    void keptDidChange();
    void dropForgottenKept();
    bool continuesHandChange(std::size_t row) const;
    void changeByHand(std::size_t row, std::vector<Cut> cuts, const std::vector<UUID>& changed);

    void appendSection(std::string name, std::int64_t start, std::int64_t end);

    std::optional<ReplacedSession> keepSession();
    void takeSession(EditorFields& fields, SavedEditSession session,
                     std::shared_ptr<const Project> project);
    void projectDidChange();
    void forgetCoverage();
    void handOver(const ExportedFiles& files);
    void handOverDidEnd(const std::string& path, const std::optional<HostError>& error);

    void readPresetData();
    std::vector<EditPreset> storedPresets() const;
    void storePresets(const std::vector<EditPreset>& presets);
    using IdentityChoice =
        std::function<std::optional<PresetIdentity>(const std::vector<EditPreset>&)>;
    /// Stores the settings as the preset that `choose` names, given the stored ones; nothing
    /// happens when it names none, or when the settings make no preset.
    void storePreset(const IdentityChoice& choose);
    /// Stores a preset in place of those with the identifier, or none.
    void replacePreset(const UUID& id, const std::optional<EditPreset>& preset);
    const SelectedCoverage& coverage() const;
    const CutTexts& cutTexts() const;
    const std::vector<std::vector<std::string>>& cutReasons() const;

    EditorEnvironment environment_;
    SessionFile sessionFile_;
    UserDefaults defaults_;
    EditorFields fields_;
    Observers observers_;

    bool didRestore_ = false; // at the start, or an XML came before it
    bool saveIsWanted_ = false;
    bool saveIsScheduled_ = false;
    bool restoreIsNews_ = false; // until the first action
    /// What the last change left.
    struct {
        EditSettings settings;
        std::optional<UUID> shownEdit;
        std::shared_ptr<const Project> project;
    } judged_;
    UndoSteps undoSteps_;
    bool isTakingStep_ = false;
    bool nameWasRefused_ = false; // of a new preset, by the last attempt to save it
    struct HandChange {
        UUID revision; // that it made
        std::size_t row;
    };
    std::optional<HandChange> handChange_; // the last change, if it was one
    bool hasForgottenCuts_ = false;        // since kept shots were last looked for in the history
    SessionEncoder encoder_;
    std::vector<Finding> findings_;
    std::optional<std::string> presetFailure_; // why the stored presets could not be read
    // Worked out at most once a change.
    mutable std::optional<SelectedCoverage> coverage_;
    mutable std::optional<CoverageContent> coverageContent_;
    mutable std::optional<std::optional<std::string>> coverageWarning_;
    mutable std::optional<std::vector<std::vector<std::string>>> cutReasons_;
    mutable std::optional<CutTexts> cutTexts_; // at most once a project
    // Lets what comes back later find out that the editor has gone.
    std::shared_ptr<ContentView*> self_ = std::make_shared<ContentView*>(this);
};

} // namespace shotweaver
