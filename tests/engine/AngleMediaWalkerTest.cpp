#include "engine/AngleMediaWalker.h"
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

const std::string tooDeep = "Camera Cam contains excessively nested clips.";
const std::string changed =
    "Camera Cam contains speed changes or split audio, which are not supported yet.";
const std::string circular = "Camera Cam contains a missing or circular compound clip reference.";
const std::string invalidDuration = "Camera Cam contains invalid clip duration.";
const std::string missingTime = "The export contains a missing or invalid time value.";
const std::string tooMany =
    "Camera Cam contains too many compound clips inside of each other. Simplify them in Final Cut "
    "and export XML again.";

/// "av" has picture and sound and is 60 s long.
const std::string assets =
    R"(<asset id="av" hasVideo="1" hasAudio="1" src="x" duration="60s"/>)"
    R"(<asset id="v" hasVideo="1" hasAudio="0" src="x"/><asset id="a" hasAudio="1" src="x"/>)"
    R"(<asset id="mute" hasVideo="true" hasAudio="" src="x"/>)"
    R"(<asset id="lost" name="Lost"><media-rep src=""/></asset><asset id="nameless" src=""/>)"
    R"(<asset id="endless" src="x" duration="0s"/>)";

/// The spans of everything in an angle, as "start-end" with "v" for picture and "a" for sound.
std::string spansOf(const std::string& content, const std::string& resources = "") {
    const XmlDocument document = parseXml("<x><resources>" + assets + resources +
                                          "</resources><mc-angle>" + content + "</mc-angle></x>");
    const pugi::xml_node root = document->document_element();
    const Resources lookup(root.first_child());
    AngleMediaWalker walker(lookup);
    std::vector<AngleMediaWalker::Span> spans;
    for (const pugi::xml_node child : root.last_child().children())
        walker.walk(child, "Cam", spans);
    std::string text;
    for (const AngleMediaWalker::Span& span : spans)
        text += fmt::format("{}{}-{}{}{}", text.empty() ? "" : " ", span.start, span.end,
                            span.video ? "v" : "", span.audio ? "a" : "");
    return text;
}

std::string refusalOf(const std::string& content, const std::string& resources = "") {
    return failureOf([&] { spansOf(content, resources); });
}

std::string compound(const std::string& id, const std::string& content) {
    return "<media id=\"" + id + "\"><sequence><spine>" + content + "</spine></sequence></media>";
}

/// `content` inside of so many elements.
std::string nested(int levels, const std::string& content) {
    std::string xml;
    for (int i = 0; i < levels; ++i)
        xml += "<clip>";
    xml += content;
    for (int i = 0; i < levels; ++i)
        xml += "</clip>";
    return xml;
}

