#include "engine/TimeValues.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <tuple>

namespace shotweaver {
namespace {

using test::failureOf;
using test::ProjectBuilder;

const std::string shape = "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.";
const std::string skipped = "That frame label is skipped in drop-frame timecode.";

CutEngine engineAt(const std::string& frameDuration, const std::string& tcFormat,
                   std::int64_t timelineStart = 0) {
    ProjectBuilder project;
    project.frameDuration = frameDuration;
    project.sequenceAttributes = "tcFormat=\"" + tcFormat + "\"";
    project.timelineStart = timelineStart;
    return project.engine();
}

TEST(Timecode, labelsByTheNearestWholeRate) {
    struct Rate {
        std::int64_t numerator, denominator, nominal;
    };
    for (const auto& [numerator, denominator, nominal] : {Rate{1, 25, 25},
                                                          {1001, 30000, 30},
                                                          {1001, 24000, 24},
                                                          {1001, 60000, 60},
                                                          {2, 5, 3}, // halves go up
                                                          {200, 499, 2},
                                                          {2, 1, 1},
                                                          {3, 1, 1},
                                                          {1'000'000, 1, 1},
                                                          {1, 1'000'000, 1'000'000}})
        EXPECT_EQ(nominalFrameRate(numerator, denominator), nominal)
            << numerator << "/" << denominator;
}

TEST(Timecode, dropsLabelsAtExactlyTwoRates) {
    EXPECT_TRUE(dropFrameApplies(1001, 30000));
    EXPECT_TRUE(dropFrameApplies(1001, 60000));
    EXPECT_TRUE(dropFrameApplies(2002, 60000)); // 29.97, not reduced
    EXPECT_FALSE(dropFrameApplies(100, 2997));
    EXPECT_FALSE(dropFrameApplies(1, 30));
    EXPECT_FALSE(dropFrameApplies(1, 60));
    EXPECT_FALSE(dropFrameApplies(1001, 24000));
    EXPECT_FALSE(dropFrameApplies(1001, 120000));
    EXPECT_FALSE(dropFrameApplies(1001, 15000));
}

TEST(Timecode, showsFrames) {
    struct Shown {
        std::int64_t frame, numerator, denominator;
        DropFrame dropFrame;
        const char* text;
    };
    const Shown rows[] = {{0, 1, 25, DropFrame::no, "00:00:00:00"},
                          {90000, 1, 25, DropFrame::no, "01:00:00:00"},
                          {90000, 1, 25, DropFrame::yes, "01:00:00:00"},
                          {2159999, 1, 25, DropFrame::no, "23:59:59:24"},
                          {2160000, 1, 25, DropFrame::no, "24:00:00:00"},
                          {-26, 1, 25, DropFrame::no, "-00:00:01:01"},
                          {999'999'999, 1, 25, DropFrame::no, "11111:06:39:24"},
                          {119, 1, 120, DropFrame::no, "00:00:00:119"},
                          {5, 3, 1, DropFrame::no, "00:00:05:00"},
                          {1799, 1001, 30000, DropFrame::yes, "00:00:59;29"},
                          {1800, 1001, 30000, DropFrame::yes, "00:01:00;02"},
                          {1800, 1001, 30000, DropFrame::no, "00:01:00:00"},
                          {1800, 100, 2997, DropFrame::yes, "00:01:00:00"},
                          {17982, 1001, 30000, DropFrame::yes, "00:10:00;00"},
                          {-5, 1001, 30000, DropFrame::yes, "-00:00:00;05"},
                          {-1800, 1001, 30000, DropFrame::yes, "-00:01:00;02"},
                          {3600, 1001, 60000, DropFrame::yes, "00:01:00;04"},
                          {35964, 1001, 60000, DropFrame::yes, "00:10:00;00"},
                          {INT64_MAX, 1, 25, DropFrame::no, "102481911520608:37:12:07"},
                          {INT64_MIN, 1, 25, DropFrame::no, "-102481911520608:37:12:08"},
                          {INT64_MIN, 1001, 30000, DropFrame::yes, "-85487080013854:22:16;00"}};
    for (const Shown& row : rows)
        EXPECT_EQ(formatTimecode(row.frame, row.numerator, row.denominator, row.dropFrame),
                  row.text);
}

TEST(Timecode, readsWhatIsTyped) {
    const CutEngine engine = engineAt("1/25s", "NDF", 90000);
    const std::pair<const char*, std::int64_t> accepted[] = {
        {"01:00:00:00", 0},
        {"1:0:0:1", 1},
        {"00:59:59:24", -1}, // before the project: for the caller to refuse
        {"0:0:0:0", -90000},
        {" \t01:00:10:00\r\n", 250},
        {"\u00A001:00:10:00\u2028", 250},
        {"01;00;10;05", 255},
        {"0000000000000000000000001:00:00:00", 0},
        {"9999:59:59:24", 899'910'000 - 1}};
    for (const auto& [text, frame] : accepted)
        EXPECT_EQ(engine.frameForTimecode(text), frame) << text;

    for (const char* refused :
         {"", "   ", "00:00:10", "00:00:10:00:00", "::: ", "00:00:10:", ":00:00:10:00",
          "00:60:00:00", "00:00:60:00", "10000:00:00:00", "-0:00:00:00", "+0:00:00:00",
          "00:00:00.00", "0x:0:0:0", "00: 00:00:00", "٠٠:00:00:00", "９:00:00:00",
          "9223372036854775808:00:00:00", "00:00:00:9223372036854775808", "00:00:00,00",
          // The fields' own limits come before the frame field's.
          "00:60:00:25"})
        EXPECT_EQ(failureOf([&] { engine.frameForTimecode(refused); }), shape) << refused;

    EXPECT_EQ(failureOf([&] { engine.frameForTimecode("01:00:00:25"); }),
              "The frame field must be less than 25 for this project.");
    EXPECT_EQ(failureOf([&] { engine.frameForTimecode("01:00:00:9223372036854775807"); }),
              "The frame field must be less than 25 for this project.");
}

TEST(Timecode, refusesLabelsThatDropFrameSkips) {
    const CutEngine ntsc = engineAt("1001/30000s", "DF");
    EXPECT_EQ(ntsc.frameForTimecode("00:01:00;02"), 1800);
    EXPECT_EQ(ntsc.frameForTimecode("00:01:00:02"), 1800);
    EXPECT_EQ(ntsc.frameForTimecode("00:10:00;00"), 17982);
    EXPECT_EQ(ntsc.frameForTimecode("9999:59:59;29"), 60000 * std::int64_t{17982} - 1);
    for (const char* refused : {"00:01:00;00", "00:01:00:01", "00:59:00;00", "01:11:00;01"})
        EXPECT_EQ(failureOf([&] { ntsc.frameForTimecode(refused); }), skipped) << refused;
    EXPECT_EQ(failureOf([&] { ntsc.frameForTimecode("00:01:00;30"); }),
              "The frame field must be less than 30 for this project.");

    const CutEngine fast = engineAt("1001/60000s", "DF");
    EXPECT_EQ(fast.frameForTimecode("00:01:00;04"), 3600);
    EXPECT_EQ(failureOf([&] { fast.frameForTimecode("00:01:00;03"); }), skipped);

    // Nothing is skipped without "DF", nor at another rate with it.
    for (const char* tcFormat : {"NDF", "df", ""})
        EXPECT_EQ(engineAt("1001/30000s", tcFormat).frameForTimecode("00:01:00;00"), 1800);
    EXPECT_EQ(engineAt("1/30s", "DF").frameForTimecode("00:01:00;00"), 1800);
    EXPECT_EQ(failureOf([] { engineAt("3s", "DF").frameForTimecode("00:00:00:01"); }),
              "The frame field must be less than 1 for this project.");
}

/// Counts labels up one by one, leaving out the first `dropped` of every minute but each tenth.
class LabelCounter {
  public:
    LabelCounter(int rate, int dropped) : rate_(rate), dropped_(dropped) {}

