#include "tests/cli/CommandRun.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace shotweaver::test {
namespace {

/// 40 seconds of two cameras and a recorder, whose names and cells try a table's alignment.
ProjectBuilder project() {
    ProjectBuilder project;
    project.timelineStart = 90000;
    project.angles = {{"+W/=", "Wide\tangle", {{0, 1000}}},
                      {"P", "日本", {{100, 300}, {500, 500}}, true, false},
                      {"R", "Recorder", {{0, 990}}, false, true},
                      {"E", "Empty", {}}};
    project.clipContent = R"(<mc-source angleID="R" srcEnable="all"/>)";
    return project;
}

constexpr const char* plain =
    "Sunday · 40.00 seconds · 25.00 fps · FCPXML 1.11 · Audio: Recorder\n"
    "\n"
    "Angle  Name        Cameras  Clips  Gaps  First at  Picture                         Sound\n"
    "+W/=   Wide angle               1     0    0.00 s  ██████████████████████████████  "
    "██████████████████████████████\n"
    "P      日本                     2     0    4.00 s  ···█████████···███████████████  "
    "······························\n"
    "R      Recorder                 1     0    0.00 s  ······························  "
    "█████████████████████████████▒\n"
    "E      Empty                    0     0         –  ······························  "
    "······························\n"
    "\n"
    "Timeline 01:00:00:00 to 01:00:40:00\n";

constexpr const char* projectJson =
    R"({"project":{"name":"Sunday","version":"1.11","duration":40.0,"framesPerSecond":25.0,)"
    R"("audioAngles":"Recorder","missingLocations":[],"angles":[)"
    R"({"id":"+W/=","name":"Wide\tangle","cameras":"","clipCount":1,"gapCount":0,)"
    R"("firstRecording":0.0},)"
    R"({"id":"P","name":"日本","cameras":"","clipCount":2,"gapCount":0,"firstRecording":4.0},)"
    R"({"id":"R","name":"Recorder","cameras":"","clipCount":1,"gapCount":0,)"
    R"("firstRecording":0.0},)"
    R"({"id":"E","name":"Empty","cameras":"","clipCount":0,"gapCount":0}]})";

constexpr const char* engineJson =
    R"(,"engine":{"frameNumerator":1,"frameDenominator":25,"length":1000,"sourceStart":0,)"
    R"("timelineStart":90000,"audioID":"R","coverage":{"+W/=":[[0,1000]],"E":[],)"
    R"("P":[[100,400],[500,1000]],"R":[]},"audioCoverage":{"+W/=":[[0,1000]],"E":[],"P":[],)"
    R"("R":[[0,990]]}}})"
    "\n";

TEST(InspectCommand, aProjectIsSummarised) {
    const TestFolder folder;
    const std::string file = folder.write("a.FCPXML", replaced(project().xml(), "\t", "&#9;"));
    const std::string bundle = folder.path("Bundle.fcpxmld/");
    std::filesystem::create_directories(bundle);
    std::filesystem::copy(file, bundle + "Info.fcpxml");

    const Outcome expected{0, plain, ""};
    EXPECT_EQ(run({"inspect", file}), expected);
    EXPECT_EQ(run({"inspect", bundle}), expected);
    EXPECT_EQ(run({"inspect", "-"}, folder.read("a.FCPXML")), expected);
    EXPECT_EQ(run({"inspect", "--", file}), expected);
    EXPECT_EQ(run({"inspect", "--json", file}),
              (Outcome{0, std::string(projectJson) + engineJson, ""}));
}

TEST(InspectCommand, aRefusedEngineLeavesTheSummary) {
    ProjectBuilder refused = project();
    refused.clipAttributes = R"(name="MC" audioStart="0s")";
    const std::string xml = replaced(refused.xml(), "\t", "&#9;");
    const std::string refusal =
        "Speed changes, split audio and disabled main multicam clips are not supported yet.";

    EXPECT_EQ(run({"inspect", "-"}, xml),
              (Outcome{1,
                       "Sunday · 40.00 seconds · 25.00 fps · FCPXML 1.11 · Audio: Recorder\n\n"
                       "Angle  Name        Cameras  Clips  Gaps  First at\n"
                       "+W/=   Wide angle               1     0    0.00 s\n"
                       "P      日本                     2     0    4.00 s\n"
                       "R      Recorder                 1     0    0.00 s\n"
                       "E      Empty                    0     0         –\n",
                       failure(refusal).err}));
    EXPECT_EQ(run({"inspect", "-", "--json"}, xml),
              (Outcome{1, std::string(projectJson) + R"(,"refusal":")" + refusal + "\"}\n",
                       failure(refusal).err}));
}

TEST(InspectCommand, whatWouldStopAnExportIsWarnedOf) {
    ProjectBuilder marked;
    marked.clipContent += R"(<marker start="1/50s" duration="1/25s" value="Amen&#10;!"/>)"
                          R"(<marker start="1s" duration="1/25s" value="fine"/>)";
    for (const char* form : {"--json", "--"}) {
        const Outcome outcome = run({"inspect", form, "-"}, marked.xml());
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "warning: The marker “Amen !” on the multicam clip would stop an "
                               "export: This prototype needs timing aligned to the project frame "
                               "rate.\n");
    }
}

TEST(InspectCommand, mediaWithoutALocationIsListed) {
    EXPECT_EQ(run({"inspect", "-"}, replaced(ProjectBuilder().xml(), "file:///B.mov", "")),
              (Outcome{1,
                       "Sunday · 40.00 seconds · 25.00 fps · FCPXML 1.11 · Audio: A\n\n"
                       "Angle  Name  Cameras  Clips  Gaps  First at\n"
                       "A      A                  1     0    0.00 s\n"
                       "B      B                  1     0    0.00 s\n\n"
                       "No media location: B recording\n",
                       failure("No media location in export: B recording. Finish importing media "
                               "in Final Cut and export XML again.")
                           .err}));
}

TEST(InspectCommand, whatCannotBeReadIsRefused) {
    const TestFolder folder;
    std::filesystem::create_directories(folder.path("folder.fcpxml"));
    std::filesystem::create_directories(folder.path("empty.fcpxmld"));
    const struct {
        std::string project;
        const char* message;
    } rows[] = {
        {folder.path("none.fcpxml"),
         "“none.fcpxml” could not be opened: No such file or directory."},
        {folder.path("folder.fcpxml"), "“folder.fcpxml” could not be read: Is a directory."},
        {folder.path("empty.fcpxmld"),
         "“Info.fcpxml” could not be opened: No such file or directory."},
        {folder.write("a.xml", ProjectBuilder().xml()),
         "Choose a .fcpxml file or .fcpxmld bundle."},
        {folder.path(), "Choose a .fcpxml file or .fcpxmld bundle."},
        {"", "Choose a .fcpxml file or .fcpxmld bundle."},
        {"-", "The XML could not be read: no element found at line 1, column 1."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(run({"inspect", row.project, "--json"}), failure(row.message)) << row.project;
}

} // namespace
} // namespace shotweaver::test
