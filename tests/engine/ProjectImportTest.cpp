#include "engine/ProjectImport.h"
#include "platform/PlatformError.h"
#include "tests/support/Faults.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver {
namespace {

using test::expectChecksInOrder;
using test::failureOf;
using test::Fault;
using test::ProjectBuilder;
using test::replaced;

const std::string wholeEvent =
    "Export one project from Final Cut Pro, rather than a whole event or library.";
const std::string notOneClip =
    "For this prototype, export a timeline containing one uncut multicam clip.";
const std::string noMulticam = "The multicam definition is missing from this export.";
const std::string missingTime = "The export contains a missing or invalid time value.";
const std::string notPositive = "The project must have a positive duration and frame rate.";
const std::string notUnique = "The multicam needs at least two uniquely identified angles.";
const std::string explosion =
    "The compound clips in this export are nested too often to be read. Simplify them in Final Cut "
    "and export XML again.";

std::string refusalOf(const std::string& xml) {
    return failureOf([&] { inspectProject(xml); });
}

/// The summary of an angle that holds `content`, in a project with further resources.
ImportedAngle angleWith(const std::string& content, const std::string& resources = "",
                        const std::string& attributes = "") {
    ProjectBuilder project;
    project.extraAngles = "<mc-angle angleID=\"C\" " + attributes + ">" + content + "</mc-angle>";
    project.extraResources = resources;
    return inspectProject(project.xml()).angles.back();
}

std::string compound(const std::string& id, const std::string& content) {
    return "<media id=\"" + id + "\"><sequence><spine>" + content + "</spine></sequence></media>";
}

std::string use(const std::string& media) {
    return "<ref-clip ref=\"" + media + "\"/>";
}

TEST(ProjectImport, summarizesAProject) {
    ProjectBuilder project;
    project.frameDuration = "1001/30000s";
    project.length = 30000;
    project.extraAngles = R"(<mc-angle angleID="C"><gap offset="0s"/><gap/></mc-angle>)";
    const ImportedProject summary = inspectProject(project.xml());

    EXPECT_EQ(summary.name, "Sunday");
    EXPECT_EQ(summary.version, "1.11");
    EXPECT_EQ(summary.duration, 1001);
    EXPECT_EQ(summary.framesPerSecond, 1 / (1001.0 / 30000));
    EXPECT_EQ(summary.audioAngles, "A");
    EXPECT_TRUE(summary.missingLocations.empty());
    EXPECT_EQ(summary.angles, (std::vector<ImportedAngle>{{"A", "A", "", 1, 0, 0},
                                                          {"B", "B", "", 1, 0, 0},
                                                          {"C", "Unnamed angle", "", 0, 2, {}}}));
}

TEST(ProjectImport, tellsAbsentAttributesFromEmptyOnes) {
    ProjectBuilder project;
    project.rootAttributes = "";
    project.projectAttributes = "";
    const ImportedProject absent = inspectProject(project.xml());
    EXPECT_EQ(absent.name, "Untitled project");
    EXPECT_EQ(absent.version, "Unknown");

    project.rootAttributes = R"(version="")";
    project.projectAttributes = R"(name="")";
    project.angles[1] = {"", "", {{0, 1000}}};
    project.clipContent = R"(<mc-source angleID=""/>)";
    const ImportedProject empty = inspectProject(project.xml());
    EXPECT_EQ(empty.name, "");
    EXPECT_EQ(empty.version, "");
    EXPECT_EQ(empty.angles[1].id, "");
    EXPECT_EQ(empty.angles[1].name, "");
    EXPECT_EQ(empty.audioAngles, "");

    // An absent identifier is found by an absent reference only.
    project = {};
    const std::string noClipRef = replaced(project.xml(), R"(<mc-clip ref="m1")", "<mc-clip");
    EXPECT_EQ(refusalOf(noClipRef), noMulticam);
    EXPECT_EQ(refusalOf(replaced(noClipRef, R"(<media id="m1">)", R"(<media id="">)")), noMulticam);
    EXPECT_EQ(refusalOf(replaced(noClipRef, R"(<media id="m1">)", "<media>")), "");
    const std::string noFormat = replaced(project.xml(), R"(<sequence format="r1")", "<sequence");
    EXPECT_EQ(refusalOf(noFormat), missingTime);
    EXPECT_EQ(refusalOf(replaced(noFormat, R"(<format id="r1")", "<format")), "");
}

TEST(ProjectImport, checksInOrder) {
    ProjectBuilder project;
    project.extraAngles = R"(<mc-angle name="C" angleID="C"/>)";
    const std::vector<Fault> faults{
        {"fcpxml", "other", "This file is not a Final Cut XML export."},
        {"</event>", "<project/></event>", wholeEvent},
        {"<sequence ", "<sequence/><sequence ", "The project has no timeline to inspect."},
        {"</spine>", "<gap/></spine>", notOneClip},
        {"resources>", "sources>", "The export has no media resources."},
        {"<media ", R"(<media id="m1"/><media )", noMulticam},
        {"frameDuration=", R"(frameDuration="1/0s" hidden1=)",
         "The export contains an invalid time value: 1/0s"},
        {R"(duration="1000/25s" tcStart)", R"(duration="40" hidden2="" tcStart)", missingTime},
        {R"(frameDuration="1/25s")", R"(frameDuration="-1/25s")", notPositive},
        {R"(ref="asset-A" offset=)", R"(ref="asset-A" offset="0.s" hidden=)",
         "The export contains an invalid time value: 0.s"},
        {R"(name="B" angleID="B")", R"(name="B")", "A camera angle is missing its identifier."},
        {R"(ref="asset-B" offset="0/25s")", R"(ref="asset-B" offset="")", missingTime},
        {R"(name="C" angleID="C")", R"(name="C" angleID="A")", notUnique}};
    expectChecksInOrder(project.xml(), faults, inspectProject);
}

TEST(ProjectImport, refusesBytesThatAreNotXML) {
    for (const char* bytes : {"", "<fcpxml>", "not XML"})
        EXPECT_THROW(inspectProject(bytes), PlatformError) << bytes;
}

TEST(ProjectImport, findsTheOneProject) {
    const std::string xml = ProjectBuilder{}.xml();
    const auto without = [](std::string text, const std::string& element) {
        return replaced(replaced(std::move(text), "<" + element + ">", ""), "</" + element + ">",
                        "");
    };
    EXPECT_EQ(refusalOf(without(xml, "library")), "");
    EXPECT_EQ(refusalOf(without(without(xml, "library"), "event")), "");
    EXPECT_EQ(refusalOf(without(xml, "event")), wholeEvent); // directly in a library
    EXPECT_EQ(refusalOf(replaced(xml, "</event>", "<!--<project/>--></event><event/>")), "");
    for (const char* second : {"<project/></library>", "<event><project/></event></library>"}) {
        const std::string document = replaced(xml, "</library>", second);
        EXPECT_EQ(refusalOf(document), std::string(second).starts_with("<event>") ? wholeEvent : "")
            << second;
    }
    EXPECT_EQ(refusalOf(replaced(xml, "</fcpxml>", "<project/></fcpxml>")), wholeEvent);
    EXPECT_EQ(refusalOf(replaced(xml, "</fcpxml>", "<event><project/></event></fcpxml>")),
              wholeEvent);
}

TEST(ProjectImport, wantsOneMulticamClipAlone) {
    const std::string xml = ProjectBuilder{}.xml();
    EXPECT_EQ(refusalOf(replaced(xml, "<spine>", "<spine><!-- note --><?note?>")), "");
    EXPECT_EQ(refusalOf(replaced(xml, "<mc-source", "<gap/><mc-clip/><mc-source")), "");
    for (const char* second : {"<gap/>", R"(<mc-clip ref="m1"/>)", "<note/>"})
        EXPECT_EQ(refusalOf(replaced(xml, "<spine>", std::string("<spine>") + second)), notOneClip)
            << second;
    EXPECT_EQ(refusalOf(replaced(replaced(xml, "<mc-clip ", "<clip "), "</mc-clip>", "</clip>")),
              notOneClip);
}

TEST(ProjectImport, takesTheFirstOfSeveral) {
    const std::string xml = ProjectBuilder{}.xml();
    EXPECT_EQ(refusalOf(replaced(xml, "</spine>", "</spine><spine/>")), "");
    EXPECT_EQ(refusalOf(replaced(xml, "<spine>", "<spine/><spine>")), notOneClip);
    EXPECT_EQ(refusalOf(replaced(xml, "<resources>", "<resources/><resources>")), noMulticam);
    EXPECT_EQ(refusalOf(replaced(xml, "<multicam ", "<multicam/><multicam ")), notUnique);
    const std::string twoFormats =
        replaced(xml, "<format ", R"(<format id="r1" frameDuration="1/50s"/><format )");
    EXPECT_EQ(inspectProject(twoFormats).framesPerSecond, 50);
    const std::string twoAssets =
        replaced(xml, "<asset ", R"(<asset id="asset-A" name="first"/><asset )");
    EXPECT_EQ(inspectProject(twoAssets).missingLocations, std::vector<std::string>{"first"});
}

TEST(ProjectImport, wantsPositiveTimes) {
    const std::string xml = ProjectBuilder{}.xml();
    const std::string duration = R"(duration="1000/25s" tcStart)";
    for (const char* refused : {"0s", "-40s", "1e-400s"})
        EXPECT_EQ(
            refusalOf(replaced(xml, duration, fmt::format("duration=\"{}\" tcStart", refused))),
            notPositive)
            << refused;
    EXPECT_EQ(refusalOf(replaced(xml, R"(frameDuration="1/25s")", R"(frameDuration="0/1s")")),
              notPositive);
}

TEST(ProjectImport, wantsTwoUniqueAngles) {
    ProjectBuilder project;
    project.angles = {{"A", "One", {}}};
    EXPECT_EQ(refusalOf(project.xml()), notUnique);
    project.angles = {{"A", "One", {}}, {"B", "Two", {}}, {"A", "Three", {}}};
    EXPECT_EQ(refusalOf(project.xml()), notUnique);
    project.angles = {{"A", "One", {}}, {"a", "One", {}}};
    EXPECT_EQ(refusalOf(project.xml()), "");
}

TEST(ProjectImport, namesTheAnglesThatAreHeard) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "Not specified"},
        {R"(<mc-source angleID="A" srcEnable="video"/><mc-source angleID="B" srcEnable="audio"/>)",
         "Two"},
        {R"(<mc-source angleID="B"/><mc-source angleID="A"/><mc-source angleID="B"/>)", "One, Two"},
        {R"(<mc-source angleID="A" srcEnable="none"/><mc-source angleID="B" srcEnable=""/>)",
         "Not specified"},
        {R"(<mc-source srcEnable="all"/><mc-source angleID="elsewhere"/>)", "Not specified"},
        {R"(<gap><mc-source angleID="A"/></gap>)", "Not specified"}};
    for (const auto& [content, names] : rows) {
        ProjectBuilder project;
        project.angles = {{"A", "One", {}}, {"B", "Two", {}}};
        project.clipContent = content;
        EXPECT_EQ(inspectProject(project.xml()).audioAngles, names) << content;
    }
}

