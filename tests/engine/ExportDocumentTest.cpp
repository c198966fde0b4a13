#include "engine/CutEngine.h"
#include "platform/XmlIntake.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace shotweaver {
namespace {

using test::countingUUIDs;
using test::failureOf;
using test::ProjectBuilder;
using test::replaced;

constexpr const char* invalidCut = "The cut list contains invalid timing or unavailable footage.";
constexpr const char* tooShort = "The cut list does not cover the entire project.";
constexpr const char* noSound =
    "This audio angle does not cover the whole project. Choose a continuous audio angle.";
constexpr const char* offGrid = "This prototype needs timing aligned to the project frame rate.";
constexpr const char* noTime = "The export contains a missing or invalid time value.";

std::string splitFade(int seconds) {
    return fmt::format("An audio fade extends across a camera cut. Set the opening or closing shot "
                       "to at least {} seconds to keep the fade intact.",
                       seconds);
}

struct Shot {
    const char* angle;
    std::int64_t start;
    std::int64_t duration;
};

std::vector<Cut> cutList(const std::vector<Shot>& shots) {
    std::vector<Cut> cuts;
    UUIDMaker makeUUID = countingUUIDs();
    for (const Shot& shot : shots)
        cuts.push_back({makeUUID(), shot.angle, shot.start, shot.duration});
    return cuts;
}

std::string exported(const CutEngine& engine, const std::vector<Shot>& shots,
                     const std::optional<std::string>& audio = "A") {
    return engine.exportDocument(cutList(shots), audio, countingUUIDs());
}

std::string exported(const ProjectBuilder& project, const std::vector<Shot>& shots) {
    return exported(project.engine(), shots);
}

std::string failure(const ProjectBuilder& project, const std::vector<Shot>& shots,
                    const std::optional<std::string>& audio = "A") {
    return failureOf([&] { exported(project.engine(), shots, audio); });
}

/// A node on one line, nothing added.
std::string plain(pugi::xml_node node) {
    std::ostringstream text;
    node.print(text, "", pugi::format_raw);
    return text.str();
}

std::string plainChildren(pugi::xml_node parent) {
    std::string text;
    for (const pugi::xml_node child : parent.children())
        text += plain(child);
    return text;
}

enum class Sources { kept, leftOut };

/// What each clip of an exported project holds.
std::vector<std::string> clipContents(const std::string& xml, Sources sources = Sources::leftOut) {
    std::vector<std::string> contents;
    const XmlDocument document = parseXml(xml);
    const pugi::xml_node project = document->document_element().child("project");
    for (pugi::xml_node clip : project.child("sequence").child("spine").children()) {
        if (sources == Sources::leftOut) {
            while (clip.remove_child("mc-source")) {
            }
        }
        contents.push_back(plainChildren(clip));
    }
    return contents;
}

/// What each of three clips holds of one child of the imported clip. The clip shows frames 250 to
/// 1250 of the multicam (10 s to 50 s at 25 frames a second), cut at 350 and at 550.
std::vector<std::string> sharedOut(const std::string& child) {
    ProjectBuilder project;
    project.sourceStart = 250;
    project.angles = {{"A", "A", {{0, 1250}}}, {"B", "B", {{0, 1250}}}};
    project.clipContent = child;
    return clipContents(exported(project, {{"B", 0, 100}, {"A", 100, 200}, {"B", 300, 700}}));
}

TEST(ExportDocument, refusesWhatDoesNotCoverTheProjectWithFootage) {
    ProjectBuilder project;
    project.angles = {{"A", "A", {{0, 1000}}}, {"B", "B", {{100, 500}, {700, 200}}}};
    const CutEngine engine = project.engine();
    const struct {
        const char* label;
        std::vector<Shot> shots;
        const char* sentence;
    } rows[] = {
        {"one cut", {{"A", 0, 1000}}, ""},
        {"a frame, and twice the same camera", {{"A", 0, 1}, {"A", 1, 999}}, ""},
        {"each recording from edge to edge",
         {{"A", 0, 100}, {"B", 100, 500}, {"A", 600, 100}, {"B", 700, 200}, {"A", 900, 100}},
         ""},

        {"nothing", {}, "Generate a rough edit first."},
        {"late start", {{"A", 1, 999}}, invalidCut},
        {"negative start", {{"A", -1, 1001}}, invalidCut},
        {"smallest start", {{"A", INT64_MIN, 1000}}, invalidCut},
        {"gap", {{"A", 0, 500}, {"A", 501, 499}}, invalidCut},
        {"overlap", {{"A", 0, 500}, {"A", 499, 501}}, invalidCut},
        {"no length", {{"A", 0, 0}, {"A", 0, 1000}}, invalidCut},
        {"negative length", {{"A", 0, -1}}, invalidCut},
        {"smallest length", {{"A", 0, INT64_MIN}}, invalidCut},
        {"too long", {{"A", 0, 1001}}, invalidCut},
        {"end past 64 bits", {{"A", 0, 10}, {"A", 10, INT64_MAX}}, invalidCut},
        {"longest", {{"A", 0, INT64_MAX}}, invalidCut},
        {"a frame after the end", {{"A", 0, 1000}, {"A", 1000, 1}}, invalidCut},
        {"nothing after the end", {{"A", 0, 1000}, {"A", 1000, 0}}, invalidCut},
        {"unknown camera", {{"C", 0, 1000}}, invalidCut},
        {"before the footage", {{"A", 0, 99}, {"B", 99, 501}, {"A", 600, 400}}, invalidCut},
        {"past the footage", {{"A", 0, 100}, {"B", 100, 501}, {"A", 601, 399}}, invalidCut},
        {"across a hole", {{"A", 0, 500}, {"B", 500, 300}, {"A", 800, 200}}, invalidCut},
        {"too short", {{"A", 0, 999}}, tooShort},
        {"invalid and too short", {{"A", 0, 0}}, invalidCut},
    };
    for (const auto& row : rows)
        EXPECT_EQ(failureOf([&] { exported(engine, row.shots); }), row.sentence) << row.label;
}

TEST(ExportDocument, takesTheImportedAudioAngleWhereNoneIsGiven) {
    ProjectBuilder project;
    project.angles.push_back({"C", "C", {{0, 999}}});
    const std::vector<Shot> shots{{"B", 0, 1000}};
    const std::string imported =
        R"(<mc-source angleID="B" srcEnable="video"/><mc-source angleID="A" srcEnable="audio"/>)";
    const auto sources = [&](const std::optional<std::string>& audio) {
        return clipContents(exported(project.engine(), shots, audio), Sources::kept).front();
    };
    EXPECT_EQ(sources(std::nullopt), imported);
    EXPECT_EQ(sources("A"), imported);
    EXPECT_EQ(sources("B"), R"(<mc-source angleID="B" srcEnable="all"/>)");

    for (const char* refused : {"C", "D", ""})
        EXPECT_EQ(failure(project, shots, refused), noSound) << refused;
    project.clipContent += R"(<mc-source angleID="B" srcEnable="audio"/>)";
    EXPECT_EQ(failure(project, shots, std::nullopt), noSound);
    EXPECT_EQ(failure(project, shots, "B"), "");
}

TEST(ExportDocument, checksInOrder) {
    ProjectBuilder project;
    project.angles.push_back({"C", "C", {{0, 999}}});
    project.clipContent =
        R"(<marker start="1/3s" value="M"/><title offset="x"/>)"
        R"(<adjust-volume><param><fadeIn duration="2s"/></param></adjust-volume>)";
    EXPECT_EQ(failure(project, {}, "C"), noSound);
    EXPECT_EQ(failure(project, {}), "Generate a rough edit first.");
    EXPECT_EQ(failure(project, {{"A", 0, 49}, {"B", 50, 900}}), invalidCut);
    EXPECT_EQ(failure(project, {{"A", 0, 49}, {"B", 49, 900}}), tooShort);
    EXPECT_EQ(failure(project, {{"A", 0, 49}, {"B", 49, 951}}), splitFade(2));
    const std::vector<Shot> shots{{"A", 0, 50}, {"B", 50, 950}};
    EXPECT_EQ(failure(project, shots), noTime);
    project.clipContent = replaced(project.clipContent, R"("x")", R"("1/0s")");
    EXPECT_EQ(failure(project, shots), "The export contains an invalid time value: 1/0s");
    project.clipContent = replaced(project.clipContent, "1/0s", "1.01s");
    EXPECT_EQ(failure(project, shots), offGrid);
    project.clipContent = replaced(project.clipContent, "1/3s", "1/25s");
    EXPECT_EQ(failure(project, shots), "");
}

std::string volume(const std::string& fades) {
    return "<adjust-volume><param>" + fades + "</param></adjust-volume>";
}

TEST(ExportDocument, refusesFadesThatACutWouldSplit) {
    const auto source = [](const char* angle, const std::string& content) {
        return std::string("<mc-source angleID=\"") + angle + "\">" + content + "</mc-source>";
    };
    const auto role = [](const std::string& content) {
        return "<audio-role-source>" + content + "</audio-role-source>";
    };
    const auto nested = [](const std::string& fades) {
        return volume("<param><param>" + fades + "</param></param>");
    };
    const std::string tooLong = R"(<fadeIn duration="9s"/>)";
    // The seconds that the sentence asks for; 0 for none.
    const struct {
        const char* label;
        std::string content;
        int seconds;
    } rows[] = {
        {"as long as the first shot", volume(R"(<fadeIn duration="50/25s"/>)"), 0},
        {"as long as the last shot", volume(R"(<fadeOut duration="4s"/>)"), 0},
        {"longer by rounding", volume(R"(<fadeIn duration="2.000000009s"/>)"), 0},
        {"negative", volume(R"(<fadeIn duration="-9s"/>)"), 0},
        {"of the panner", "<adjust-panner><param>" + tooLong + "</param></adjust-panner>", 0},
        {"of a filter", "<filter-audio><param>" + tooLong + "</param></filter-audio>", 0},
        {"of another angle's sound", source("B", role(volume(tooLong))), 0},
        {"of another angle", source("B", volume(tooLong)), 0},
        {"of a role of the angle's filter",
         source("A", "<filter-audio>" + role(volume(tooLong)) + "</filter-audio>"), 0},

        {"a frame longer than the first shot", volume(R"(<fadeIn duration="51/25s"/>)"), 3},
        {"a frame longer than the last shot", volume(R"(<fadeOut duration="101/25s"/>)"), 5},
        {"by part of a second", volume(R"(<fadeIn duration="2.2s"/>)"), 3},
        {"by more than rounding", volume(R"(<fadeIn duration="2.00000002s"/>)"), 3},
        {"by whole seconds", volume(R"(<fadeIn duration="3s"/>)"), 3},
        {"in parameters of parameters", nested(tooLong), 9},
        {"of a role of the angle's sound", source("A", role(nested(tooLong))), 9},
        {"of the angle", source("A", volume(tooLong)), 9},
        {"of the angle's second source", source("A", "") + source("A", role(volume(tooLong))), 9},
        {"of the clip's own role", role(volume(tooLong)), 9},
        {"in a fade", volume(R"(<fadeIn duration="1s"><fadeIn duration="5s"/></fadeIn>)"), 5},
        {"the clip's before the angle's",
         source("A", role(volume(tooLong))) + volume(R"(<fadeOut duration="7s"/>)"), 7},
        {"in document order", volume(R"(<fadeOut duration="6s"/>)" + tooLong), 6},
    };
    ProjectBuilder project;
    const std::vector<Shot> shots{{"B", 0, 50}, {"A", 50, 850}, {"B", 900, 100}};
    for (const auto& row : rows) {
        project.clipContent = row.content;
        EXPECT_EQ(failure(project, shots), row.seconds == 0 ? "" : splitFade(row.seconds))
            << row.label;
    }
    project.clipContent = volume("<fadeOut/>" + tooLong);
    EXPECT_EQ(failure(project, shots), noTime);
    project.clipContent = volume(R"(<fadeIn duration="2 s"/>)");
    EXPECT_EQ(failure(project, shots), "The export contains an invalid time value: 2 s");
}

TEST(ExportDocument, keepsFadesAtTheEndsOnly) {
    const std::string in = R"(<fadeIn duration="1s"/>)";
    const std::string out = R"(<fadeOut duration="1s"/>)";
    // The angle's sound, then the clip's; fades of a picture parameter are none of sound.
    const auto content = [](const std::string& fades) {
        return fmt::format(
            R"(<adjust-volume amount="1dB"><param>{0}<x/></param></adjust-volume>)"
            R"(<mc-source angleID="A" srcEnable="all"><audio-role-source>{1}</audio-role-source>)",
            fades, volume("<param>" + fades + "<x/></param>"));
    };
    const std::string picture =
        "<adjust-blend><param>" + in + out + "</param></adjust-blend></mc-source>";
    ProjectBuilder project;
    project.clipContent = content(in + out) + picture;

    const auto clips = clipContents(
        exported(project, {{"A", 0, 300}, {"A", 300, 300}, {"A", 600, 400}}), Sources::kept);
    ASSERT_EQ(clips.size(), 3U);
    EXPECT_EQ(clips[0], content(in) + picture);
    EXPECT_EQ(clips[1], content("") + picture);
    EXPECT_EQ(clips[2], content(out) + picture);
    EXPECT_EQ(clipContents(exported(project, {{"A", 0, 1000}}), Sources::kept).front(),
              project.clipContent);
}

TEST(ExportDocument, takesFadesOutOfFades) {
    ProjectBuilder project;
    project.clipContent = volume(R"(<fadeIn duration="1s"><fadeIn duration="1s"/>)"
                                 R"(<fadeOut duration="1s"/></fadeIn>)"
                                 R"(<fadeOut duration="1s"><fadeIn duration="1s"/></fadeOut>)");
    const auto clips =
        clipContents(exported(project, {{"A", 0, 300}, {"A", 300, 300}, {"A", 600, 400}}));
    ASSERT_EQ(clips.size(), 3U);
    EXPECT_EQ(clips[0], volume(R"(<fadeIn duration="1s"><fadeIn duration="1s"/></fadeIn>)"));
    EXPECT_EQ(clips[1], "<adjust-volume><param/></adjust-volume>");
    EXPECT_EQ(clips[2], volume(R"(<fadeOut duration="1s"/>)"));
}

TEST(ExportDocument, takesPictureAndSoundFromTheSourcesThatEnableThem) {
    struct Row {
        std::vector<const char*> enabled; // each source's "srcEnable"; null for none
        int audio;                        // the source that the sound comes from, from 1
        int video;
    };
    const Row rows[] = {
        {{"all"}, 1, 1},
        {{nullptr}, 1, 1},
        {{"none"}, 1, 1},
        {{"video"}, 1, 1},
        {{"video", "audio"}, 2, 1},
        {{"audio", "video"}, 1, 2},
        {{"none", "video", "all", "audio"}, 3, 2},
        {{"all", "video", "audio"}, 1, 1},
        {{"none", nullptr}, 2, 2},
        {{"none", "none"}, 1, 1},
        {{"audio", "none"}, 1, 1},
        {{"ALL", "audio"}, 2, 1},
    };
    for (const Row& row : rows) {
        ProjectBuilder project;
        project.clipContent =
            R"(<mc-source><adjust-crop/></mc-source>)"
            R"(<mc-source angleID="B"><audio-role-source/><adjust-crop/></mc-source>)";
        std::string label;
        for (const char* enabled : row.enabled) {
            label += fmt::format("{} ", enabled == nullptr ? "(absent)" : enabled);
            project.clipContent +=
                fmt::format(R"(<mc-source angleID="A"{0}><!-- left out --><crop mode="{1}"/>)"
                            R"(<audio-role-source role="{1}"/><filter-video/></mc-source>)",
                            enabled == nullptr ? "" : fmt::format(R"( srcEnable="{}")", enabled),
                            std::count(label.begin(), label.end(), ' '));
        }
        const auto clips =
            clipContents(exported(project, {{"A", 0, 500}, {"B", 500, 500}}), Sources::kept);
        const std::string sound = fmt::format(R"(<audio-role-source role="{}"/>)", row.audio);
        EXPECT_EQ(clips[0],
                  fmt::format(R"(<mc-source angleID="A" srcEnable="all">{}<crop mode="{}"/>)"
                              "<filter-video/></mc-source>",
                              sound, row.video))
            << label;
        EXPECT_EQ(clips[1], R"(<mc-source angleID="B" srcEnable="video"><adjust-crop/></mc-source>)"
                            R"(<mc-source angleID="A" srcEnable="audio">)" +
                                sound + "</mc-source>")
            << label;
    }
}

TEST(ExportDocument, givesEveryCopyOfATrackedShapeItsOwnIdentifier) {
    ProjectBuilder project;
    project.clipContent =
        R"(<mc-source angleID="B"><adjust-transform tracking="t1" scale="2"/><object-tracker>)"
        R"(<tracking-shape id="t1" name="Face"/><tracking-shape name="None"/>)"
        R"(<tracking-shape id="t2"/></object-tracker><filter-video-mask id="t1">)"
        R"(<mask-shape tracking="t2"/><mask-shape tracking="t3"/><mask-shape tracking=""/>)"
        R"(</filter-video-mask></mc-source><mc-source angleID="A"><adjust-blend tracking="t1"/>)"
        R"(</mc-source>)";
    const auto source = [](const std::string& first, const std::string& second) {
        const std::string stem = "swtrack000000000000000000000000000000";
        return R"(<mc-source angleID="B" srcEnable="video"><adjust-transform scale="2" tracking=")" +
               stem + first + R"("/><object-tracker><tracking-shape name="Face" id=")" + stem +
               first + R"("/><tracking-shape name="None"/><tracking-shape id=")" + stem + second +
               R"("/></object-tracker><filter-video-mask id="t1"><mask-shape tracking=")" + stem +
               second + R"("/><mask-shape tracking="t3"/><mask-shape tracking=""/>)" +
               R"(</filter-video-mask></mc-source><mc-source angleID="A" srcEnable="audio"/>)";
    };
    const auto clips = clipContents(
        exported(project, {{"B", 0, 300}, {"A", 300, 300}, {"B", 600, 400}}), Sources::kept);
    ASSERT_EQ(clips.size(), 3U);
    EXPECT_EQ(clips[0], source("01", "02"));
    EXPECT_EQ(
        clips[1],
        R"(<mc-source angleID="A" srcEnable="all"><adjust-blend tracking="t1"/></mc-source>)");
    EXPECT_EQ(clips[2], source("03", "04"));
}

