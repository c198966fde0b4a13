#include "cli/CommandLine.h"

#include "persistence/EditPreset.h"
#include "persistence/RecordJson.h"
#include "planning/ProjectDefaults.h"
#include "platform/Files.h"
#include "platform/StateFolders.h"
#include "platform/UserDefaults.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <future>
#include <memory>
#include <sstream>

namespace shotweaver::test {
namespace {

using Arguments = std::vector<std::string>;

/// Exit status, standard output and standard error.
using Outcome = std::tuple<int, std::string, std::string>;

/// A system that has Final Cut Pro or not, and what is opened with it. Reports on another thread.
struct FakeWorkspace final : Workspace {
    std::optional<std::string> urlForApplication(const std::string&) override {
        return application;
    }
    void open(const std::string& file, const std::string&, OpenCompletion completion) override {
        opened.push_back(file);
        reporting = std::async(std::launch::async, std::move(completion), error);
    }
    std::optional<std::string> application;
    std::optional<HostError> error;
    std::vector<std::string> opened;
    std::future<void> reporting;
};

const Environment emptyEnvironment = [](const char*) { return std::nullopt; };

/// Runs a command; on a full disk the standard output takes nothing.
Outcome run(const Arguments& arguments, const std::string& input = {}, bool isDiskFull = false,
            const Environment& environment = emptyEnvironment,
            const std::shared_ptr<Workspace>& workspace = std::make_shared<FakeWorkspace>()) {
    class Full : public std::streambuf {
    } full;
    std::stringbuf text(std::ios::out);
    MemorySource in(input);
    std::ostream out(isDiskFull ? static_cast<std::streambuf*>(&full) : &text);
    std::ostringstream err;
    const int status = runCommandLine(arguments, {in, out, err, environment, workspace});
    return {status, text.str(), err.str()};
}

Outcome failure(const std::string& message) {
    return {1, "", "shotweaver: " + message + "\n"};
}

Outcome wrongUsage(const std::string& line, const std::string& verb = " generate",
                   const std::string& usage = " PROJECT [OPTIONS]") {
    return {2, "",
            "shotweaver: " + line + "\nUsage: shotweaver" + verb + usage + "\n\"shotweaver" + verb +
                " --help\" explains more.\n"};
}

std::string paths(const std::string& stem) {
    return stem + ".fcpxml\n" + stem + ".settings.txt\n";
}

/// 80 seconds from 01:00:00:00 on; identifiers and names that look like something else.
std::string projectXml() {
    ProjectBuilder project;
    project.length = 2000;
    project.timelineStart = 90000;
    project.angles = {{"+a/=", "Wide,&#9;l=1", {{0, 2000}}},
                      {"/b", "Église", {{0, 2000}}, true, false},
                      {"-c", "日本", {{0, 2000}}},
                      {"Église", " 日本 ", {{200, 600}, {1000, 1000}}},
                      {"gap", "Recorder", {{0, 1980}}, false}};
    project.clipContent = R"(<mc-source angleID="-c" srcEnable="all"/>)"
                          R"(<marker start="2/50s" duration="1/25s" value="Amen&#10;!"/>)";
    return project.xml();
}

/// The same with its marker between two frames, and what is said of it.
const std::string offGridXml = test::replaced(projectXml(), "2/50s", "1/50s");
const std::string offGrid = "This prototype needs timing aligned to the project frame rate.";
const std::string offGridWarning =
    "warning: The marker “Amen !” on the multicam clip would stop an export: " + offGrid + "\n";

Outcome generate(Arguments flags) {
    flags.insert(flags.begin(), {"generate", "-", "--json"});
    return run(flags, projectXml());
}

EditRevision revisionAfter(const Arguments& flags) {
    const auto [status, out, err] = generate(flags);
    EXPECT_EQ(err, "");
    return readRevision(JsonReader(parseJson(out)));
}

/// The settings after an import with those of `text` in their place.
EditSettings settingsWith(const std::string& text) {
    return readSettingsOver(JsonReader(parseJson(text)),
                            importedSettings(Project(projectXml()), {}));
}

TEST(CommandLine, wrongUsageIsNamedAndFollowedByTheUsage) {
    const std::string any = " VERB PROJECT [OPTIONS]";
    const std::pair<Arguments, Outcome> rows[] = {
        {{}, wrongUsage("Say what to do: inspect, generate, export or presets.", "", any)},
        {{"x"},
         wrongUsage("There is no verb \"x\": inspect, generate, export or presets.", "", any)},
        {{"generate", "a", "--frequency", "A=1", "B=2"}, wrongUsage("Not expected here: B=2")},
        {{"generate", "a", "--output", ""}, wrongUsage("--output: the folder is empty")},
        {{"export", "-", "-", "--output", "out"},
         wrongUsage("Only one of PROJECT and REVISION can be \"-\", the standard input.", " export",
                    " PROJECT REVISION --output DIR [OPTIONS]")},
    };
    for (const auto& [arguments, outcome] : rows)
        EXPECT_EQ(run(arguments), outcome);
}

TEST(CommandLine, aStandardOutputThatTakesNothingIsAFailure) {
    const TestFolder folder;
    const std::string xml = ProjectBuilder().xml();
    const Outcome expected = failure("The standard output could not be written.");
    for (const Arguments& arguments : {Arguments{"--version"}, {"export", "-h"}, {"inspect", "-"}})
        EXPECT_EQ(run(arguments, xml, true), expected) << arguments[0];
    EXPECT_EQ(run({"generate", "-", "--output", folder.path()}, xml, true),
              (Outcome{1, "", paths(folder.path("Sunday Shotweaver")) + std::get<2>(expected)}));
}

TEST(InspectCommand, aProjectIsSummarised) {
    const std::string bar = "  ██████████████████████████████";
    const std::string none = "  ······························";
    const std::string part = "  ···█████████···███████████████";
    const std::string table =
        "Sunday · 80.00 seconds · 25.00 fps · FCPXML 1.11 · Audio: 日本\n\n"
        "Angle   Name       Cameras  Clips  Gaps  First at  Picture                         Sound\n"
        "+a/=    Wide, l=1               1     0    0.00 s" +
        bar + bar + "\n/b      Église                  1     0    0.00 s" + bar + none +
        "\n-c      日本                    1     0    0.00 s" + bar + bar +
        "\nÉglise   日本                   2     0    8.00 s" + part + part +
        "\ngap     Recorder                1     0    0.00 s" + none + bar.substr(0, 89) +
        "▒\n\nTimeline 01:00:00:00 to 01:01:20:00\n\n1 marker\n";
    EXPECT_EQ(run({"inspect", "-"}, offGridXml), (Outcome{0, table, offGridWarning}));
    EXPECT_TRUE(
        std::get<1>(run({"inspect", "-", "--json"}, offGridXml))
            .ends_with(R"("named":0}},"warnings":[{"kind":"refused","text":)"
                       R"("The marker “Amen\n!” on the multicam clip would stop an export: )" +
                       offGrid + "\"}]}\n"));
    const std::string json =
        R"({"project":{"name":"Sunday","version":"1.11","duration":40.0,"framesPerSecond":25.0,)"
        R"("audioAngles":"A","missingLocations":[],"angles":[)"
        R"({"id":"A","name":"A","cameras":"","clipCount":1,"gapCount":0,"firstRecording":0.0},)"
        R"({"id":"B","name":"B","cameras":"","clipCount":0,"gapCount":0}]},)";
    const char* engine =
        R"("engine":{"frameNumerator":1,"frameDenominator":25,"length":1000,"sourceStart":0,)"
        R"("timelineStart":0,"audioID":"A","coverage":{"A":[[0,1000]],"B":[]},)"
        R"("audioCoverage":{"A":[[0,1000]],"B":[]}}})";
    ProjectBuilder project;
    project.angles[1].clips.clear();
    project.angles[1].name = std::string(5000, 'x'); // shifts its own line only
    EXPECT_LT(std::get<1>(run({"inspect", "-"}, project.xml())).size(), 6500U);
    project.angles[1].name = "B";
    const Arguments inspect{"inspect", "--json", "-"};
    EXPECT_EQ(run(inspect, project.xml()), (Outcome{0, json + engine + "\n", ""}));
    ProjectBuilder marked = project;
    marked.clipContent += R"(<marker start="2s"/><marker start="3s"/><marker value="a"/>)";
    EXPECT_TRUE(std::get<1>(run({"inspect", "-"}, marked.xml()))
                    .ends_with("\n\n3 markers, 1 of them named like a camera\n"));
    EXPECT_TRUE(std::get<1>(run(inspect, marked.xml()))
                    .ends_with(R"([]},"markers":{"cutPoints":2,"named":1}}})"
                               "\n"));
    project.clipAttributes += R"( audioStart="0s")"; // summarised all the same
    const std::string refusal =
        "Speed changes, split audio and disabled main multicam clips are not supported yet.";
    EXPECT_EQ(run(inspect, project.xml()), (Outcome{1, json + R"("refusal":")" + refusal + "\"}\n",
                                                    "shotweaver: " + refusal + "\n"}));
}

