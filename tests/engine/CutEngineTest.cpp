#include "engine/CutEngine.h"
#include "engine/import/XmlAccess.h"
#include "platform/PlatformError.h"
#include "platform/XmlIntake.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <tuple>

namespace shotweaver {
namespace {

using test::failureOf;
using test::ProjectBuilder;

const std::string missingTime = "The export contains a missing or invalid time value.";
const std::string badTime = "The export contains an invalid time value: ";
const std::string notFilling = "Use one multicam clip filling the project timeline.";
const std::string changedClip =
    "Speed changes, split audio and disabled main multicam clips are not supported yet.";
const std::string tooMuch = "The compound clips in this export are nested too often to be read. "
                            "Simplify them in Final Cut and export XML again.";
const std::string offGrid = "This prototype needs timing aligned to the project frame rate.";

/// A project with a third angle "C" of the given content.
ProjectBuilder withAngle(const std::string& content, const std::string& resources = "") {
    ProjectBuilder project;
    project.extraAngles = R"(<mc-angle name="Third" angleID="C">)" + content + "</mc-angle>";
    project.extraResources = resources;
    return project;
}

using Fault = std::array<std::string, 3>; // what becomes what, and the sentence of the refusal

TEST(CutEngine, checksInOrder) {
    const std::string format = "<format id='r2' frameDuration='2/50s' width='1920' height='1080'/>"
                               "<asset id='lost' name='Lost'/>";
    const std::string content = "<title/><asset-clip name='N' ref='asset-B' duration='9s'>"
                                "<conform-rate scaleEnabled='0'/><gap/><sync-clip/></asset-clip>";
    const std::string xml = test::replaced(withAngle(content, format).xml(),
                                           R"(<multicam format="r1")", "<multicam format='r2'");
    const auto build = [](const std::string& bytes) { return CutEngine(bytes); };
    const std::vector<Fault> faults{
        {"fcpxml", "other", "This file is not a Final Cut XML export."},
        {"</event>", "<project/></event>",
         "Export one project from Final Cut Pro, rather than a whole event or library."},
        {"<sequence ", "<sequence/><sequence ", "The project has no timeline to inspect."},
        {"</spine>", "<gap/></spine>",
         "For this prototype, export a timeline containing one uncut multicam clip."},
        {"resources>", "sources>", "The export has no media resources."},
        {"<media ", "<media id='m1'/><media ",
         "The multicam definition is missing from this export."},
        {"frameDuration=", "frameDuration='1/0s' hidden1=", badTime + "1/0s"},
        {R"("1001/25s" tcStart)", "'40' tcStart", missingTime},
        {"'0.04s'", "'-1/25s'", "The project must have a positive duration and frame rate."},
        {R"(ref="asset-A" offset=)", R"(ref="asset-A" offset="0.s" hidden4=)", badTime + "0.s"},
        {R"(name="B" angleID="B")", R"(name="B")", "A camera angle is missing its identifier."},
        {R"(angleID="C")", R"(angleID="A")",
         "The multicam needs at least two uniquely identified angles."},
        {R"("1/1000001s")", "'0.04s'", "Invalid XML time: 0.04s"},
        {R"("1/25s")", R"("1/1000001s")", "Unsupported frame rate."},
        {R"(duration="1000/25s" name='MC')", "duration='1/24s' name='MC'", offGrid},
        {R"( start="0)", R"( start="x)", "Invalid XML time: x/25s"},
        {R"(<mc-clip ref="m1" offset="0/25s)", R"(<mc-clip ref="m1" offset="1000000000s)",
         "This time value exceeds the prototype's supported range."},
        {R"("1000/25s" tcStart)", R"("1001/25s" tcStart)", notFilling},
        {R"(tcStart="0/25s")", "tcStart='1/25s'", notFilling},
        {R"(name="MC")", "name='MC' enabled='0'", changedClip},
        {"2/50s", "0.5/25s", "Invalid XML time: 0.5/25s"},
        {"'2/50s' width=", "'2/50s' hidden5=",
         "The multicam and project need matching frame rate, dimensions and colour format."},
        {R"(tcStart="0s")", "tcStart='1/30s'", offGrid},
        {R"(<mc-angle name="A" angleID="A">)", "<mc-angle angleID='A'><marker/>",
         "Camera A contains an unsupported clip type: marker."}, // for want of a name
        {R"("0/25s" name="A clip")", R"("1e9s" name="A clip")", "Invalid angle timing."},
        {"<title/>", "<marker/>", "Camera Third contains an unsupported clip type: marker."},
        {"<gap/><ref-clip/>", "<timeMap/>",
         "Camera Third, clip N, contains an unsupported setting: timeMap. Speed changes are not "
         "supported yet."},
        {"scaleEnabled='0'", "scaleEnabled='1'",
         "Camera Third contains speed changes or split audio, which are not supported yet."},
        {"name='N'", "name='N' start='0'", missingTime},
        {"'-9s'", "'-9'", missingTime},
        {"ref='lost'", "ref='none'", "Camera Third, clip N, refers to a missing recording."},
        {"'asset-B'", "'lost'",
         "No media location in export: Lost. Finish importing media in Final Cut and export XML "
         "again."},
        {"<sync-clip/>", "<ref-clip/>",
         "Camera Third contains a missing or circular compound clip reference."},
        {"'9s'", "'-9s'", "Camera Third contains invalid clip duration."}};
    // With all faults a document is refused for the first, without that for the second, and so on.
    std::string spoiled = xml;
    for (std::size_t i = faults.size(); i-- > 0;) {
        const auto& [from, to, sentence] = faults[i];
        for (std::size_t at = 0; (at = spoiled.find(from, at)) != spoiled.npos; at += to.size())
            spoiled.replace(at, from.size(), to);
        EXPECT_EQ(failureOf([&] { build(spoiled); }), sentence) << spoiled;
    }
    const std::vector<Fault> alone{
        {"</library>", "<project/></library>", ""}, // not in an event
        {R"(<mc-clip ref="m1" offset="0/25s" start="0/25s")", "<mc-clip ref='m1'", ""},
        {R"( duration="1000/25s" name="MC")", "", notFilling},
        {R"(name="MC")", "audioStart=''", changedClip},
        {"<mc-source", "<conform-rate scaleEnabled='0'/><gap><timeMap/></gap><mc-source", ""},
        {"<mc-source", "<timeMap/><mc-source", changedClip},
        {"<mc-source", "<conform-rate scaleEnabled='0'/><conform-rate/><mc-source", changedClip}};
    for (const Fault& f : alone)
        EXPECT_EQ(failureOf([&] { build(test::replaced(xml, f[0], f[1])); }), f[2]) << f[1];
    EXPECT_THROW(build("<fcpxml>"), PlatformError);
}

TEST(ProjectImport, summarizesAProject) {
    ProjectBuilder project = withAngle("<gap offset='0s'/><gap/>");
    project.rootAttributes = "";
    project.clipContent = "<mc-source angleID='A' srcEnable='video'/><mc-source angleID='C'/>"
                          "<mc-source angleID='B' srcEnable='audio'/><mc-source angleID='C'/>";
    project.extraAngles += "<mc-angle angleID='' enabled='0'><audio/><gap/></mc-angle>";
    ImportedProject expected{"Sunday", "Unknown", 40, 25, {}, "B, Third", {}};
    expected.angles = {{"A", "A", "", 1, 0, 0}, {"B", "B", "", 1, 0, 0}};
    expected.angles.push_back({"C", "Third", "", 0, 2, {}});
    expected.angles.push_back({"", "Unnamed angle", "", 0, 1, {}});
    EXPECT_EQ(inspectProject(project.xml()), expected);
    project.clipContent = "<gap><mc-source angleID='A'/></gap><mc-source srcEnable='all'/>";
    EXPECT_EQ(inspectProject(project.xml()).audioAngles, "Not specified");
}

TEST(ProjectImport, namesCamerasAndRecordingsWithoutALocation) {
    const std::string md = "<md key='com.apple.proapps.mio.cameraName' value=";
    // Canonically equivalent names are one; scalar values sort, not UTF-16 units.
    const std::string resources =
        "<asset id='1' src='x'><metadata>" + md + "'Zed'/>" + md + "'Abe'/>" + md + "'Zed'/>" + md +
        "''/><md value='no'/></metadata></asset><asset id='2'><media-rep/><media-rep src='x'/>"
        "</asset><asset id='3' name='lost' src=''><media-rep/></asset><asset id='4'/><asset id='5' "
        "name='e\u0301lan'/><asset id='6' name='\u00e9lan'/><asset id='7' name='\U0001F3A5'/>"
        "<asset id='8' name='\uFB01lm'/>";
    const std::string clips = "<video ref='8'/><video ref='7'/><audio ref='5'/><video ref='6'/>"
                              "<audio ref='3' name='unused'/><video ref='4'/><video ref='2'/>"
                              "<asset-clip ref='none' name='clip'/><video/><video ref='1'/>";
    const ImportedProject summary = inspectProject(withAngle(clips, resources).xml());
    EXPECT_EQ(summary.angles.back().cameras, "Abe, Zed");
    const std::vector<std::string> missing{"Unnamed clip", "clip",     "lost",
                                           "e\u0301lan",   "\uFB01lm", "\U0001F3A5"};
    EXPECT_EQ(summary.missingLocations, missing);

    // Every angle would keep the name.
    ProjectBuilder project;
    project.extraResources = "<asset id='long' src='x'><metadata>" + md + "'" +
                             std::string(1'000'000, 'x') + "'/></metadata></asset>";
    project.extraAngles =
        test::repeated(21, "<mc-angle angleID='C'><video ref='long'/></mc-angle>");
    EXPECT_EQ(failureOf([&] { inspectProject(project.xml()); }), tooMuch);
}

/// How many clips an angle holds and the first recording, or the refusal.
std::string clipsOf(const std::string& content, const std::string& resources) try {
    const auto summary = inspectProject(withAngle(content, resources).xml()).angles.back();
    return fmt::format("{} from {}", summary.clipCount, summary.firstRecording.value_or(-99));
} catch (const std::exception& error) {
    return error.what();
}

TEST(ProjectImport, countsMediaClips) {
    const std::string resources =
        test::compoundMedia("X", "<video offset='7/2s'/>") + test::compoundMedia("X", "") +
        test::compoundMedia("M", "<video/><ref-clip ref='X'/>") +
        test::compoundMedia("ring", "<video/><ref-clip ref='gnir'/><ref-clip ref='gnir'/>") +
        test::compoundMedia("gnir",
                            "<video/><ref-clip ref='ring'><video offset='-7s'/></ref-clip>") +
        "<media id='Z'><sequence><audio/></sequence><video/><sequence><video/></sequence></media>";
    const std::pair<std::string, std::string> rows[] = {
        {"<x offset='bad'><video offset='9s'><audio/></video></x><video offset='8s'/>", "2 from 8"},
        {"<video enabled='0' offset='bad'/><ref-clip ref='X' enabled='0'/>", "0 from -99"},
        {"<ref-clip ref='X' offset='9s'/><ref-clip ref='X'/>", "2 from 3.5"},
        {"<ref-clip ref='none'><audio/></ref-clip><ref-clip/>", "1 from 0"},
        {"<ref-clip ref='Z'/>", "2 from 0"},
        {"<ref-clip ref='ring'/><ref-clip ref='gnir'/>", "8 from -7"},
        {"<ref-clip ref='X'><ref-clip ref='X'><video/></ref-clip></ref-clip>", "2 from 0"},
        {"<ref-clip ref='M'/><ref-clip ref='X'><ref-clip ref='M'/></ref-clip>", "4 from 0"}};
    for (const auto& [content, clips] : rows)
        EXPECT_EQ(clipsOf(content, resources), clips) << content;
    // Own children come first; the inner compound clip is being entered already.
    EXPECT_EQ(clipsOf("<ref-clip ref='Y'><ref-clip ref='Y'/><video offset='s'/></ref-clip>",
                      test::compoundMedia("Y", "<video offset='inside'/>")),
              badTime + "s");
    EXPECT_EQ(clipsOf(test::repeated(300, "<ref-clip ref='thousand'/>"),
                      test::compoundMedia("thousand", test::repeated(1000, "<video/>"))),
              "300000 from 0");
    // Three levels each, and one for the clip: 1,000.
    EXPECT_EQ(clipsOf("<ref-clip ref='M1'/>", test::mediaChain(333, 1, "<video/>")), "1 from 0");
    EXPECT_EQ(clipsOf("<ref-clip ref='M1'/>", test::mediaChain(334, 1, "<video/>")), tooMuch);
}

TEST(ProjectImport, readsTwentyMillionElements) {
    const std::string resources =
        test::costlyMedia() + test::compoundMedia("comments", test::repeated(10'000, "<!---->"));
    const std::string uses = test::repeated(19'900, "<ref-clip ref='costly'/>");
    EXPECT_EQ(clipsOf(uses, resources), "0 from -99");
    for (const std::string& media : std::vector<std::string>{"costly", "comments"})
        EXPECT_EQ(clipsOf(uses + test::repeated(50, "<ref-clip ref='" + media + "'/>"), resources),
                  tooMuch);
    // Twice as many with each media, the last of which leads back to the first.
    const std::string end = "<ref-clip ref='costly'/><ref-clip ref='M1'/>";
    EXPECT_EQ(clipsOf("<ref-clip ref='M1'/>", resources + test::mediaChain(60, 2, end)), tooMuch);
}

TEST(CutEngine, comparesFormats) {
    const std::tuple<std::string, std::string, bool> rows[] = {
        {"frameDuration='1001/30000s'", "frameDuration='2002/60000s'", true},
        {"fieldOrder='progressive' paspH='1' paspV='1' frameDuration='0/9s'", "", true},
        {"colorSpace='1-1-1' name='a'", "colorSpace='1-1-1 (Rec. (709))' name='b'", true},
        {"height='' width='1'", "width='1'", false},
        {"fieldOrder='upper first'", "", false},
        {"colorSpace='1-1-1(x)'", "colorSpace='1-1-1(y)'", false}};
    for (const auto& [a, b, isSame] : rows) {
        const auto document =
            parseXml("<x><a id='1' " + a + "/><b " + b + "/></x>", fcpxmlVocabulary);
        const XmlNode root = document->documentElement();
        EXPECT_EQ(formatsMatch(root.firstChild(), root.firstChild().next()), isSame) << a << b;
    }
}

TEST(CutEngine, coversFramesThatAreThereWholly) {
    const auto clip = [](const char* offset, const char* duration) {
        return withAngle(
            fmt::format("<video ref='asset-A' offset='{}' duration='{}'/>", offset, duration));
    };
    // In frames of 1/25 s, with a tolerance of a millionth of a frame at either end.
    const std::tuple<const char*, const char*, Coverage> rows[] = {
        {"1.02s", "1.96s", {{26, 74}}},
        {"1.00000002s", "100s", {{25, 1000}}}, // half a millionth late
        {"1.00000008s", "100s", {{26, 1000}}}, // two millionths late
        {"-1s", "3.99999998s", {{0, 75}}},
        {"-1s", "3.99999992s", {{0, 74}}},
        {"39999999s", "0.9s", {}}};
    for (const auto& [offset, duration, picture] : rows)
        EXPECT_EQ(clip(offset, duration).engine().coverage.at("C"), picture) << offset;
    // 40,000,000 s are 1,000,000,000 frames. What cannot be walked comes first.
    const std::string tooLate = "<video ref='asset-A' offset='39999999s' duration='1s'/>";
    EXPECT_EQ(failureOf([&] { withAngle(tooLate).engine(); }), "Invalid angle timing.");
    EXPECT_EQ(failureOf([&] { withAngle(tooLate + "<marker/>").engine(); }),
              "Camera Third contains an unsupported clip type: marker.");
}

TEST(CutEngine, gathersPictureAndSound) {
    ProjectBuilder project =
        withAngle("<video ref='asset-A' offset='4s' duration='2s'/><video ref='asset-A' "
                  "duration='1s'/><asset-clip ref='asset-A' offset='5s' duration='2s'/>");
    project.timelineStart = 250;
    project.sourceStart = 90025;
    project.multicamAttributes = "tcStart='3600s'";
    const std::string video = "<mc-source angleID='A' srcEnable='video'/>";
    project.clipContent = video + "<mc-source angleID='none'/>";
    const CutEngine engine = project.engine();
    EXPECT_EQ(engine.sourceStart, 90025);
    EXPECT_EQ(engine.timelineStart, 250);
    EXPECT_EQ(engine.coverage,
              (CoverageMap{{"A", {{0, 975}}}, {"B", {{0, 975}}}, {"C", {{75, 150}}}}));
    EXPECT_EQ(engine.audioCoverage.at("C"), (Coverage{{100, 150}}));
    EXPECT_EQ(engine.audioSource, engine.original.firstChild().next());
    EXPECT_EQ(engine.audioID, "none");
    for (const std::string& content : {video, std::string("<mc-source/><mc-source/>")}) {
        project.clipContent = content;
        EXPECT_EQ(project.engine().audioID, "") << content;
        EXPECT_FALSE(project.engine().audioSource) << content;
    }
}

TEST(FrameRange, mergesAndFindsWhatIsUncovered) {
    EXPECT_EQ(mergeRanges({{20, 24}, {5, 9}, {0, 5}, {6, 7}}), (Coverage{{0, 9}, {20, 24}}));
    CoverageBuilder builder;
    std::vector<FrameRange> ranges;
    for (std::int64_t i = 0; i < 100'000; ++i) {
        const std::int64_t start = i * 7919 % 20'000 * 10;
        ranges.push_back({start, start + 1 + i % 11});
        builder.add(ranges.back());
        builder.add({start + 9, start}); // nothing
    }
    EXPECT_EQ(builder.take(), mergeRanges(ranges));
    EXPECT_EQ(uncoveredRanges({{20, 30}, {5, 10}, {6, 7}}, 40),
              (Coverage{{0, 5}, {10, 20}, {30, 40}}));
    EXPECT_EQ(uncoveredRanges({{-9, -5}, {-5, 3}, {38, 50}, {60, 70}}, 40), (Coverage{{3, 38}}));
}

} // namespace
} // namespace shotweaver
