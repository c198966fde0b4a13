#include "persistence/RecordJson.h"
#include "tests/support/EditorBench.h"

#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

const std::string entry = "config/Shotweaver.savedPresets.v1";
const char* const oldID = "00000000-0000-0000-0000-000000000001";
const std::string audioKey = R"("audioAngleName":"Recorder")";

/// As stored before there were ranges, and not where sorting puts it.
const std::string old =
    R"([{"id":"00000000-0000-0000-0000-000000000001","name":"Old ","mainShare":60,"averageShot":8,)"
    R"("doubleMain":true,"mainAngleName":" BAND ","otherAngleNames":["wide","Pulpit"],)"
    R"("audioAngleName":"Recorder"},{"id":"00000000-0000-0000-0000-000000000002","name":"New",)"
    R"("mainShare":60,"averageShot":8,"doubleMain":true,"mainAngleName":"","otherAngleNames":[],)"
    R"("audioAngleName":""}])";

EditSettings with(const std::string& changed, const EditSettings& settings) {
    return readSettingsOver(JsonReader(parseJson(changed)), settings);
}

/// An editor with a project, presets of which the old one is chosen, and an open sheet.
struct Stage : EditorBench {
    explicit Stage(const std::string& presets = old) {
        folder.write(entry, presets);
        restart();
        ProjectBuilder project = concert();
        project.angles.push_back({"C", "Choir", {{0, 1500}}});
        project.angles.push_back({"D", "choir", {{0, 1500}}});
        editor().importProject(project.xml());
        editor().choosePreset(oldID);
        editor().openSavePreset();
        editor().setPresetName("A");
    }
    void apply(const char* changed) {
        test::apply(editor(), with(changed, editor().fields().settings));
    }
    /// All that an operation on presets may change but for the error; at its end the open sheet.
    std::string state() {
        std::string names;
        for (const PickerOption& option : editor().presetOptions())
            names += option.label + ", ";
        return names + folder.read(entry) + fields().chosenPreset + fields().presetNotice +
               session().value() + (fields().showSavePreset ? "+" : "");
    }
};

using Operation = void (ContentView::*)();

TEST(Presets, areSavedUnderNamesOfTheirOwnAndSorted) {
    Stage stage;
    for (const char* name : {"Preset 10", "\t OLD\u2003", " preset 2\n"}) {
        stage.editor().openSavePreset();
        stage.editor().setPresetName(name);
        stage.editor().savePreset();
        EXPECT_FALSE(stage.fields().showSavePreset);
    }
    EXPECT_TRUE(stage.state().starts_with("Choose a preset, New, Old , preset 2, Preset 10, [{"));
    EXPECT_EQ(stage.editor().selectedPreset()->name, "preset 2");
    EXPECT_EQ(stage.fields().presetNotice, "Saved preset 2.");
    EXPECT_EQ(stage.fields().error, "A preset with that name already exists. Choose it and use "
                                    "Update, or save with another name.");
}

TEST(Presets, updateAndDeleteTheChosenOneOnly) {
    Stage stage;
    stage.apply(
        R"({"mainShare": 30, "varyOthers": true, "cutAtMarkers": true, "cutTimes": [3],
        "openingEnabled": true, "openingCamera": "B",
        "closingCamera": "P", "frequencies": {"R": 2, "P": 7, "B": 1}, "returnTimes": {"W": 90},
        "otherCameras": ["P", "R", "W"]})");
    stage.editor().updatePreset();
    EXPECT_EQ(stage.fields().presetNotice, "Saved Old.");
    const std::string updated =
        R"(,{"id":"00000000-0000-0000-0000-000000000001","name":"Old","mainShare":30.0,)"
        R"("averageShot":10.0,"doubleMain":false,"varyOthers":true,"cutAtMarkers":true,"mainAngleName":"Wide",)"
        R"("otherAngleNames":["Pulpit"],)"
        R"("audioAngleName":"Recorder","returnTimes":[{"angleName":"Wide","seconds":90.0}],)"
        R"("frequencies":[{"angleName":"Pulpit","weight":7.0},{"angleName":"Band","weight":1.0}],)"
        R"("opening":{"angleName":"Band","seconds":15.0},"mainMinimum":10.0,"mainMaximum":25.0,)"
        R"("otherMinimum":4.0,"otherMaximum":8.0}])";
    const std::string stored = stage.folder.read(entry);
    const std::string others = stored.substr(0, stored.find(",{\"id\""));
    EXPECT_EQ(stored, others + updated);

    stage.editor().generateEdit();
    const std::string session = stage.session().value();
    stage.editor().deletePreset();
    const char* const deleted = "]Deleted Old. Your current editing settings are unchanged.";
    EXPECT_EQ(stage.state(), "Choose a preset, New, " + others + deleted + session);
    EXPECT_FALSE(stage.fields().cuts().empty());
}