TEST(ExportCommand, editsByHandAreExportedAsTheyAreOrRefused) {
    const TestFolder folder;
    const std::string project = folder.write("p.fcpxml", ProjectBuilder().xml());
    Json json = parseJson(std::get<1>(run({"generate", project, "--json"})));
    const auto exportedWith = [&](std::int64_t start, std::int64_t duration) {
        json["cuts"] = {
            {{"id", json["id"]}, {"angle", "B"}, {"start", 0}, {"duration", 1}},
            {{"id", json["id"]}, {"angle", "B"}, {"start", start}, {"duration", duration}}};
        return run({"export", project, "-", "--output", folder.path()}, json.dump());
    };
    const Outcome refused = failure("The cut list contains invalid timing or unavailable footage.");
    EXPECT_EQ(exportedWith(1, INT64_MAX), refused);
    EXPECT_EQ(exportedWith(INT64_MIN, INT64_MIN), refused);
    EXPECT_EQ(folder.names().size(), 1U);
    EXPECT_EQ(exportedWith(1, 999), (Outcome{0, paths(folder.path("Sunday Shotweaver")), ""}));
}

TEST(GenerateCommand, anEditIsPrintedAndExported) {
    const TestFolder folder;
    // No free shot: an opening and a closing that fill 40 seconds.
    Arguments arguments{"generate",  "-",    "--opening", "A=25",
                        "--closing", "b=15", "--output",  folder.path()};
    const std::string text = "2 cuts · Main camera: 63% · Audio: A\n\n"
                             "Start (Timecode)  Camera  Seconds\n"
                             "00:00:00:00       A         25.00\n"
                             "00:00:25:00       B         15.00\n\n"
                             "Actual camera usage\n"
                             "Camera  Screen time  Share  Shots\n"
                             "A         25.00 sec  62.5%      1\n"
                             "B         15.00 sec  37.5%      1\n\n";
    const std::string xml = ProjectBuilder().xml();
    const std::string stem = folder.path("Sunday Shotweaver");
    EXPECT_EQ(run(arguments, xml), (Outcome{0, text + paths(stem), ""}));
    arguments.emplace_back("--json");
    EXPECT_EQ(std::get<2>(run(arguments, xml)), paths(stem + " 2"));
}

