#include "engine/TimeValues.h"
#include "platform/Text.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <tuple>

namespace shotweaver {
namespace {

using test::failureOf;

TEST(TimeValues, readsSecondsLenientlyAndRationalTimesStrictly) {
    using Row = std::tuple<std::string, std::optional<double>, std::optional<RationalTime>>;
    std::vector<Row> rows{{"-1001/30000s", -1001.0 / 30000, {{-1001, 30000}}},
                          {"+2/+4s", 0.5, {{2, 4}}},
                          {"-9223372036854775808s", -0x1p63, {{INT64_MIN, 1}}},
                          {"1e3/2.5E-1s", 4e3, {}},
                          {"/2s", {}, {{2, 1}}},
                          {"//1///2//s", {}, {{1, 2}}}};
    for (const std::string_view refused :
         split("|1|1S|1s |s|/s|1/2/3s|1/0s|1/-2s|1/1e-400s|1e400s|1e308/1e-308s|ss| 1s|1/ 2s|infs|"
               "0x10s|1,5s|+-1s|٣s",
               '|'))
        rows.push_back({std::string(refused), {}, {}});
    for (const auto& [text, seconds, time] : rows) {
        const std::string sentence = text.ends_with('s')
                                         ? "The export contains an invalid time value: " + text
                                         : "The export contains a missing or invalid time value.";
        EXPECT_EQ(failureOf([&t = text, &s = seconds] { EXPECT_EQ(parseSeconds(t), s); }),
                  seconds ? "" : sentence);
        EXPECT_EQ(failureOf([&t = text, &r = time] { EXPECT_EQ(parseRationalTime(t), r); }),
                  time ? "" : "Invalid XML time: " + text);
    }
}

TEST(TimeValues, readsWholeFrames) {
    const std::string offGrid = "This prototype needs timing aligned to the project frame rate.";
    const std::string large = "9223372036854775807/9223372036854775807s";
    EXPECT_EQ((FrameDuration{1001, 30000}.frames("-2002/60000s")), -1);
    EXPECT_EQ((FrameDuration{1, 1}.frames("-999999999s")), -999'999'999);
    const std::tuple<std::string, FrameDuration, std::string> refused[] = {
        {"-1000000000s", {1, 1}, "This time value exceeds the prototype's supported range."},
        {"3000000001/2s", {1, 1}, offGrid}, // neither whole nor in range
        {"3600s", {1001, 30000}, offGrid},
        {large, {2, 1}, offGrid}}; // overflows
    for (const auto& [text, duration, sentence] : refused)
        EXPECT_EQ(failureOf([&t = text, &d = duration] { d.frames(t); }), sentence);
    EXPECT_EQ(failureOf([] {
                  FrameDuration{2, 25}.time(INT64_MAX);
              }),
              "A time in this edit is too large to export. Import the project again.");
}

CutEngine engineAt(const char* frameDuration, const std::string& tcFormat, int start = 0) {
    test::ProjectBuilder project;
    project.frameDuration = frameDuration;
    project.sequenceAttributes = "tcFormat=\"" + tcFormat + "\"";
    project.timelineStart = start;
    return project.engine();
}

TEST(Timecode, showsFrames) {
    using enum DropFrame;
    const std::tuple<std::int64_t, FrameDuration, DropFrame, const char*> rows[] = {
        {INT64_MIN, {1, 25}, no, "-102481911520608:37:12:08"},
        {11, {2, 5}, no, "00:00:03:02"}, // labelled by 3 frames a second
        {1800, {100, 2997}, yes, "00:01:00:00"},
        {-1800, {2002, 60000}, yes, "-00:01:00;02"}};
    for (const auto& [frame, duration, dropFrame, text] : rows)
        EXPECT_EQ(duration.timecode(frame, dropFrame), text);
}

TEST(Timecode, readsWhatIsTyped) {
    const CutEngine engine = engineAt("1/25s", "NDF", 90000);
    EXPECT_EQ(engine.frameForTimecode(" \t1;0:10:00001\r\n\u2028"), 251);
    for (const std::string_view refused :
         split("|00:00:10|00:00:10:00:00|00:00:10:|00:60:00:25|00:00:60:00|10000:00:00:00|"
               "-0:00:00:00|+0:00:00:00|00:00:00.00|00: 00:00:00|٠٠:00:00:00|"
               "00:00:00:9223372036854775808",
               '|'))
        EXPECT_EQ(failureOf([&] { engine.frameForTimecode(refused); }),
                  "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.")
            << refused;
    EXPECT_EQ(failureOf([] { engineAt("3s", "DF").frameForTimecode("00:00:00:01"); }),
              "The frame field must be less than 1 for this project.");
    EXPECT_EQ(engineAt("1001/30000s", "df").frameForTimecode("00:01:00;00"), 1800);
}

TEST(Timecode, countsDropFrameLabelsBothWays) {
    for (const auto& [frameDuration, rate, dropped] :
         {std::tuple("1001/30000s", 30, 2), {"1001/60000s", 60, 4}}) {
        // The timeline starts at 01:00:00;00.
        const CutEngine engine = engineAt(frameDuration, "DF", (rate * 600 - 9 * dropped) * 6);
        std::int64_t frame = -engine.timelineStart;
        for (int label = 0; label < 2 * 3600 * rate; ++label) {
            const int second = label / rate;
            if (second % 60 == 0 && second % 600 != 0 && label % rate < dropped) continue;
            const std::string text = fmt::format("{:02}:{:02}:{:02};{:02}", second / 3600,
                                                 second / 60 % 60, second % 60, label % rate);
            ASSERT_EQ(engine.timecode(frame), text) << frame;
            ASSERT_EQ(engine.frameForTimecode(text), frame++) << text;
        }
        const std::string skipped = fmt::format("0:9:0:{}", dropped - 1);
        EXPECT_EQ(failureOf([&] { engine.frameForTimecode(skipped); }),
                  "That frame label is skipped in drop-frame timecode.");
    }
}

} // namespace
} // namespace shotweaver
