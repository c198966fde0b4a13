#include "persistence/RecordJson.h"
#include "planning/EditPlan.h"
#include "planning/EditTexts.h"
#include "planning/ProjectDefaults.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

EditSettings with(const char* changes, EditSettings settings = {}) {
    return readSettingsOver(JsonReader(parseJson(changes)), std::move(settings));
}

/// A project of 1000 frames from 01:00:00:00 on, with what an import makes of it.
struct Loaded {
    explicit Loaded(const std::vector<AngleSpec>& angles, const std::string& sources = "",
                    const char* previous = "{}") {
        ProjectBuilder builder;
        builder.timelineStart = 90000;
        builder.angles = angles;
        builder.clipContent = sources;
        project = std::make_unique<Project>(builder.xml());
        settings = importedSettings(*project, with(previous));
    }
    std::unique_ptr<Project> project;
    EditSettings settings;
};

const std::vector<AngleSpec> gapped{{"W", "Wide", {{0, 400}, {500, 400}}},
                                    {"P", "Pulpit", {{0, 100}, {862, 38}}},
                                    {"B", "Band", {{0, 1000}}},
                                    {"R", "Recorder", {{0, 450}, {451, 549}}, false}};

TEST(ProjectDefaults, pacingIsAllThatAnImportKeeps) {
    const AngleSpec sound{"Z", "Z", {{0, 1000}}, false};
    const AngleSpec late{"C", "C", {{400, 10}}, true, false};
    const AngleSpec whole{"B", "B", {{0, 1000}}};
    const Loaded loaded({sound, late, {"empty", "E", {}}, whole}, "",
                        R"({"mainShare": 30, "doubleMain": true, "openingSeconds": 20, "audio": "B",
        "mainCamera": "B", "otherCameras": ["no"], "frequencies": {"B": 9}, "returnTimes": {"B": 6},
        "openingEnabled": true, "openingCamera": "B", "closingEnabled": true})");
    EXPECT_EQ(loaded.settings,
              with(R"({"mainShare": 30, "doubleMain": true, "openingSeconds": 20, "audio": "Z",
        "mainCamera": "C", "otherCameras": ["B"], "frequencies": {"C": 5, "B": 5},
        "openingCamera": "C", "closingCamera": "C"})"));
    const auto load = [&] { Loaded({sound, whole, {"L", "Outside", {{2000, 500}}}}); };
    EXPECT_EQ(failureOf(load), "Include at least two video angles in your multicam.");
}

TEST(ProjectDefaults, audioFollowsTheClipThenTheFirstWholeThenTheFirst) {
    const AngleSpec silent{"silent", "s", {{0, 1000}}, true, false};
    const AngleSpec late{"late", "l", {{1, 999}}};
    const AngleSpec whole{"whole", "w", {{0, 300}, {300, 700}}};
    const AngleSpec other{"other", "o", {{0, 1000}}};
    const std::string heard = R"(<mc-source angleID="late" srcEnable="audio"/>)";
    const char* mute = R"(<mc-source angleID="silent"/>)";
    EXPECT_EQ(Loaded({silent, whole, late}, heard).settings.audio, "late");
    EXPECT_EQ(Loaded({late, whole, other, silent}, mute).settings.audio, "whole");
    EXPECT_EQ(Loaded({late, other, silent}, heard + mute).settings.audio, "other");
    EXPECT_EQ(Loaded({silent, late}).settings.audio, "late");
}

TEST(EditPlan, settingsBecomeInputsOnceSoundIsChecked) {
    Loaded loaded(gapped);
    EditSettings settings = with(R"({"mainShare": 55, "mainMinimum": 2, "mainMaximum": 3,
        "otherMinimum": 4, "otherMaximum": 5, "mainCamera": "P", "otherCameras": ["B", "P", "R",
        "W", "gone"], "returnTimes": {"W": 30}, "openingCamera": "B", "closingEnabled": true,
        "closingCamera": "W", "closingSeconds": 12, "audio": "R"})",
                                 loaded.settings);
    settings.sections = {{UUID(), "", "gone", " 01:00:20:00 ", "00:59:59;24"}};
    const GenerationInputs made = generationInputs(settings, *loaded.project);
    EXPECT_EQ(made.otherCameras, (std::vector<std::string>{"W", "B"}));
    EXPECT_EQ(made.mainShare, 0.55);
    EXPECT_EQ(made.mainRange, (SecondsRange{2, 3}));
    EXPECT_EQ(made.otherRange, (SecondsRange{4, 5}));
    EXPECT_EQ(made.opening, std::nullopt);
    EXPECT_EQ(made.closing, (BookendShot{"W", 12}));
    EXPECT_EQ(made.returnTimes, settings.returnTimes);
    EXPECT_EQ(made.sections, (std::vector<FixedCameraSection>{{"gone", 500, -1}}));

    settings.mainShare = 5;
    settings.sections[0].end = "soon";
    const auto generate = [&] {
        ScriptedRandom random({});
        generateCutList(settings, *loaded.project, {}, random, countingUUIDs());
    };
    EXPECT_EQ(failureOf(generate), "This audio angle does not cover the whole project. Choose a "
                                   "continuous audio angle.");
    settings.audio = "B";
    EXPECT_EQ(failureOf(generate), "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.");
    settings.sections.clear();
    EXPECT_EQ(failureOf(generate), "Choose a main camera and at least one additional video angle.");
}

TEST(EditPlan, theFirstCoverageProblemIsTold) {
    const std::string trim = " seconds). Choose a camera with footage or trim that section in "
                             "Final Cut.";
    const std::pair<const char*, std::optional<std::string>> rows[] = {
        {R"({"audio": "", "openingSeconds": 1e300})", std::nullopt},
        {R"({"otherCameras": ["P"], "audio": "R"})",
         "No selected video: 01:00:16:00 to 01:00:20:00 (4" + trim},
        // Within a fixed part only its camera counts: 137.5 frames, so 138. The locale's digits.
        {R"({"openingEnabled": true, "openingCamera": "P", "openingSeconds": 5.5})",
         "No selected video: 01:00:04:00 to 01:00:05:13 (1,52" + trim},
        {R"({"mainCamera": "R", "otherCameras": []})",
         "No selected video at the ending: 01:00:00:00 to 01:00:40:00 (40" + trim},
        {R"({"openingEnabled": true, "closingEnabled": true, "closingSeconds": 25.04})",
         "Opening and closing shots exceed the project length. Shorten them."},
        {R"({"audio": "R"})",
         "Selected audio has a gap at 01:00:18:00. Choose a continuous audio angle."},
    };
    const Loaded loaded(gapped);
    for (const auto& [changes, warning] : rows) {
        const EditSettings settings = with(changes, loaded.settings);
        const SelectedCoverage report = coverageReport(settings, *loaded.project, {});
        EXPECT_EQ(coverageWarning(report, settings, *loaded.project, "de"), warning);
    }
}

TEST(Project, anglesAreLabelledByNameAndCameras) {
    const Loaded loaded(gapped);
    loaded.project->summary.angles[0].cameras = "HC-X1500, XA50";
    EXPECT_EQ(loaded.project->label("W"), "Wide (HC-X1500, XA50)");
    EXPECT_EQ(loaded.project->label("P"), "Pulpit");
    EXPECT_EQ(loaded.project->label("gone"), "gone");
}

} // namespace
} // namespace shotweaver::test