TEST(ProjectImport, listsRecordingsWithoutALocation) {
    ProjectBuilder project;
    project.extraResources =
        R"(<asset id="1" name="own" src="file:///own.mov"/>)"
        R"(<asset id="2" name="second"><media-rep src=""/><media-rep src="file:///2.mov"/></asset>)"
        R"(<asset id="3" name="lost" src=""><media-rep/></asset><asset id="4"/>)"
        R"(<asset id="5" name="Zoom"/>)";
    // Canonically equivalent names are one; scalar values sort, not UTF-16 units or raw bytes.
    project.extraResources +=
        "<asset id=\"6\" name=\"e\u0301lan\"/><asset id=\"7\" name=\"\u00e9lan\"/>"
        "<asset id=\"8\" name=\"zoom\"/><asset id=\"9\" name=\"\U0001F3A5\"/>"
        "<asset id=\"10\" name=\"\uFB01lm\"/>";
    project.extraAngles =
        R"(<mc-angle angleID="C"><asset-clip ref="10"/><video ref="9"/><audio ref="8"/>)"
        R"(<asset-clip ref="6"/><asset-clip ref="7"/><asset-clip ref="1"/><asset-clip ref="2"/>)"
        R"(<asset-clip ref="3" name="unused"/><asset-clip ref="3"/></mc-angle>)"
        R"(<mc-angle angleID="D"><asset-clip ref="3"/><asset-clip ref="5"/><asset-clip ref="4"/>)"
        R"(<asset-clip ref="none" name="clip of nothing"/><asset-clip/></mc-angle>)";
    EXPECT_EQ(inspectProject(project.xml()).missingLocations,
              (std::vector<std::string>{"Unnamed clip", "Zoom", "clip of nothing", "lost", "zoom",
                                        "e\u0301lan", "\uFB01lm", "\U0001F3A5"}));
}

