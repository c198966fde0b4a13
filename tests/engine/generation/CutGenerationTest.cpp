#include "engine/generation/CutGeneration.h"
#include "engine/CutEngine.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <sstream>

namespace shotweaver {
namespace {

using test::failureOf;

/// Main camera A, additional camera B, half of the screen time each, all shots of 4 seconds: 100
/// frames. A, B, C and D show all of the project. Changes read "opening C 4, clip A 0 400, double".
struct Edit {
    explicit Edit(const std::string& changes, std::int64_t length = 500) {
        project.length = length;
        project.angles = {{"A", "", {}}, {"B", "", {}}, {"C", "", {}}, {"D", "", {}}};
        in.mainCamera = "A";
        in.otherCameras = {"B"};
        in.mainShare = 0.5;
        in.averageShot = 8;
        in.mainRange = in.otherRange = SecondsRange{4, 4};
        std::istringstream rest(changes);
        for (std::string change; std::getline(rest, change, ',');)
            apply(change);
        for (test::AngleSpec& angle : project.angles)
            if (angle.clips.empty()) angle.clips = {{0, length}};
        draws.resize(300);
    }

    void apply(const std::string& change) {
        std::string word;
        std::string angle = "A";
        double x = 0;
        double y = 0;
        std::istringstream fields(change);
        fields >> word;
        if (word == "draw") draws.assign(std::istream_iterator<double>(fields), {});
        if (word == "points") in.cutPoints.assign(std::istream_iterator<std::int64_t>(fields), {});
        fields >> angle >> x >> y;
        const test::ClipSpec clip{std::llround(x), std::llround(y - x)};
        auto& range = angle == "A" ? in.mainRange : in.otherRange;
        if (word == "opening") in.opening = BookendShot{angle, x};
        if (word == "closing") in.closing = BookendShot{angle, x};
        if (word == "section") in.sections.push_back({angle, clip.offset, std::llround(y)});
        if (word == "clip") project.angles[std::size_t(angle[0] - 'A')].clips.push_back(clip);
        if (word == "kept")
            in.kept.push_back({id(in.kept.size()), angle, clip.offset, clip.duration});
        if (word == "note") in.notes.push_back({clip.offset, angle, "the " + angle});
        if (word == "also") in.otherCameras.push_back(angle);
        if (word == "alone") in.otherCameras.clear();
        if (word == "wait") in.returnTimes[angle] = x;
        if (word == "weight") in.frequencies[angle] = x;
        if (word == "share") in.mainShare = x, in.averageShot = y;
        if (word == "range") range = SecondsRange{x, y};
        if (word == "paced") range.reset();
        if (word == "vary") in.varyOthers = true;
        if (word == "double") in.doubleMain = true;
        if (word == "swap") std::swap(in.mainCamera, in.otherCameras[0]);
    }

    static UUID id(std::size_t number) {
        UUID id;
        id.bytes = {0x4B, static_cast<std::uint8_t>(number)};
        return id;
    }

    /// "A 0-100 B 100-200" or the sentence of the failure, with draws of 0 after those given.
    std::string outcome() const {
        test::ScriptedRandom random(draws);
        return outcome(random);
    }

    std::string outcome(RandomSource& random) const {
        std::string text;
        const std::string failure = failureOf([&] {
            for (const Cut& cut : generateCuts(project.engine(), in, random, test::countingUUIDs()))
                text += fmt::format("{}{} {}-{} ", cut.id.bytes[0] == 0x4B ? "kept " : "",
                                    cut.angle, cut.start, cut.start + cut.duration);
        });
        return failure.empty() ? text.substr(0, text.size() - 1) : failure;
    }

