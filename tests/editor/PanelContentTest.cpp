#include "persistence/RecordJson.h"
#include "planning/EditTexts.h"
#include "tests/support/EditorBench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

/// An editor with a project.
struct Panel : EditorBench {
    explicit Panel(const ProjectBuilder& project = concert()) {
        editor().importProject(project.xml());
        settings = editor().fields().settings;
    }
    /// Applies what the import left with changes (JSON).
    void apply(const char* changed) {
        test::apply(editor(), readSettingsOver(JsonReader(parseJson(changed)), settings));
    }
    EditSettings settings;
};

TEST(SettingsContent, labelsCutNumbersAndRangesStayInOrder) {
    using Set = void (*)(double& minimum, double& maximum, double seconds);
    const std::tuple<Set, bool, double, const char*> rows[] = {
        {setMinimum, true, 30.9, "Minimum: 30 sec Maximum: 30 sec 4 sec 8 sec"},
        {setMaximum, true, 12, "Minimum: 12 sec Maximum: 12 sec 4 sec 8 sec"},
        {setMaximum, true, 120, "Minimum: 12 sec Maximum: 120 sec 4 sec 8 sec"},
        {setMinimum, true, 15, "Minimum: 15 sec Maximum: 120 sec 4 sec 8 sec"},
        {setMinimum, false, 5, "Minimum: 15 sec Maximum: 120 sec 5 sec 8 sec"},
        {setMinimum, false, 9, "Minimum: 15 sec Maximum: 120 sec 9 sec 9 sec"},
        {setMaximum, false, 3, "Minimum: 15 sec Maximum: 120 sec 3 sec 3 sec"},
        {setMaximum, false, 7, "Minimum: 15 sec Maximum: 120 sec 3 sec 7 sec"},
    };
    EditSettings now;
    for (const auto& [set, isMain, seconds, labels] : rows) {
        set(isMain ? now.mainMinimum : now.otherMinimum,
            isMain ? now.mainMaximum : now.otherMaximum, seconds);
        EXPECT_EQ(minimumLabel(now.mainMinimum) + " " + maximumLabel(now.mainMaximum) + " " +
                      secondsLabel(now.otherMinimum) + " " + secondsLabel(now.otherMaximum),
                  labels);
    }
    EXPECT_EQ(mainWaitLabel({}), "Wait before returning to main camera: 0 sec");
    EXPECT_EQ(balanceText(69.9), "Target screen time: Main 69% · Other cameras combined 31%");
}

TEST(SettingsContent, forecastsTheMainCamerasShare) {
    const std::string loose = " Return times and gaps change this.";
    const std::tuple<const char*, int, std::string> rows[] = {
        {R"({"otherCameras": ["P"]})", 65, " For 70%: other cameras 5 to 10 seconds." + loose},
        {"{}", 65, " For 70%: other cameras 5 to 10 seconds."},
        {R"({"mainShare": 65.9})", 60, " For 65%: other cameras 7 to 11 seconds."},
        {R"({"mainShare": 50, "mainMinimum": 4, "mainMaximum": 8})", 50, ""},
        {R"({"mainShare": 80, "doubleMain": true})", 87, " For 80%: other cameras 1 to 6 seconds."},
        {R"({"mainShare": 90, "mainMinimum": 1, "mainMaximum": 2})", 30,
         " For 90%: main camera 34 to 36 seconds."},
        {R"({"mainShare": 10, "mainMinimum": 120, "mainMaximum": 120, "returnTimes": {"W": 1}})",
         94, loose},
        {R"({"mainShare": 50, "returnTimes": {"P": 1}})", 60,
         " For 50%: other cameras 7 to 12 seconds."},
    };
    Panel panel;
    panel.settings.otherCameras = {"B"};
    for (const auto& [changed, percent, rest] : rows) {
        panel.apply(changed);
        EXPECT_EQ(shareForecast(panel.fields().settings, *panel.editor().project()),
                  fmt::format("About {}% with these shot lengths.{}", percent, rest))
            << changed;
    }
    panel.apply(R"({"mainMinimum": 26})");
    EXPECT_EQ(shareForecast(panel.fields().settings, *panel.editor().project()), "");
}

