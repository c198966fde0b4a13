#include "editor/EditPlan.h"
#include "editor/ProjectDefaults.h"
#include "persistence/RecordJson.h"
#include "tests/cli/CommandRun.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>
#include <tuple>

namespace shotweaver::test {
namespace {

/// Four cameras and a recorder, 80 seconds from 01:00:00:00 on; identifiers and names that look
/// like something else.
ProjectBuilder project() {
    ProjectBuilder project;
    project.length = 2000;
    project.timelineStart = 90000;
    const std::vector<ClipSpec> whole{{0, 2000}};
    project.angles = {{"+a/=", "Wide, left=1", whole},
                      {"/b", "Pulpit", whole},
                      {"-c", "Band", whole},
                      {"Pulpit", " BAND ", whole},
                      {"rec", "Recorder", whole, false},
                      {"short", "Gap", {{0, 1500}}, false}};
    project.clipContent = R"(<mc-source angleID="rec" srcEnable="all"/>)";
    return project;
}

/// `generate - FLAGS..` of the project.
Outcome generate(std::vector<std::string> flags) {
    flags.insert(flags.begin(), {"generate", "-"});
    return run(flags, project().xml());
}

EditRevision revisionOf(const Outcome& outcome) {
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return readRevision(JsonReader(parseJson(outcome.out)));
}

/// The settings after those flags, without identifiers of sections.
EditSettings settingsAfter(std::vector<std::string> flags) {
    flags.push_back("--json");
    EditSettings settings = revisionOf(generate(std::move(flags))).settings;
    for (SectionDraft& section : settings.sections)
        section.id = UUID();
    return settings;
}

EditSettings defaults() {
    EditSettings settings;
    settings.mainCamera = settings.openingCamera = settings.closingCamera = "+a/=";
    settings.otherCameras = {"-c", "/b", "Pulpit"};
    settings.frequencies = {{"+a/=", 5}, {"-c", 5}, {"/b", 5}, {"Pulpit", 5}};
    settings.audio = "rec";
    return settings;
}

using Shots = std::vector<std::tuple<std::string, std::int64_t, std::int64_t>>;

Shots shotsOf(const std::vector<Cut>& cuts) {
    Shots shots;
    for (const Cut& cut : cuts)
        shots.emplace_back(cut.angle, cut.start, cut.duration);
    return shots;
}

/// An edit without a free shot: an opening and a closing that fill 20 seconds.
const std::vector<std::string> filled{"generate",  "-",         "--opening",
                                      "Wide=12.5", "--closing", "pulpit & choir=7.5"};

std::string filledXml() {
    ProjectBuilder project;
    project.length = 500;
    project.angles = {{"cam1", "Wide", {{0, 500}}}, {"cam2", "Pulpit &amp; Choir", {{0, 500}}}};
    project.clipContent = R"(<mc-source angleID="cam2" srcEnable="all"/>)";
    return project.xml();
}

constexpr const char* filledOutput = "2 cuts · Main camera: 63% · Audio: Pulpit & Choir\n"
                                     "\n"
                                     "Start (Timecode)  Camera          Seconds\n"
                                     "00:00:00:00       Wide              12.52\n"
                                     "00:00:12:13       Pulpit & Choir     7.48\n"
                                     "\n"
                                     "Actual camera usage\n"
                                     "Camera          Screen time  Share  Shots\n"
                                     "Wide              12.52 sec  62.6%      1\n"
                                     "Pulpit & Choir     7.48 sec  37.4%      1\n";

TEST(GenerateCommand, anEditIsPrintedAsTables) {
    std::vector<std::string> flags = filled;
    flags.back() = "pulpit & choir=7.48";
    EXPECT_EQ(run(flags, filledXml()), (Outcome{0, filledOutput, ""}));
}

TEST(GenerateCommand, aSeedGivesTheSameShotsWithFreshIdentifiers) {
    class Seeded final : public RandomSource {
      public:
        std::uint64_t bits() override { return engine_(); }

      private:
        std::mt19937_64 engine_{18446744073709551615U};
    } random;
    const CutEngine engine = project().engine();
    const Shots expected = shotsOf(generateCutList(defaults(), inspectProject(project().xml()),
                                                   engine, random, countingUUIDs()));

    std::set<std::string> identifiers;
    std::size_t count = 0;
    for (int i = 0; i < 2; ++i) {
        const EditRevision revision =
            revisionOf(generate({"--json", "--seed", "18446744073709551615"}));
        EXPECT_EQ(revision.settings, defaults());
        EXPECT_EQ(shotsOf(revision.cuts), expected);
        identifiers.insert(revision.id.text());
        for (const Cut& cut : revision.cuts)
            identifiers.insert(cut.id.text());
        count += 1 + revision.cuts.size();
    }
    EXPECT_EQ(identifiers.size(), count);
    EXPECT_NE(shotsOf(revisionOf(generate({"--json", "--seed=0"})).cuts), expected);
}

TEST(GenerateCommand, flagsChangeSettings) {
    const struct {
        const char* label;
        std::vector<std::string> flags;
        std::function<void(EditSettings&)> change;
    } rows[] = {
        {"none", {}, [](auto&) {}},
        {"a main camera by identifier",
         {"--main-camera", "/b"},
         [](auto& s) {
             s.mainCamera = "/b";
             s.otherCameras = {"+a/=", "-c", "Pulpit"};
         }},
        {"by an identifier that is another's name",
         {"--main-camera", "Pulpit"},
         [](auto& s) {
             s.mainCamera = "Pulpit";
             s.otherCameras = {"+a/=", "-c", "/b"};
         }},
        {"by name, in another case",
         {"--main-camera= pULPIT\n"},
         [](auto& s) {
             s.mainCamera = "/b";
             s.otherCameras = {"+a/=", "-c", "Pulpit"};
         }},
        {"the main camera that it is", {"--main-camera", "wide, LEFT=1"}, [](auto&) {}},
        {"exactly these cameras, after the main one",
         {"--other-cameras", "-c,+a/=", "--main-camera", "/b"},
         [](auto& s) {
             s.mainCamera = "/b";
             s.otherCameras = {"-c", "+a/="};
         }},
        {"audio by name", {"--audio", "wide, left=1"}, [](auto& s) { s.audio = "+a/="; }},
        {"pacing",
         {"--main-share", "12.5", "--main-range", "1-1e2", "--other-range=2.4-2.4",
          "--double-main"},
         [](auto& s) {
             s.mainShare = 12.5;
             s.mainMinimum = 1;
             s.mainMaximum = 100;
             s.otherMinimum = s.otherMaximum = 2.4;
             s.doubleMain = true;
         }},
        {"numbers of cameras, the last = counts",
         {"--frequency", "+a/==9", "--frequency=-c=2", "--frequency", "Wide, left=1=1",
          "--return-time", "/b=0.5", "--return-time", "Wide, left=1=10"},
         [](auto& s) {
             s.frequencies["+a/="] = 1;
             s.frequencies["-c"] = 2;
             s.returnTimes = {{"/b", 0.5}, {"+a/=", 10}};
         }},
        {"first and last shots",
         {"--opening", "+a/==1e1", "--closing", "-c=20"},
         [](auto& s) {
             s.openingEnabled = s.closingEnabled = true;
             s.openingSeconds = 10;
             s.closingCamera = "-c";
             s.closingSeconds = 20;
         }},
        {"sections, in the order given",
         {"--section", "-c,01:00:40:00,01:00:50:00, a, b=c,", "--section",
          "/b,01:00:10:00, 01:00:20:00 ", "--section", "Pulpit,01:00:20:00,01:00:30:00,"},
         [](auto& s) {
             s.sections = {{UUID(), " a, b=c,", "-c", "01:00:40:00", "01:00:50:00"},
                           {UUID(), "", "/b", "01:00:10:00", " 01:00:20:00 "},
                           {UUID(), "", "Pulpit", "01:00:20:00", "01:00:30:00"}};
         }},
    };
    for (const auto& row : rows) {
        EditSettings expected = defaults();
        row.change(expected);
        EXPECT_EQ(settingsAfter(row.flags), expected) << row.label;
    }
}

TEST(GenerateCommand, flagsFollowTheSettingsFile) {
    const TestFolder folder;
    const std::string file = folder.write(
        "s.json", R"({"mainShare": 40, "averageShot": 5, "frequencies": {"-c": 3}, "comment": 1,
                      "mainMinimum": 24, "otherMaximum": 4, "mainCamera": "/b",
                      "otherCameras": ["-c"], "sections": [{"id":
                      "5EC71010-0000-4000-8000-00000000000A", "name": "of FILE", "camera": "-c",
                      "start": "01:00:40:00", "end": "01:00:50:00"}]})");
    EditSettings expected = defaults();
    expected.mainShare = 40;
    expected.averageShot = 5;
    expected.frequencies = {{"-c", 3}};
    expected.mainMinimum = 24;
    expected.otherMaximum = 4;
    expected.mainCamera = "/b";
    expected.otherCameras = {"-c"};
    expected.sections = {{UUID(), "of FILE", "-c", "01:00:40:00", "01:00:50:00"}};
    EXPECT_EQ(settingsAfter({"--settings", file}), expected);