TEST(ProjectImport, namesCameras) {
    const std::string key = "com.apple.proapps.mio.cameraName";
    const auto md = [](const std::string& k, const std::string& value) {
        return "<md key=\"" + k + "\" value=\"" + value + "\"/>";
    };
    const std::string resources = "<asset id=\"1\" src=\"x\"><metadata>" + md(key, "Zed") +
                                  md(key, "Abe") + md(key, "") + md("other", "no") + "<md key=\"" +
                                  key + "\"/></metadata>" + md(key, "outside") + "<metadata>" +
                                  md(key, "Bo") + md(key, "Zed") + "<array>" + md(key, "deep") +
                                  "</array></metadata></asset>";
    EXPECT_EQ(angleWith(R"(<asset-clip ref="1"/><video ref="1"/>)", resources).cameras,
              "Abe, Bo, Zed");
    EXPECT_EQ(angleWith(R"(<asset-clip ref="asset-A"/>)", resources).cameras, "");
}

TEST(ProjectImport, countsMediaClips) {
    struct Row {
        const char* label;
        std::string content;
        std::string resources;
        std::int64_t clips;
    };
    const std::string clip = "<asset-clip/>";
    const Row rows[] = {
        {"below any element", "<clip><video/><other><audio/></other></clip><gap><video/></gap>", "",
         3},
        {"not below a media clip", "<asset-clip><audio/><ref-clip ref=\"X\"/></asset-clip>",
         compound("X", clip), 1},
        {"enabled is anything but 0",
         R"(<video enabled="1"/><video enabled=""/><video enabled="00"/><video enabled="0"/>)", "",
         3},
        {"disabled containers hide all",
         R"(<clip enabled="0"><video/></clip><ref-clip ref="X" enabled="0"><video/></ref-clip>)",
         compound("X", clip), 0},
        {"siblings", use("X") + use("X"), compound("X", clip), 2},
        {"own children of a compound clip", R"(<ref-clip ref="X"><audio/></ref-clip>)",
         compound("X", clip), 2},
        {"missing media",
         R"(<ref-clip ref="none"><audio/></ref-clip><ref-clip><audio/></ref-clip>)",
         "<media><sequence><audio/></sequence></media>", 2},
        {"every sequence of a media", use("X"),
         R"(<media id="X"><sequence><video/></sequence><video/><sequence enabled="0"><video/>)"
         R"(</sequence><sequence><spine><video/></spine></sequence></media>)",
         2},
        {"first media of an identifier", use("X"), compound("X", clip) + compound("X", clip + clip),
         1},
        {"diamond", use("X"),
         compound("X", use("Y") + use("Z")) + compound("Y", clip + use("W")) +
             compound("Z", use("W")) + compound("W", clip + clip),
         5},
        {"media that holds itself", use("X"),
         compound("X", clip + R"(<ref-clip ref="X"><audio/></ref-clip>)"), 2},
        {"media that hold each other", use("X") + use("Y"),
         compound("X", clip + use("Y")) + compound("Y", clip + clip + use("X")), 6},
        {"a cycle reached at two places", use("X") + use("Y"),
         compound("X", clip + use("Y") + use("Y")) + compound("Y", clip + use("X")), 5},
        {"the same compound clip in a compound clip's own children",
         R"(<ref-clip ref="X"><ref-clip ref="X"><audio/></ref-clip></ref-clip>)",
         compound("X", clip), 2},
        {"a known media below one that it holds",
         use("M") + "<ref-clip ref=\"X\">" + use("M") + "</ref-clip>",
         compound("M", clip + use("X")) + compound("X", clip), 4}};
    for (const Row& row : rows)
        EXPECT_EQ(angleWith(row.content, row.resources).clipCount, row.clips) << row.label;
    EXPECT_EQ(angleWith(clip + "<gap/>", "", R"(enabled="0")"),
              (ImportedAngle{"C", "Unnamed angle", "", 0, 1, {}}));
}

