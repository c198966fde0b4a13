#include "engine/export/ExportDocument.h"
#include "engine/CutEngine.h"
#include "engine/import/Preflight.h"
#include "engine/import/XmlAccess.h"
#include "platform/XmlIntake.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/RawXml.h"
#include "tests/support/ScriptedRandom.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <tuple>

namespace shotweaver {
namespace {

using test::countingUUIDs;
using test::failureOf;
using test::ProjectBuilder;
using test::rawText;
using test::replaced;
using Texts = std::vector<std::string>;

constexpr const char* invalidCut = "The cut list contains invalid timing or unavailable footage.";
constexpr const char* tooShort = "The cut list does not cover the entire project.";
constexpr const char* offGrid = "This prototype needs timing aligned to the project frame rate.";
constexpr const char* noTime = "The export contains a missing or invalid time value.";
constexpr const char* noVersion =
    "The imported XML does not state its FCPXML version, so no project can be made from it. Export "
    "XML again from Final Cut.";

std::string splitFade(int seconds) {
    return fmt::format("An audio fade extends across a camera cut. Set the opening or closing shot "
                       "to at least {} seconds to keep the fade intact.",
                       seconds);
}

/// `edit` is "ANGLE START DURATION" for each cut.
std::string exported(const CutEngine& engine, const std::string& edit,
                     const std::optional<std::string>& audio = "A") {
    std::vector<Cut> cuts;
    std::istringstream words(edit);
    for (Cut cut; words >> cut.angle >> cut.start >> cut.duration;)
        cuts.push_back(cut);
    return exportDocument(engine, cuts, audio, countingUUIDs());
}

std::string failure(const ProjectBuilder& project, const std::string& edit,
                    const std::string& audio = "A") {
    return failureOf([&] { exported(project.engine(), edit, audio); });
}

/// What each clip of an exported project holds.
Texts clipContents(const std::string& xml) {
    const auto document = parseXml(xml, fcpxmlVocabulary);
    const XmlNode project = firstElement(document->documentElement(), "project");
    Texts contents;
    for (const XmlNode clip : Elements(firstElement(firstElement(project, "sequence"), "spine"))) {
        std::string text;
        for (const XmlNode child : clip.children())
            text += rawText(child);
        contents.push_back(text);
    }
    return contents;
}

/// "<TAG>CONTENT</TAG>", where the tag may have attributes.
std::string element(const std::string& tag, const std::string& content) {
    return "<" + tag + ">" + content + "</" + tag.substr(0, tag.find(' ')) + ">";
}

TEST(ExportDocument, refusesWhatDoesNotCoverTheProjectWithFootage) {
    ProjectBuilder project;
    project.angles[1].clips = {{100, 500}, {700, 200}};
    const std::pair<const char*, const char*> rows[] = {
        {"A 0 1 A 1 999", ""},
        {"A 0 100 B 100 500 A 600 100 B 700 200 A 900 100", ""}, // from edge to edge

        {"A -1 1001", invalidCut},
        {"A 0 500 A 501 499", invalidCut},
        {"A 0 500 A 499 501", invalidCut},
        {"A 0 0 A 0 1000", invalidCut},
        {"A 0 -9223372036854775808", invalidCut},
        {"A 0 10 A 10 9223372036854775807", invalidCut},
        {"A 0 1000 A 1000 1", invalidCut},
        {"C 0 1000", invalidCut},
        {"A 0 99 B 99 501 A 600 400", invalidCut},
        {"A 0 100 B 100 501 A 601 399", invalidCut},
        {"A 0 500 B 500 300 A 800 200", invalidCut}, // across a hole
        {"A 0 999", tooShort},
    };
    for (const auto& [edit, sentence] : rows)
        EXPECT_EQ(failure(project, edit), sentence) << edit;
}

TEST(ExportDocument, checksInOrder) {
    ProjectBuilder project;
    project.rootAttributes = "";
    project.angles.push_back({"C", "C", {{0, 999}}});
    project.clipContent = R"(<marker start="1/3s"/><title offset="x"/>)"
                          R"(<adjust-volume><fadeIn duration="2s"/></adjust-volume>)";
    EXPECT_EQ(failure(project, "", "C"), "This audio angle does not cover the whole project. "
                                         "Choose a continuous audio angle.");
    EXPECT_EQ(failure(project, ""), "Generate a rough edit first.");
    EXPECT_EQ(failure(project, "A 0 49 B 50 900"), invalidCut);
    EXPECT_EQ(failure(project, "A 0 49 B 49 900"), tooShort);
    EXPECT_EQ(failure(project, "A 0 49 B 49 951"), splitFade(2));
    EXPECT_EQ(failure(project, "A 0 50 B 50 950"), noTime);
    project.clipContent = replaced(project.clipContent, R"("x")", R"("1.01s")");
    EXPECT_EQ(failure(project, "A 0 50 B 50 950"), offGrid);
    project.clipContent = replaced(project.clipContent, "1/3s", "1/25s");
    EXPECT_EQ(failure(project, "A 0 50 B 50 950"), noVersion);
}

TEST(ExportDocument, refusesFadesThatACutWouldSplit) {
    const auto volume = [](const char* fade, const char* duration) {
        return fmt::format(R"(<adjust-volume><param><{} duration="{}"/></param></adjust-volume>)",
                           fade, duration);
    };
    const std::string tooLong = volume("fadeIn", "9s");
    const std::string role = element("audio-role-source", tooLong);
    const std::string source = R"(mc-source angleID="A")";
    // The seconds that the sentence asks for; 0 for none.
    const std::pair<std::string, int> rows[] = {
        {volume("fadeIn", "50/25s"), 0},
        {volume("fadeOut", "4s"), 0},
        {volume("fadeIn", "2.000000009s"), 0}, // longer by rounding
        {R"(<filter-audio><fadeIn duration="9s"/></filter-audio>)", 0},
        {R"(<adjust-volume><fadeIn duration="1s"><fadeIn duration="2s"/></fadeIn></adjust-volume>)",
         0},
        {element(R"(mc-source angleID="B")", tooLong + role), 0},

        {volume("fadeIn", "2.00000002s"), 3},
        {volume("fadeOut", "101/25s"), 5},
        {volume("fadeIn", "3s"), 3},
        {element(source, "") + element(source, tooLong), 9},
        {element(source, role), 9},
        {role, 9},
        {element(source, tooLong) + volume("fadeOut", "7s"), 7},
        {volume("fadeOut", "6s") + tooLong, 6},
    };
    ProjectBuilder project;
    for (const auto& [content, seconds] : rows) {
        project.clipContent = content;
        EXPECT_EQ(failure(project, "B 0 50 A 50 850 B 900 100"),
                  seconds == 0 ? "" : splitFade(seconds))
            << content;
    }
}

/// The clip shows frames 250 to 1250 of the multicam (10 s to 50 s), cut at 350 and at 550.
TEST(ExportDocument, sharesOutWhatTheClipHolds) {
    // For each clip "=" for the element as it is, its start and duration in frames, or nothing.
    const std::pair<std::string, Texts> rows[] = {
        {R"(<title duration="1/3s")", {"=", "", ""}},
        {R"(<video offset="13.99999998s")", {"=", "", ""}},
        {R"(<clip offset="13.999999995s")", {"", "=", ""}}, // short of the cut by rounding
        {R"(<mc-clip offset="549/25s")", {"", "=", ""}},
        {R"(<audition offset="99999s")", {"", "", "="}},
        {R"(<gap offset="15s")", {"", "", ""}},

        {R"(<marker value="M")", {"=", "", ""}},
        {R"(<marker start="349/25s" duration="1/25s")", {"=", "", ""}},
        {R"(<chapter-marker start="28/2s" duration="99s")", {"", "=", ""}},
        {R"(<marker start="50s")", {"", "", ""}},
        {R"(<hidden-clip-marker start="249/25s" duration="9s")", {"", "", ""}},
        {R"(<keyword)", {"250+100", "350+200", "550+700"}},
        {R"(<keyword start="11s" duration="20s")", {"275+75", "350+200", "550+225"}},
        {R"(<rating start="26s")", {"", "", "650+600"}},
        {R"(<rating duration="101/25s")", {"250+100", "350+1", ""}},
        {R"(<analysis-marker start="22s" duration="9999s")", {"", "", "550+700"}},
        {R"(<keyword start="1s" duration="13s")", {"250+100", "", ""}},
        {R"(<keyword start="1s" duration="9s")", {"", "", ""}},
        {R"(<keyword start="14s" duration="0s")", {"", "=", ""}},
        {R"(<keyword start="14s" duration="2/50s")", {"", "350+1", ""}},
    };
    ProjectBuilder project;
    project.sourceStart = 250;
    for (test::AngleSpec& angle : project.angles)
        angle.clips = {{0, 1250}};
    for (auto [element, copies] : rows) {
        for (std::string& copy : copies) {
            const std::size_t plus = copy.find('+');
            if (plus != std::string::npos)
                copy = fmt::format(R"({} start="{}/25s" duration="{}/25s"/>)",
                                   element.substr(0, element.find(' ')), copy.substr(0, plus),
                                   copy.substr(plus + 1));
            else if (copy == "=")
                copy = element + "/>";
            copy.insert(0, R"(<mc-source angleID="A" srcEnable="all"/>)");
        }
        project.clipContent = element + "/>";
        EXPECT_EQ(clipContents(exported(project.engine(), "A 0 100 A 100 200 A 300 700")), copies)
            << element;
    }
}

TEST(ExportDocument, tellsBeforehandWhatWouldStopIt) {
    const std::string badFade = "<adjust-volume><fadeIn/></adjust-volume>";
    // What is named; its element; the sentence, empty when an export succeeds.
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"",
         R"(<gap offset="x"/>)" + element(R"(mc-source angleID="B" srcEnable="video")", badFade),
         ""},
        {"marker “M”", R"(<marker start="1/3s" name="N" value="M"/>)", offGrid},
        {"rating “R”", R"(<rating start="9999s" duration="1/3s" name="R"/>)", offGrid},
        {"keyword “K”", R"(<keyword start="a" duration="b" value="K"/>)", "Invalid XML time: a"},
        {"caption “C”", R"(<caption name="C" offset=""/>)", noTime},
        {"adjust-volume “V”", R"(<adjust-volume name="V"><fadeOut/></adjust-volume>)", noTime},
        {"audio-role-source “without a name”", element("audio-role-source", badFade), noTime},
    };
    for (const auto& [what, content, sentence] : rows) {
        ProjectBuilder project;
        project.clipContent += content;
        EXPECT_EQ(failure(project, "A 0 1000"), sentence) << content;
        Texts told;
        for (const Finding& finding : preflight(Project(project.xml())))
            if (finding.kind == Finding::Kind::refused) told.push_back(finding.text);
        const std::string start = "The " + std::string(what) +
                                  " on the multicam clip would stop an "
                                  "export: ";
        EXPECT_EQ(told, sentence.empty() ? Texts() : Texts{start + sentence}) << content;
    }
}

