#include "engine/CameraUsage.h"
#include "engine/CutEngine.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <limits>

namespace shotweaver {
namespace {

/// "0-400 500-1000 "
std::string described(const std::vector<FrameRange>& ranges) {
    std::string text;
    for (const FrameRange& range : ranges)
        text += fmt::format("{}-{} ", range.lowerBound, range.upperBound);
    return text;
}

/// The ranges, then the message.
std::string described(const SelectedCoverage& report) {
    return described(report.covered) + report.message.value_or("");
}

TEST(CameraUsage, countsVisibleShots) {
    struct Row {
        const char* label;
        std::vector<Cut> cuts;
        CameraUsage a;
        CameraUsage b;
    };
    const Row rows[] = {
        {"none", {}, {"A", 0, 0}, {"B", 0, 0}},
        {"sections continue a shot",
         {{{}, "A", 0, 100}, {{}, "A", 100, 50}, {{}, "A", 150, 10}, {{}, "B", 160, 50}},
         {"A", 160, 1},
         {"B", 50, 1}},
        {"another shot between",
         {{{}, "A", 0, 100}, {{}, "B", 100, 50}, {{}, "A", 150, 50}},
         {"A", 150, 2},
         {"B", 50, 1}},
        {"a hole between", {{{}, "A", 0, 100}, {{}, "A", 101, 50}}, {"A", 150, 2}, {"B", 0, 0}},
    };
    for (const Row& row : rows) {
        const CameraUsageMap usage = cameraUsage(row.cuts);
        EXPECT_EQ(usageOf(usage, "A"), row.a) << row.label;
        EXPECT_EQ(usageOf(usage, "B"), row.b) << row.label;
        EXPECT_EQ(usage.contains("B"), row.b.shots > 0) << row.label;
    }
}

/// 40 seconds at 25 frames a second.
CutEngine engineWithGaps() {
    test::ProjectBuilder project;
    project.angles = {{"A", "A", {{0, 400}, {500, 500}}},
                      {"B", "B", {{50, 200}, {300, 50}, {600, 300}}},
                      {"C", "C", {{0, 1000}}}};
    return project.engine();
}

TEST(CoverageReport, clipsAnAnglesFootage) {
    struct Row {
        const char* angle;
        std::int64_t from;
        std::int64_t to;
        std::string parts;
    };
    const Row rows[] = {
        {"B", 0, 1000, "50-250 300-350 600-900 "},
        {"B", 100, 320, "100-250 300-320 "},
        {"B", 310, 311, "310-311 "},
        {"B", 249, 301, "249-250 300-301 "},
        {"B", 250, 300, ""},
        {"B", 900, 1000, ""},
        {"B", 200, 200, ""},
        {"B", 220, 100, ""},
        {"unknown", 0, 1000, ""},
    };
    const CutEngine engine = engineWithGaps();
    for (const Row& row : rows)
        EXPECT_EQ(described(engine.coveredParts(row.angle, row.from, row.to)), row.parts)
            << row.angle << row.from << '-' << row.to;
}

TEST(CoverageReport, listsTheFootageOfASelection) {
    const CutEngine engine = engineWithGaps();
    EXPECT_EQ(described(engine.selectedCoverage({"A", "B"}, {}, {}, {})),
              "0-400 500-1000 50-250 300-350 600-900 ");

    // Only their own camera counts inside of fixed parts: B under the opening, which it covers in
    // part, and under the first section; C under the second one and the closing of 112.5 frames.
    const SelectedCoverage report = engine.selectedCoverage(
        {"A", "B"}, BookendShot{"B", 3}, BookendShot{"C", 4.5}, {{"C", 350, 550}, {"B", 100, 200}});
    EXPECT_EQ(described(report), "75-100 75-100 100-200 200-350 200-250 300-350 350-550 "
                                 "550-887 600-887 50-75 887-1000 ");
    EXPECT_EQ(described(uncoveredRanges(report.covered, engine.length)), "0-50 ");
}

TEST(CoverageReport, takesAnyPlannedLength) {
    const CutEngine engine = engineWithGaps();
    const auto opened = [&](double seconds) {
        return described(engine.selectedCoverage({"A"}, BookendShot{"C", seconds}, {}, {}));
    };
    EXPECT_EQ(opened(-5), "1-400 500-1000 0-1 "); // a frame at least
    EXPECT_EQ(opened(0.001), "1-400 500-1000 0-1 ");
    EXPECT_EQ(opened(0.06), "2-400 500-1000 0-2 "); // 1.5 frames
    EXPECT_EQ(opened(40), "0-1000 ");
    for (const double seconds : {40.04, 1e300, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(opened(seconds),
                  "Opening and closing shots exceed the project length. Shorten them.")
            << seconds;
}

TEST(CoverageReport, givesAMessageInPlaceOfRanges) {
    struct Row {
        double bookendSeconds; // opening and closing alike
        std::vector<FixedCameraSection> sections;
        std::string message;
    };
    const std::string place = "Fixed sections must have an end after their start, stay inside the "
                              "project, and not overlap opening or closing shots.";
    const Row rows[] = {
        {20.02,
         {{"A", 300, 300}},
         "Opening and closing shots exceed the project length. Shorten them."},
        {20, {{"A", 499, 500}}, place},
        {4, {{"A", 800, 901}}, place},
        {4,
         {{"A", 600, 700}, {"C", 699, 800}},
         "Fixed camera sections overlap. Adjust their start or end timecodes."},
        {4,
         {{"C", 200, 300}, {"A", 390, 410}},
         "The camera chosen for a fixed section has missing footage between 00:00:15:15 and "
         "00:00:16:10. Choose another camera or shorten the section."},
    };
    const CutEngine engine = engineWithGaps();
    for (const Row& row : rows)
        EXPECT_EQ(
            described(engine.selectedCoverage({"A", "C"}, BookendShot{"C", row.bookendSeconds},
                                              BookendShot{"C", row.bookendSeconds}, row.sections)),
            row.message);
}

} // namespace
} // namespace shotweaver
