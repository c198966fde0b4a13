#include "planning/CutReasons.h"
#include "persistence/RecordJson.h"
#include "planning/EditPlan.h"
#include "planning/ProjectDefaults.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <sstream>

namespace shotweaver::test {
namespace {

/// 40 seconds at 25 frames a second. "A" is the main camera; "D" records from 300 to 600.
Project project() {
    ProjectBuilder builder;
    builder.angles = {{"A", "A", {{0, 1000}}},
                      {"B", "B", {{0, 1000}}},
                      {"C", "C", {{0, 1000}}},
                      {"D", "D", {{300, 300}}}};
    builder.clipContent += R"(<marker start="8s"/><marker start="12s" value="C"/>)";
    return Project(builder.xml());
}

EditSettings fourSeconds(const Project& project) {
    EditSettings settings = importedSettings(project, {});
    settings.mainMinimum = settings.otherMinimum = 2;
    settings.mainMaximum = settings.otherMaximum = 4;
    return settings;
}

/// Cuts written "A 100 B 200", each to its end; those with a "!" are kept. The reasons of one row.
std::string reasons(const EditSettings& settings, const std::string& list, std::size_t row) {
    std::vector<Cut> cuts;
    KeptShots kept;
    std::istringstream words(list);
    std::int64_t start = 0;
    std::int64_t end = 0;
    const UUIDMaker makeUUID = countingUUIDs();
    for (std::string angle; words >> angle >> end; start = end) {
        cuts.push_back({makeUUID(), angle.substr(0, 1), start, end - start});
        if (angle.size() > 1) kept.insert(cuts.back().id);
    }
    return fmt::format("{}", fmt::join(explainCuts(settings, project(), cuts, kept).at(row), " "));
}

TEST(CutReasons, tellWhatCanBeTold) {
    const char* const waits = R"({"returnTimes": {"B": 10, "A": 6}})";
    const char* const pair = R"({"otherCameras": ["B", "D"]})";
    const char* const lone = R"({"otherCameras": ["B"]})";
    const char* const fixed = R"({"openingEnabled": true, "openingCamera": "C", "openingSeconds": 4,
        "closingEnabled": true, "closingCamera": "B", "closingSeconds": 4, "sections": [
        {"id": "00000000-0000-0000-0000-000000000000", "name": " Prayer ", "camera": "D",
         "start": "00:00:12:00", "end": "00:00:16:00"},
        {"id": "00000000-0000-0000-0000-000000000000", "name": "", "camera": "B",
         "start": "00:00:16:00", "end": "00:00:20:00"}]})";
    const char* const marked =
        R"({"cutAtMarkers": true, "followMarkers": true, "cutTimes": [99, 4, 16]})";
    const char* const five = "A 100 B 200 A 300 C 400 A! 500 B 1000";
    const char* const six = "C 100 A 300 D 400 B! 500 A 900 B 1000";
    const std::string turn = "The main camera's turn.";
    const std::string other = "Another camera than the settings would choose here.";
    const std::string takeOver = "The only camera that could take over: ";
    const std::tuple<const char*, const char*, std::size_t, std::string> rows[] = {
        {"{}", "A 100 B 200 A 300", 0, turn},
        {R"({"frequencies": {"D": 7.5}})", "A 100 B 200 A 300 D 400 A 1000", 3,
         "One of B (frequency 5), C (frequency 5), D (frequency 7.5)."},
        {R"({"varyOthers": true})", "A 100 B 200 A 300 C 400 A 1000", 3,
         "One of C (frequency 5), D (frequency 5)."},
        {R"({"otherCameras": ["B", "D"], "varyOthers": true})", "A 100 B 200 A 300 D 400 A 1000", 3,
         takeOver + "B was shown last."},
        {R"({"otherCameras": ["B", "D"], "returnTimes": {"B": 10}})",
         "A 100 B 200 A 300 D 400 A 1000", 3, takeOver + "B waits until 00:00:18:00."},
        {pair, "A 100 B 200 A 1000", 1, takeOver + "D has no footage until 00:00:12:00."},
        {pair, "A 650 B 700 A 1000", 1, takeOver + "D has no more footage."},
        {R"({"otherCameras": ["D"]})", "A 100 A 200 A 1000", 1,
         "The only camera that recorded here."},
        {waits, "A 100 B 200 B 300 A 400 A 1000", 2, other},
        {R"({"otherCameras": ["B"], "returnTimes": {"A": 6}})", "A 100 B 200 B 300 A 400", 2,
         "The only camera that could go on."},
        {lone, "A 100 C 200 A 1000", 1, "This camera is not among those that are chosen from."},
        // Ends and lengths.
        {"{}", "A 500 D 600 A 1000", 1,
         "One of B (frequency 5), C (frequency 5), D (frequency 5). It ends with its recording."},
        {"{}", "A 100 B 140 A! 200 B 1000", 1,
         "One of B (frequency 5), C (frequency 5). It ends where a kept shot begins. 1.6 seconds, "
         "shorter than its range of 2 to 4: cut short."},
        {"{}", "A 100 B 140 A! 160 B 1000", 2,
         "Kept. 0.8 seconds, shorter than its range of 2 to 4."},
        {lone, "A 900 B 1000", 0,
         turn + " 36.0 seconds, longer than its range of 2 to 4: several turns in one."},
        {R"({"doubleMain": true})", "A 200 B 1000", 0,
         turn + " 8.0 seconds, longer than its range of 2 to 4: doubled."},
        // Return times, also of what a person decides.
        {waits, "A 100 B 200 A 300 B! 400", 2,
         other + " It ends where a kept shot begins. Back after 4.0 seconds, before its return "
                 "time of 6."},
        {waits, "A 100 B 200 A 300 B! 400", 3,
         "Kept. Back after 4.0 seconds, before its return time of 10."},
        {fixed, six, 0, "Opening shot."},
        {fixed, six, 1,
         turn + " It ends where a fixed shot begins. 8.0 seconds, longer than its range of 2 to 4: "
                "several turns in one."},
        {fixed, six, 2, "Fixed section “Prayer”."},
        {fixed, six, 3, "Fixed section. Kept."},
        {fixed, six, 5, "Closing shot."},
        // Cut points and notes, where they are used.
        {marked, five, 0, turn + " It ends at a time from the file."},
        {marked, five, 1, "One of B (frequency 5), C (frequency 5). It ends at a marker."},
        {marked, five, 2, turn + " It ends at the marker “C”."},
        {marked, five, 3, "The marker “C” asks for it. It ends where a kept shot begins."},
        {marked, "A 100 B 200 A 300 C! 400 A 1000", 2, turn + " It ends where a kept shot begins."},
        {marked, "A 100 B 200 A 300 B 410 A 1000", 3,
         "One of B (frequency 5), C (frequency 5), D (frequency 5). 4.4 seconds, longer than its "
         "range of 2 to 4: several turns in one."},
        {R"({"followMarkers": true, "returnTimes": {"C": 20}})", "C 100 A 300 C 340 A 1000", 2,
         "The marker “C” asks for it. 1.6 seconds, shorter than its range of 2 to 4: cut short. "
         "Back after 8.0 seconds, before its return time of 20."}};
    for (const auto& [changes, list, row, expected] : rows) {
        const EditSettings settings =
            readSettingsOver(JsonReader(parseJson(changes)), fourSeconds(project()));
        EXPECT_EQ(reasons(settings, list, row), expected) << list << changes;
    }
}

TEST(CutReasons, explainEveryGeneratedShot) {
    const Project loaded = project();
    SeededRandom random(7);
    for (int turn = 0; turn < 200; ++turn) {
        EditSettings settings = fourSeconds(loaded);
        settings.varyOthers = turn % 2 == 0;
        settings.doubleMain = turn % 3 == 0;
        settings.returnTimes["B"] = turn % 5;
        const std::vector<Cut> cuts =
            generateCutList(settings, loaded, {}, random, countingUUIDs());
        const auto told = explainCuts(settings, loaded, cuts, {});
        ASSERT_EQ(told.size(), cuts.size());
        for (const std::vector<std::string>& sentences : told) {
            ASSERT_FALSE(sentences.empty());
            const std::string text = fmt::format("{}", fmt::join(sentences, " "));
            for (const char* wrong : {"Another camera", "not among", "before its return"})
                ASSERT_EQ(text.find(wrong), std::string::npos) << text << turn;
        }
    }
}

} // namespace
} // namespace shotweaver::test
