#include "editor/EditorTexts.h"

#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <ostream>

namespace shotweaver {

void PrintTo(const UsageRow& row, std::ostream* out) {
    *out << row.camera << " | " << row.screenTime << " | " << row.share << " | " << row.shots;
}

namespace test {
namespace {

/// Cuts one after the other from frame 0.
std::vector<Cut> cutList(const std::vector<std::pair<const char*, std::int64_t>>& shots) {
    std::vector<Cut> cuts;
    std::int64_t start = 0;
    for (const auto& [angle, duration] : shots) {
        cuts.push_back({UUID(), angle, start, duration});
        start += duration;
    }
    return cuts;
}

ProjectBuilder project() {
    ProjectBuilder project;
    project.angles = {{"rec", "Recorder", {{0, 1000}}, false},
                      {"B", "Band", {{0, 1000}}},
                      {"wide", "Wide", {{0, 1000}}},
                      {"P", "Pulpit", {{0, 1000}}}};
    return project;
}

ImportedProject summary() {
    ImportedProject summary = inspectProject(project().xml());
    summary.angles[0].cameras = "Zoom H6";
    summary.angles[2].cameras = "HC-X1500, XA50";
    return summary;
}

TEST(EditorTexts, anglesAreLabelledByNameAndCameras) {
    EXPECT_EQ(angleLabel("wide", summary()), "Wide (HC-X1500, XA50)");
    EXPECT_EQ(angleLabel("B", summary()), "Band");
    EXPECT_EQ(angleLabel("Wide", summary()), "Wide"); // a name is no identifier
    EXPECT_EQ(angleLabel("", summary()), "");
}

TEST(EditorTexts, theMainCamerasShareIsRoundedHalfAwayFromZero) {
    EditSettings settings;
    settings.mainCamera = "wide";
    settings.audio = "rec";
    const CutEngine engine = project().engine();
    const auto line = [&](const std::vector<Cut>& cuts) {
        return summaryLine(cuts, settings, summary(), engine);
    };
    const std::pair<std::int64_t, const char*> rows[] = {{4, "0"},    {5, "1"},    {125, "13"},
                                                         {124, "12"}, {994, "99"}, {995, "100"}};
    for (const auto& [frames, percent] : rows)
        EXPECT_EQ(line(cutList({{"wide", frames}, {"B", 1000 - frames}})),
                  fmt::format("2 cuts · Main camera: {}% · Audio: Recorder (Zoom H6)", percent));

    // All of the main camera's cuts count, also two in a row; frames count, not shots.
    settings.audio = "gone";
    EXPECT_EQ(line(cutList({{"wide", 100}, {"wide", 200}, {"B", 400}, {"wide", 300}})),
              "4 cuts · Main camera: 60% · Audio: gone");
    EXPECT_EQ(line({}), "0 cuts · Main camera: 0% · Audio: gone");
}

TEST(EditorTexts, usageHasARowForEveryVideoAngle) {
    const CutEngine engine = project().engine();
    const auto cuts = cutList({{"wide", 101}, {"wide", 50}, {"P", 333}, {"wide", 516}});
    EXPECT_EQ(usageRows(cuts, summary(), engine),
              (std::vector<UsageRow>{{"Band", "0.00 sec", "0.0%", "0"},
                                     {"Wide (HC-X1500, XA50)", "26.68 sec", "66.7%", "2"},
                                     {"Pulpit", "13.32 sec", "33.3%", "1"}}));
}

} // namespace
} // namespace test
} // namespace shotweaver
