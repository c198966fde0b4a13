#include "planning/CutPoints.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace shotweaver {
namespace {

using test::failureOf;
using test::repeated;

Project project() {
    test::ProjectBuilder builder; // 1000 frames of 1/25 s from 01:00:00:00
    builder.timelineStart = 90'000;
    builder.clipContent +=
        R"(<marker start="4s"/><marker start="10/25s"/><marker start="8s" value="b"/>)";
    return Project(builder.xml());
}

/// Gives a byte at a time.
class SlowSource final : public ByteSource {
  public:
    explicit SlowSource(std::string_view bytes) : bytes_(bytes) {}
    std::size_t read(char* into, std::size_t count) override {
        return bytes_.read(into, std::min<std::size_t>(count, 1));
    }

  private:
    MemorySource bytes_;
};

/// "12.5 3" or the sentence of the failure.
std::string timesIn(const std::string& text) {
    static const Project loaded = project();
    std::string times;
    const std::string failure = failureOf([&] {
        SlowSource source(text);
        times = fmt::format("{}", fmt::join(readCutTimes(source, "a.txt", loaded), " "));
    });
    return failure.empty() ? times : failure;
}

TEST(CutPoints, areReadFromAFile) {
    const std::string noTime = "” is not a time.";
    const std::string notText = " is not text in UTF-8. Save the file as UTF-8.";
    const std::pair<std::string, std::string> rows[] = {
        {"12.5\n3\n-1e2\n1e300", "12.5 3 -100 1e+300"}, // as in the file, wherever they are
        {"\uFEFF 1 \r\n\r\n2\r3\r\r", "1 2 3"},
        {"01:00:02:10\n 1:0:0;05 \n00:59:59:00", "2.4 0.2 -1"},
        {"1.5\t2.5\tverse\n\\\t20\t30\n2\t\xE9\n3\t", "1.5 2 3"},
        {"# beats\n\n  # more\n0", "0"},
        {"", ""},
        {"# none\n\n", ""},
        {"1\nabc\n", "a.txt, line 2: “abc" + noTime},
        {"1\r\n\r\n01:00:00:25 ", "a.txt, line 3: “01:00:00:25" + noTime},
        {"+1", "a.txt, line 1: “+1" + noTime},
        {"01", "a.txt, line 1: “01" + noTime},
        {"1e999", "a.txt, line 1: “1e999" + noTime},
        {"nan", "a.txt, line 1: “nan" + noTime},
        {"1 2", "a.txt, line 1: “1 2" + noTime},
        {"01:00:00:10\tverse", "a.txt, line 1: “01:00:00:10\tverse" + noTime},
        {repeated(100'000, "é"), "a.txt, line 1: “" + repeated(60, "é") + "…" + noTime},
        {std::string("\xFF\xFE"
                     "1\0",
                     4),
         "a.txt, line 1" + notText},
        {"1\n" + std::string("2\0", 2), "a.txt, line 2" + notText},
        {repeated(20'001, "5\n") + "abc", "a.txt has more than 20,000 times."}};
    for (const auto& [text, times] : rows)
        EXPECT_EQ(timesIn(text), times) << text.substr(0, 50);
    EXPECT_EQ(timesIn(repeated(20'000, "5\n")).size(), 39'999U);
}

TEST(CutPoints, areTheDistinctFramesOfMarkersAndTimes) {
    const Project loaded = project();
    EditSettings settings;
    const auto points = [&] {
        return fmt::format("{}", fmt::join(cutPoints(settings, loaded), " "));
    };
    EXPECT_EQ(points(), "");
    settings.cutAtMarkers = true;
    EXPECT_EQ(points(), "10 100");
    // The nearest frame, where it is inside: 0 and 1000 are the ends.
    settings.cutTimes = {
        30, 0.4, 0.019, 0.02, 39.98, 39.97, -1, 1e300, -std::numeric_limits<double>::max()};
    EXPECT_EQ(points(), "1 10 100 750 999");
    settings.cutAtMarkers = false;
    EXPECT_EQ(points(), "1 10 750 999");
}

} // namespace
} // namespace shotweaver
