#include "persistence/RecordJson.h"
#include "tests/cli/CommandRun.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace shotweaver::test {
namespace {

/// A folder with a project and an edit of it.
class ExportCommand : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(out);
        const Outcome made = run({"generate", project, "--json"});
        ASSERT_EQ(made.status, 0) << made.err;
        json = parseJson(made.out);
        revision = made.out;
    }

    std::vector<std::string> exported() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(out))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    Outcome runExport(const std::string& edit) const {
        return run({"export", project, "-", "--output", out}, edit);
    }

    const TestFolder folder;
    const std::string out = folder.path("out");
    const std::string project = folder.write("p.fcpxml", ProjectBuilder().xml());
    Json json;
    std::string revision; // its text
};

TEST_F(ExportCommand, theCutsOfAnEditAreExportedUnderNewNames) {
    const std::string stem = out + "/Sunday Shotweaver";
    EXPECT_EQ(runExport(revision), (Outcome{0, stem + ".fcpxml\n" + stem + ".settings.txt\n", ""}));
    EXPECT_EQ(run({"export", project, folder.write("edit.json", revision), "--output", out}),
              (Outcome{0, stem + " 2.fcpxml\n" + stem + " 2.settings.txt\n", ""}));
    EXPECT_EQ(
        run({"export", "-", folder.path("edit.json"), "--output", out}, ProjectBuilder().xml()),
        (Outcome{0, stem + " 3.fcpxml\n" + stem + " 3.settings.txt\n", ""}));

    const std::string record = folder.read("out/Sunday Shotweaver 2.settings.txt");
    EXPECT_NE(record.find("Edit ID: " + json["id"].get<std::string>() + "\n"), std::string::npos);
    const std::string xml = folder.read("out/Sunday Shotweaver.fcpxml");
    std::size_t clips = 0;
    for (std::size_t at = 0; (at = xml.find("<mc-clip ", at)) != std::string::npos; ++at)
        ++clips;
    EXPECT_EQ(clips, json["cuts"].size());
}

TEST_F(ExportCommand, editsByHandAreExportedAsTheyAreOrRefused) {
    const std::string timing = "The cut list contains invalid timing or unavailable footage.";
    const std::string audio =
        "This audio angle does not cover the whole project. Choose a continuous audio angle.";
    const auto cut = [&](const char* angle, std::int64_t start, std::int64_t duration) {
        return Json{{"id", json["id"]}, {"angle", angle}, {"start", start}, {"duration", duration}};
    };
    const struct {
        const char* label;
        const char* audio;
        Json cuts;
        std::string message;
    } rows[] = {
        {"one shot of one camera", "B", {cut("B", 0, 1000)}, ""},
        {"the same camera twice", "A", {cut("B", 0, 1), cut("B", 1, 999)}, ""},
        {"no cuts", "A", Json::array(), "Generate a rough edit first."},
        {"no audio", "", {cut("A", 0, 1000)}, audio},
        {"an audio angle of another project", "C", {cut("A", 0, 1000)}, audio},
        {"a camera of another project", "A", {cut("C", 0, 1000)}, timing},
        {"a gap", "A", {cut("A", 0, 500), cut("B", 501, 499)}, timing},
        {"too short", "A", {cut("A", 0, 999)}, "The cut list does not cover the entire project."},
        {"too long", "A", {cut("A", 0, 1001)}, timing},
        {"no length", "A", {cut("A", 0, 0), cut("A", 0, 1000)}, timing},
        {"a sum past 64 bits", "A", {cut("A", 0, 1000), cut("A", 1000, INT64_MAX)}, timing},
        {"a sum that comes round to the end",
         "A",
         {cut("A", 0, INT64_MAX), cut("A", INT64_MAX, INT64_MAX), cut("A", -2, 1002)},
         timing},
        {"backwards as far as it goes", "A", {cut("A", INT64_MIN, INT64_MIN)}, timing},
    };
    std::size_t files = 0;
    for (const auto& row : rows) {
        json["settings"]["audio"] = row.audio;
        json["cuts"] = row.cuts;
        const Outcome outcome = runExport(json.dump());
        if (row.message.empty()) {
            EXPECT_EQ(outcome.status, 0) << row.label << outcome.err;
            files += 2;
        } else {
            EXPECT_EQ(outcome, failure(row.message)) << row.label;
        }
        EXPECT_EQ(exported().size(), files) << row.label;
    }
}

TEST_F(ExportCommand, whatIsNoRevisionIsRefusedWithItsPlace) {
    const Json settings = json["settings"];
    Json without = json;
    without["cuts"][0].erase("duration");
    Json fraction = json;
    fraction["cuts"][1]["start"] = 0.5;
    const std::pair<std::string, const char*> rows[] = {
        {settings.dump(), "The JSON has no \"id\"."},
        {without.dump(), "The JSON has no \"cuts[0].duration\"."},
        {fraction.dump(),
         "The JSON's \"cuts[1].start\" must be a whole number of at most 64 bits."},
        {"[" + revision + "]", "The JSON must be an object."},
        {"", "The JSON could not be read: parse error at line 1, column 1: syntax error while "
             "parsing value - unexpected end of input; expected '[', '{', or a literal."},
        {revision + revision.substr(0, 1),
         "The JSON could not be read: parse error at line 2, column 1: syntax error while parsing "
         "value - unexpected '{'; expected end of input."},
    };
    for (const auto& [text, message] : rows)
        EXPECT_EQ(runExport(text), failure(message));
    EXPECT_EQ(run({"export", project, folder.path("none.json"), "--output", out}),
              failure("“none.json” could not be opened: No such file or directory."));
    EXPECT_EQ(run({"export", project, out, "--output", out}),
              failure("“out” could not be read: Is a directory."));
    EXPECT_EQ(exported(), std::vector<std::string>());
}

TEST_F(ExportCommand, onlyOneCanComeFromTheStandardInput) {
    EXPECT_EQ(run({"export", "-", "-", "--output", out}, revision),
              (Outcome{2, "",
                       "shotweaver: Only one of PROJECT and REVISION can be \"-\", the standard "
                       "input.\nUsage: shotweaver export PROJECT REVISION --output DIR\n"
                       "\"shotweaver export --help\" explains more.\n"}));
}

} // namespace
} // namespace shotweaver::test