TEST(Presets, applyWhatMatches) {
    const std::string matched = "Applied Old , including matching camera and audio angles.";
    const std::string kept =
        "Applied Old 's pacing and balance. Some angle names are missing or repeated, so the "
        "current camera and audio selections were kept.";
    const std::string off =
        kept + " An opening or closing camera could not be matched, so that option was turned off.";
    const std::string cameras = R"({"mainCamera": "B", "otherCameras": ["P", "W"], "audio": )";
    // A change of the preset, of the settings, the notice.
    const std::array<std::string, 4> rows[] = {
        {"", "", cameras + R"("R"})", matched},
        {"Recorder", "WIDE", cameras + R"("W"})", matched},
        {R"("mainShare":60,"averageShot":8)", R"("mainShare":10,"averageShot":4.1)",
         cameras + R"("R", "mainShare": 10, "averageShot": 4.1, "mainMinimum": 1, "mainMaximum": 2,
             "otherMinimum": 5, "otherMaximum": 10})",
         matched},
        {"Recorder", "Mix", "{}", kept},
        {"BAND", "Recorder", "{}", kept},
        {"BAND", "Choir", "{}", kept},
        {"Pulpit", "Organ", "{}", kept},
        {"Pulpit", " WIDE", "{}", kept},
        {"Pulpit", "Band", "{}", kept},
        {R"("wide","Pulpit")", "", "{}", kept},
        {audioKey, R"("audioAngleName":"","closing":{"angleName":"Choir","seconds":9})", "{}", off},
        {audioKey, audioKey + R"(,"opening":{"angleName":"pulpit","seconds":9})",
         cameras + R"("R", "openingEnabled": true, "openingCamera": "P", "openingSeconds": 9})",
         matched},
        {audioKey,
         audioKey + R"(,"mainMinimum":5,"mainMaximum":6,"returnTimes":[{"angleName":"Band",)"
                    R"("seconds":20},{"angleName":"choir","seconds":20}],"frequencies":[)"
                    R"({"angleName":"Choir","weight":8},{"angleName":"wide ","weight":7},)"
                    R"({"angleName":"Band","weight":8},{"angleName":"band","weight":9}])",
         cameras + R"("R", "mainMinimum": 5, "mainMaximum": 6, "frequencies": {"W": 7, "P": 5,
             "B": 5, "C": 5, "D": 5}, "returnTimes": {"W": 0, "P": 0, "B": 20, "C": 0, "D": 0}})",
         matched},
    };
    for (const auto& [from, to, changed, notice] : rows) {
        Stage stage(replaced(old, from, to));
        stage.apply(
            R"({"audio": "B", "varyOthers": true, "followMarkers": true, "cutTimes": [3], "frequencies": {"B": 9}, "returnTimes": {"P": 60}})");
        stage.editor().addSection();
        type(stage.editor(), 0, &SectionDraft::start, "01:00:10:00");
        const EditSettings pacing = with(R"({"mainShare": 60, "averageShot": 8, "doubleMain": true,
            "varyOthers": false, "followMarkers": false, "mainMinimum": 7, "mainMaximum": 12, "otherMinimum": 4, "otherMaximum": 8,
            "frequencies": {"W": 5, "P": 5, "B": 5, "C": 5, "D": 5},
            "returnTimes": {"W": 0, "P": 0, "B": 0, "C": 0, "D": 0}})",
                                         stage.editor().fields().settings);
        stage.apply(R"({"openingEnabled": true, "closingEnabled": true})");
        stage.editor().applyPreset();
        stage.editor().generateEdit();
        EXPECT_FALSE(stage.fields().cuts().empty()) << to;
        stage.editor().applyPreset(); // clears the cuts even with their own settings
        EXPECT_EQ(readSession(stage.session().value()).settings, with(changed, pacing)) << to;
        EXPECT_EQ(stage.fields().presetNotice, notice) << to;
        EXPECT_TRUE(stage.fields().cuts().empty());
    }
}

TEST(Presets, nothingHappensWithoutAChoiceANameOrCameras) {
    const auto expectNothing = [](Stage& stage, std::initializer_list<Operation> operations) {
        for (const Operation operation : operations) {
            const std::string before = stage.state();
            (stage.editor().*operation)();
            EXPECT_EQ(stage.state(), before);
            EXPECT_EQ(stage.fields().error, std::nullopt);
        }
    };
    for (const char* changed : {R"({"mainCamera": "R"})", R"({"audio": ""})",
                                R"({"otherCameras": ["W", "R", "gone"]})"}) {
        Stage stage;
        stage.apply(changed);
        expectNothing(stage, {&ContentView::savePreset, &ContentView::updatePreset});
    }
    Stage stage;
    stage.editor().setPresetName("\u2003\n");
    expectNothing(stage, {&ContentView::savePreset});
    stage.editor().setPresetName("A");
    for (const char* id : {"", "00000000-0000-0000-0000-000000000009"}) {
        stage.editor().choosePreset(id);
        expectNothing(stage, {&ContentView::updatePreset, &ContentView::applyPreset,
                              &ContentView::deletePreset});
    }
}

} // namespace
} // namespace shotweaver::test
