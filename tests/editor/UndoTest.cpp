#include "editor/EditListContent.h"
#include "editor/SettingsContent.h"
#include "editor/TimelineContent.h"
#include "platform/Files.h"
#include "tests/support/EditorBench.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace shotweaver::test {
namespace {

struct Loaded : EditorBench {
    explicit Loaded(FileCalls& calls = systemFileCalls()) : EditorBench(calls) {
        editor().importProject(concert().xml());
    }
    double share() { return fields().settings.mainShare; }
    std::string shown() {
        return fields().shownEdit() ? editor().actionBar().position.value() : "none";
    }
};

TEST(Undo, takesSettingsBackWithTheEditThatWasOnShow) {
    Loaded bench;
    ContentView& editor = bench.editor();
    EXPECT_FALSE(editor.canUndo());
    editor.generateEdit();
    set(editor, &EditSettings::mainShare, 50);
    EXPECT_EQ(bench.shown(), "none");
    editor.generateEdit();
    set(editor, &EditSettings::mainShare, 30);
    editor.goBack(); // shows the second edit again, which is a step as well
    editor.goBack();
    EXPECT_EQ(bench.shown(), "Edit 1 of 2");
    const std::pair<double, const char*> before[] = {
        {50, "Edit 2 of 2"}, {30, "none"}, {50, "Edit 2 of 2"}, {70, "Edit 1 of 2"}};
    for (const auto& [share, shown] : before) {
        editor.undo();
        EXPECT_EQ(bench.share(), share);
        EXPECT_EQ(bench.shown(), shown) << share;
    }
    EXPECT_FALSE(editor.canUndo());
    editor.undo(); // nothing
    for (int step = 0; step < 4; ++step)
        editor.redo();
    EXPECT_EQ(bench.shown(), "Edit 1 of 2");
    EXPECT_FALSE(editor.canRedo());
    editor.undo();
    set(editor, &EditSettings::doubleMain, true);
    EXPECT_FALSE(editor.canRedo());
    EXPECT_EQ(readSession(bench.session().value()).settings, bench.fields().settings);
    editor.importProject(concert().xml());
    EXPECT_FALSE(editor.canUndo());
}

TEST(Undo, changesOfOneControlThatFollowEachOtherAreOneStep) {
    Loaded bench;
    ContentView& editor = bench.editor();
    const auto typed = [&](const std::string& control, const std::string& text) {
        editor.editSection(
            0, [&](SectionDraft& section) { section.name = text; }, ContentView::Saving::soon,
            control);
    };
    editor.addSection();
    typed("a", "P");
    typed("a", "Pr");
    typed("b", "Pra");
    typed("b", "Pr"); // as it was: no step
    editor.undo();
    EXPECT_EQ(bench.fields().settings.sections.at(0).name, "");
    editor.redo();
    typed("a", "Prayer"); // after a step was made again it is one of its own
    editor.undo();
    EXPECT_EQ(bench.fields().settings.sections.at(0).name, "Pr");
    for (int step = 0; step < 300; ++step)
        set(editor, &EditSettings::mainShare, 10 + step % 80);
    int undone = 0;
    for (; editor.canUndo(); ++undone)
        editor.undo();
    EXPECT_EQ(undone, 100);
}

TEST(Undo, bringsPresetsBackThatAnotherEditorHasNotTaken) {
    Loaded bench;
    ContentView& editor = bench.editor();
    editor.openSavePreset();
    editor.setPresetName("Sunday");
    editor.savePreset();
    const std::string saved = bench.folder.read("config/Shotweaver.savedPresets.v1");
    const auto stored = [&] { return bench.folder.read("config/Shotweaver.savedPresets.v1"); };
    set(editor, &EditSettings::mainShare, 50);
    editor.updatePreset();
    EXPECT_NE(stored(), saved);
    editor.deletePreset();
    EXPECT_EQ(stored(), "[]");
    editor.undo();
    EXPECT_EQ(editor.selectedPreset().value().mainShare, 50);
    EXPECT_EQ(bench.fields().presetNotice, "Restored Sunday.");
    editor.undo();
    EXPECT_EQ(stored(), saved);
    editor.redo();
    editor.redo();
    EXPECT_EQ(stored(), "[]");
    EXPECT_EQ(bench.fields().presetNotice, "Deleted Sunday.");
    EXPECT_EQ(bench.share(), 50);
    // Meanwhile the name is another's.
    std::string others = saved;
    const auto id = editor.fields().presetData; // of none
    others.replace(others.find("\"id\":\"") + 6, 36, "00000000-0000-0000-0000-000000000009");
    bench.folder.write("config/Shotweaver.savedPresets.v1", others);
    editor.undo();
    EXPECT_EQ(bench.fields().error, "A preset with that name already exists. Choose it and use "
                                    "Update, or save with another name.");
    EXPECT_EQ(stored(), others);
    EXPECT_TRUE(editor.canUndo()); // once the name is free
}

TEST(ReplacedSession, isKeptAndComesBackWhateverCallFails) {
    FailingFileCalls none(0, 0);
    int made = 1;
    for (int failing = 1; failing <= made; ++failing) {
        WatchedFileCalls calls;
        Loaded bench(calls);
        bench.editor().generateEdit();
        const std::string former = bench.session().value();
        const std::vector<Cut> cuts = bench.fields().cuts();
        int count = 0;
        calls.beforeEach = [&] { return ++count == failing ? EIO : 0; };
        ProjectBuilder other = concert();
        other.projectAttributes = "name=\"Rehearsal\"";
        bench.editor().importProject(other.xml());
        made = std::max(made, count);
        calls.beforeEach = [] { return 0; };
        const auto kept = bench.folder.path("data/replaced-session-v1.json");
        const bool isKept =
            std::filesystem::exists(kept) && readFile(systemFileCalls(), kept) == former;
        ASSERT_TRUE(bench.fields().replaced);
        const std::string line = bench.fields().replaced->line;
        if (!bench.fields().replaced->isKept) {
            EXPECT_TRUE(line.starts_with("Replaced Concert, which could not be kept: “")) << line;
            continue;
        }
        EXPECT_TRUE(isKept) << failing;
        EXPECT_EQ(line, "Replaced Concert.");
        set(bench.editor(), &EditSettings::mainShare, 20); // is saved now in any case
        const std::string present = bench.session().value();
        bench.editor().bringBackSession();
        EXPECT_EQ(bench.fields().cuts(), cuts);
        EXPECT_EQ(bench.session(), former);
        EXPECT_EQ(readFile(systemFileCalls(), kept), present);
        // And again, with any call failing: no bytes are lost.
        count = 0;
        calls.beforeEach = [&] { return ++count == failing ? EIO : 0; };
        bench.editor().bringBackSession();
        calls.beforeEach = [] { return 0; };
        std::set<std::string> held;
        for (const auto& entry : std::filesystem::directory_iterator(bench.folder.path("data")))
            held.insert(readFile(systemFileCalls(), entry.path().string()));
        EXPECT_TRUE(held.contains(former) && held.contains(present)) << failing;
        EXPECT_EQ(bench.fields().error.has_value(), bench.session() == former) << failing;
    }
    EXPECT_GT(made, 8);
}

TEST(ReplacedSession, isAlsoOneThatWasNotRestored) {
    Loaded bench;
    const std::string former = bench.session().value();
    bench.restart();
    bench.editor().preemptRestore(); // a project came with the start
    bench.editor().importProject(concert().xml());
    EXPECT_EQ(bench.fields().replaced, (ReplacedSession{"Replaced your last session.", true}));
    bench.folder.write("data/replaced-session-v1.json", "noise");
    const std::string present = bench.session().value();
    bench.editor().bringBackSession();
    EXPECT_TRUE(bench.fields().error.value().starts_with(
        "The replaced session could not be brought back. "));
    EXPECT_EQ(bench.session(), present);

    // A link to nothing is no session.
    std::filesystem::remove(bench.sessionPath());
    std::filesystem::create_symlink(bench.folder.path("gone"), bench.sessionPath());
    bench.restart();
    bench.editor().appear();
    EXPECT_EQ(bench.fields().error, std::nullopt);
    bench.editor().importProject(concert().xml());
    EXPECT_EQ(bench.fields().replaced, std::nullopt);
    EXPECT_EQ(bench.session()->substr(0, 1), "{");

    // Both stores broken: both are told.
    bench.folder.write("data/session-v1.json", "noise");
    bench.folder.write("config/Shotweaver.savedPresets.v1", "noise");
    bench.restart();
    bench.editor().appear();
    const std::string error = bench.fields().error.value();
    EXPECT_TRUE(error.starts_with("The previous session could not be restored.")) << error;
    EXPECT_TRUE(
        error.ends_with("\n\nSaved presets could not be read. Their stored data has been kept."))
        << error;
}

TEST(ContentView, thatASessionWasRestoredIsNewsUntilTheFirstAction) {
    Loaded bench;
    bench.editor().generateEdit();
    bench.editor().generateEdit();
    bench.restart();
    bench.editor().appear();
    EXPECT_TRUE(bench.editor().statusLine().starts_with("Restored your last session"));
    bench.editor().setDropTargeted(true);
    EXPECT_NE(bench.editor().statusLine(), "");
    bench.editor().goBack();
    EXPECT_EQ(bench.editor().statusLine(), "");
}

TEST(SettingsContent, faultsOfASectionAreTold) {
    ProjectBuilder builder = concert();
    builder.frameDuration = "1001/30000s";
    builder.sequenceAttributes = "tcFormat=\"DF\"";
    builder.timelineStart = 0;
    builder.length = 3600;
    builder.angles = {{"W", "Wide", {{0, 3600}}}, {"B", "Band", {{0, 3600}}}};
    builder.clipContent = R"(<mc-source angleID="W" srcEnable="all"/>
        <chapter-marker start="3003/100s" value="Sermon"/><chapter-marker start="1001/100s"/>)";
    const Project project(builder.xml());
    const auto faults = [&](const std::string& start, const std::string& end) {
        const SectionFaults found = sectionFaults({{}, "", "W", start, end}, project);
        return found.start.value_or("") + "|" + found.end.value_or("");
    };
    const std::string whole = "The project lasts from 00:00:00;00 to 00:02:00;04.";
    const std::tuple<const char*, const char*, std::string> rows[] = {
        {"00:00:01;00", "00:01:30;00", "|"},
        {"00:01:00;00", "00:01:00;01",
         "Drop-frame timecode skips this label. The next one is 00:01:00;02.|"
         "Drop-frame timecode skips this label. The next one is 00:01:00;02."},
        {"noon", "00:00:00;31",
         "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.|The frame field must be less "
         "than 30 for this project."},
        {"00:00:10;00", "00:00:10;00", "|The end comes after the start."},
        {"00:10:00;00", "00:20:00;00", whole + "|" + whole}};
    for (const auto& [start, end, told] : rows)
        EXPECT_EQ(faults(start, end), told);

    EXPECT_EQ(chapterText(0, project), "00:00:10;00 to 00:00:30;00");
    EXPECT_EQ(chapterText(1, project), "Sermon · 00:00:30;00 to 00:02:00;04");
    // A round label that is skipped gives way to the next one.
    std::string labels;
    for (const RulerLabel& label : rulerLabels({10, 3600}, 1000, project.engine))
        labels += std::to_string(label.frame) + " " + label.text + ", ";
    EXPECT_EQ(labels, "1800 00:01:00;02, 3598 00:02:00;02, ");
    EXPECT_EQ(rulerLabels({0, 30}, 1, project.engine).size(), 30U);
    EXPECT_EQ(rulerLabels({0, 3600}, 1'000'000'000, project.engine).size(), 1U);
}

} // namespace
} // namespace shotweaver::test
