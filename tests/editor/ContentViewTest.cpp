#include "host/InboxSubscription.h"
#include "persistence/SavedEditSession.h"
#include "platform/FileURL.h"
#include "tests/support/EditorBench.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace shotweaver::test {
namespace {

/// The saved session, read as a restart would read it.
SavedEditSession saved(const EditorBench& bench) {
    return readSession(bench.session().value());
}

/// A bench with the concert loaded and two edits.
struct Loaded {
    explicit Loaded(FileCalls& calls = systemFileCalls()) : bench(calls) {
        editor().importProject(concert().xml());
        editor().generateEdit();
        editor().generateEdit();
    }
    ContentView& editor() { return bench.editor(); }
    const EditorFields& fields() const { return bench.fields(); }

    EditorBench bench;
};

TEST(ContentView, theFileDialogImports) {
    EditorBench bench;
    bench.host.chosen = bench.folder.write("Concert.FCPXML", concert().xml());
    bench.editor().chooseProjectFile();
    EXPECT_EQ(bench.host.panels,
              (std::vector<OpenPanel>{
                  {"Choose a .fcpxml file or .fcpxmld bundle.", "", true, true, false}}));
    EXPECT_EQ(bench.host.events,
              (std::vector<std::string>{"start Concert.FCPXML", "stop Concert.FCPXML"}));
    EXPECT_EQ(bench.fields().settings.mainCamera, "W");
    EXPECT_EQ(saved(bench).sourceXML, concert().xml());
    EXPECT_EQ(saved(bench).history.index, -1);
}

TEST(ContentView, aSectionWithoutFootageIsToldAndNothingIsLost) {
    Loaded loaded;
    ContentView& editor = loaded.editor();
    const EditorFields& fields = loaded.fields();
    editor.addSection();
    editor.editSection(0, [](SectionDraft& section) { section.camera = "P"; });
    type(editor, 0, &SectionDraft::start, "01:00:19:00");
    type(editor, 0, &SectionDraft::end, "01:00:30:00");
    const std::string missing =
        "The camera chosen for a fixed section has missing footage between 01:00:19:00 and "
        "01:00:30:00. Choose another camera or shorten the section.";
    EXPECT_EQ(editor.coverageWarning(), missing);
    editor.generateEdit();
    EXPECT_TRUE(fields.cuts().empty());
    EXPECT_EQ(fields.error, missing);
    editor.editSection(0, [](SectionDraft& section) { section.camera = "W"; });
    editor.generateEdit();
    EXPECT_EQ(fields.error, missing); // until it is read
    EXPECT_EQ(editor.actionBar().position, "Edit 3 of 3");
}

TEST(ContentView, anExportIsHandedOver) {
    Loaded loaded;
    ContentView& editor = loaded.editor();
    EditorBench& bench = loaded.bench;
    const EditorFields& fields = loaded.fields();
    std::filesystem::create_directory(bench.folder.path("out"));
    bench.host.chosen = bench.folder.path("out");
    bench.host.openError = HostError{"Shotweaver", 1, "It could not be found."};
    editor.exportEdit();
    EXPECT_EQ(bench.host.events, (std::vector<std::string>{
                                     "start out", "open Concert Shotweaver.fcpxml", "stop out"}));
    EXPECT_EQ(fields.status, "XML and settings were saved. Final Cut Pro could not be opened.");
    EXPECT_EQ(fields.error, "Your export is saved at " +
                                bench.folder.path("out/Concert Shotweaver.fcpxml") +
                                ". Open it in Final Cut manually. It could not be found.");
    editor.dismissError();
    bench.host.openError.reset();
    bench.host.answersAtOnce = false;
    editor.exportEdit();
    EXPECT_EQ(fields.status, "Saved Concert Shotweaver 2.fcpxml and Concert Shotweaver "
                             "2.settings.txt. Opening Final Cut Pro…");
    bench.host.completion(std::nullopt);
    EXPECT_EQ(fields.status, "XML and settings saved. Sent the XML to Final Cut Pro for import.");
    EXPECT_EQ(fields.error, std::nullopt);
}

TEST(ContentView, oneActionIsOneChangeAndOneSave) {
    FailingFileCalls calls(0, 0); // counts
    Loaded loaded(calls);
    ContentView& editor = loaded.editor();
    editor.setPresetName("A");
    editor.savePreset();
    set(editor, &EditSettings::mainShare, 50);
    editor.generateEdit();
    const auto changesAndSaves = [&](const std::function<void()>& action) {
        loaded.bench.changes = 0;
        calls.renames = 0;
        action();
        return std::pair(loaded.bench.changes, calls.renames);
    };
    const std::pair once(1, 1);
    EXPECT_EQ(changesAndSaves([&] { editor.applyPreset(); }), once);
    EXPECT_EQ(changesAndSaves([&] { editor.goBack(); }), once);
    EXPECT_EQ(changesAndSaves([&] { chooseMain(editor, "B"); }), once);
    EXPECT_EQ(changesAndSaves([&] { editor.generateEdit(); }), once);
    // One more for the session that is kept.
    EXPECT_EQ(changesAndSaves([&] { editor.importProject(concert().xml()); }), std::pair(1, 2));
    EXPECT_EQ(changesAndSaves([&] {
                  set(editor, &EditSettings::mainShare, editor.fields().settings.mainShare);
              }),
              (std::pair(1, 0)));
    EXPECT_EQ(changesAndSaves([&] { editor.goForward(); }), (std::pair(0, 0)));
    editor.addSection();
    EXPECT_EQ(changesAndSaves([&] {
                  for (const char* name : {"P", "Pr", "Pra"})
                      type(editor, 0, &SectionDraft::name, name);
              }),
              (std::pair(3, 0)));
    EXPECT_EQ(changesAndSaves([&] { loaded.bench.host.endTurn(); }), once);
    type(editor, 0, &SectionDraft::name, "Prayer"); // the program ends before the turn does
    loaded.bench.restart();
    EXPECT_EQ(changesAndSaves([&] { loaded.editor().restoreSession(); }), once);
    EXPECT_EQ(loaded.fields().settings.sections.at(0).name, "Prayer");
}

TEST(ContentView, onlyAChangeOfSettingsClearsTheStatus) {
    Loaded loaded;
    loaded.bench.host.chosen = loaded.bench.folder.path();
    loaded.editor().exportEdit();
    const std::string sent = loaded.fields().status;
    EXPECT_FALSE(sent.empty());
    loaded.editor().goBack(); // with the same settings
    EXPECT_EQ(loaded.fields().status, sent);
    EXPECT_FALSE(loaded.fields().cuts().empty());
    set(loaded.editor(), &EditSettings::doubleMain, true);
    EXPECT_EQ(loaded.fields().status, "");
}

TEST(ContentView, whatIsShownIsThatOfTheLatestExport) {
    EditorBench bench;
    ContentView& editor = bench.editor();
    ProjectBuilder project = concert();
    editor.importProject(project.xml());
    editor.generateEdit();
    const std::size_t parts = editor.coverageContent().angles.at(2).ranges.size();
    EXPECT_TRUE(editor.cutLine(0).starts_with("Wide")) << editor.cutLine(0);

    // The same settings come of it, so nothing but the project tells it apart.
    project.angles[0].name = "Balcony";
    project.angles[2].clips = {{0, 100}, {200, 1300}};
    editor.importProject(project.xml());
    editor.generateEdit();
    EXPECT_EQ(editor.coverageContent().angles.at(2).ranges.size(), parts + 1);
    EXPECT_TRUE(editor.cutLine(0).starts_with("Balcony")) << editor.cutLine(0);
}

TEST(ContentView, importsResetWhatBelongsToTheProject) {
    Loaded loaded;
    ContentView& editor = loaded.editor();
    set(editor, &EditSettings::mainShare, 40);
    editor.addSection();
    editor.setPresetName("A");
    editor.savePreset();
    editor.showError("unread");
    ProjectBuilder other = concert();
    other.angles.erase(other.angles.begin());
    editor.importProject(other.xml());
    const EditorFields& fields = loaded.fields();
    EXPECT_EQ(fields.settings.mainShare, 40);
    EXPECT_EQ(fields.history, EditHistory{});
    EXPECT_EQ(fields.chosenPreset + fields.presetNotice, "");
    EXPECT_EQ(fields.settings.sections.size(), 0U);
    EXPECT_EQ(fields.error, "unread");

    // What is refused changes nothing.
    other.angles.erase(other.angles.begin());
    const std::string session = loaded.bench.session().value();
    editor.importProject(other.xml());
    EXPECT_EQ(fields.error, "Include at least two video angles in your multicam.");
    editor.importProject("<fcpxml/>");
    EXPECT_EQ(fields.error, "Export one project from Final Cut Pro, rather than a whole event or "
                            "library.");
    EXPECT_EQ(fields.project->videoAngles.size(), 2U);
    EXPECT_EQ(loaded.bench.session(), session);
}

TEST(ContentView, filesThatAreDroppedOrArriveByURL) {
    EditorBench bench;
    const auto url = [&](std::string_view name) { return fileURL(bench.folder.path(name)); };
    bench.folder.write("two. dots.FCPXML", concert().xml());
    std::filesystem::create_directory(bench.folder.path("BIG.FcpXMLd"));
    bench.folder.write("BIG.FcpXMLd/Info.fcpxml", concert().xml());
    const std::string one = "Drop one Final Cut XML file or bundle at a time.";
    const std::string choose = "Choose a .fcpxml file or .fcpxmld bundle.";
    struct Row {
        std::vector<std::string> urls;
        bool isAccepted;
        std::string error;
        bool isLoaded;
    };
    const std::vector<Row> rows{
        {{url("two. dots.FCPXML")}, true, "", true},
        {{url("BIG.FcpXMLd") + "//"}, true, "", true},
        {{url("gone.fcpxml")},
         true,
         "“" + bench.folder.path("gone.fcpxml") +
             "” could not be opened: No such file or "
             "directory.",
         false},
        {{}, false, one, false},
        {{url("two. dots.FCPXML"), url("two. dots.FCPXML")}, false, one, false},
        {{"https://example.org/a.fcpxml"}, false, one, false},
        {{url("a.xml")}, false, choose, false},
        {{url(".fcpxml")}, false, choose, false},
    };
    for (const Row& row : rows) {
        bench.restart();
        EXPECT_EQ(bench.editor().handleDroppedURLs(row.urls), row.isAccepted);
        EXPECT_EQ(bench.fields().error.value_or(""), row.error);
        EXPECT_EQ(bench.fields().project != nullptr, row.isLoaded) << row.error;
    }
}

TEST(ContentView, whatTheInboxBringsIsUsedOnceAndComesBeforeARestore) {
    Loaded loaded;
    loaded.bench.restart();
    ContentView& editor = loaded.editor();
    XMLInbox inbox;
    inbox.setXMLData(concert().xml());
    const InboxSubscription subscription(inbox, editor);
    editor.appear();
    EXPECT_EQ(loaded.fields().status, "");
    EXPECT_EQ(loaded.fields().history.items.size(), 0U);
    EXPECT_EQ(inbox.xmlData(), std::nullopt);
    editor.generateEdit();
    inbox.setImportError("Refused.");
    EXPECT_EQ(loaded.fields().error, "Refused.");
    EXPECT_EQ(loaded.fields().history.items.size(), 1U);
    editor.dismissError();
    inbox.setURL(fileURL(loaded.bench.folder.write("a.fcpxml", concert().xml())));
    EXPECT_EQ(loaded.fields().history.items.size(), 0U);
    inbox.setURL("a.fcpxml");
    EXPECT_EQ(loaded.fields().error, "Choose a .fcpxml file or .fcpxmld bundle.");
    EXPECT_EQ(inbox.importError().has_value() || inbox.url().has_value(), false);
}

TEST(ContentView, exportsWhatWasOnShowWhenTheDialogOpened) {
    Loaded loaded;
    const std::string id = loaded.fields().history.items.back().id.text();
    loaded.bench.host.chosen = loaded.bench.folder.path();
    loaded.bench.host.answersAtOnce = false;
    loaded.bench.host.duringDialog = [&] {
        ProjectBuilder other = concert();
        other.projectAttributes = R"(name="Other")";
        loaded.editor().importProject(other.xml());
    };
    loaded.editor().exportEdit();
    EXPECT_NE(loaded.bench.folder.read("Concert Shotweaver.settings.txt").find("Edit ID: " + id),
              std::string::npos);
    EXPECT_EQ(loaded.fields().project->summary.name, "Other");
    const OpenCompletion completion = loaded.bench.host.completion;
    loaded.bench.restart();
    completion(std::nullopt); // the editor that asked is gone
    EXPECT_EQ(loaded.fields().status, "");

    loaded.editor().appear();
    loaded.editor().generateEdit();
    loaded.bench.host.duringDialog = [] {};
    loaded.bench.host.chosen = loaded.bench.folder.path("missing");
    loaded.editor().exportEdit();
    EXPECT_EQ(loaded.bench.host.events.back(), "stop missing");
    EXPECT_EQ(loaded.fields().status, "");
    EXPECT_TRUE(loaded.fields().error.value_or("").ends_with("No such file or directory."));
    loaded.bench.host.chosen.reset();
    loaded.editor().dismissError();
    loaded.editor().exportEdit(); // cancelled
    EXPECT_EQ(loaded.fields().error, std::nullopt);
}

TEST(ContentView, rangesThatArriveReversedAreRefused) {
    Loaded loaded;
    EditSettings settings = loaded.editor().fields().settings;
    settings.otherMinimum = 9;
    apply(loaded.editor(), settings);
    loaded.editor().generateEdit();
    EXPECT_EQ(loaded.fields().error,
              "The minimum shot length of the other cameras is above its maximum. Set the minimum "
              "or the maximum again.");
    EXPECT_EQ(loaded.fields().history.items.size(), 2U);
}

TEST(ContentView, timesBelongToTheProjectAndTheEdit) {
    Loaded loaded;
    ContentView& editor = loaded.editor();
    const auto choose = [&](const char* name, const std::string& text) {
        loaded.bench.host.chosen = loaded.bench.folder.write(name, text);
        editor.chooseCutTimes();
    };
    choose("beats.txt", "12.5\n01:00:20:00\n99\n");
    EXPECT_EQ(loaded.fields().settings.cutTimes, (std::vector{12.5, 20.0, 99.0}));
    EXPECT_EQ(editor.cutTimesText(), "beats.txt · 3 times");
    EXPECT_TRUE(loaded.fields().cuts().empty());
    editor.generateEdit();

    // What cannot be read, or has none, leaves those that there are.
    choose("bad.txt", "1\n\nx");
    EXPECT_EQ(loaded.fields().error, "bad.txt, line 3: “x” is not a time.");
    choose("none.txt", "# nothing\n");
    EXPECT_EQ(loaded.fields().error, "none.txt has no times.");
    loaded.bench.host.chosen = loaded.bench.folder.path();
    editor.chooseCutTimes();
    EXPECT_NE(loaded.fields().error->find("Is a directory"), std::string::npos);
    loaded.bench.host.chosen.reset();
    editor.chooseCutTimes();
    EXPECT_FALSE(loaded.fields().cuts().empty());

    // They come back with their edit, also at the next launch, which knows no file.
    choose("one.txt", "7");
    EXPECT_EQ(editor.cutTimesText(), "one.txt · 1 time");
    editor.goBack();
    EXPECT_EQ(editor.cutTimesText(), "3 times");
    loaded.bench.restart();
    loaded.bench.editor().appear();
    EXPECT_EQ(loaded.bench.editor().cutTimesText(), "3 times");
    EXPECT_EQ(loaded.fields().status,
              "Restored your last session from its saved XML snapshot. Import a fresh XML if the "
              "Final Cut project has changed.");
    loaded.bench.editor().importProject(concert().xml());
    EXPECT_EQ(loaded.bench.editor().cutTimesText(), "");
}

TEST(ContentView, sectionsAreProposedBehindTheLastOne) {
    Loaded loaded;
    ContentView& editor = loaded.editor();
    const auto last = [&] {
        const SectionDraft& section = loaded.fields().settings.sections.back();
        return section.camera + " " + section.start + " " + section.end;
    };
    editor.addSection();
    EXPECT_EQ(last(), "W 01:00:00:00 01:00:30:00");
    editor.edit([](EditSettings& settings) { settings.opening.isEnabled = true; });
    editor.edit([](EditSettings& settings) { settings.opening.seconds = 40.02; }); // 1000.5 frames
    editor.edit([](EditSettings& settings) { settings.closing.isEnabled = true; });
    editor.edit([](EditSettings& settings) { settings.closing.seconds = 10; });
    editor.addSection();
    EXPECT_EQ(last(), "W 01:00:40:01 01:00:50:00");
    editor.addSection();
    EXPECT_EQ(loaded.fields().error,
              "There is no room for another section after the existing sections and opening or "
              "closing shots.");
    type(editor, 1, &SectionDraft::end, "later");
    editor.addSection();
    EXPECT_EQ(last(), "W 01:00:40:01 01:00:50:00");
    editor.removeSection(0);
    editor.removeSection(7);
    EXPECT_EQ(loaded.fields().settings.sections.size(), 2U);
}

} // namespace
} // namespace shotweaver::test
