#include "planning/CutListCsv.h"
#include "engine/generation/EditChecks.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

/// 40 seconds from 01:00:00:00 on. Two cameras have one name; one is named like another's label.
Project project() {
    ProjectBuilder builder;
    builder.timelineStart = 90000;
    builder.extraResources = R"(<asset id="a7" src="x" hasVideo="1" duration="40s"><metadata>)"
                             R"(<md key="com.apple.proapps.mio.cameraName" value="A7"/>)"
                             R"(</metadata></asset>)";
    builder.angles = {{"w", "Wide", {{0, 1000}}},
                      {"p", "Pul&quot;pit, left", {{0, 1000}}},
                      {"1", "Cam", {{0, 1000}}},
                      {"2", "cam", {{0, 1000}}},
                      {"s", "Sound", {{0, 1000}}, false}};
    builder.extraAngles =
        R"(<mc-angle angleID="b" name="Band"><asset-clip ref="a7" offset="0s" duration="40s"/></mc-angle>)"
        R"x(<mc-angle angleID="x" name="Band (A7)"><video ref="a7" offset="0s" duration="40s"/></mc-angle>)x";
    builder.clipContent = R"(<mc-source angleID="w" srcEnable="all"/>)";
    return Project(builder.xml());
}

/// "w 0-100 p 100-1000 kept" or the refusal.
std::string read(const std::string& csv) try {
    const CsvCutList list = readCutListCsv(csv, project(), countingUUIDs());
    std::string text;
    for (const Cut& cut : list.cuts)
        text += fmt::format("{} {}-{}{} ", cut.angle, cut.start, cut.start + cut.duration,
                            list.kept.contains(cut.id) ? " kept" : "");
    return text.substr(0, text.size() - 1);
} catch (const std::exception& error) {
    return error.what();
}

TEST(CutListCsv, whatIsWrittenIsRead) {
    const Project loaded = project();
    std::vector<Cut> cuts;
    const UUIDMaker makeUUID = countingUUIDs();
    for (const std::string angle : {"w", "p", "1", "b", "x"})
        cuts.push_back({makeUUID(), angle, std::int64_t(cuts.size()) * 200, 200});
    const std::string csv =
        cutListCsv(cuts, loaded, {cuts[1].id}, {{"A.", "B; \"b\"."}, {}, {}, {}, {"Last."}});
    EXPECT_EQ(csv, "Start,End,Camera,Seconds,Kept,Why\r\n"
                   "01:00:00:00,01:00:08:00,Wide,8.0,,\"A. B; \"\"b\"\".\"\r\n"
                   "01:00:08:00,01:00:16:00,\"Pul\"\"pit, left\",8.0,yes,\r\n"
                   "01:00:16:00,01:00:24:00,1,8.0,,\r\n"
                   "01:00:24:00,01:00:32:00,b,8.0,,\r\n"
                   "01:00:32:00,01:00:40:00,Band (A7) (A7),8.0,,Last.\r\n");
    EXPECT_EQ(read(csv), "w 0-200 p 200-400 kept 1 400-600 b 600-800 x 800-1000");
    EXPECT_EQ(read("\xEF\xBB\xBF" + csv), read(csv));
}

TEST(CutListCsv, isReadInAnyOrderOrRefusedWithTheShotsNumber) {
    const std::string head = "Start,Camera\n01:00:00:00,Wide\n";
    const std::string of = "Shot 2 of the cut list ";
    const std::string hint = " Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.";
    const std::pair<std::string, std::string> rows[] = {
        {"start;CAMERA", "The cut list has no shots."},
        {head, "w 0-1000"},
        {"x;Camera;\" start \";kept;End\r\n;\" "
         "WIDE\";1:0:0:0;YES;\r\n;;\r\n\r\n9;\"2\";01:00:10:00\r\r",
         "w 0-250 kept 2 250-1000"},
        {head + "01:00:10:00,\"b\"\n01:00:20:00,1", "w 0-250 b 250-500 1 500-1000"},
        {"", "The cut list needs a header with the columns Start and Camera."},
        {"Start,Angle\n", "The cut list needs a header with the columns Start and Camera."},
        {"Start,Camera\n\xFF,A", "The cut list is not in UTF-8. Save it as CSV in UTF-8."},
        {"Start,Camera\n01:00:00:01,Wide",
         "Shot 1 of the cut list has to begin with the project, at 01:00:00:00."},
        {head + "noon,Wide", of + "has “noon” for a time." + hint},
        {head + "01:00:00:25,Wide",
         of + "has “01:00:00:25” for a time. The frame field must be less than 25 for this "
              "project."},
        {head + "01:00:00:00,Wide", of + "does not begin after the one before."},
        {head + "01:00:40:00,Wide", of + "does not begin inside the project."},
        {head + "01:00:10:00,Sound", of + "is of “Sound”, which no camera with picture is named."},
        {head + "01:00:10:00", of + "is of “”, which no camera with picture is named."},
        {head + "01:00:10:00,CAM", of + "is of “CAM”, which several cameras are named. Give the "
                                        "camera's identifier, which inspect prints."},
        {"Start,Camera,End\n01:00:00:00,w,01:00:09:00\n01:00:10:00,w",
         "Shot 1 of the cut list has to end where the next begins, at 01:00:10:00."},
        {"Start,Camera,End\n01:00:00:00,w,\n01:00:10:00,w,01:00:39:24",
         of + "has to end where the next begins, at 01:00:40:00."},
        {"Start,Camera,Kept\n01:00:00:00,w,no", "Shot 1 of the cut list has “no” for Kept. Write "
                                                "yes, or nothing."}};
    for (const auto& [csv, result] : rows)
        EXPECT_EQ(read(csv), result) << csv;
}

} // namespace
} // namespace shotweaver::test
