#include "engine/import/Preflight.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <random>

namespace shotweaver {
namespace {

/// What may stand at one place of an export, and what is said of it: "", or "refused: " or
/// "changed: " and how the sentence begins.
struct Variant {
    std::string xml;
    std::string finding;
};

enum Place {
    recordings,
    formats,
    locators,
    angles,
    settings,
    main,
    hidden,
    connected,
    annotations,
    trailing,
    placeCount
};

std::string clip(const std::string& kind, const std::string& content) {
    return fmt::format(
        R"(<mc-angle name="Crane" angleID="C"><{0} ref="asset-A" name="K" offset="4s" )"
        R"(duration="1s">{1}</{0}></mc-angle>)",
        kind, content);
}

std::string source(const std::string& id, const char* enabled, const std::string& content) {
    return fmt::format(R"(<mc-source angleID="{}" srcEnable="{}">{}</mc-source>)", id, enabled,
                       content);
}

const std::string fade = R"(<param name="amount"><fadeIn duration="1s"/></param>)";
const std::string shape =
    R"(<object-tracker><tracking-shape id="s1" dataLocator="d1"/></object-tracker>)";
const std::string follows = R"(<adjust-transform tracking="s1"/>)";
const std::string role = R"(<audio-role-source role="dialogue">)";
const std::string order = ", an order in which Final Cut does not read them: it refuses the XML";

const std::vector<Variant> variants[placeCount] = {
    // recordings
    {{"", ""},
     {R"(<asset id="u" name="U" src="file:///u.mov"/>)", ""},
     {R"(<asset id="u" name="U"/>)", "refused: The recording “U” has no media file, and no angle"},
     {R"(<asset id="u" name="U"><media-rep src="file:///u"/><media-rep/></asset>)",
      "refused: The recording “U” has a media file that is nowhere"},
     {R"(<asset id="u" name="U"><media-rep src="file:///u"/><media-rep src=""/></asset>)", ""},
     {R"(<asset id="u" name="U"><media-rep src=""/></asset>)",
      "changed: The recording “U” has an empty file location"},
     {R"(<asset id="u" name="U"><media-rep src="./u.mov"/></asset>)",
      "changed: The recording “U” lies at “./u.mov”"},
     {R"(<asset id="asset-B" name="U" src="/u.mov"/>)",
      "refused: The recording “U” has the identifier “asset-B”, which the recording “B recording”"},
     {R"(<effect id="A1" name="E"/><effect id="A1" name="F"/>)",
      "refused: The effect “F” has the identifier “A1”, which the effect “E” has already"}},
    // formats
    {{"", ""},
     {R"(<format id="f1"/><asset id="v" name="V" format="f1" src="file:///v.mov"/>)", ""},
     {R"(<format id="f1" name="FFVideoFormatRateUndefined"/>)"
      R"(<asset id="v" name="V" hasVideo="1" format="f1" src="file:///v.mov"/>)",
      ""},
     {R"(<format id="f1"/><asset id="v" name="V" hasVideo="1" format="f1" src="file:///v.mov"/>)",
      "refused: The format of the recording “V” has no frame rate"},
     {R"(<asset id="v" name="V" hasVideo="1" format="f9" src="file:///v.mov"/>)",
      "refused: The recording “V” refers to “f9”, which the XML of the edit does not hold"}},
    // locators
    {{R"(<locator id="d1" url="file:///d"/>)", ""},
     {R"(<locator id="d1" url="Data/d"/>)",
      "changed: The tracking or analysis data at “Data/d” is counted from the imported XML"}},
    // angles
    {{"", ""},
     {clip("asset-clip", "<note/><adjust-crop/><adjust-EQ/><adjust-volume/><title "
                         "ref='r1'/><caption role='r'/><rating/><marker/><audio-channel-source/>"
                         "<filter-video-mask/><filter-video ref='r1'/><filter-audio ref='r1'/>"
                         "<filter-audio ref='r1'/><metadata/>"),
      ""},
     {clip("sync-clip", "<spine/><sync-source>" + role +
                            "<adjust-loudness/><adjust-matchEQ/><adjust-voiceIsolation/>"
                            "<adjust-volume/><mute/><mute/></audio-role-source></sync-source>"),
      ""},
     {clip("asset-clip", "<marker/><note/>"),
      "refused: The clip “K” at 00:00:04:00 in the angle Crane has “note” after “marker”" + order +
          "."},
     {clip("sync-clip", "<metadata/><metadata/>"),
      "refused: The synchronized clip “K” at 00:00:04:00 in the angle Crane has a second "
      "“metadata”"},
     {clip("sync-clip", "<sync-source>" + role +
                            "<adjust-volume/><adjust-voiceIsolation/></audio-role-source>"
                            "</sync-source>"),
      "refused: The synchronized clip “K” at 00:00:04:00 in the angle Crane has “adjust-voiceIsol"},
     {clip("asset-clip", "<adjust-EQ/><adjust-matchEQ/>"),
      "refused: The clip “K” at 00:00:04:00 in the angle Crane has “adjust-matchEQ” after"},
     {clip("asset-clip", "<filter-video ref='E9'/>"),
      "refused: The clip “K” at 00:00:04:00 in the angle Crane refers to “E9”"},
     {"<metadata/>" + clip("gap", ""), "refused: The media “m1” has “mc-angle” after “metadata”"}},
    // settings
    {{"", ""},
     {"<note/><conform-rate scaleEnabled='0'/><adjust-volume/><adjust-panner/>", ""},
     {"<adjust-panner/><rating/><note/>",
      "refused: The timeline clip has “note” after “adjust-panner”"},
     {"<note/><note/>", "refused: The timeline clip has a second “note”"}},
    // main: picture and sound
    {{source("A", "all", ""), ""},
     {source("A", "all", shape + "<adjust-crop/>" + follows + role + "</audio-role-source>"), ""},
     {source("A", "all", "<adjust-crop/>" + follows),
      "refused: The picture of A on the timeline clip refers to “s1”, which the XML of the edit "
      "does not hold: Final Cut refuses it as soon as A is shown."},
     {source("A", "all", "<adjust-transform/><adjust-crop/>"),
      "refused: The picture of A on the timeline clip has “adjust-crop” after “adjust-transform”" +
          order + " as soon as A is shown."},
     {source("A", "all", "<adjust-blend>" + fade + "</adjust-blend>"),
      "changed: The picture of A on the timeline clip fades: the fade repeats"},
     {source("A", "all", role + "<mute/><filter-audio ref='r1'/></audio-role-source>"),
      "refused: The sound of A on the timeline clip has “filter-audio” after “mute”" + order +
          " when A is the audio."},
     {source("A", "all", "") + source("A", "none", "<adjust-transform/><adjust-crop/>"), ""},
     {source("A", "all", "") + source("X", "all", "<adjust-transform/><adjust-crop/>"), ""}},
    // hidden
    {{"", ""},
     {source("B", "none", role + "</audio-role-source>"), ""},
     {source("B", "video", "<adjust-crop/>"), ""},
     {source("B", "none", "<adjust-crop/>"),
      "changed: B has effects on the timeline clip; they stay only on shots of that camera. Grade "
      "in the angle editor instead."}},
    // connected
    {{"", ""},
     {R"(<title ref="r1" offset="1s"><text><text-style ref="t1"/></text><text-style-def id="t1"/>)"
      R"(<object-tracker><tracking-shape id="s2"/></object-tracker>)"
      R"(<adjust-transform tracking="s2"/></title><caption offset="2s" role="SRT?en"/>)",
      ""},
     {R"(<title ref="r1" name="T" offset="1s"><text-style-def id="r1"/></title>)",
      "refused: The text style “r1” at 00:00:01:00 has the identifier “r1”, which the format"},
     {R"(<title ref="r9" name="T" offset="1s"/>)",
      "refused: The title “T” at 00:00:01:00 refers to “r9”"},
     {R"(<title ref="r1" name="T" offset="1s"><adjust-transform tracking="s7"/></title>)",
      "refused: The title “T” at 00:00:01:00 refers to “s7”"},
     {R"(<spine offset="2s"><caption name="C"/></spine>)",
      "changed: The caption “C” at 00:00:02:00 has no role"}},
    // annotations
    {{"", ""},
     {R"(<marker start="1/3s" value="M"/>)",
      "refused: The marker “M” on the multicam clip would stop an export: This prototype needs"}},
    // trailing
    {{"", ""},
     {"<filter-audio ref='r1'/><filter-audio ref='r1'/><metadata/>", ""},
     {"<metadata/><filter-audio ref='r1'/>",
      "refused: The timeline clip has “filter-audio” after “metadata”"}},
};

test::ProjectBuilder builderWith(const std::vector<std::string>& parts) {
    test::ProjectBuilder project;
    project.extraResources = parts[recordings] + parts[formats] + parts[locators];
    project.extraAngles = parts[angles];
    project.clipContent = parts[settings] + parts[main] + parts[hidden] + parts[connected] +
                          parts[annotations] + parts[trailing];
    return project;
}

/// The findings, each cut to as much as is expected of it.
std::vector<std::string> findings(const test::ProjectBuilder& project,
                                  const std::vector<std::string>& expected) {
    std::vector<std::string> found;
    for (const Finding& finding : preflight(Project(project.xml()))) {
        found.push_back((finding.kind == Finding::Kind::refused ? "refused: " : "changed: ") +
                        finding.text);
        EXPECT_TRUE(finding.text.ends_with('.')) << finding.text;
        if (found.size() <= expected.size())
            found.back().resize(std::min(found.back().size(), expected[found.size() - 1].size()));
    }
    return found;
}

TEST(Preflight, tellsWhatIsRefusedOrChangedInTheOrderOfTheDocument) {
    std::mt19937 chance(7);
    for (int turn = 0; turn < 3000; ++turn) {
        std::vector<std::string> parts;
        std::vector<std::string> expected;
        for (const std::vector<Variant>& choices : variants) {
            // Every other time without harm.
            const Variant& chosen = choices[chance() % 2 == 0 ? 0 : chance() % choices.size()];
            parts.push_back(chosen.xml);
            if (!chosen.finding.empty()) expected.push_back(chosen.finding);
        }
        ASSERT_EQ(findings(builderWith(parts), expected), expected) << turn;
    }
}

TEST(Preflight, saysWhatConcernsAWholeExport) {
    test::ProjectBuilder project;
    project.rootAttributes = R"(version="1.5")";
    std::vector<std::string> expected{"refused: This XML has FCPXML version 1.5"};
    EXPECT_EQ(findings(project, expected), expected);
    project.rootAttributes = "";
    expected = {"refused: The imported XML does not state its FCPXML version"};
    EXPECT_EQ(findings(project, expected), expected);
    project = {};
    project.projectAttributes = R"(id="asset-A" name="P")";
    // A shape of one camera that another one and a title follow.
    project.clipContent = source("A", "all", follows) + source("B", "none", shape) +
                          R"(<title ref="r1" name="T" offset="1s">)" + follows + "</title>";
    project.extraResources = R"(<locator id="d1" url="file:///d"/>)";
    const std::string another = " follows a tracked shape of another camera on the timeline clip";
    expected = {"refused: The project has the identifier “asset-A”, which the recording “A",
                "refused: The picture of A on the timeline clip" + another,
                "changed: B has effects", "refused: The title “T” at 00:00:01:00" + another};
    EXPECT_EQ(findings(project, expected), expected);
}

} // namespace
} // namespace shotweaver