TEST(ProjectImport, findsTheFirstRecordingAsWritten) {
    EXPECT_EQ(angleWith(R"(<video offset="9s"/><clip offset="1s"><video offset="3/2s"/></clip>)")
                  .firstRecording,
              1.5);
    EXPECT_EQ(angleWith(R"(<video offset="9s"/><video/><video offset="-1s" enabled="0"/>)")
                  .firstRecording,
              0);
    EXPECT_EQ(angleWith(R"(<video offset="9s"/><ref-clip ref="X" offset="100s"/>)",
                        compound("X", R"(<video offset="-7s"/>)"))
                  .firstRecording,
              -7);
    EXPECT_EQ(angleWith(R"(<gap offset="bad"/><video enabled="0" offset="bad"/>)").firstRecording,
              std::nullopt);
}

TEST(ProjectImport, readsCompoundClipsAfterTheirOwnChildren) {
    const std::string resources = compound("X", R"(<video offset="inside"/>)");
    // The inner clip names what is being entered already, so its turn comes last.
    for (const char* content :
         {R"(<ref-clip ref="X"><video offset="own s"/></ref-clip>)",
          R"(<ref-clip ref="X"><ref-clip ref="X"/><video offset="own s"/></ref-clip>)"})
        EXPECT_EQ(failureOf([&] { angleWith(content, resources); }),
                  "The export contains an invalid time value: own s")
            << content;
}