TEST(GenerateCommand, aSeedGivesTheSameShotsWithFreshIdentifiers) {
    std::vector<Cut> cuts = revisionAfter({"--seed", "18446744073709551615"}).cuts;
    const std::vector<Cut> again = revisionAfter({"--seed", "18446744073709551615"}).cuts;
    EXPECT_NE(cuts.at(0).id, again.at(0).id);
    for (std::size_t i = 0; i < cuts.size(); ++i)
        cuts[i].id = again.at(i).id;
    EXPECT_EQ(cuts, again);
}

TEST(GenerateCommand, shotsOfAnEditAreKept) {
    const TestFolder folder;
    const Arguments first{"--seed=1", "--main-share=60", "--main-range=5-6", "--other-range=3-4"};
    const std::string json = std::get<1>(generate(first));
    const std::string edit = folder.write("e.json", json);
    const EditRevision before = revisionAfter(first);
    ASSERT_GT(before.cuts.size(), 12U);
    const auto kept = [&](const Arguments& flags) {
        const auto [status, out, err] = generate(flags);
        EXPECT_EQ(status, 0) << err;
        const Json parsed = parseJson(out);
        std::string text;
        const KeptShots shots = readKeptShots(JsonReader(parsed));
        for (const Cut& cut : keptCuts(readRevision(JsonReader(parsed)).cuts, shots))
            for (std::size_t row = 0; row < before.cuts.size(); ++row)
                if (before.cuts[row].start == cut.start && before.cuts[row].angle == cut.angle)
                    text += fmt::format("{} ", row + 1);
        return text;
    };
    EXPECT_EQ(kept({"--from", edit}), "");
    EXPECT_EQ(kept({"--from", edit, "--keep", " 9 ,2-4,3"}), "2 3 4 9 ");
    EXPECT_EQ(revisionAfter({"--from", edit, "--main-share=55"}).settings,
              settingsWith(R"({"mainShare": 55, "mainMinimum": 5, "mainMaximum": 6,
                  "otherMinimum": 3, "otherMaximum": 4})"));
    const std::string marked = folder.write(
        "m.json", std::get<1>(generate({"--from", edit, "--keep", "2,9", "--seed=2"})));
    EXPECT_EQ(kept({"--from", marked}), "2 9 ");
    const std::string csv = folder.path("c.csv");
    generate({"--from", marked, "--csv", csv});
    EXPECT_EQ(kept({"--from", csv, "--main-range=5-6", "--other-range=3-4"}), "2 9 ");

    const std::string number = " is not a shot's number, or two as in 7-9.";
    const std::pair<std::string, std::string> rows[] = {
        {"3-1", "--keep: \"3-1\"" + number},
        {"2,,3", "--keep: \"\"" + number},
        {"0", "--keep: \"0\"" + number},
        {"2-18446744073709551615",
         fmt::format("--keep: the edit has {} shots; there is no shot 18446744073709551615.",
                     before.cuts.size())}};
    for (const auto& [typed, line] : rows)
        EXPECT_EQ(generate({"--from", edit, "--keep=" + typed}), wrongUsage(line));
    EXPECT_EQ(generate({"--keep", "1"}),
              wrongUsage("--keep keeps shots of an edit: give --from EDIT as well."));
    EXPECT_EQ(generate({"--from", "-"}),
              wrongUsage("Only one of PROJECT and EDIT can be \"-\", the standard input."));
}