TEST(AngleMediaWalker, placesClips) {
    struct Row {
        const char* label;
        std::string content;
        std::string spans;
    };
    const Row rows[] = {
        {"a clip", R"(<asset-clip ref="av" offset="10s" start="100s" duration="5s"/>)", "10-15va"},
        {"defaults", R"(<asset-clip ref="av"/>)", "0-60va"},
        {"negative times", R"(<asset-clip ref="av" offset="-3s" start="-1/2s" duration="5s"/>)",
         "-3-2va"},
        {"kinds and recordings",
         R"(<audio ref="av"/><video ref="av"/><asset-clip ref="v" duration="1s"/>)"
         R"(<asset-clip ref="a" duration="1s"/><video ref="a" duration="1s"/>)"
         R"(<asset-clip ref="mute" duration="1s"/>)",
         "0-60a 0-60v 0-1v 0-1a 0-1 0-1"},
        {"a connected clip, after its own span",
         R"(<asset-clip ref="av" start="100s" duration="5s" offset="10s">)"
         R"(<audio ref="av" offset="98s" duration="10s"/></asset-clip>)",
         "10-15va 10-15a"},
        {"a container's window",
         R"(<clip offset="20s" start="5s" duration="10s"><video ref="v" duration="8s"/>)"
         R"(<video ref="v" offset="12s" duration="8s"/><video ref="v" offset="15s" duration="1s"/>)"
         R"(<video ref="v" offset="4s" duration="1s"/></clip>)",
         "20-23v 27-30v"},
        {"a container without a duration does not clip",
         R"(<spine offset="20s" start="5s"><video ref="v" duration="80s"/></spine>)", "15-95v"},
        {"windows within windows",
         R"(<sync-clip offset="100s" start="10s" duration="10s"><clip offset="5s" duration="9s">)"
         R"(<video ref="v" offset="2s" duration="50s"/></clip></sync-clip>)",
         "100-104v"},
        {"gaps and titles hold clips",
         R"(<gap duration="5s"><video ref="v" duration="9s"/></gap><title/><live-drawing/>)",
         "0-5v"},
        {"sources",
         R"(<asset-clip ref="av" srcEnable="video"/><video ref="av" srcEnable="audio"/>)"
         R"(<asset-clip ref="av" srcEnable="none"/><audio ref="av" srcEnable="all"/>)",
         "0-60v 0-60 0-60 0-60a"},
        {"sources of everything below",
         R"(<clip srcEnable="video"><clip srcEnable="audio"><asset-clip ref="av"/></clip>)"
         R"(<asset-clip ref="av"/></clip>)",
         "0-60 0-60v"},
        {"disabled clips are not looked at",
         R"(<clip enabled="0" offset="bad"><timeMap/></clip><ref-clip enabled="0"/>)"
         R"(<clip enabled="1"><video ref="av"/></clip>)",
         "0-60v"},
        {"unknown elements below are ignored",
         R"(<asset-clip ref="av"><mc-clip><timeMap/></mc-clip><marker/><note>x</note></asset-clip>)",
         "0-60va"},
        {"unscaled conform-rate",
         R"(<asset-clip ref="av"><conform-rate scaleEnabled="0"/></asset-clip>)", "0-60va"}};
    for (const Row& row : rows)
        EXPECT_EQ(spansOf(row.content), row.spans) << row.label;
}

TEST(AngleMediaWalker, placesCompoundClips) {
    const std::string resources =
        compound("X", R"(<video ref="v" offset="1s" duration="2s"/>)") +
        compound("Y", R"(<ref-clip ref="X" offset="10s"/><video ref="v" duration="1s"/>)") +
        R"(<media id="Z"><sequence><gap/><video ref="v" duration="9s"/><spine/><spine offset="5s">)"
        R"(<video ref="v" duration="1s"/></spine></sequence><sequence><spine>)"
        R"(<video ref="v" duration="8s"/></spine></sequence></media>)" +
        compound("X", R"(<video ref="v" duration="99s"/>)");
    const std::pair<const char*, const char*> rows[] = {
        {R"(<ref-clip ref="X" offset="100s" start="2s" duration="10s"/>)", "100-101v"},
        {R"(<ref-clip ref="X"><video ref="av"/></ref-clip>)", "0-60v 1-3v"}, // own children first
        {R"(<ref-clip ref="X"/><ref-clip ref="X" offset="5s"/>)", "1-3v 6-8v"},
        {R"(<ref-clip ref="Y" offset="100s"/><ref-clip ref="X"/>)", "111-113v 100-101v 1-3v"},
        {R"(<ref-clip ref="X" srcEnable="none"/><ref-clip ref="X"/>)", "1-3 1-3v"},
        // Only spines of the first sequence.
        {R"(<ref-clip ref="Z"/>)", "5-6v"}};
    for (const auto& [content, spans] : rows)
        EXPECT_EQ(spansOf(content, resources), spans) << content;
}

