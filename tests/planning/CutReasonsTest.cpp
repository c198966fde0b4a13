#include "planning/CutReasons.h"
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
    using Change = void (*)(EditSettings&);
    const Change none = [](EditSettings&) {};
    const Change waits = [](EditSettings& s) { s.returnTimes = {{"B", 10}, {"A", 6}}; };
    const Change pair = [](EditSettings& s) {
        s.otherCameras = {"B", "D"}, s.returnTimes = {{"B", 10}};
    };
    const Change fixed = [](EditSettings& s) {
        s.opening = {true, "C", 4}, s.closing = {true, "B", 4};
        s.sections = {{{}, " Prayer ", "D", "00:00:12:00", "00:00:16:00"},
                      {{}, "", "B", "00:00:16:00", "00:00:20:00"}};
    };
    const std::string turn = "The main camera's turn.";
    const std::tuple<Change, const char*, std::size_t, std::string> rows[] = {
        {none, "A 100 B 200 A 300", 0, turn},
        {none, "A 100 B 200 A 300", 1, "One of B (frequency 5), C (frequency 5)."},
        {[](EditSettings& s) { s.frequencies["D"] = 7.5; }, "A 100 B 200 A 300 D 400 A 1000", 3,
         "One of B (frequency 5), C (frequency 5), D (frequency 7.5)."},
        {[](EditSettings& s) { s.varyOthers = true; }, "A 100 B 200 A 300 C 400 A 1000", 3,
         "One of C (frequency 5), D (frequency 5)."},
        {[](EditSettings& s) {
             s.otherCameras = {"B", "D"}, s.varyOthers = true;
         },
         "A 100 B 200 A 300 D 400 A 1000", 3,
         "The only camera that could take over: B was shown last."},
        {pair, "A 100 B 200 A 300 D 400 A 1000", 3,
         "The only camera that could take over: B waits until 00:00:18:00."},
        {[](EditSettings& s) {
             s.otherCameras = {"B", "D"};
         },
         "A 100 B 200 A 1000", 1,
         "The only camera that could take over: D has no footage until 00:00:12:00."},
        {[](EditSettings& s) {
             s.otherCameras = {"B", "D"};
         },
         "A 650 B 700 A 1000", 1, "The only camera that could take over: D has no more footage."},
        {[](EditSettings& s) { s.otherCameras = {"D"}; }, "A 100 A 200 A 1000", 1,
         "The only camera that recorded here."},
        {waits, "A 100 B 200 B 300 A 400 A 1000", 2,
         "Another camera than the settings would choose here."},
        {[](EditSettings& s) {
             s.otherCameras = {"B"}, s.returnTimes = {{"A", 6}};
         },
         "A 100 B 200 B 300 A 400", 2, "The only camera that could go on."},
        {[](EditSettings& s) { s.otherCameras = {"B"}; }, "A 100 C 200 A 1000", 1,
         "This camera is not among those that are chosen from."},
        // Ends and lengths.
        {none, "A 500 D 600 A 1000", 1,
         "One of B (frequency 5), C (frequency 5), D (frequency 5). It ends with its recording."},
        {none, "A 100 B 140 A! 200 B 1000", 1,
         "One of B (frequency 5), C (frequency 5). It ends where a kept shot begins. 1.6 seconds, "
         "shorter than its range of 2 to 4: cut short."},
        {none, "A 100 B 140 A! 160 B 1000", 2,
         "Kept. 0.8 seconds, shorter than its range of 2 to 4."},
        {none, "A 100 B 1000", 1,
         "One of B (frequency 5), C (frequency 5). It ends with the project. 36.0 seconds, longer "
         "than its range of 2 to 4: several turns in one."},
        {[](EditSettings& s) { s.doubleMain = true; }, "A 200 B 1000", 0,
         turn + " 8.0 seconds, longer than its range of 2 to 4: doubled."},
        // Return times, also of what a person decides.
        {waits, "A 100 B 200 A 300 B! 400", 2,
         "Another camera than the settings would choose here. It ends where a kept shot begins. "
         "Back after 4.0 seconds, before its return time of 6."},
        {waits, "A 100 B 200 A 300 B! 400", 3,
         "Kept. Back after 4.0 seconds, before its return time of 10."},
        // Fixed parts.
        {fixed, "C 100 A 300 D 400 B! 500 A 900 B 1000", 0, "Opening shot."},
        {fixed, "C 100 A 300 D 400 B! 500 A 900 B 1000", 1,
         turn + " It ends where a fixed shot begins. 8.0 seconds, longer than its range of 2 to 4: "
                "several turns in one."},
        {fixed, "C 100 A 300 D 400 B! 500 A 900 B 1000", 2, "Fixed section “Prayer”."},
        {fixed, "C 100 A 300 D 400 B! 500 A 900 B 1000", 3, "Fixed section. Kept."},
        {fixed, "C 100 A 300 D 400 B! 500 A 900 B 1000", 5, "Closing shot."},
        {[](EditSettings& s) {
             s.sections = {{{}, "", "B", "?", "?"}};
         },
         "A 100 B 1000", 0, turn},
    };
    for (const auto& [change, list, row, expected] : rows) {
        EditSettings settings = fourSeconds(project());
        change(settings);
        std::string text = reasons(settings, list, row);
        EXPECT_EQ(text, expected) << list;
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