TEST(GenerateCommand, theCutListIsWrittenAsCsv) {
    const TestFolder folder;
    const Arguments shots{"generate", "-", "--opening", "A=25", "--closing", "b=15"};
    const auto with = [&](Arguments more) {
        more.insert(more.begin(), shots.begin(), shots.end());
        return run(more, ProjectBuilder().xml());
    };
    const std::string csv = "Start,End,Camera,Seconds,Kept,Why\r\n"
                            "00:00:00:00,00:00:25:00,A,25.0,,Opening shot.\r\n"
                            "00:00:25:00,00:00:40:00,B,15.0,,Closing shot.\r\n";
    EXPECT_EQ(with({"--csv", "-"}), (Outcome{0, csv, ""}));
    const std::string stem = folder.path("Sunday Shotweaver");
    EXPECT_EQ(with({"--csv=-", "--output", folder.path()}), (Outcome{0, csv, paths(stem)}));
    EXPECT_EQ(with({"--csv=-", "--json"}),
              wrongUsage("--csv - and --json both print the edit: give one of them."));

    const std::string file = folder.path("cuts.csv");
    const std::string human = std::get<1>(with({"--csv", file}));
    EXPECT_EQ(folder.read("cuts.csv"), csv);
    EXPECT_EQ(human, std::get<1>(with({})));
    EXPECT_EQ(std::get<2>(with({"--csv", file})),
              "shotweaver: “" + file + "” could not be created: File exists.\n");
    const std::string other = folder.path("other.csv");
    EXPECT_EQ(with({"--csv", other, "--output", folder.path("none")}),
              (Outcome{1, "",
                       other + "\nshotweaver: “" + folder.path("none/Sunday Shotweaver.fcpxml") +
                           "” could not be created: No such file or directory.\n"}));
    EXPECT_EQ(folder.read("other.csv"), csv);

    const std::string told = std::get<1>(with({"--why"}));
    EXPECT_EQ(told, replaced(replaced(human, "25.00\n", "25.00\n    Opening shot.\n"), "15.00\n",
                             "15.00\n    Closing shot.\n"));
}

