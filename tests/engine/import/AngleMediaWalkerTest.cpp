#include "engine/import/AngleMediaWalker.h"
#include "engine/import/XmlAccess.h"
#include "platform/XmlIntake.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver {
namespace {

using test::compoundMedia;

const std::string changed =
    "Camera Cam contains speed changes or split audio, which are not supported yet.";
const std::string circular = "Camera Cam contains a missing or circular compound clip reference.";

/// "av" has picture and sound and is 60 s long. "X" holds a clip, "Y" uses "X".
const std::string resources =
    "<asset id='av' hasVideo='1' hasAudio='1' src='x' duration='60s'/>"
    "<asset id='v' hasVideo='1' hasAudio='0' src='x'/><asset id='a' hasAudio='1' src='x'/>"
    "<asset id='nameless' src=''/>" +
    compoundMedia("X", "<video ref='v' offset='1s' duration='2s'/>") +
    compoundMedia("Y", "<ref-clip ref='X' offset='10s'/>") + "<media id='bare'/>" +
    compoundMedia("self", "<ref-clip ref='self'/>") +
    "<media id='Z'><sequence><video ref='none'/><spine/><spine offset='5s'><video ref='v' "
    "duration='1s'/></spine></sequence><sequence><spine><mc-clip/></spine></sequence></media>";

/// What an angle holds, as "start-end" with "v" for picture and "a" for sound, or the refusal.
std::string read(const std::string& content, const std::string& more = "") try {
    const auto document = parseXml("<x><resources>" + resources + more + "</resources><mc-angle>" +
                                       content + "</mc-angle></x>",
                                   fcpxmlVocabulary);
    const XmlNode root = document->documentElement();
    const Resources lookup(root.firstChild());
    AngleMediaWalker walker(lookup);
    std::string text;
    const auto add = [&](const AngleMediaWalker::Span& span) {
        text += fmt::format(" {}-{}{}{}", span.start, span.end, span.video ? "v" : "",
                            span.audio ? "a" : "");
    };
    for (const XmlNode child : root.firstChild().next().children())
        walker.walk(child, "Cam", add);
    return text.erase(0, 1);
} catch (const std::exception& error) {
    return error.what();
}

TEST(AngleMediaWalker, placesClipsOrRefusesThem) {
    const std::string lost = "Camera Cam, clip video, refers to a missing recording.";
    const std::pair<std::string, std::string> rows[] = {
        {"<audio ref='av'/><video ref='av'/><video ref='a' duration='1s'/>", "0-60a 0-60v 0-1"},
        {"<asset-clip ref='av' start='100s' duration='5s' offset='-10s'><mc-clip><timeMap/>"
         "</mc-clip><marker/><audio ref='av' offset='98s' duration='10s'/></asset-clip>",
         "-10--5va -10--5a"},
        {"<clip offset='20s' start='5s' duration='10s'><video ref='av' duration='8s'/>"
         "<video ref='av' offset='12s'/><video ref='av' offset='15s'/></clip>",
         "20-23v 27-30v"},
        {"<gap offset='20s' start='5s'><video ref='v' duration='80s'/></gap><title/>", "15-95v"},
        {"<spine srcEnable='video'><sync-clip srcEnable='audio'><asset-clip ref='av'/></sync-clip>"
         "<asset-clip ref='av'/></spine><audio ref='av' srcEnable='none'/>",
         "0-60 0-60v 0-60"},
        {"<clip enabled='0' offset='bad'><timeMap/></clip><ref-clip enabled='0'/>", ""},
        {"<ref-clip ref='X' srcEnable='none'><video ref='av'/></ref-clip><ref-clip ref='X'/>",
         "0-60 1-3 1-3v"},
        {"<ref-clip ref='X' start='1s' duration='1s'/><ref-clip ref='X' offset='5s'/>",
         "0-1v 6-8v"},
        {"<ref-clip ref='Y' offset='100s'/><ref-clip ref='X'/>", "111-113v 1-3v"},
        {"<ref-clip ref='Z'/>", "5-6v"}, // only spines of the first sequence
        {"<gap><conform-rate/></gap>", changed},
        {"<title audioDuration='1s'/>", changed},
        {"<video ref='nameless'/>", "No media location in export: Cam. Finish importing media in "
                                    "Final Cut and export XML again."},
        {"<video ref='v'/>", "The export contains a missing or invalid time value."},
        {"<gap duration='0s'><video/></gap>", lost}, // what is below comes first
        {"<clip><gap duration='0s'/><video/></clip>", "Camera Cam contains invalid clip duration."},
        {"<ref-clip ref='self'><video/></ref-clip>", lost},
        {"<ref-clip ref='bare'/>", circular},
        {"<ref-clip ref='Y'/><ref-clip ref='X'><ref-clip ref='Y'/></ref-clip>", circular}};
    for (const auto& [content, result] : rows)
        EXPECT_EQ(read(content), result) << content;
}

/// `content` inside of so many elements.
std::string nested(int levels, std::string content) {
    for (int i = 0; i < levels; ++i)
        content = "<clip>" + content + "</clip>";
    return content;
}

TEST(AngleMediaWalker, goesFortyLevelsDeep) {
    const std::string tooDeep = "Camera Cam contains excessively nested clips.";
    const std::string clip = "<clip enabled='0'/>";
    const std::string low = "<ref-clip ref='low'/>"; // 38 levels
    const std::string media = compoundMedia("low", nested(35, clip));
    for (const std::string& accepted : {nested(39, clip), nested(2, low)})
        EXPECT_EQ(read(accepted, media), "") << accepted;
    for (const std::string& refused : {nested(40, clip), nested(40, "<clip><timeMap/></clip>"),
                                       nested(3, low), low + nested(3, low)})
        EXPECT_EQ(read(refused, media), tooDeep) << refused;
}

TEST(AngleMediaWalker, readsTwentyMillionElements) {
    const std::string media =
        test::costlyMedia() + compoundMedia("comments", test::repeated(10'000, "<!---->")) +
        compoundMedia("moved", nested(30, test::repeated(100, "<video ref='av'/>")));
    const std::string uses = test::repeated(19'900, "<ref-clip ref='costly'/>");
    EXPECT_EQ(read(uses, media), "");
    for (const std::string& more : std::vector<std::string>{"costly", "comments", "moved"})
        EXPECT_EQ(read(uses + test::repeated(200, "<ref-clip ref='" + more + "'/>"), media),
                  "The compound clips in this export are nested too often to be read. Simplify "
                  "them in Final Cut and export XML again.")
            << more;
}

} // namespace
} // namespace shotweaver
