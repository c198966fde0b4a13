#include "engine/CutEngine.h"
#include "platform/PlatformError.h"
#include "platform/XmlIntake.h"
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

const std::string notFilling = "Use one multicam clip filling the project timeline.";
const std::string changedClip =
    "Speed changes, split audio and disabled main multicam clips are not supported yet.";
const std::string formatsDiffer =
    "The multicam and project need matching frame rate, dimensions and colour format.";
const std::string offGrid = "This prototype needs timing aligned to the project frame rate.";
const std::string outOfRange = "This time value exceeds the prototype's supported range.";
const std::string invalidTiming = "Invalid angle timing.";

std::string refusalOf(const std::string& xml) {
    return failureOf([&] { CutEngine engine(xml); });
}

std::string text(const std::vector<FrameRange>& ranges) {
    std::string result;
    for (const FrameRange& range : ranges)
        result +=
            fmt::format("{}[{},{})", result.empty() ? "" : " ", range.lowerBound, range.upperBound);
    return result;
}

/// A project with a third angle "C" of the given content.
ProjectBuilder withAngle(const std::string& content) {
    ProjectBuilder project;
    project.extraAngles = R"(<mc-angle angleID="C" name="Third">)" + content + "</mc-angle>";
    return project;
}

std::string clip(const std::string& offset, const std::string& duration) {
    return fmt::format(R"(<asset-clip ref="asset-A" offset="{}" duration="{}"/>)", offset,
                       duration);
}

std::string pictureOf(const std::string& content) {
    return text(withAngle(content).engine().coverage.at("C"));
}

TEST(CutEngine, keepsTheProjectInFrames) {
    ProjectBuilder project;
    project.frameDuration = "1001/30000s";
    project.timelineStart = 107892;
    project.sourceStart = 30;
    project.length = 500;
    project.angles[0].hasAudio = false;
    project.angles[1].hasVideo = false;
    project.clipContent = R"(<mc-source angleID="elsewhere"/>)";
    const CutEngine engine = project.engine();
    EXPECT_EQ(engine.frameNumerator, 1001);
    EXPECT_EQ(engine.frameDenominator, 30000);
    EXPECT_EQ(engine.length, 500);
    EXPECT_EQ(engine.sourceStart, 30);
    EXPECT_EQ(engine.timelineStart, 107892);
    EXPECT_EQ(engine.audioID, "elsewhere");
    EXPECT_EQ(engine.original.root(), *engine.document);
    EXPECT_STREQ(engine.original.name(), "mc-clip");
    EXPECT_EQ(engine.original.parent().parent(), engine.sequence);
    EXPECT_EQ(engine.sequence.parent(), engine.project);
    EXPECT_EQ(engine.coverage, (CoverageMap{{"A", {{0, 500}}}, {"B", {}}}));
    EXPECT_EQ(engine.audioCoverage, (CoverageMap{{"A", {}}, {"B", {{0, 500}}}}));
}