TEST(ExportCommand, cutListsAreExportedWithTheAnglesThatAreGiven) {
    const TestFolder folder;
    const std::string xml = ProjectBuilder().xml();
    const std::string list =
        folder.write("cuts.csv", "Camera;Start;Kept\na;00:00:00:00;yes\nB;00:00:10:00;\n");
    const auto record = [&](Arguments more) {
        more.insert(more.begin(), {"export", "-", list, "--output", folder.path()});
        const auto [status, out, err] = run(more, xml);
        EXPECT_EQ(status, 0) << err;
        const std::string path = out.substr(out.find('\n') + 1);
        return readFile(systemFileCalls(), path.substr(0, path.size() - 1));
    };
    for (const char* part : {"Main camera: A\n", "audio: A\n", "Kept shots:\n00:00:00:00 | A\n\n",
                             "\n00:00:10:00 | B | 30.0\n"})
        EXPECT_NE(record({}).find(part), std::string::npos) << part;
    for (const char* part : {"Main camera: B\n", "audio: B\n"})
        EXPECT_NE(record({"--main-camera=B", "--audio", "b"}).find(part), std::string::npos)
            << part;
    const std::string edit =
        folder.write("e.json", std::get<1>(run({"generate", "-", "--json"}, xml)));
    EXPECT_EQ(run({"export", "-", edit, "--output=x", "--audio=A"}, xml),
              wrongUsage("--main-camera and --audio are for a CSV cut list: REVISION has its own.",
                         " export", " PROJECT REVISION --output DIR [OPTIONS]"));
    EXPECT_EQ(run({"export", "-", folder.write("x", "abc"), "--output=x"}, xml),
              failure("The cut list needs a header with the columns Start and Camera."));
}