TEST(AngleMediaWalker, refusesCompoundClipsThatAreMissingOrCircular) {
    const std::string clip = R"(<video ref="av"/>)";
    const std::string resources =
        compound("X", clip) + compound("M", R"(<ref-clip ref="X"/>)") +
        compound("self", R"(<clip><ref-clip ref="self"/></clip>)") +
        compound("ring", R"(<ref-clip ref="gnir"/>)") +
        compound("gnir", R"(<ref-clip ref="ring"/>)") +
        R"(<media id="bare"/><media><sequence><spine/></sequence></media>)";
    for (const char* refused :
         {R"(<ref-clip ref="none"/>)", "<ref-clip/>", R"(<ref-clip ref=""/>)",
          R"(<ref-clip ref="bare"/>)", R"(<ref-clip ref="self"/>)", R"(<ref-clip ref="gnir"/>)",
          R"(<ref-clip ref="X"><ref-clip ref="X"/></ref-clip>)",
          R"(<ref-clip ref="X"><clip><ref-clip ref="M"/></clip></ref-clip>)",
          // The same when what the inner one holds is known already.
          R"(<ref-clip ref="M"/><ref-clip ref="X"><ref-clip ref="M"/></ref-clip>)"})
        EXPECT_EQ(refusalOf(refused, resources), circular) << refused;
    for (const char* accepted :
         {R"(<ref-clip ref="M"><ref-clip ref="none" enabled="0"/></ref-clip>)",
          R"(<clip><ref-clip ref="X"/></clip><ref-clip ref="M"/><ref-clip ref="X"/>)",
          R"(<ref-clip ref="X"><video ref="av"/></ref-clip><ref-clip ref="M"/>)"})
        EXPECT_EQ(refusalOf(accepted, resources), "") << accepted;
}

TEST(AngleMediaWalker, checksInOrder) {
    const std::string lost = "No media location in export: Lost. Finish importing media in Final "
                             "Cut and export XML again.";
    const std::vector<Fault> faults{
        {"asset-clip", "mc-clip", "Camera Cam contains an unsupported clip type: mc-clip."},
        {"<gap/>", "<timeMap/>",
         "Camera Cam, clip N, contains an unsupported setting: timeMap. Speed changes are not "
         "supported yet."},
        {R"(scaleEnabled="0")", R"(scaleEnabled="1")", changed},
        {"name=", R"(audioStart="" name=)", changed},
        {R"(offset="0s")", R"(offset="1/0s")", "The export contains an invalid time value: 1/0s"},
        {R"(start="0s")", R"(start="2/0s")", "The export contains an invalid time value: 2/0s"},
        {"duration=", R"(duration="3/0s" hidden1=)",
         "The export contains an invalid time value: 3/0s"},
        {"ref=", R"(ref="none" hidden2=)", "Camera Cam, clip N, refers to a missing recording."},
        {R"("av")", R"("lost")", lost},
        {"<title/>", "<ref-clip/>", circular},
        {R"(duration="9s")", R"(duration="0s")", invalidDuration}};
    expectChecksInOrder(R"(<asset-clip name="N" ref="av" offset="0s" start="0s" duration="9s">)"
                        R"(<conform-rate scaleEnabled="0"/><gap/><title/></asset-clip>)",
                        faults, [](const std::string& content) { spansOf(content); });
}