TEST(ExportDocument, putsConnectedClipsIntoTheShotThatTheyStartIn) {
    const std::pair<const char*, std::size_t> rows[] = {
        {"", 0},
        {R"(offset="0s")", 0},
        {R"(offset="-5s")", 0},
        {R"(offset="10s")", 0},
        {R"(offset="349/25s")", 0},
        {R"(offset="13.99999998s")", 0},
        {R"(offset="13.999999995s")", 1}, // short of the cut by rounding
        {R"(offset="14s")", 1},
        {R"(offset="549/25s")", 1},
        {R"(offset="22s")", 2},
        {R"(offset="50s")", 2},
        {R"(offset="99999s")", 2},
    };
    for (const auto& [offset, owner] : rows) {
        const std::string title =
            std::string("<title") + (*offset == '\0' ? "" : " ") + offset + " duration=\"1/3s\"/>";
        std::vector<std::string> expected(3);
        expected[owner] = title;
        EXPECT_EQ(sharedOut(title), expected) << offset;
    }
    for (const char* name : {"asset-clip", "audio", "video", "clip", "sync-clip", "ref-clip",
                             "spine", "title", "live-drawing", "caption", "mc-clip", "audition"}) {
        const std::string element = std::string("<") + name + R"( offset="15s"/>)";
        EXPECT_EQ(sharedOut(element), (std::vector<std::string>{"", element, ""})) << name;
    }
    EXPECT_EQ(sharedOut(R"(<gap offset="15s"/><Title offset="15s"/>text<!-- title -->)"),
              std::vector<std::string>(3));
}