TEST(GenerateCommand, flagsFollowTheSettingsFileAndTheImport) {
    const TestFolder folder;
    const std::string file = folder.write("s.json", R"({"mainShare": 40, "x": [null],
        "averageShot": 5, "otherMinimum": 9, "mainCamera": "/b", "otherCameras": ["-c"],
        "frequencies": {"-c": 3}})");
    const std::pair<Arguments, const char*> rows[] = {
        {{"--main-camera", "Église"}, // an identifier comes before another's name
         R"({"mainCamera": "Église", "otherCameras": ["+a/=", "-c", "/b"]})"},
        {{"--other-cameras", "-c,+a/=", "--main-camera= E\u0301GLISE\n", "--audio=+a/="},
         R"({"mainCamera": "/b", "otherCameras": ["-c", "+a/="], "audio": "+a/="})"},
        {{"--cut-at-markers", "--follow-markers", "--cut-points",
          folder.write("beats.txt", "# beats\n01:00:02:00\n2.5\n"), "--settings",
          folder.write("times", R"({"cutTimes": [1]})")},
         R"({"cutAtMarkers": true, "followMarkers": true, "cutTimes": [2, 2.5]})"},
        {{"--main-range", "1-1e2", "--double-main", "--vary", "--frequency", "Wide,\tl=1=1",
          "--frequency=-c=2", "--return-time", "/b=0.5", "--opening", "+a/==1e1", "--closing",
          "-c=20"},
         R"({"mainMinimum": 1, "mainMaximum": 100, "doubleMain": true, "varyOthers": true, "returnTimes": {"/b": 0.5},
             "frequencies": {"+a/=": 1, "-c": 2, "/b": 5, "Église": 5}, "openingEnabled": true,
             "openingSeconds": 10, "closingEnabled": true, "closingCamera": "-c",
             "closingSeconds": 20})"},
        {{"--main-share=50", "--main-camera", "+a/=", "--frequency", "/b=2", "--other-range",
          "9-10", "--settings", file},
         R"({"mainShare": 50, "averageShot": 5, "otherMinimum": 9, "otherMaximum": 10,
             "otherCameras": ["-c", "/b"], "frequencies": {"-c": 3, "/b": 2}})"},
    };
    for (const auto& [flags, changes] : rows)
        EXPECT_EQ(revisionAfter(flags).settings, settingsWith(changes)) << changes;
    const Arguments section{"--section", "-c,01:00:10:00, 01:00:20:00 , a, b=c,"};
    const SectionDraft made = revisionAfter(section).settings.sections.at(0);
    EXPECT_EQ(made, (SectionDraft{made.id, " a, b=c,", "-c", "01:00:10:00", " 01:00:20:00 "}));
}

TEST(GenerateCommand, wrongValuesAreNamedAndRefusalsFollowAWarning) {
    const TestFolder folder;
    const std::string none = " angle has the identifier or name \"X\". inspect prints them.";
    const std::string several = "several angles are named \"日本\". Give the angle's identifier, "
                                "which inspect prints.";
    const std::string reversed = folder.write("r", R"({"mainMinimum": 20, "mainMaximum": 19.5})");
    const std::string above = folder.write("a", R"({"otherMinimum": 10.5})");
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"--audio", "X", "no audio" + none},
        {"--closing", "日本=5", several},
        {"--other-range", "10", "\"10\" is not MIN-MAX in seconds, as in 10-25."},
        {"--other-range", "8-7.5", "the minimum in \"8-7.5\" is above the maximum."},
        {"--section", "/b,1", "\"/b,1\" is not ANGLE,START,END or ANGLE,START,END,NAME."},
        {"--section", "/b,1,2,\xFF", "the text is not UTF-8."},
        {"--seed", "-1", "\"-1\" is not a whole number of at most 64 bits."},
        {"--settings", reversed,
         "the shortest main shot, 20.0 seconds, is longer than the longest, 19.5."},
        {"--settings",
         folder.write("t", R"({"cutTimes": [)" + test::repeated(20'000, "1,") + "1]}"),
         "cutTimes has more than 20,000 times."},
        {"--settings", above,
         "the shortest other shot, 10.5 seconds, is longer than the longest, 8.0."},
    };
    for (const auto& [flag, value, line] : rows)
        EXPECT_EQ(generate({flag, value, "--main-range=9-10"}), wrongUsage(flag + (": " + line)));

    const std::string times = folder.write("times.txt", "12\nabc\n");
    EXPECT_EQ(generate({"--cut-points", times}), failure(times + ", line 2: “abc” is not a time."));
    const std::string audio = "Choose a continuous audio angle.\n";
    EXPECT_EQ(
        generate({"--audio", "recorder", "--main-share", "95"}),
        (Outcome{1, "",
                 "warning: Selected audio has a gap at 01:01:19:05. " + audio +
                     "shotweaver: This audio angle does not cover the whole project. " + audio}));
}

