#include "engine/TimeValues.h"

#include "tests/support/ProjectBuilder.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace shotweaver {
namespace {

using test::failureOf;

const std::string offGrid = "This prototype needs timing aligned to the project frame rate.";
const std::string outOfRange = "This time value exceeds the prototype's supported range.";

TEST(TimeValues, readsSecondsLeniently) {
    const std::pair<const char*, double> accepted[] = {{"0s", 0},
                                                       {"3600s", 3600},
                                                       {"1001/30000s", 1001.0 / 30000},
                                                       {"-5s", -5},
                                                       {"+1/+4s", 0.25},
                                                       {"1.5s", 1.5},
                                                       {"1e3/2.5E-1s", 4e3},
                                                       {"-1e-400/3s", 0},
                                                       {"1e308/1e300s", 1e308 / 1e300},
                                                       {"0/7s", 0},
                                                       {"9223372036854775808s", 0x1p63}};
    for (const auto& [text, seconds] : accepted)
        EXPECT_EQ(parseSeconds(text), seconds) << text;

    const std::string missing = "The export contains a missing or invalid time value.";
    EXPECT_EQ(failureOf([] { parseSeconds(std::nullopt); }), missing);
    for (const char* refused : {"", "1", "1/2", "1S", "1s ", "s1"})
        EXPECT_EQ(failureOf([&] { parseSeconds(refused); }), missing) << refused;

    for (const std::string refused :
         {"s",    "/s",    "1/s",       "/2s",    "1//2s",    "1/2/3s",        "1/2/s",
          "1/0s", "1/-2s", "1/1e-400s", "1e400s", "1/1e400s", "1e308/1e-308s", "ss",
          "1ss",  " 1s",   "1 s",       "1 /2s",  "infs",     "nans",          "0x10s",
          "1,5s", "--1s",  "1.s",       ".5s"})
        EXPECT_EQ(failureOf([&] { parseSeconds(refused); }),
                  "The export contains an invalid time value: " + refused);
}

TEST(TimeValues, readsRationalTimesStrictly) {
    const std::pair<const char*, RationalTime> accepted[] = {
        {"0s", {0, 1}},
        {"-1001/30000s", {-1001, 30000}},
        {"+1/+2s", {1, 2}},
        {"2/4s", {2, 4}}, // as written, not reduced
        {"1//2s", {1, 2}},
        {"//1///2//s", {1, 2}},
        {"/2s", {2, 1}},
        {"2/s", {2, 1}},
        {"007/010s", {7, 10}},
        {"9223372036854775807/9223372036854775807s", {INT64_MAX, INT64_MAX}},
        {"-9223372036854775808s", {INT64_MIN, 1}}};
    for (const auto& [text, time] : accepted)
        EXPECT_EQ(parseRationalTime(text), time) << text;

    for (const std::string refused : {"",
                                      "s",
                                      "/s",
                                      "//s",
                                      "1",
                                      "1/2",
                                      "1/2/3s",
                                      "1/2//3s",
                                      "1.5s",
                                      "1e3s",
                                      "1/0s",
                                      "1/-2s",
                                      "-s",
                                      "+s",
                                      "+-1s",
                                      "-+1s",
                                      "1/+s",
                                      " 1s",
                                      "1 s",
                                      "1/ 2s",
                                      "ss",
                                      "9223372036854775808s",
                                      "-9223372036854775809s",
                                      "1/9223372036854775808s",
                                      "٣s"})
        EXPECT_EQ(failureOf([&] { parseRationalTime(refused); }), "Invalid XML time: " + refused);
}

struct FrameTime {
    const char* text;
    std::int64_t frameNumerator;
    std::int64_t frameDenominator;
    std::int64_t frames;
};

TEST(TimeValues, readsWholeFrames) {
    const FrameTime accepted[] = {{"0s", 1001, 30000, 0},
                                  {"1001/30000s", 1001, 30000, 1},
                                  {"-1001/30000s", 1001, 30000, -1},
                                  {"3603600/30000s", 1001, 30000, 3600},
                                  {"2002/60000s", 1001, 30000, 1},
                                  {"3600s", 1, 25, 90000},
                                  {"1//5s", 1, 25, 5},
                                  {"999999999s", 1, 1, 999'999'999},
                                  {"-999999999s", 1, 1, -999'999'999},
                                  {"999999999000000s", 1'000'000, 1, 999'999'999},
                                  {"9223372036854775807/9223372036854775807s", 1, 1, 1}};
    for (const auto& [text, numerator, denominator, frames] : accepted)
        EXPECT_EQ(framesForTime(text, numerator, denominator), frames) << text;
}

TEST(TimeValues, refusesTimesOffTheFrameGridAndOutOfRange) {
    struct Refused {
        const char* text;
        std::int64_t frameNumerator;
        std::int64_t frameDenominator;
        std::string sentence;
    };
    const Refused refused[] = {{"0.04s", 1, 25, "Invalid XML time: 0.04s"},
                               {"3600s", 1001, 30000, offGrid},
                               {"1/30s", 1001, 30000, offGrid},
                               {"-1/26s", 1, 25, offGrid},
                               {"1000000000s", 1, 1, outOfRange},
                               {"-1000000000s", 1, 1, outOfRange},
                               {"40000000s", 1, 25, outOfRange},
                               // A time that is neither whole nor in range is off the grid first.
                               {"3000000001/2s", 1, 1, offGrid},
                               // Either product overflows, though the quotient would be small.
                               {"9223372036854775807/9223372036854775807s", 1, 2, offGrid},
                               {"9223372036854775807/9223372036854775807s", 2, 1, offGrid},
                               {"-9223372036854775808s", 1, 2, offGrid},
                               {"-9223372036854775808s", 1, 1, outOfRange},
                               {"0s", 0, 1, offGrid}};
    for (const auto& [text, numerator, denominator, sentence] : refused)
        EXPECT_EQ(
            failureOf([&, t = text, n = numerator, d = denominator] { framesForTime(t, n, d); }),
            sentence)
            << text << " at " << numerator << "/" << denominator;
}

TEST(TimeValues, writesFramesUnreducedAndReadsThemBack) {
    EXPECT_EQ(timeString(3600, 1001, 30000), "3603600/30000s");
    EXPECT_EQ(timeString(0, 1, 25), "0/25s");
    for (const std::int64_t frames : {-999'999'999, -1, 0, 1, 17982, 999'999'999})
        EXPECT_EQ(framesForTime(timeString(frames, 1001, 60000), 1001, 60000), frames);
    EXPECT_EQ(timeString(INT64_MIN, 1, 25), "-9223372036854775808/25s");
    EXPECT_EQ(failureOf([] { timeString(INT64_MAX, 2, 25); }),
              "A time in this edit is too large to export. Import the project again.");
}

TEST(TimeValues, multipliesBeforeItDivides) {
    EXPECT_EQ(secondsForFrames(30, 1001, 30000), 30030.0 / 30000.0);
    EXPECT_EQ(framesForSeconds(1.001, 1001, 30000), 1.001 * 30000.0 / 1001.0);
}

} // namespace
} // namespace shotweaver