TEST(ExportDocument, keepsTheSpaceInElementsThatHoldText) {
    const std::string content =
        "<text> <text-style> <note> <data> <bookmark> <string> <reserved> <a/>\n</reserved>"
        "</string></bookmark></data></note></text-style></text>";
    ProjectBuilder project;
    project.clipContent += R"(<title offset="0s"> )" + content + " </title>";
    EXPECT_NE(exported(project.engine(), "A 0 1000").find(content), std::string::npos);
}

std::string fileText(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// Each NAME.cuts in the folder is an edit of NAME.fcpxml that is exported, with the imported
/// sound and however often, as NAME.expected.fcpxml.
TEST(ExportDocument, writesTheGoldenDocuments) {
    int documents = 0;
    const char* const folder = SHOTWEAVER_SOURCE_DIR "/tests/engine/export";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::filesystem::path path = entry.path();
        if (path.extension() != ".cuts") continue;
        const std::string edit = fileText(path);
        const CutEngine engine(fileText(path.replace_extension(".fcpxml")));
        const std::string expected = fileText(path.replace_extension(".expected.fcpxml"));
        EXPECT_EQ(exported(engine, edit, std::nullopt), expected) << path;
        EXPECT_EQ(exported(engine, edit, std::nullopt), expected) << path;
        ++documents;
    }
    EXPECT_GT(documents, 0);
}

} // namespace
} // namespace shotweaver