    expected.mainShare = 50;
    expected.frequencies["/b"] = 2;
    expected.mainCamera = "+a/=";
    expected.otherCameras = {"-c", "/b"};
    expected.sections.push_back({UUID(), "of a flag", "/b", "01:00:10:00", "01:00:20:00"});
    EXPECT_EQ(settingsAfter({"--main-share=50", "--frequency", "/b=2", "--main-camera",
                             "+a/=", "--section", "/b,01:00:10:00,01:00:20:00,of a flag",
                             "--settings", file}),
              expected);
}

TEST(GenerateCommand, aSettingsFileOfAnotherKindIsWrongUsage) {
    const TestFolder folder;
    const std::pair<const char*, const char*> rows[] = {
        {R"({"mainMinimum": 20, "mainMaximum": 19})",
         "--settings: \"mainMinimum\" is above \"mainMaximum\"."},
        {R"({"otherMinimum": 5, "otherMaximum": 4.5})",
         "--settings: \"otherMinimum\" is above \"otherMaximum\"."},
        {R"({"otherMinimum": 9})", "--settings: \"otherMinimum\" is above \"otherMaximum\"."},
        {R"(["mainShare", 60])", "--settings: The JSON must be an object."},
        {R"({"mainShare": "60"})", "--settings: The JSON's \"mainShare\" must be a number."},
        {R"({"mainShare": null})", "--settings: The JSON's \"mainShare\" must be a number."},
        {R"({"sections": [{"id": "1"}]})",
         "--settings: The JSON's \"sections[0].id\" must be a UUID of 36 characters."},
        {"",
         "--settings: The JSON could not be read: parse error at line 1, column 1: syntax error "
         "while parsing value - unexpected end of input; expected '[', '{', or a literal."},
    };
    for (const auto& [json, line] : rows)
        EXPECT_EQ(generate({"--settings", folder.write("s.json", json)}),
                  wrongUsage("generate", line))
            << json;
    EXPECT_EQ(generate({"--settings", folder.path("none")}),
              failure("“none” could not be opened: No such file or directory."));
}

TEST(GenerateCommand, wrongValuesOfFlagsAreNamed) {
    const auto none = [](const char* flag, const char* kind, const char* name) {
        return fmt::format("{}: no {} angle has the identifier or name \"{}\". inspect prints "
                           "them.",
                           flag, kind, name);
    };
    const std::string several = "several angles are named \"Band\". Give the angle's identifier, "
                                "which inspect prints.";
    const struct {
        std::vector<std::string> flags;
        std::string line;
    } rows[] = {
        {{"--main-camera", "Nobody"}, none("--main-camera", "video", "Nobody")},
        {{"--main-camera", "Recorder"}, none("--main-camera", "video", "Recorder")},
        {{"--main-camera", ""}, none("--main-camera", "video", "")},
        {{"--main-camera", "Band"}, "--main-camera: " + several},
        {{"--other-cameras", "/b,Nobody"}, none("--other-cameras", "video", "Nobody")},
        {{"--other-cameras", "/b,Band"}, "--other-cameras: " + several},
        {{"--other-cameras", "Wide, left=1"}, none("--other-cameras", "video", "Wide")},
        {{"--other-cameras", ""}, none("--other-cameras", "video", "")},
        {{"--audio", "Nobody"}, none("--audio", "audio", "Nobody")},
        {{"--audio", "band"}, replaced("--audio: " + several, "Band", "band")},
        {{"--main-share", "60%"}, "--main-share: \"60%\" is not a number."},
        {{"--main-share", "inf"}, "--main-share: \"inf\" is not a number."},
        {{"--main-range", "10"}, "--main-range: \"10\" is not MIN-MAX in seconds, as in 10-25."},
        {{"--main-range", "-"}, "--main-range: \"-\" is not MIN-MAX in seconds, as in 10-25."},
        {{"--main-range", "25-10"}, "--main-range: the minimum in \"25-10\" is above the maximum."},
        {{"--other-range", "8-7.5"},
         "--other-range: the minimum in \"8-7.5\" is above the maximum."},
        {{"--frequency", "/b"}, "--frequency: \"/b\" is not ANGLE=NUMBER."},
        {{"--frequency", "/b="}, "--frequency: \"\" is not a number."},
        {{"--frequency", "Wide, left=1"}, none("--frequency", "video", "Wide, left")},
        {{"--frequency", "Band=3"}, "--frequency: " + several},
        {{"--return-time", "Nobody=3"}, none("--return-time", "video", "Nobody")},
        {{"--opening", "/b=1,5"}, "--opening: \"1,5\" is not a number."},
        {{"--closing", "Recorder=5"}, none("--closing", "video", "Recorder")},
        {{"--section", "/b,01:00:10:00"},
         "--section: \"/b,01:00:10:00\" is not ANGLE,START,END or ANGLE,START,END,NAME."},
        {{"--section", "Nobody,01:00:10:00,01:00:20:00"}, none("--section", "video", "Nobody")},
        {{"--section", "/b,01:00:10:00,01:00:20:00,\xFF"}, "--section: the text is not UTF-8."},
        {{"--seed", "-1"}, "--seed: \"-1\" is not a whole number of at most 64 bits."},
        {{"--seed", "18446744073709551616"},
         "--seed: \"18446744073709551616\" is not a whole number of at most 64 bits."},
        {{"--seed", ""}, "--seed: \"\" is not a whole number of at most 64 bits."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(generate(row.flags), wrongUsage("generate", row.line))
            << row.flags[0] << " " << row.flags[1];
}

TEST(GenerateCommand, theEnginesRefusalFollowsACoverageWarning) {
    const std::string fixed = "Fixed camera sections overlap. Adjust their start or end timecodes.";
    const std::string share = "Choose a main camera and at least one additional video angle.";
    const struct {
        std::vector<std::string> flags;
        std::string warning;
        std::string message;
    } rows[] = {
        {{"--main-share", "95"}, "", share},
        {{"--other-cameras", "+a/="}, "", share},
        {{"--frequency", "/b=10.5"}, "", "Camera frequency must be between 1 and 10."},
        {{"--return-time", "/b=601"},
         "",
         "Minimum return times must be between 0 and 600 seconds."},
        {{"--main-range=-5-10"}, "", "Shot lengths must be between 1 and 120 seconds."},
        {{"--opening", "/b=0"},
         "",
         "Opening and closing lengths must be between 1 and 120 seconds."},
        {{"--opening", "/b=41", "--closing", "/b=41"},
         "Opening and closing shots exceed the project length. Shorten them.",
         "The opening and closing shots are longer than the project. Reduce their lengths."},
        {{"--section", "/b,01:00:10:00,01:00:20:00", "--section", "/b,01:00:19:00,01:00:21:00"},
         fixed,
         fixed},
        {{"--audio", "gap", "--main-share", "95"},
         "Selected audio has a gap at 01:01:00:00. Choose a continuous audio angle.",
         "This audio angle does not cover the whole project. Choose a continuous audio angle."},
    };
    for (const auto& row : rows) {
        Outcome expected = failure(row.message);
        if (!row.warning.empty()) expected.err.insert(0, "warning: " + row.warning + "\n");
        for (const char* form : {"--json", "--seed=1"}) {
            std::vector<std::string> flags = row.flags;
            flags.emplace_back(form);
            EXPECT_EQ(generate(flags), expected) << row.flags[0];
        }
    }
    ProjectBuilder single;
    single.angles[1].hasVideo = false;
    EXPECT_EQ(run({"generate", "-"}, single.xml()),
              failure("Include at least two video angles in your multicam."));
}

TEST(GenerateCommand, anOutputFolderGetsBothFiles) {
    const TestFolder folder;
    std::vector<std::string> flags = filled;
    flags.back() = "pulpit & choir=7.48";
    flags.insert(flags.end(), {"--output", folder.path()});
    const std::string first = folder.path("Sunday Shotweaver");
    const auto paths = [](const std::string& stem) {
        return stem + ".fcpxml\n" + stem + ".settings.txt\n";
    };
    EXPECT_EQ(run(flags, filledXml()), (Outcome{0, filledOutput + ("\n" + paths(first)), ""}));
    EXPECT_NE(folder.read("Sunday Shotweaver.settings.txt").find("\n00:00:12:13 | Pulpit"),
              std::string::npos);

    flags.back() += "/";
    flags.emplace_back("--json");
    const Outcome json = run(flags, filledXml());
    EXPECT_EQ(json.err, paths(first + " 2"));
    const EditRevision revision = revisionOf(json);
    EXPECT_NE(folder.read("Sunday Shotweaver 2.settings.txt")
                  .find("Edit ID: " + revision.id.text() + "\n"),
              std::string::npos);

    // A failed export prints nothing but its line, and leaves the folder as it was.
    flags.pop_back();
    flags.back() = folder.path("none");
    EXPECT_EQ(run(flags, filledXml()),
              failure("“Sunday Shotweaver.fcpxml” could not be created: No such file or "
                      "directory."));
    EXPECT_EQ(folder.names().size(), 4U);
}

} // namespace
} // namespace shotweaver::test