TEST(CutEngine, checksInOrder) {
    ProjectBuilder project = withAngle(clip("1s", "2s") + "<title/>");
    project.extraResources =
        R"(<format id="r2" frameDuration="2/50s" width="1920" height="1080"/>)";
    const std::string xml =
        replaced(project.xml(), R"(<multicam format="r1")", R"(<multicam format="r2")");
    const std::vector<Fault> faults{
        {R"(angleID="C")", R"(angleID="A")",
         "The multicam needs at least two uniquely identified angles."},
        {"frameDuration=", R"(frameDuration="0.04s" hidden1=)", "Invalid XML time: 0.04s"},
        {R"("1/25s")", R"("1/1000001s")", "Unsupported frame rate."},
        {R"("0/25s" duration=)", R"("0/25s" duration="1/24s" hidden2=)", offGrid},
        {R"("0/25s" start=)", R"("0/25s" start="x" hidden3=)", "Invalid XML time: x"},
        {R"(<mc-clip ref="m1" offset=)", R"(<mc-clip ref="m1" offset="1000000000s" hidden4=)",
         outOfRange},
        {R"(duration="1000/25s" name)", R"(duration="0s" name)", notFilling},
        {R"(format="r1" duration=)", R"(format="r1" duration="40.0s" hidden5=)",
         "Invalid XML time: 40.0s"},
        {R"(duration="1000/25s" tcStart)", R"(duration="1001/25s" tcStart)", notFilling},
        {R"(/25s" tcStart=)", R"(/25s" tcStart="1/26s" hidden6=)", offGrid},
        {R"(tcStart="0/25s")", R"(tcStart="1/25s")", notFilling},
        {R"(name="MC")", R"(name="MC" enabled="0")", changedClip},
        {R"(<multicam format="r2")", "<multicam", formatsDiffer},
        {"2/50s", "0.5/25s", "Invalid XML time: 0.5/25s"},
        {R"("2/50s" width=)", R"("2/50s" hidden7=)", formatsDiffer},
        {R"(tcStart="0s")", R"(tcStart="1/30s")", offGrid},
        {R"(<mc-angle name="A" angleID="A">)", R"(<mc-angle name="A" angleID="A"><marker/>)",
         "Camera A contains an unsupported clip type: marker."},
        {R"(offset="0/25s" name="A clip")", R"(offset="1e9s" name="A clip")", invalidTiming},
        {R"(id="asset-B")", R"(id="other")",
         "Camera B, clip B clip, refers to a missing recording."},
        {"<title/>", "<marker/>", "Camera Third contains an unsupported clip type: marker."},
        {R"(offset="1s")", R"(offset="1e9s")", invalidTiming}};
    expectChecksInOrder(xml, faults, [](const std::string& bytes) { CutEngine engine(bytes); });
    EXPECT_THROW(CutEngine("<fcpxml>"), PlatformError);
}

TEST(CutEngine, supportsFrameDurationsOfAMillion) {
    const auto refusal = [](const std::string& frameDuration, const std::string& length) {
        ProjectBuilder project;
        project.angles = {{"A", "A", {}}, {"B", "B", {}}};
        const std::string xml = replaced(project.xml(), R"(frameDuration="1/25s")",
                                         "frameDuration=\"" + frameDuration + "\"");
        return refusalOf(replaced(replaced(xml, R"("1000/25s")", "\"" + length + "\""),
                                  R"("1000/25s")", "\"" + length + "\""));
    };
    EXPECT_EQ(refusal("1001/30000s", "1001/30000s"), "");
    EXPECT_EQ(refusal("1/1000000s", "1s"), "");
    EXPECT_EQ(refusal("1000000s", "1000000s"), "");
    EXPECT_EQ(refusal("4e-2s", "1s"), "Invalid XML time: 4e-2s"); // though the import reads it
    for (const char* refused : {"1/1000001s", "1000001s", "1000001/1000001s"})
        EXPECT_EQ(refusal(refused, "1s"), "Unsupported frame rate.") << refused;
}

TEST(CutEngine, wantsTheClipToFillTheTimeline) {
    ProjectBuilder project;
    project.timelineStart = 90000;
    const std::string xml = project.xml();
    const std::string offset = R"( offset="90000/25s")";
    EXPECT_EQ(refusalOf(replaced(xml, offset, R"( offset="3600s")")), "");
    EXPECT_EQ(refusalOf(replaced(xml, offset, "")), notFilling);
    EXPECT_EQ(refusalOf(replaced(replaced(xml, offset, ""), R"(tcStart="90000/25s")", "")), "");
    EXPECT_EQ(refusalOf(replaced(xml, R"(duration="1000/25s" name="MC")", R"(name="MC")")),
              notFilling);
    EXPECT_EQ(refusalOf(replaced(xml, R"(duration="1000/25s" name="MC")",
                                 R"(duration="999/25s" name="MC")")),
              notFilling);
    EXPECT_EQ(CutEngine(replaced(xml, R"(start="0/25s")", "")).sourceStart, 0);
}