TEST(AngleMediaWalker, refuses) {
    const std::string resources =
        compound("bad", R"(<video ref="lost"/>)") + compound("X", R"(<video ref="av"/>)");
    const std::string namelessLost = "No media location in export: Cam. Finish importing media in "
                                     "Final Cut and export XML again.";
    const std::string noRecording =
        "Camera Cam, clip video, refers to a missing recording."; // by its kind: it has no name
    const std::pair<const char*, std::string> rows[] = {
        {R"(<mc-clip enabled="0"/>)", "Camera Cam contains an unsupported clip type: mc-clip."},
        {R"(<marker/>)", "Camera Cam contains an unsupported clip type: marker."},
        {"<spine><timeMap/></spine>",
         "Camera Cam, clip spine, contains an unsupported setting: timeMap. Speed changes are not "
         "supported yet."},
        {"<gap><conform-rate/></gap>", changed},
        {R"(<gap><conform-rate scaleEnabled="0"/><conform-rate scaleEnabled=""/></gap>)", changed},
        {R"(<title audioDuration="1s"/>)", changed},
        {R"(<video ref="none"/>)", noRecording},
        {"<video/>", noRecording},
        {R"(<video ref="nameless"/>)", namelessLost},
        {R"(<video ref="v"/>)", missingTime},
        {R"(<video ref="v" duration=""/>)", missingTime},
        {R"(<video ref="endless"/>)", invalidDuration},
        {R"(<gap duration="0s"/>)", invalidDuration},
        {R"(<ref-clip ref="X" duration="-1s"/>)", invalidDuration},
        // What is below is refused before the duration.
        {R"(<gap duration="0s"><video/></gap>)", noRecording},
        {R"(<video ref="endless"><video/></video>)", noRecording},
        {R"(<ref-clip ref="bad" duration="0s"/>)",
         "No media location in export: Lost. Finish importing media in Final Cut and export XML "
         "again."},
        // A compound clip's reference, then its own children, then its content.
        {R"(<ref-clip ref="none"><video/></ref-clip>)", circular},
        {R"(<ref-clip ref="bad"><video/></ref-clip>)", noRecording},
        // Document order.
        {R"(<clip duration="0s"/><mc-clip/>)", invalidDuration},
        {R"(<clip><gap duration="0s"/><video/></clip>)", invalidDuration}};
    for (const auto& [content, sentence] : rows)
        EXPECT_EQ(refusalOf(content, resources), sentence) << content;
}

TEST(AngleMediaWalker, goesFortyLevelsDeep) {
    const std::string clip = R"(<video ref="av"/>)";
    const std::string off = R"(<clip enabled="0"/>)";
    const auto use = [](const std::string& media) { return R"(<ref-clip ref=")" + media + "\"/>"; };
    // As used at the top: 39 levels of elements below the "ref-clip".
    const std::string resources =
        compound("X", nested(37, clip)) + compound("off", nested(37, off)) +
        compound("short", nested(35, clip)) + compound("Y", use("short")) +
        R"(<media id="empty"><sequence/></media>)" + compound("bare", "");
    for (const std::string& accepted :
         {nested(39, clip), nested(39, off), nested(39, "<marker/>"), use("X"), use("off"),
          use("short") + use("Y"), use("Y") + use("short"), nested(2, use("short")),
          nested(39, use("empty")), nested(38, use("bare")),
          // Nothing below a disabled clip counts.
          R"(<clip enabled="0">)" + nested(60, clip) + "</clip>"})
        EXPECT_EQ(refusalOf(accepted, resources), "") << accepted;
    for (const std::string& refused :
         {nested(40, clip), nested(40, off), nested(40, "<clip><timeMap/></clip>"),
          nested(1, use("X")), nested(1, use("off")), nested(39, use("bare")),
          // Walked before, where it fitted.
          use("X") + nested(1, use("X")), use("off") + nested(1, use("off")),
          use("Y") + nested(1, use("Y")), use("short") + nested(1, use("Y")),
          nested(2, use("short")) + nested(1, use("Y"))})
        EXPECT_EQ(refusalOf(refused, resources), tooDeep) << refused;
}

/// Media "M1" to "M<count>", each of which holds the next one so many times, the last one a clip.
std::string chain(int count, int references) {
    std::string media;
    for (int i = 1; i <= count; ++i) {
        std::string content = i == count ? R"(<video ref="av"/>)" : "";
        for (int reference = 0; i < count && reference < references; ++reference)
            content += fmt::format(R"(<ref-clip ref="M{}"/>)", i + 1);
        media += compound(fmt::format("M{}", i), content);
    }
    return media;
}

TEST(AngleMediaWalker, endsAtOnceOnHostileCompoundClips) {
    const std::string top = R"(<ref-clip ref="M1"/>)";
    EXPECT_EQ(refusalOf(top, chain(19, 2)), "");
    EXPECT_EQ(refusalOf(top, chain(60, 2)), tooDeep);
    EXPECT_EQ(refusalOf(top, chain(10'000, 1)), tooDeep);
    EXPECT_EQ(refusalOf(top, chain(8, 50)), tooMany);
}

} // namespace
} // namespace shotweaver