TEST(ExportDocument, sharesAnnotationsOutAmongShots) {
    // For each clip "=" for the element as it is, its start and duration in frames, or nothing.
    const struct {
        std::string element;
        std::vector<std::string> copies;
    } rows[] = {
        {R"(<marker start="10s" value="M")", {"=", "", ""}},
        {R"(<marker value="M")", {"=", "", ""}},
        {R"(<marker start="349/25s" duration="1/25s")", {"=", "", ""}},
        {R"(<marker start="28/2s" duration="99s")", {"", "=", ""}},
        {R"(<marker start="549/25s")", {"", "=", ""}},
        {R"(<marker start="1249/25s")", {"", "", "="}},
        {R"(<marker start="50s")", {"", "", ""}},
        {R"(<marker start="249/25s")", {"", "", ""}},
        {R"(<chapter-marker start="14s" posterOffset="1/3s")", {"", "=", ""}},
        {R"(<hidden-clip-marker duration="20s")", {"=", "", ""}},

        {R"(<keyword start="11s" duration="20s")", {"275+75", "350+200", "550+225"}},
        {R"(<keyword)", {"250+100", "350+200", "550+700"}},
        {R"(<rating start="26s")", {"", "", "650+600"}},
        {R"(<rating duration="101/25s")", {"250+100", "350+1", ""}},
        {R"(<analysis-marker start="15s" duration="1/25s")", {"", "375+1", ""}},
        {R"(<keyword start="1s" duration="13s")", {"250+100", "", ""}},
        {R"(<keyword start="22s" duration="9999s")", {"", "", "550+700"}},
        {R"(<keyword start="1s" duration="9s")", {"", "", ""}},
        {R"(<keyword start="50s" duration="9s")", {"", "", ""}},
        {R"(<keyword start="14s" duration="0s")", {"", "=", ""}},
        {R"(<rating start="349/25s" duration="-1s")", {"=", "", ""}},
    };
    for (const auto& row : rows) {
        const std::string name = row.element.substr(0, row.element.find(' '));
        std::vector<std::string> expected = row.copies;
        for (std::string& copy : expected) {
            const std::size_t plus = copy.find('+');
            if (copy == "=")
                copy = row.element + "/>";
            else if (!copy.empty())
                copy = fmt::format(R"({} start="{}/25s" duration="{}/25s"/>)", name,
                                   copy.substr(0, plus), copy.substr(plus + 1));
        }
        EXPECT_EQ(sharedOut(row.element + "/>"), expected) << row.element;
    }
    EXPECT_EQ(
        sharedOut(R"(<keyword start="15s" value="K" duration="1s" note="N"><x/></keyword>)"),
        (std::vector<std::string>{
            "", R"(<keyword value="K" note="N" start="375/25s" duration="25/25s"><x/></keyword>)",
            ""}));
}