TEST(CutEngine, refusesAChangedClip) {
    const std::pair<const char*, const char*> changes[] = {
        {R"(enabled="0")", ""},
        {R"(audioStart="0s")", ""},
        {R"(audioStart="")", ""},
        {R"(audioDuration="40s")", ""},
        {"", "<timeMap/>"},
        {"", "<conform-rate/>"},
        {"", R"(<conform-rate scaleEnabled="0"/><conform-rate scaleEnabled="1"/>)"}};
    for (const auto& [attributes, content] : changes) {
        ProjectBuilder project;
        project.clipAttributes = attributes;
        project.clipContent = content;
        EXPECT_EQ(refusalOf(project.xml()), changedClip) << attributes << content;
    }
    ProjectBuilder project;
    project.clipAttributes = R"(enabled="1")";
    project.clipContent = R"(<conform-rate scaleEnabled="0"/><gap><timeMap/></gap><!--timeMap-->)";
    EXPECT_EQ(refusalOf(project.xml()), "");
}

TEST(CutEngine, findsTheOneAudioSource) {
    struct Row {
        const char* content;
        const char* id;
        bool isFound;
    };
    const Row rows[] = {
        {R"(<mc-source angleID="B"/>)", "B", true},
        {R"(<mc-source angleID="A" srcEnable="video"/><mc-source angleID="B" srcEnable="audio"/>)",
         "B", true},
        {R"(<mc-source srcEnable="all"/><mc-source angleID="A" srcEnable="none"/>)", "", true},
        {"", "", false},
        {R"(<mc-source angleID="A" srcEnable="video"/>)", "", false},
        {R"(<mc-source angleID="A" srcEnable=""/>)", "", false},
        {R"(<mc-source angleID="A"/><mc-source angleID="A" srcEnable="audio"/>)", "", false}};
    for (const Row& row : rows) {
        ProjectBuilder project;
        project.clipContent = row.content;
        const CutEngine engine = project.engine();
        EXPECT_EQ(engine.audioID, row.id) << row.content;
        EXPECT_EQ(!engine.audioSource.empty(), row.isFound) << row.content;
    }
}

bool match(const std::string& project, const std::string& multicam) {
    const XmlDocument document =
        parseXml("<x><format " + project + "/><format " + multicam + "/></x>");
    const pugi::xml_node formats = document->document_element();
    return formatsMatch(formats.first_child(), formats.last_child());
}