    std::string label() const {
        return fmt::format("{:02}:{:02}:{:02};{:02}", hours_, minutes_, seconds_, frames_);
    }

    void advance() {
        if (++frames_ < rate_) return;
        frames_ = 0;
        if (++seconds_ < 60) return;
        seconds_ = 0;
        if (++minutes_ == 60) {
            minutes_ = 0;
            ++hours_;
        }
        if (minutes_ % 10 != 0) frames_ = dropped_;
    }

  private:
    int rate_;
    int dropped_;
    int hours_ = 0, minutes_ = 0, seconds_ = 0, frames_ = 0;
};

TEST(Timecode, countsDropFrameLabelsBothWays) {
    for (const auto& [frameDuration, rate, dropped] :
         {std::tuple("1001/30000s", 30, 2), {"1001/60000s", 60, 4}}) {
        // The timeline starts at 01:00:00;00.
        const CutEngine engine = engineAt(frameDuration, "DF", (rate * 600 - 9 * dropped) * 6);
        LabelCounter counter(rate, dropped);
        const std::int64_t end = engine.timelineStart * 2;
        for (std::int64_t frame = -engine.timelineStart; frame < end; ++frame, counter.advance()) {
            const std::string label = counter.label();
            ASSERT_EQ(engine.timecode(frame), label) << frame;
            ASSERT_EQ(engine.frameForTimecode(label), frame) << label;
        }
    }
}

TEST(Timecode, readsBackEveryLabelItShows) {
    for (const char* frameDuration :
         {"1/25s", "1001/24000s", "1001/30000s", "1001/60000s", "2/5s", "3s", "1/1000000s"}) {
        const CutEngine engine = engineAt(frameDuration, "DF");
        const std::int64_t tenThousandHours =
            nominalFrameRate(engine.frameNumerator, engine.frameDenominator) * 36'000'000;
        const std::int64_t end = std::min<std::int64_t>(tenThousandHours, 999'999'999);
        for (std::int64_t frame = 0; frame < end; frame = frame * 5 / 3 + 1)
            EXPECT_EQ(engine.frameForTimecode(engine.timecode(frame)), frame) << frameDuration;
    }
}

} // namespace
} // namespace shotweaver