TEST(ExportDocument, refusesAnnotationsOffTheFrameGrid) {
    const std::pair<const char*, const char*> rows[] = {
        {R"(<marker start="1/3s"/>)", offGrid},
        {R"(<marker start="1s" duration="1/3s"/>)", offGrid},
        {R"(<keyword start="9999s" duration="1/3s"/>)", offGrid}, // outside of the clip
        {R"(<rating start="999999999s"/>)",
         "This time value exceeds the prototype's supported range."},
        {R"(<chapter-marker start="1.5s"/>)", "Invalid XML time: 1.5s"},
        {R"(<hidden-clip-marker duration=""/>)", "Invalid XML time: "},
        {R"(<analysis-marker start="as" duration="bs"/>)", "Invalid XML time: as"},
        {R"(<marker start="as"/><keyword start="bs"/>)", "Invalid XML time: as"},
        {R"(<marker start="as"/><caption offset="1"/>)", noTime},
    };
    for (const auto& [content, sentence] : rows)
        EXPECT_EQ(failureOf([&, each = content] { sharedOut(each); }), sentence) << content;
}

TEST(ExportDocument, ordersWhatAClipHolds) {
    ProjectBuilder project;
    project.clipAttributes = R"(srcEnable="video" name="MC" enabled="1" modDate="x")";
    project.frameDuration = "1001/30000s";
    project.timelineStart = 90;
    project.sourceStart = 30;
    project.angles = {{"A", "A", {{0, 2000}}}, {"B", "B", {{0, 2000}}}};
    project.clipContent =
        R"(<metadata/>stray<filter-audio ref="1"/><marker/><title/><mc-source angleID="A"/><!-- - -->)"
        R"(<adjust-panner/><conform-rate scaleEnabled="0"/><unknown/><filter-audio ref="2"/>)"
        R"(<chapter-marker/><audio/><adjust-volume/><note>N</note><mc-source angleID="B"/>)";
    const XmlDocument document = parseXml(exported(project, {{"B", 0, 400}, {"A", 400, 600}}));
    const std::string settings =
        R"(<adjust-panner/><conform-rate scaleEnabled="0"/><adjust-volume/><note>N</note>)";
    const std::string trailing = R"(<metadata/><filter-audio ref="1"/><filter-audio ref="2"/>)";
    const pugi::xml_node sequence = document->document_element().child("project").child("sequence");
    EXPECT_EQ(plainChildren(sequence.child("spine")),
              R"(<mc-clip ref="m1" name="MC" enabled="1" modDate="x" srcEnable="all" )"
              R"(offset="90090/30000s" start="30030/30000s" duration="400400/30000s">)" +
                  settings +
                  R"(<mc-source angleID="B" srcEnable="video"/>)"
                  R"(<mc-source angleID="A" srcEnable="audio"/>)"
                  "<title/><audio/><marker/><chapter-marker/>" +
                  trailing +
                  R"(</mc-clip><mc-clip ref="m1" name="MC" enabled="1" modDate="x" srcEnable="all")"
                  R"( offset="490490/30000s" start="430430/30000s" duration="600600/30000s">)" +
                  settings + R"(<mc-source angleID="A" srcEnable="all"/>)" + trailing +
                  "</mc-clip>");
}