TEST(SettingsContent, frequenciesCountAmongTheIncludedCameras) {
    const std::pair<const char*, std::string> rows[] = {
        {R"({"frequencies": {"C": 10}})", "25% on, 25% on, 50% on, "},
        {R"({"otherCameras": ["P", "B"], "frequencies": {"P": 1, "B": 7}})",
         "13% on, 88% on, 0% off, "},
        {R"({"mainCamera": "B", "otherCameras": ["W"]})", "100% off, 0% off, 0% off, "},
    };
    ProjectBuilder project = concert();
    project.angles.push_back({"C", "Choir", {{0, 1500}}});
    Panel panel(project);
    for (const auto& [changed, expected] : rows) {
        panel.apply(changed);
        std::string shown;
        for (const CameraRow& row : cameraRows(panel.fields().settings, *panel.editor().project()))
            shown += row.choiceShare.substr(0, row.choiceShare.find(' ')) +
                     (row.isFrequencyEnabled ? " on, " : " off, ");
        EXPECT_EQ(shown, expected);
    }
    EXPECT_EQ(cameraRows(panel.fields().settings, *panel.editor().project()).at(0).frequencyHelp,
              "Frequency needs at least 3 included cameras: the main camera and 2 others. With 2 "
              "cameras, use the main camera balance.");
    panel.apply(R"({"frequencies": {"P": 9.9}, "returnTimes": {"P": 30.9}})");
    EXPECT_EQ(cameraRows(panel.fields().settings, *panel.editor().project()).at(0),
              (CameraRow{"P", "Pulpit", true, 9.9, "Frequency: 9", "Frequency for Pulpit",
                         "50% of additional camera choices", true,
                         "Higher numbers choose this camera more often between main camera shots. "
                         "The percentage compares additional camera choices when footage is "
                         "available, not total screen time.",
                         30.9, "Wait before returning to this camera: 30 sec"}));
}

TEST(EditorTexts, theProjectItsAnglesAndCuts) {
    ProjectBuilder project = concert();
    project.frameDuration = "1001/30000s";
    project.length = 36000;
    project.angles = {{"W", "Wide", {{0, 36000}}}, {"B", "Band", {{1, 35999}}}, {"S", "Still", {}}};
    Panel panel(project);
    ContentView& editor = panel.editor();
    std::vector<PickerOption> angles{{"W", "Wide"}, {"B", "Band"}};
    EXPECT_EQ(cameraOptions(*editor.project()), angles);
    angles[1].label = "Band (has gaps)";
    EXPECT_EQ(audioOptions(editor.fields().settings, *editor.project()), angles);
    set(editor, &EditSettings::audio, "");
    EXPECT_EQ(audioOptions(editor.fields().settings, *editor.project()).at(0),
              (PickerOption{"", "Choose audio"}));
    EXPECT_EQ(projectLine(*editor.project(), "und"), "Concert · 1,201.2 seconds · 29.97 fps");
    const Project& loaded = *panel.editor().project();
    EXPECT_EQ(projectLine(loaded, "de"), "Concert · 1.201,2 seconds · 29,97 fps");

    const std::vector<Cut> cuts{{{}, "W", 0, 4000}, {{}, "W", 4000, 500}, {{}, "X", 4500, 31500}};
    const CutTexts texts(panel.fields().project, "de");
    EXPECT_EQ(texts.row(cuts[1]), (CutRow{"Wide", "00:52:13:10", "16,683"}));
    EXPECT_EQ(texts.row(cuts[2]), (CutRow{"X", "00:52:30:00", "1.051,05"}));
    EXPECT_EQ(usageRows(cuts, loaded), (std::vector<UsageRow>{{"Wide", "150.15 sec", "12.5%", "1"},
                                                              {"Band", "0.00 sec", "0.0%", "0"}}));
    EXPECT_EQ(summaryLine(cuts, panel.settings, loaded), "3 cuts · Main camera: 13% · Audio: Wide");
    EXPECT_EQ(usageTableHeight(3), 108);
    EXPECT_EQ(usageTableHeight(4), 125);
}

