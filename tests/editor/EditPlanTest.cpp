#include "editor/EditPlan.h"

#include "editor/ProjectDefaults.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"

#include <gtest/gtest.h>

#include <functional>

namespace shotweaver::test {
namespace {

/// A project with what an import makes of it. 1000 frames of 25 a second, from 01:00:00:00 on.
struct Loaded {
    explicit Loaded(std::vector<AngleSpec> angles) {
        ProjectBuilder project;
        project.timelineStart = 90000;
        project.angles = std::move(angles);
        project.clipContent = "";
        imported = inspectProject(project.xml());
        engine.emplace(project.xml());
        settings = importedSettings(imported, *engine, {});
    }

    ImportedProject imported;
    std::optional<CutEngine> engine;
    EditSettings settings;
};

const AngleSpec wide{"W", "Wide", {{0, 1000}}};
const AngleSpec pulpit{"P", "Pulpit", {{0, 1000}}};
const AngleSpec band{"B", "Band", {{0, 1000}}};

SectionDraft section(const char* camera, const char* start, const char* end) {
    return {UUID(), "", camera, start, end};
}

TEST(EditPlan, settingsBecomeInputs) {
    Loaded loaded({wide, {"R", "Recorder", {{0, 1000}}, false}, pulpit, band});
    EditSettings& settings = loaded.settings;
    const auto inputs = [&] { return generationInputs(settings, loaded.imported, *loaded.engine); };

    settings.mainShare = 55;
    settings.averageShot = 7;
    settings.mainMinimum = 2;
    settings.mainMaximum = 3;
    settings.otherMinimum = 4;
    settings.otherMaximum = 5;
    settings.mainCamera = "P";
    settings.otherCameras = {"B", "P", "R", "W", "gone"};
    settings.doubleMain = true;
    settings.frequencies = {{"B", 2}, {"gone", 3}};
    settings.returnTimes = {{"W", 30}};
    settings.openingCamera = "B";
    settings.openingSeconds = 11;
    settings.closingEnabled = true;
    settings.closingCamera = "W";
    settings.closingSeconds = 12;
    settings.sections = {section("W", " 01:00:20:00 ", "01:00:30;00"),
                         section("gone", "00:59:59:24", "00:00:00:00")};

    const GenerationInputs made = inputs();
    EXPECT_EQ(made.mainCamera, "P");
    EXPECT_EQ(made.otherCameras, (std::vector<std::string>{"W", "B"}));
    EXPECT_EQ(made.mainShare, 0.55);
    EXPECT_EQ(made.averageShot, 7);
    EXPECT_TRUE(made.doubleMain);
    EXPECT_EQ(made.mainRange, (SecondsRange{2, 3}));
    EXPECT_EQ(made.otherRange, (SecondsRange{4, 5}));
    EXPECT_EQ(made.opening, std::nullopt);
    EXPECT_EQ(made.closing, (BookendShot{"W", 12}));
    EXPECT_EQ(made.frequencies, settings.frequencies);
    EXPECT_EQ(made.returnTimes, settings.returnTimes);
    EXPECT_EQ(made.sections,
              (std::vector<FixedCameraSection>{{"W", 500, 750}, {"gone", -1, -90000}}));

    settings.openingEnabled = true;
    settings.closingEnabled = false;
    EXPECT_EQ(inputs().opening, (BookendShot{"B", 11}));
    EXPECT_EQ(inputs().closing, std::nullopt);

    settings.sections = {section("W", "01:00:20:00", "01:00:30:25"), section("W", "x", "y")};
    EXPECT_EQ(failureOf(inputs), "The frame field must be less than 25 for this project.");
    settings.sections[0].start = "soon";
    EXPECT_EQ(failureOf(inputs), "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.");
}

TEST(EditPlan, soundIsCheckedBeforeAnythingElseIsRead) {
    Loaded loaded({{"W", "Wide", {{0, 999}}}, pulpit});
    loaded.settings.audio = "W";
    loaded.settings.mainShare = 5;
    loaded.settings.sections = {section("W", "x", "y")};
    ScriptedRandom random({});
    const auto generate = [&] {
        generateCutList(loaded.settings, loaded.imported, *loaded.engine, random, countingUUIDs());
    };
    EXPECT_EQ(failureOf(generate), "This audio angle does not cover the whole project. Choose a "
                                   "continuous audio angle.");
    loaded.settings.audio = "P";
    EXPECT_EQ(failureOf(generate), "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.");
    loaded.settings.sections.clear();
    EXPECT_EQ(failureOf(generate), "Choose a main camera and at least one additional video angle.");
}

TEST(EditPlan, theFirstCoverageProblemIsTold) {
    // Pictures: W 0–400 and 500–900, P 0–100 and 862–900, B everywhere; sound: R has a gap.
    const std::vector<AngleSpec> angles{{"W", "Wide", {{0, 400}, {500, 400}}},
                                        {"P", "Pulpit", {{0, 100}, {862, 38}}},
                                        {"B", "Band", {{0, 1000}}},
                                        {"R", "Recorder", {{0, 450}, {451, 549}}, false}};
    const std::string trim = " seconds). Choose a camera with footage or trim that section in "
                             "Final Cut.";
    const struct {
        const char* label;
        std::function<void(EditSettings&)> change;
        std::optional<std::string> warning;
    } rows[] = {
        {"everything is covered", [](auto&) {}, std::nullopt},
        {"no audio angle is chosen", [](auto& s) { s.audio = ""; }, std::nullopt},
        {"shots that are switched off do not count",
         [](auto& s) { s.openingSeconds = s.closingSeconds = 1e300; }, std::nullopt},
        {"a section closes the gap",
         [](auto& s) {
             s.otherCameras = {"P"};
             s.sections = {section("B", "01:00:36:00", "01:00:40:00"),
                           section("B", "01:00:16:00", "01:00:20:00")};
         },
         std::nullopt},
        {"only the first gap is told", [](auto& s) { s.otherCameras = {"P"}; },
         "No selected video: 01:00:16:00 to 01:00:20:00 (4" + trim},
        {"at the ending",
         [](auto& s) {
             s.mainCamera = "B";
             s.otherCameras = {"W"};
             s.closingEnabled = true;
             s.closingCamera = "P";
             s.closingSeconds = 5.52;
         },
         "No selected video at the ending: 01:00:36:00 to 01:00:40:00 (4" + trim},
        {"within a fixed part only its camera counts; seconds in the locale's digits",
         [](auto& s) {
             s.openingEnabled = true;
             s.openingCamera = "P";
             s.openingSeconds = 5.5; // 137.5 frames, so 138
         },
         "No selected video: 01:00:04:00 to 01:00:05:13 (1,52" + trim},
        {"the whole project",
         [](auto& s) {
             s.mainCamera = "R";
             s.otherCameras = {"R", "gone"};
         },
         "No selected video at the ending: 01:00:00:00 to 01:00:40:00 (40" + trim},
        {"fixed shots that exactly fill the project",
         [](auto& s) {
             s.openingEnabled = s.closingEnabled = true;
             s.openingCamera = s.closingCamera = "B";
             s.openingSeconds = 15;
             s.closingSeconds = 25;
         },
         std::nullopt},
        {"and one frame more",
         [](auto& s) {
             s.openingEnabled = s.closingEnabled = true;
             s.openingSeconds = 15;
             s.closingSeconds = 25.04;
         },
         "Opening and closing shots exceed the project length. Shorten them."},
        {"lengths beyond any project",
         [](auto& s) {
             s.openingEnabled = s.closingEnabled = true;
             s.openingSeconds = s.closingSeconds = 1e300;
         },
         "Opening and closing shots exceed the project length. Shorten them."},
        {"a timecode that cannot be read comes first",
         [](auto& s) {
             s.openingEnabled = true;
             s.openingSeconds = 1e300;
             s.sections = {section("B", "", "")};
         },
         "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00."},
        {"a section without footage",
         [](auto& s) { s.sections = {section("W", "01:00:15:00", "01:00:20:00")}; },
         "The camera chosen for a fixed section has missing footage between 01:00:15:00 and "
         "01:00:20:00. Choose another camera or shorten the section."},
        {"sound with a gap", [](auto& s) { s.audio = "R"; },
         "Selected audio has a gap at 01:00:18:00. Choose a continuous audio angle."},
        {"sound of no angle", [](auto& s) { s.audio = "gone"; },
         "Selected audio has a gap at 01:00:00:00. Choose a continuous audio angle."},
        {"picture comes before sound",
         [](auto& s) {
             s.otherCameras = {};
             s.audio = "R";
         },
         "No selected video: 01:00:16:00 to 01:00:20:00 (4" + trim},
    };
    for (const auto& row : rows) {
        Loaded loaded(angles);
        loaded.settings.audio = "B";
        row.change(loaded.settings);
        EXPECT_EQ(coverageWarning(loaded.settings, loaded.imported, *loaded.engine, "de"),
                  row.warning)
            << row.label;
    }
}

} // namespace
} // namespace shotweaver::test