TEST(CutEngine, comparesFormats) {
    const std::string id = R"(id="1" )";
    const std::pair<const char*, const char*> same[] = {
        {"", ""},
        {R"(frameDuration="1001/30000s")", R"(frameDuration="2002/60000s")"},
        {"", R"(frameDuration="0/9s")"},
        {"", R"(fieldOrder="progressive" paspH="1" paspV="1")"},
        {R"(width="1920" name="a")", R"(width="1920" name="b")"},
        {R"f(colorSpace="1-1-1 (Rec. 709)")f", R"f(colorSpace="1-1-1 (other (name))")f"},
        {R"f(colorSpace="1-1-1")f", R"f(colorSpace="1-1-1 (Rec. 709)")f"},
        {R"f(colorSpace="")f", R"f(colorSpace=" (x)")f"}};
    for (const auto& [a, b] : same) {
        EXPECT_TRUE(match(id + a, b)) << a << " and " << b;
        EXPECT_TRUE(match(b, id + a)) << b << " and " << a;
    }
    const std::pair<const char*, const char*> different[] = {
        {R"(frameDuration="1/25s")", R"(frameDuration="1/50s")"},
        {R"(frameDuration="1/25s")", ""},
        // Equal, but too large to be told so.
        {R"(frameDuration="9223372036854775807/2s")", R"(frameDuration="9223372036854775807/2s")"},
        {R"(width="1920")", R"(width="1280")"},
        {R"(width="")", ""},
        {R"(height="1080")", ""},
        {R"(fieldOrder="upper first")", ""},
        {R"(fieldOrder="")", ""},
        {R"(paspH="1.0")", ""},
        {R"(paspV="2")", ""},
        {R"(colorSpace="1-1-1")", ""},
        {R"(colorSpace="")", ""},
        {R"f(colorSpace="1-1-1 (x)")f", R"f(colorSpace="9-1-6 (x)")f"},
        {R"f(colorSpace="1-1-1(x)")f", R"f(colorSpace="1-1-1(y)")f"},
        {R"(projection="360")", ""},
        {R"(stereoscopic="mono")", ""}};
    for (const auto& [a, b] : different) {
        EXPECT_FALSE(match(id + a, b)) << a << " and " << b;
        EXPECT_FALSE(match(b, id + a)) << b << " and " << a;
    }
    // One and the same identifier is enough, and so is none.
    EXPECT_TRUE(match(id + R"( frameDuration="bad")", id + R"( width="1")"));
    EXPECT_TRUE(match(R"(frameDuration="bad")", R"(width="1")"));
    EXPECT_EQ(failureOf([&] { match(id + R"( frameDuration="a")", R"(frameDuration="b")"); }),
              "Invalid XML time: a");
    EXPECT_EQ(failureOf([&] { match(id, R"(frameDuration="b")"); }), "Invalid XML time: b");
}

TEST(CutEngine, coversFramesThatAreThereWholly) {
    // In frames of 1/25 s, with a tolerance of a millionth of a frame at either end.
    struct Row {
        const char* offset;
        const char* duration;
        const char* picture;
    };
    const Row rows[] = {{"1s", "2s", "[25,75)"},
                        {"1.02s", "1.96s", "[26,74)"},
                        {"1.00000002s", "2s", "[25,75)"}, // half a millionth late
                        {"1.00000008s", "2s", "[26,75)"}, // two millionths late
                        {"0s", "2.99999998s", "[0,75)"},
                        {"0s", "2.99999992s", "[0,74)"},
                        {"1s", "0.04s", "[25,26)"},
                        {"1.01s", "0.06s", ""}, // parts of two frames
                        {"-5s", "6s", "[0,25)"},
                        {"39s", "100s", "[975,1000)"},
                        {"-100s", "1000s", "[0,1000)"},
                        {"-2s", "2s", ""},
                        {"40s", "2s", ""}};
    for (const Row& row : rows)
        EXPECT_EQ(pictureOf(clip(row.offset, row.duration)), row.picture)
            << row.offset << " for " << row.duration;
}

TEST(CutEngine, refusesAngleTimesWithoutMeasure) {
    // 40,000,000 s are 1,000,000,000 frames.
    EXPECT_EQ(refusalOf(withAngle(clip("39999999s", "0.9s")).xml()), "");
    EXPECT_EQ(refusalOf(withAngle(clip("-39999999s", "1s")).xml()), "");
    for (const auto& [offset, duration] : {std::pair("39999999s", "1s"),
                                           {"-40000000s", "1s"},
                                           {"0s", "1e300s"},
                                           {"1e308s", "1e308s"}})
        EXPECT_EQ(refusalOf(withAngle(clip(offset, duration)).xml()), invalidTiming) << offset;
    // Though it has neither picture nor sound.
    EXPECT_EQ(
        refusalOf(
            withAngle(R"(<asset-clip ref="asset-A" srcEnable="none" duration="1e9s"/>)").xml()),
        invalidTiming);
}