TEST(CoverageContent, whatThePlanUsesAndWhatItLacks) {
    // Changed settings; the angles, the gaps and their summary.
    const std::pair<const char*, std::string> rows[] = {
        {"{}", "Wide/Pulpit/Band/No sections/Selected cameras cover the whole project, including "
               "all fixed camera sections."},
        // Shots that are off do not count.
        {R"({"mainCamera": "P", "otherCameras": ["P", "R"], "openingCamera": "B"})",
         "Wide (excluded) gray/Pulpit/Band (excluded) gray/01:00:20:00 to 01:00:24:13, 01:00:36:00 "
         "to 01:01:00:00/2 uncovered video section(s)/01:00:20:00 to 01:00:24:13 · 4.52 seconds/"
         "01:00:36:00 to 01:01:00:00 · 24 seconds"},
        {R"({"mainCamera": "P", "otherCameras": [], "openingEnabled": true, "closingEnabled": true,
             "openingSeconds": 1, "closingCamera": "B", "closingSeconds": 35.48})",
         "Wide/Pulpit/Band/01:00:20:00 to 01:00:24:13/1 uncovered video section(s)/"
         "01:00:20:00 to 01:00:24:13 · 4.52 seconds"},
        {R"({"openingEnabled": true, "closingEnabled": true, "closingSeconds": 45.04})",
         "Wide/Pulpit/Band/No sections/Opening and closing shots exceed the project length. "
         "Shorten them."},
        // A section's camera counts even while its timecode is being typed.
        {R"({"otherCameras": [], "sections": [{"id": "00000000-0000-0000-0000-000000000000",
             "name": "", "camera": "B", "start": "", "end": ""}]})",
         "Wide/Pulpit (excluded) gray/Band/No sections/Enter timecode as HH:MM:SS:FF, for example "
         "00:05:30:00."},
    };
    ProjectBuilder project = concert();
    project.angles[1].clips = {{0, 500}, {613, 287}};
    Panel panel(project);
    for (const auto& [changed, expected] : rows) {
        panel.apply(changed);
        const CoverageContent& content = panel.editor().coverageContent();
        std::string shown;
        for (const CoverageBar& bar : content.angles)
            shown += bar.label + (bar.colour == CoverageBar::Colour::used ? "/" : " gray/");
        shown += accessibleRanges(content.gaps.ranges, panel.editor().project()->engine) + "/";
        shown += content.summary.text;
        for (const std::string& line : content.summary.gaps)
            shown += "/" + line;
        EXPECT_EQ(shown, expected);
    }
    const CoverageContent& content = panel.editor().coverageContent();
    EXPECT_EQ(content.axisStart + " " + content.axisEnd, "01:00:00:00 01:01:00:00");
    EXPECT_EQ(content.angles.at(1).ranges, (Coverage{{0, 500}, {613, 900}}));
    EXPECT_EQ(content.audio,
              (CoverageBar{"Audio: Recorder", CoverageBar::Colour::audio, {{0, 1500}}}));
    set(panel.editor(), &EditSettings::audio, "");
    EXPECT_EQ(panel.editor().coverageContent().audio, std::nullopt);
}

TEST(ContentView, theActionBarOffersWhatCanBeDone) {
    const std::string make = "Generate rough edit";
    const std::string again = "Shuffle rough edit";
    const std::string hint = "Include another camera.";
    Panel panel;
    ContentView& editor = panel.editor();
    // Its label, generate, back, forward, export, position, hint.
    EXPECT_EQ(editor.actionBar(), (ActionBar{make, true, false, false, false, {}, {}}));
    editor.generateEdit();
    EXPECT_EQ(editor.actionBar(), (ActionBar{again, true, false, false, true, "Edit 1 of 1", {}}));
    editor.generateEdit();
    EXPECT_EQ(editor.actionBar(), (ActionBar{again, true, true, false, true, "Edit 2 of 2", {}}));
    editor.goBack();
    EXPECT_EQ(editor.actionBar(), (ActionBar{again, true, false, true, true, "Edit 1 of 2", {}}));
    set(editor, &EditSettings::doubleMain, true);
    EXPECT_EQ(editor.actionBar(), (ActionBar{make, true, true, true, false, {}, {}}));
    EXPECT_EQ(editor.generateHelp(), "Make a new rough edit with these settings");
    const std::string audio = "Choose continuous audio.";
    panel.apply(R"({"audio": ""})");
    EXPECT_EQ(editor.actionBar(), (ActionBar{make, false, true, true, false, {}, audio}));
    EXPECT_EQ(editor.generateHelp(), audio);
    panel.apply(R"({"otherCameras": ["W", "R"], "audio": ""})");
    EXPECT_EQ(editor.actionBar(), (ActionBar{make, false, true, true, false, {}, hint}));
    EXPECT_EQ(editor.generateHelp(), hint + " " + audio);
    panel.restart(); // without a project
    EXPECT_EQ(panel.editor().actionBar(), (ActionBar{make, false, false, false, false, {}, hint}));
}

} // namespace
} // namespace shotweaver::test