TEST(PresetsCommand, presetsAreListedAndApplied) {
    const TestFolder home;
    const Environment user = [&](const std::string& name) {
        return name == "HOME" ? std::optional(home.path()) : std::nullopt;
    };
    UserDefaults defaults(systemFileCalls(), stateFolders(user).userDefaults);
    const auto runAt = [&](const Arguments& arguments) {
        return run(arguments, projectXml(), false, user);
    };
    EXPECT_EQ(runAt({"presets"}), (Outcome{0, "", ""}));
    EXPECT_EQ(runAt({"presets", "--json"}), (Outcome{0, "[]\n", ""}));

    const std::string stored =
        R"([{"id":"00000000-0000-0000-0000-00000000000A","name":"Evening\nsong","mainShare":60,)"
        R"("averageShot":8,"doubleMain":true,"mainAngleName":"Église","otherAngleNames":["Gone"],)"
        R"("audioAngleName":"église","frequencies":[{"angleName":"ÉGLISE","weight":9}]}])";
    defaults.setData(presetsEntry, stored);
    EXPECT_EQ(runAt({"presets"}), (Outcome{0, "Evening song\n", ""}));
    EXPECT_EQ(runAt({"presets", "--json"}), (Outcome{0, stored + "\n", ""}));
    EXPECT_EQ(runAt({"generate", "-", "--preset", "Morning"}),
              wrongUsage("--preset: no saved preset has the name \"Morning\". \"shotweaver "
                         "presets\" lists them."));
    const auto [status, out, err] =
        runAt({"generate", "-", "--json", "--preset", " evening\nSONG", "--main-share", "50"});
    EXPECT_EQ(err, "Applied Evening song's pacing and balance. Some angle names are missing or "
                   "repeated, so the current camera and audio selections were kept.\n");
    EXPECT_EQ(readRevision(JsonReader(parseJson(out))).settings, settingsWith(R"({
        "mainShare": 50, "averageShot": 8, "doubleMain": true, "mainMinimum": 7,
        "mainMaximum": 12, "otherMinimum": 4, "otherMaximum": 8,
        "frequencies": {"+a/=": 5, "/b": 9, "-c": 5, "Église": 5},
        "returnTimes": {"+a/=": 0, "/b": 0, "-c": 0, "Église": 0}})"));

    defaults.setData(presetsEntry, stored + "]");
    EXPECT_EQ(std::get<0>(runAt({"generate", "-", "--preset", "Evening song"})), 1);
    EXPECT_EQ(std::get<1>(runAt({"presets", "--json"})), "");
}

TEST(HandOff, filesAreNamedAlsoWhenNothingOpensThem) {
    const TestFolder folder;
    const auto workspace = std::make_shared<FakeWorkspace>();
    const auto runHere = [&](const Arguments& arguments, const std::string& input) {
        return run(arguments, input, false, emptyEnvironment, workspace);
    };
    const Arguments arguments{"generate", "-", "--output", folder.path(), "--open"};
    EXPECT_EQ(runHere({"generate", "-", "--open"}, ""),
              wrongUsage("--open hands over what --output exports: give --output DIR as well."));
    EXPECT_EQ(runHere(arguments, offGridXml),
              (Outcome{1, "", offGridWarning + "shotweaver: " + offGrid + "\n"}));

    const std::string xml = ProjectBuilder().xml();
    const std::string stem = folder.path("Sunday Shotweaver");
    EXPECT_EQ(runHere(arguments, xml),
              (Outcome{1, "",
                       paths(stem) + "shotweaver: Final Cut Pro could not be found. Your exported "
                                     "files have been saved.\n"}));
    workspace->application = "app";
    workspace->error = HostError{"Shotweaver", 1, "Unable to open it."};
    EXPECT_EQ(runHere(arguments, xml),
              (Outcome{1, "", paths(stem + " 2") + "shotweaver: Unable to open it.\n"}));
    workspace->error.reset();
    const auto [status, out, err] = runHere(arguments, xml);
    EXPECT_EQ(status, 0) << err;
    EXPECT_TRUE(out.ends_with(paths(stem + " 3"))) << out;
    EXPECT_EQ(workspace->opened, (Arguments{stem + " 2.fcpxml", stem + " 3.fcpxml"}));
}

} // namespace
} // namespace shotweaver::test
