#include "engine/generation/EditChecks.h"
#include "engine/CutEngine.h"
#include "engine/generation/CameraUsage.h"
#include "engine/generation/CoverageReport.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

namespace shotweaver {
namespace {

using test::failureOf;

TEST(EditSettings, validatesEveryNumber) {
    using S = EditSettings;
    using Field = double& (*)(S & settings);
    const std::tuple<Field, double, double> rows[] = {
        {[](S& s) -> double& { return s.mainShare; }, 10, 90},
        {[](S& s) -> double& { return s.averageShot; }, 4, 20},
        {[](S& s) -> double& { return s.mainMinimum; }, 1, 25},
        {[](S& s) -> double& { return s.mainMaximum; }, 10, 120},
        {[](S& s) -> double& { return s.otherMinimum; }, 1, 8},
        {[](S& s) -> double& { return s.otherMaximum; }, 4, 120},
        {[](S& s) -> double& { return s.opening.seconds; }, 1, 120},
        {[](S& s) -> double& { return s.closing.seconds; }, 1, 120}};
    for (const auto& [field, lower, upper] : rows) {
        for (const double x :
             {lower, upper, std::nextafter(lower, -1), std::nextafter(upper, 999), std::nan("")}) {
            EditSettings settings;
            field(settings) = x;
            const bool isValid = failureOf([&] { settings.validate(); }).empty();
            EXPECT_EQ(isValid, x >= lower && x <= upper) << lower << " to " << upper << ": " << x;
        }
    }
    for (AngleNumbers S::*const numbers : {&S::frequencies, &S::returnTimes}) {
        EditSettings settings;
        settings.*numbers = {{"A", 5}, {"B", 600.1}, {"C", 5}};
        EXPECT_EQ(failureOf([&] { settings.validate(); }),
                  "The saved session contains invalid settings. Its stored data has been kept.");
    }
}

TEST(CameraUsage, countsVisibleShots) {
    // "A" goes on at 100, and comes again after a hole.
    const std::vector<Cut> cuts{
        {{}, "A", 0, 100}, {{}, "A", 100, 60}, {{}, "A", 161, 40}, {{}, "B", 201, 50}};
    EXPECT_EQ(usageOf(cameraUsage(cuts), "A"), (CameraUsage{"A", 200, 2}));
}

TEST(CoverageReport, listsTheFootageOfASelection) {
    test::ProjectBuilder project;
    project.angles = {{"A", "A", {{0, 400}, {500, 500}}},
                      {"B", "B", {{50, 200}, {300, 50}, {600, 300}}},
                      {"C", "C", {{0, 1000}}}};
    const CutEngine engine = project.engine();
    // Only their own camera counts inside of fixed parts: B under the opening, which it covers in
    // part, under the first section and the kept shot; C under the second section and the closing
    // of 112.5 frames.
    const SelectedCoverage report =
        selectedCoverage(engine, {"A", "B"}, BookendShot{"B", 3}, BookendShot{"C", 4.5},
                         {{"C", 350, 550}, {"B", 100, 200}}, {{{}, "B", 600, 200}});
    std::string covered;
    for (const auto& [from, to] : report.covered)
        covered += fmt::format("{}-{} ", from, to);
    EXPECT_EQ(covered, "75-100 75-100 100-200 200-350 200-250 300-350 350-550 550-600 600-800 "
                       "800-887 800-887 50-75 887-1000 ");

    // Any planned length is taken, of a frame at least.
    const auto opened = [&](double seconds, const std::vector<FixedCameraSection>& sections = {}) {
        return selectedCoverage(engine, {"A"}, BookendShot{"C", seconds}, {}, sections);
    };
    EXPECT_EQ(opened(-5).covered, (std::vector<FrameRange>{{1, 400}, {500, 1000}, {0, 1}}));
    for (const double seconds : {40.04, 1e300})
        EXPECT_EQ(opened(seconds, {{"A", 300, 300}}).message,
                  "Opening and closing shots exceed the project length. Shorten them.");
    EXPECT_EQ(opened(4, {{"C", 200, 300}, {"A", 390, 410}}).message,
              "The camera chosen for a fixed section has missing footage between 00:00:15:15 and "
              "00:00:16:10. Choose another camera or shorten the section.");
    EXPECT_EQ(
        selectedCoverage(engine, {"A"}, {}, {}, {{"C", 200, 300}}, {{{}, "A", 299, 1}}).message,
        "The kept shot at 00:00:11:24 overlaps a fixed section. Let go of it or change one of "
        "them.");
}

} // namespace
} // namespace shotweaver