    test::ProjectBuilder project;
    GenerationInputs in;
    std::vector<double> draws;
};

TEST(CutGeneration, laysShotsByItsRules) {
    // A free shot draws its camera, pacing factor, place in the range and, the main one, doubling.
    const std::pair<std::string, std::string> rows[] = {
        // 2 x 10 s x 0.7 are 350 frames, which leaves 150 for B: 112.5 at the least, rounded up.
        {"paced A, paced B, share A .7 10, draw 0 .5 .9 0", "A 0-350 B 350-463 A 463-500"},
        // 14 s wanted: p = 4/15, exponent 2.75. 7.5 s wanted: p = 7/8, exponent 1/7.
        {"share A .7 10, range A 10 25, range B 4 8, draw 0 0 .5 0 0 .0078125",
         "A 0-306 B 306-456 A 456-500"},
        // 54 s wanted of 4 to 8: p = 0.9, exponent 1/9. 2/3 s wanted: p = 0.1, exponent 9.
        {"share A .9 10, range A 4 8, range B 4 8, closing C 8, draw 0 0 .001953125 0 0 .875",
         "A 0-150 B 150-280 A 280-300 C 300-500"},
        // 125.25 to 150.75 frames hold 126 to 150, both of them reachable.
        {"range A 5.01 6.03, draw 0 0 0 0 0 0 0 0 .9999999999999999",
         "A 0-126 B 126-226 A 226-376 B 376-476 A 476-500"},
        // The draw within the range is linear.
        {"range A 4 8, range B 4 8, double, draw 0 .3 .125 .25 0 .9 .5 .9 .9 .125 .249",
         "A 0-113 B 113-263 A 263-489 B 489-500"},
        // Of the weights, C's of 5 is between 3/16 and 8/16.
        {"also C, also D, weight A 10, weight B 3, weight D 8, closing A 12, draw 0 0 0 .1875",
         "A 0-100 C 100-200 A 200-500"},
        {"also C, also D, weight A 10, weight B 3, weight D 8, closing A 12, draw 0 0 0 .5",
         "A 0-100 D 100-200 A 200-500"},
        // Not the last additional camera again, whoever showed it, unless it is the only one.
        {"also C, vary, opening B 4", "B 0-100 A 100-200 C 200-300 A 300-400 B 400-500"},
        {"vary", "A 0-100 B 100-200 A 200-300 B 300-400 A 400-500"},
        // Return times hold to the frame, for any shot but a camera's first and fixed ones.
        {"also C, wait B 4.001", "A 0-100 B 100-200 A 200-300 C 300-400 A 400-500"},
        {"wait A 7", "A 0-100 B 100-300 A 300-400 B 400-500"},
        {"wait B 8.04", "A 0-100 B 100-200 A 200-500"},
        {"also C, wait B 8, opening B 2, section B 250 300",
         "B 0-50 A 50-150 C 150-250 B 250-300 A 300-400 C 400-500"},
        {"wait A 2.4, clip B 0 160", "A 0-100 B 100-160 A 160-500"},
        {"wait A 2.44, clip B 0 160",
         "Minimum return times prevent a camera change at 00:00:06:10, and the current camera has "
         "no footage there. Reduce a return time or include another camera."},
        // A shot ends with its footage; fixed parts cut it short and never merge with it.
        {"clip B 0 150, clip B 350 500", "A 0-100 B 100-150 A 150-350 B 350-450 A 450-500"},
        {"opening A 4, clip B 200 500", "A 0-100 A 100-200 B 200-300 A 300-400 B 400-500"},
        {"section C 200 400, section A 0 50", "A 0-50 B 50-150 A 150-200 C 200-400 A 400-500"},
        {"section A 100 200, clip B 400 500", "A 0-100 A 100-200 A 200-400 B 400-500"},
        {"opening B 4, closing B 4, section B 300 400, section B 100 300",
         "B 0-100 B 100-300 B 300-400 B 400-500"},
        {"range B 5.01 5.02", "The shot range must contain at least one full frame."}};
    for (const auto& [changes, outcome] : rows)
        EXPECT_EQ(Edit(changes).outcome(), outcome) << changes;
}

TEST(CutGeneration, givesTheListsThatSeedsHaveAlwaysGiven) {
    SeededRandom random(7);
    const Edit edit("also C, also D, range A 3 9, range B 1 4, double, weight C 9, wait D 20, "
                    "opening C 2, clip B 0 900, section D 1000 1100",
                    1500);
    EXPECT_EQ(edit.outcome(random),
              "C 0-50 A 50-125 C 125-193 A 193-268 D 268-367 A 367-517 C 517-616 A 616-691 "
              "C 691-789 A 789-864 C 864-961 A 961-1000 D 1000-1100 A 1100-1250 C 1250-1344 "
              "A 1344-1420 C 1420-1500");
    EXPECT_EQ(edit.outcome(random),
              "C 0-50 A 50-125 D 125-224 A 224-374 B 374-464 A 464-539 C 539-633 A 633-712 "
              "C 712-811 A 811-886 D 886-973 A 973-1000 D 1000-1100 A 1100-1175 C 1175-1274 "
              "A 1274-1349 C 1349-1442 A 1442-1500");
}

TEST(CutGeneration, laysGapsBetweenKeptShots) {
    const std::pair<std::string, std::string> rows[] = {
        // Never merged, and of any camera; the walk goes on as after a fixed section. The first
        // laying shows B beside the kept B, the second has no fault; of layings as bad as each
        // other, each with a short B, the first stays.
        {"kept B 100 200, kept D 250 400, range A 1 2, range B 2 2, draw 0 0 .999 0 0 .5",
         "A 0-25 B 25-75 A 75-100 kept B 100-200 A 200-225 B 225-250 kept D 250-400 A 400-425 "
         "B 425-475 A 475-500"},
        // A kept shot in the place of another part is that part, and has no gap of its own.
        {"kept A 0 100, opening A 4", "kept A 0-100 B 100-200 A 200-300 B 300-400 A 400-500"},
        {"kept C 400 500, section B 200 300, kept B 200 300, closing C 4",
         "A 0-100 B 100-200 kept B 200-300 A 300-400 kept C 400-500"},
        // Two faults, one, and one again: a short A beside A, A beside A, a short B.
        {"kept A 130 500, range A 1 9, draw 0 0 0 0 0 0 0 0 0 0 0 .999 0 0 .212",
         "A 0-130 kept A 130-500"},
        {"kept A 40 500", "A 0-40 kept A 40-500"},
        // A refused laying is worse than any other; without any other the refusal counts.
        {"kept C 200 500, range A 1 9, clip A 0 200, clip B 0 160, wait A 9, wait B 9, "
         "draw 0 0 0 0 0 0 0 0 0 0 0 .999",
         "A 0-200 kept C 200-500"},
        {"kept C 300 500, clip A 0 200, clip B 0 160, wait A 9, wait B 9",
         "Minimum return times prevent a camera change at 00:00:06:10, and the current camera has "
         "no footage there. Reduce a return time or include another camera."}};
    for (const auto& [changes, outcome] : rows)
        EXPECT_EQ(Edit(changes).outcome(), outcome) << changes;
}

TEST(CutGeneration, movesEndsToCutPointsAndFollowsNotes) {
    // Both draw 100 to 200 frames in them, evenly; 100 unless it says more.
    const std::string evenly = "range A 4 8, range B 4 8, ";
    const std::pair<std::string, std::string> rows[] = {
        // To the nearest point, the earlier of two, within the range.
        {evenly + "closing C 4, draw 0 0 .5, points 99 149 152",
         "A 0-149 B 149-249 A 249-349 B 349-400 C 400-500"},
        {evenly + "closing C 12, draw 0 0 .5, points 140 160", "A 0-140 B 140-200 C 200-500"},
        {evenly + "closing C 11, draw 0 0 .5, points 99 201", "A 0-150 B 150-225 C 225-500"},
        {evenly + "closing C 8, draw 0 0 .49, points 99 100 200 201",
         "A 0-100 B 100-200 A 200-300 C 300-500"},
        {evenly + "closing C 8, draw 0 0 .51, points 99 100 200 201",
         "A 0-200 B 200-300 C 300-500"},
        // Not where something shortens the shot, nor to that place or behind it.
        {evenly + "closing C 12, draw 0 0 .9999, points 150 190", "A 0-200 C 200-500"},
        {evenly + "clip A 0 155, closing C 12, draw 0 0 .5, points 110 155 156",
         "A 0-110 B 110-200 C 200-500"},
        {evenly + "clip A 0 155, closing C 12, draw 0 0 .5, points 155 156",
         "A 0-150 B 150-200 C 200-500"},
        // A doubled hold has twice the range, pacing three to five quarters of it.
        {evenly + "double, closing C 4, points 199 390", "A 0-390 B 390-400 C 400-500"},
        {evenly + "double, closing C 4, draw 0 0 0 .25, points 199 390",
         "A 0-199 B 199-390 A 390-400 C 400-500"},
        {"paced A, paced B, closing C 4, draw 0 .5, points 149 150 251",
         "A 0-150 B 150-300 A 300-400 C 400-500"},
        {"paced A, paced B, closing C 4, draw 0 .5, points 149 250 251",
         "A 0-250 B 250-400 C 400-500"},
        // Each turn of a lone camera counts from where it begins.
        {evenly + "clip B 450 500, closing C 4, draw 0 0 .5, points 160 310", "A 0-400 C 400-500"},
        {evenly + "clip B 160 500, wait B 20, points 160 310", "A 0-160 B 160-310 A 310-500"},
        // A note's camera comes at its frame for a drawn length, which nothing moves, as an
        // additional camera or the main one; then the walk goes on. Nothing is merged.
        {"note C 150, points 120 249 280",
         "A 0-100 B 100-150 C 150-250 A 250-350 B 350-450 A 450-500"},
        {"note A 0, " + evenly + "double, draw 0 .5 0, points 299", "A 0-300 B 300-400 A 400-500"},
        {"note B 250, clip B 0 260, wait B 20", "A 0-100 B 100-200 A 200-250 B 250-260 A 260-500"},
        // Those inside fixed and kept parts are passed over, and all but the first at a frame.
        {"opening A 4, section B 200 300, kept D 300 400, note C 0, note C 99, note B 100, "
         "note C 100, note C 200, note C 299, note C 300, note C 399, note C 450",
         "A 0-100 B 100-200 B 200-300 kept D 300-400 A 400-450 C 450-500"},
        {"note B 0, note C 30, note D 60",
         "B 0-30 C 30-60 D 60-160 A 160-260 B 260-360 A 360-460 B 460-500"},
        // A gap beside a note's shot is laid again until it has no fault.
        {"note C 130, closing D 4, range A 1 9, draw 0 0 0 0 0 0 0 0 0 0 0 .999",
         "A 0-130 C 130-230 A 230-255 B 255-355 A 355-380 B 380-400 D 400-500"},
        {"note X 200, section B 100 201", "A 0-100 B 100-201 A 201-301 B 301-401 A 401-500"}};
    for (const auto& [changes, outcome] : rows)
        EXPECT_EQ(Edit(changes).outcome(), outcome) << changes;
}

} // namespace
} // namespace shotweaver
