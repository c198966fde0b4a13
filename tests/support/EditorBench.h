#pragma once

#include "editor/ContentView.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver::test {

/// A host whose user answers as a test says.
class FakeHost final : public HostServices {
  public:
    std::optional<std::string> chooseItem(const OpenPanel& panel) override;
    bool startAccess(const std::string& path) override;
    void stopAccess(const std::string& path) override;
    void openInFinalCut(const std::string& path, OpenCompletion completion) override;
    void showInFolder(const std::string& path, OpenCompletion completion) override;
    void later(std::function<void()> function) override { waiting.push_back(std::move(function)); }

    /// Ends an event-loop turn: runs what was put off.
    void endTurn();

    std::optional<std::string> chosen;          // the next dialog's answer
    std::function<void()> duringDialog = [] {}; // what the user does meanwhile
    std::optional<HostError> openError;         // Final Cut Pro's answer
    bool answersAtOnce = true;                  // or once `completion` is called
    OpenCompletion completion;                  // of the last hand-off
    std::vector<OpenPanel> panels;              // every dialog shown
    std::vector<std::string> events;            // accesses and hand-offs, in order
    std::deque<std::function<void()>> waiting;
};

/// An editor in a folder of its own, with files, host, chance and time of a test's choice.
class EditorBench {
  public:
    explicit EditorBench(FileCalls& calls = systemFileCalls()) : calls_(calls) { restart(); }

    /// Ends the editor and starts a new one on the same files. It has not appeared yet.
    void restart();

    ContentView& editor() { return *editor_; }
    const EditorFields& fields() const { return editor_->fields(); }
    StateFolders folders() const { return {folder.path("data"), folder.path("config")}; }
    std::string sessionPath() const { return folder.path("data/session-v1.json"); }
    std::string presetsPath() const { return folder.path("config/Shotweaver.savedPresets.v1"); }

    /// The session file's bytes; nothing without one.
    std::optional<std::string> session() const;

    TestFolder folder;
    FakeHost host;
    SeededRandom random{7};
    double now = 700'000'000;
    int changes = 0; // that observers were told of

  private:
    FileCalls& calls_;
    std::unique_ptr<ContentView> editor_;
    Observers::Subscription subscription_;
};

/// What a control of one setting does. `setting` is a pointer to member, or a function that gives
/// the setting's place.
template <class Setting, class Value>
void set(ContentView& editor, Setting setting, const Value& value) {
    editor.edit([&](EditSettings& settings) { std::invoke(setting, settings) = value; });
}

/// Includes a camera, or leaves it out.
void include(ContentView& editor, const std::string& camera, bool isIncluded);

void chooseMain(ContentView& editor, const std::string& camera);

/// All settings at once, as a preset or a revision brings them.
void apply(ContentView& editor, const EditSettings& settings);

/// Types into a field of a fixed section's row.
void type(ContentView& editor, std::size_t row, std::string SectionDraft::*field,
          const std::string& text);

/// 60 seconds at 25 frames a second from 01:00:00:00 on: three cameras, "Wide" and "Band" whole,
/// "Pulpit" with a gap from frame 500 to 600, and a recorder without picture.
ProjectBuilder concert();

} // namespace shotweaver::test