TEST(CutEngine, placesAnglesByTheMulticamsStart) {
    ProjectBuilder project = withAngle(clip("2s", "8s"));
    project.sourceStart = 100;
    EXPECT_EQ(text(project.engine().coverage.at("C")), "[0,150)");

    project = withAngle(clip("2s", "8s"));
    project.sourceStart = 90025;
    project.multicamAttributes = R"(tcStart="3600s")";
    EXPECT_EQ(text(project.engine().coverage.at("C")), "[25,225)");

    project.multicamAttributes = R"(tcStart="3602s")"; // the clip starts before the multicam does
    EXPECT_EQ(text(project.engine().coverage.at("C")), "[75,275)");

    project.multicamAttributes = "";
    EXPECT_EQ(text(project.engine().coverage.at("C")), "");
}

TEST(CutEngine, gathersPictureAndSoundOfAnAngle) {
    EXPECT_EQ(pictureOf(clip("0s", "10/25s") + clip("10/25s", "10/25s")), "[0,20)");
    EXPECT_EQ(pictureOf(clip("0s", "10/25s") + clip("11/25s", "9/25s")), "[0,10) [11,20)");
    EXPECT_EQ(pictureOf(clip("4s", "2s") + clip("0s", "1s") + clip("5s", "2s")),
              "[0,25) [100,175)");

    const CutEngine engine =
        withAngle(R"(<video ref="asset-A" duration="1s"/><audio ref="asset-A" duration="2s"/>)"
                  R"(<asset-clip ref="asset-A" offset="3s" duration="1s" srcEnable="audio"/>)")
            .engine();
    EXPECT_EQ(text(engine.coverage.at("C")), "[0,25)");
    EXPECT_EQ(text(engine.audioCoverage.at("C")), "[0,50) [75,100)");

    const CutEngine silent = withAngle("<gap/><title/>").engine();
    EXPECT_EQ(silent.coverage.at("C"), Coverage{});
    EXPECT_EQ(silent.audioCoverage.at("C"), Coverage{});
}

TEST(CutEngine, namesAnAngleByItsIdentifierForWantOfAName) {
    ProjectBuilder project;
    for (const auto& [attributes, camera] : {std::pair(R"(angleID="C")", "C"),
                                             {R"(angleID="C" name="")", ""},
                                             {R"(angleID="C" name="Third")", "Third"}}) {
        project.extraAngles = std::string("<mc-angle ") + attributes + "><marker/></mc-angle>";
        EXPECT_EQ(refusalOf(project.xml()),
                  fmt::format("Camera {} contains an unsupported clip type: marker.", camera));
    }
}

TEST(FrameRange, mergesRanges) {
    using Ranges = std::vector<FrameRange>;
    EXPECT_EQ(text(mergeRanges({})), "");
    EXPECT_EQ(text(mergeRanges(Ranges{{20, 24}, {5, 9}, {0, 5}})), "[0,9) [20,24)");
    EXPECT_EQ(text(mergeRanges(Ranges{{0, 10}, {11, 20}})), "[0,10) [11,20)");
    EXPECT_EQ(text(mergeRanges(Ranges{{0, 30}, {5, 10}, {8, 12}, {30, 31}})), "[0,31)");
    EXPECT_EQ(text(mergeRanges(Ranges{{3, 4}, {3, 9}, {3, 4}})), "[3,9)");
}

TEST(FrameRange, findsWhatIsUncovered) {
    using Ranges = std::vector<FrameRange>;
    struct Row {
        Ranges ranges;
        std::int64_t length;
        const char* open;
    };
    const Row rows[] = {{{{20, 30}, {5, 10}}, 40, "[0,5) [10,20) [30,40)"},
                        {{}, 40, "[0,40)"},
                        {{}, 0, ""},
                        {{{0, 40}}, 40, ""},
                        {{{-5, 3}, {38, 50}}, 40, "[3,38)"},
                        {{{-9, -5}, {50, 60}}, 40, "[0,40)"},
                        {{{0, 30}, {5, 10}, {20, 35}}, 40, "[35,40)"}};
    for (const Row& row : rows)
        EXPECT_EQ(text(uncoveredRanges(row.ranges, row.length)), row.open) << text(row.ranges);
}

} // namespace
} // namespace shotweaver