TEST(ExportDocument, namesTheProjectAfterTheImportedOne) {
    const std::pair<const char*, const char*> rows[] = {
        {R"(name="Sunday" uid="U" id="p" modDate="D")",
         R"(<project id="p" name="Sunday Shotweaver">)"},
        {R"(name="")", R"(<project name=" Shotweaver">)"},
        {R"(uid="U" colour="x" modDate="D")", R"(<project colour="x">)"},
        {R"(name="A&#10;&quot;&lt;>")", R"(<project name="A&#10;&quot;&lt;&gt; Shotweaver">)"},
    };
    for (const auto& [attributes, element] : rows) {
        ProjectBuilder project;
        project.projectAttributes = attributes;
        const std::string xml = exported(project, {{"A", 0, 1000}});
        EXPECT_NE(xml.find(std::string("\n    ") + element + "\n"), std::string::npos)
            << attributes << "\n"
            << xml;
    }
}

TEST(ExportDocument, addsNoWhiteSpaceToText) {
    for (const std::string text :
         {"<caption>A<b><c/></b></caption>", "<caption><![CDATA[A]]><b><c/></b></caption>",
          "<text><b><c/></b></text>", "<md> </md>", "<md><a/> b</md>"}) {
        ProjectBuilder project;
        project.clipContent = "<metadata>" + text + "</metadata>";
        const std::string xml = exported(project, {{"A", 0, 1000}});
        EXPECT_NE(xml.find("\n" + std::string(24, ' ') + text + "\n"), std::string::npos) << xml;
    }
}

TEST(ExportDocument, refusesADocumentWithoutItsVersion) {
    ProjectBuilder project;
    project.rootAttributes = "";
    EXPECT_EQ(failure(project, {{"A", 0, 1000}}),
              "The imported XML does not state its FCPXML version, so no project can be made from "
              "it. Export XML again from Final Cut.");
}

TEST(ExportDocument, leavesTheEngineAsItIs) {
    ProjectBuilder project;
    project.clipContent =
        volume(R"(<fadeIn duration="1s"/>)") +
        R"(<mc-source angleID="B"><tracking-shape id="t"/></mc-source><keyword/>)";
    const CutEngine engine = project.engine();
    const std::string before = plain(*engine.document);
    const std::vector<Shot> shots{{"B", 0, 500}, {"A", 500, 500}};
    const std::string first = exported(engine, shots);
    EXPECT_EQ(exported(engine, shots), first);
    EXPECT_EQ(plain(*engine.document), before);
}

TEST(ExportDocument, tellsBeforehandWhatWouldStopIt) {
    ProjectBuilder project;
    project.clipContent = R"(<marker start="1/3s" value="Psalm"/><marker start="1s" value="Fine"/>)"
                          R"(<title name="Lower third" offset="soon"/><rating duration="1.5s"/>)"
                          R"(<mc-source angleID="A"/><gap offset="x"/>)" +
                          volume(R"(<fadeIn duration="999s"/><fadeOut/>)");
    EXPECT_EQ(project.engine().exportObstacles(),
              (std::vector<std::string>{
                  "The marker “Psalm” on the multicam clip would stop an export: This prototype "
                  "needs timing aligned to the project frame rate.",
                  "The title “Lower third” on the multicam clip would stop an export: The export "
                  "contains a missing or invalid time value.",
                  "The rating “without a name” on the multicam clip would stop an export: Invalid "
                  "XML time: 1.5s",
                  "The adjust-volume “without a name” on the multicam clip would stop an export: "
                  "The export contains a missing or invalid time value."}));
    EXPECT_EQ(ProjectBuilder().engine().exportObstacles(), std::vector<std::string>());
}

std::string fileText(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// Each NAME.cuts in the folder is an edit ("audio ANGLE", then lines "cut ANGLE START DURATION")
/// of NAME.fcpxml, which exports as NAME.expected.fcpxml.
TEST(ExportDocument, writesTheGoldenDocuments) {
    const std::filesystem::path folder = SHOTWEAVER_SOURCE_DIR "/tests/engine/export";
    int documents = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::filesystem::path path = entry.path();
        if (path.extension() != ".cuts") continue;
        SCOPED_TRACE(path.filename().string());
        std::istringstream edit(fileText(path));
        std::string word;
        std::string audio;
        std::vector<Cut> cuts;
        edit >> word >> audio;
        Cut cut;
        while (edit >> word >> cut.angle >> cut.start >> cut.duration)
            cuts.push_back(cut);

        const CutEngine engine(fileText(path.replace_extension(".fcpxml")));
        EXPECT_EQ(engine.exportDocument(cuts, audio, countingUUIDs()),
                  fileText(path.replace_extension(".expected.fcpxml")));
        ++documents;
    }
    EXPECT_GT(documents, 0);
}

} // namespace
} // namespace shotweaver