/// Media "M1" to "M<count>", each of which holds the next one so many times, the last one `end`.
std::string chain(int count, int references, const std::string& end) {
    std::string media;
    for (int i = 1; i <= count; ++i) {
        std::string content = i == count ? end : "";
        for (int reference = 0; i < count && reference < references; ++reference)
            content += use(fmt::format("M{}", i + 1));
        media += compound(fmt::format("M{}", i), content);
    }
    return media;
}

TEST(ProjectImport, countsHostileCompoundClipsAtOnce) {
    EXPECT_EQ(angleWith(use("M1"), chain(61, 2, "<video/>")).clipCount, std::int64_t{1} << 60);
    EXPECT_EQ(failureOf([] { angleWith(use("M1"), chain(66, 2, "<video/>")); }), explosion);
    EXPECT_EQ(failureOf([] { angleWith(use("M1"), chain(60, 2, "<video/>" + use("M1"))); }),
              explosion);
    EXPECT_EQ(angleWith(use("M1"), chain(1000, 1, "<video/>")).clipCount, 1);
    EXPECT_EQ(failureOf([] { angleWith(use("M1"), chain(10'000, 1, "<video/>")); }), explosion);
    // In the other order each media is known before it is used.
    std::string angle;
    for (int i = 1000; i > 0; --i)
        angle += use(fmt::format("M{}", i));
    EXPECT_EQ(angleWith(angle, chain(1000, 1, "<video/>")).clipCount, 1000);
}

} // namespace
} // namespace shotweaver
