#include "engine/CutEngine.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/ScriptedRandom.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

namespace shotweaver {
namespace {

using test::failureOf;
using test::ProjectBuilder;
using test::ScriptedRandom;
using Clips = std::vector<test::ClipSpec>;

constexpr double step = 0x1p-53; // between two draws

/// Each cut's angle, first frame and end: "A 0-200 B 200-363".
std::string described(const std::vector<Cut>& cuts) {
    std::string text;
    for (const Cut& cut : cuts)
        text += fmt::format("{}{} {}-{}", text.empty() ? "" : " ", cut.angle, cut.start,
                            cut.start + cut.duration);
    return text;
}

/// Main camera A, additional camera B, half of the screen time each. Every shot takes 4 seconds:
/// 100 frames at 25 a second.
GenerationInputs fourSecondShots() {
    GenerationInputs inputs;
    inputs.mainCamera = "A";
    inputs.otherCameras = {"B"};
    inputs.mainShare = 0.5;
    inputs.averageShot = 8;
    inputs.mainRange = inputs.otherRange = SecondsRange{4, 4};
    return inputs;
}

/// Angles "A", "B", "C", "D" with these clips.
ProjectBuilder projectOf(std::int64_t length, const std::vector<Clips>& angles) {
    ProjectBuilder project;
    project.length = length;
    project.angles.clear();
    for (const Clips& clips : angles) {
        const std::string id(1, static_cast<char>('A' + project.angles.size()));
        project.angles.push_back({id, id, clips});
    }
    return project;
}

CutEngine coveredEngine(std::int64_t length, std::size_t angles) {
    return projectOf(length, std::vector<Clips>(angles, {{0, length}})).engine();
}

struct Outcome {
    std::string cuts; // or the sentence of the failure
    std::size_t drawn;
};

/// By default all draws are 0: the first candidate, the shortest shot.
Outcome generated(const CutEngine& engine, const GenerationInputs& inputs,
                  std::vector<double> draws = std::vector<double>(300)) {
    ScriptedRandom random(std::move(draws));
    std::string text;
    const std::string failure = failureOf(
        [&] { text = described(engine.generateCuts(inputs, random, test::countingUUIDs())); });
    return {failure.empty() ? text : failure, random.drawn()};
}

TEST(CutGeneration, pacesShotsByTheAverageWithoutRanges) {
    // 2 x 8 s x 0.5 are 200 frames, times 0.75 to 1.25; 162.5 rounds up. A camera is drawn for
    // first, also where there is only one to choose from.
    GenerationInputs inputs = fourSecondShots();
    inputs.mainRange = inputs.otherRange = std::nullopt;
    const Outcome edit = generated(coveredEngine(1000, 2), inputs,
                                   {0, .5, .9, .125, 0, 0, 0, 1 - step, 0, .5, 0, .5, 0, .5});
    EXPECT_EQ(edit.cuts, "A 0-200 B 200-363 A 363-513 B 513-763 A 763-963 B 963-1000");
    EXPECT_EQ(edit.drawn, 12U);

    // 2 x 10 s x 0.7 are 350 frames for the main camera, which leaves 150 for the other.
    inputs.mainShare = 0.7;
    inputs.averageShot = 10;
    EXPECT_EQ(generated(coveredEngine(1000, 2), inputs, std::vector<double>(8, .5)).cuts,
              "A 0-350 B 350-500 A 500-850 B 850-1000");

    ProjectBuilder slow = projectOf(3, {{{0, 3}}, {{0, 3}}});
    slow.frameDuration = "100/1s"; // a shot is at least one frame
    EXPECT_EQ(generated(slow.engine(), inputs).cuts, "A 0-1 B 1-2 A 2-3");
}

TEST(CutGeneration, drawsChoicePacingRangeDoubling) {
    GenerationInputs inputs = fourSecondShots();
    inputs.mainRange = inputs.otherRange = SecondsRange{4, 8}; // mean 6, so the draw is linear
    inputs.doubleMain = true;
    const Outcome edit = generated(coveredEngine(1000, 2), inputs,
                                   {0,  0,  .125,     .25,        // A: 100 + 12.5, not doubled
                                    0,  .9, .5,                   // B: 100 + 50
                                    .9, .9, .25,      .25 - step, // A: 2 x 125
                                    0,  .3, 0,                    // B: 100
                                    0,  .3, 1 - step, 0,          // A: 2 x 200, cut short
                                    0,  0,  0});
    EXPECT_EQ(edit.cuts, "A 0-113 B 113-263 A 263-513 B 513-613 A 613-1000");
    EXPECT_EQ(edit.drawn, 18U);
}

TEST(CutGeneration, usesTheLowBitsOfADraw) {
    class HighBits final : public RandomSource {
        std::uint64_t bits() override { return ~std::uint64_t{0} << 53U; }
    } random;
    GenerationInputs inputs = fourSecondShots();
    inputs.mainRange = inputs.otherRange = SecondsRange{4, 8};
    const auto cuts = coveredEngine(300, 2).generateCuts(inputs, random, test::countingUUIDs());
    EXPECT_EQ(described(cuts), "A 0-100 B 100-200 A 200-300");
}

TEST(CutGeneration, aimsWithinTheRangeAtTheShare) {
    struct Row {
        const char* label;
        double share;
        double average;
        SecondsRange main;
        std::optional<SecondsRange> other;
        double mainDraw;
        double otherDraw;
        std::string cuts;
    };
    const Row rows[] = {
        // 14 s wanted: p = 4/15, exponent 2.75. 7.5 s wanted: p = 7/8, exponent 1/7.
        {"initial", .7, 10, {10, 25}, SecondsRange{4, 8}, .5, 0x1p-7, "A 0-306 B 306-456"},
        // 54 s wanted of 4 to 8: p = 0.9, exponent 1/9. 2/3 s wanted: p = 0.1, exponent 9.
        {"clamped", .9, 10, {4, 8}, SecondsRange{4, 8}, 0x1p-9, .875, "A 0-150 B 150-280"},
        // 5 s wanted: p = 1/4, exponent 3, 12.5 frames round up. The other shot is only paced.
        {"average", .5, 5, {4, 8}, std::nullopt, .5, 0, "A 0-113 B 113-207"},
        {"equal bounds", .9, 10, {6, 6}, SecondsRange{4.04, 4.04}, .7, .2, "A 0-150 B 150-251"},
        // 125.25 to 150.75 frames hold 126 to 150, both of them reachable.
        {"least", .5, 10, {5.01, 6.03}, SecondsRange{4, 4}, 0, 0, "A 0-126 B 126-226"},
        {"most", .5, 10, {5.01, 6.03}, SecondsRange{4, 4}, 1 - step, 0, "A 0-150 B 150-250"},
    };
    const CutEngine engine = coveredEngine(1000, 2);
    for (const Row& row : rows) {
        GenerationInputs inputs = fourSecondShots();
        inputs.mainShare = row.share;
        inputs.averageShot = row.average;
        inputs.mainRange = row.main;
        inputs.otherRange = row.other;
        std::vector<double> draws;
        while (draws.size() < 60) {
            draws.insert(draws.end(), {0, 0, row.mainDraw, 0, 0});
            if (row.other) draws.push_back(row.otherDraw);
        }
        const std::string cuts = generated(engine, inputs, draws).cuts;
        EXPECT_EQ(cuts.substr(0, cuts.find(" A ")), row.cuts) << row.label;
    }
}

TEST(CutGeneration, choosesByWeight) {
    const CutEngine engine = coveredEngine(200, 4);
    GenerationInputs inputs = fourSecondShots();
    inputs.otherCameras = {"B", "C", "D"};
    inputs.frequencies = {{"A", 10}, {"B", 3}, {"D", 8}}; // C counts as 5: 16 in all
    const std::pair<double, const char*> rows[] = {
        {0, "B"}, {.1875 - step, "B"}, {.1875, "C"}, {.5 - step, "C"}, {.5, "D"}, {1 - step, "D"}};
    for (const auto& [draw, camera] : rows)
        EXPECT_EQ(generated(engine, inputs, {.99, 0, 0, draw, 0, 0}).cuts,
                  fmt::format("A 0-100 {} 100-200", camera))
            << draw;
}

TEST(CutGeneration, keepsReturnTimesToTheFrame) {
    const CutEngine engine = coveredEngine(400, 3);
    struct Row {
        const char* label;
        std::vector<std::string> others;
        AngleNumbers returnTimes;
        std::string cuts;
    };
    const Row rows[] = {
        {"exactly past", {"B", "C"}, {{"B", 4}}, "A 0-100 B 100-200 A 200-300 B 300-400"},
        {"rounded up", {"B", "C"}, {{"B", 4.001}}, "A 0-100 B 100-200 A 200-300 C 300-400"},
        {"main waits", {"B", "C"}, {{"A", 4.04}}, "A 0-100 B 100-200 C 200-300 A 300-400"},
        {"main never back", {"B", "C"}, {{"A", 600}}, "A 0-100 B 100-200 C 200-300 B 300-400"},
        {"lone other camera holds", {"B"}, {{"A", 7}}, "A 0-100 B 100-300 A 300-400"},
        {"main camera holds", {"B"}, {{"B", 8.04}}, "A 0-100 B 100-200 A 200-400"},
        {"nobody waits for a first shot", {"B"}, {{"A", 600}, {"B", 600}}, "A 0-100 B 100-400"},
    };
    for (const Row& row : rows) {
        GenerationInputs inputs = fourSecondShots();
        inputs.otherCameras = row.others;
        inputs.returnTimes = row.returnTimes;
        EXPECT_EQ(generated(engine, inputs).cuts, row.cuts) << row.label;
    }

    // Fixed shots count as shots of their camera, and never wait themselves.
    GenerationInputs inputs = fourSecondShots();
    inputs.otherCameras = {"B", "C"};
    inputs.returnTimes = {{"B", 8}};
    inputs.opening = {"B", 2};
    EXPECT_EQ(generated(engine, inputs).cuts, "B 0-50 A 50-150 C 150-250 A 250-350 B 350-400");
    inputs.sections = {{"B", 150, 200}};
    EXPECT_EQ(generated(engine, inputs).cuts, "B 0-50 A 50-150 B 150-200 A 200-300 C 300-400");
}

/// What a row of a table changes.
struct Case {
    explicit Case(std::int64_t length) : a{{0, length}}, b{{0, length}} {}

    Clips a;
    Clips b;
    GenerationInputs in = fourSecondShots();
};

TEST(CutGeneration, laysFixedPartsUnmerged) {
    struct Row {
        const char* label;
        void (*change)(Case&);
        std::string cuts;
    };
    // C covers the project, but is not selected.
    const Row rows[] = {
        {"opening on the main camera",
         [](auto& c) {
             c.in.opening = {"A", 4};
         },
         "A 0-100 B 100-200 A 200-300 B 300-400 A 400-500"},
        {"opening continued",
         [](auto& c) {
             c.in.opening = {"A", 4}, c.b = {{200, 300}};
         },
         "A 0-100 A 100-200 B 200-300 A 300-400 B 400-500"},
        {"opening on another camera",
         [](auto& c) {
             c.in.opening = {"C", 10};
         },
         "C 0-250 A 250-350 B 350-450 A 450-500"},
        {"closing after its own camera",
         [](auto& c) {
             c.in.closing = {"B", 4};
         },
         "A 0-100 B 100-200 A 200-300 B 300-400 B 400-500"},
        {"bookends alone",
         [](auto& c) {
             c.in.opening = c.in.closing = {"A", 10};
         },
         "A 0-250 A 250-500"},
        {"closing alone",
         [](auto& c) {
             c.in.closing = {"C", 20};
         },
         "C 0-500"},
        {"section cuts a shot short",
         [](auto& c) {
             c.in.sections = {{"B", 250, 450}};
         },
         "A 0-100 B 100-200 A 200-250 B 250-450 A 450-500"},
        {"section after its own camera",
         [](auto& c) {
             c.in.sections = {{"B", 150, 300}};
         },
         "A 0-100 B 100-150 B 150-300 A 300-400 B 400-500"},
        {"section before its own camera",
         [](auto& c) {
             c.in.sections = {{"B", 100, 300}}, c.a = {{0, 300}, {400, 100}};
         },
         "A 0-100 B 100-300 B 300-400 A 400-500"},
        {"sections typed backwards",
         [](auto& c) {
             c.in.sections = {{"C", 200, 400}, {"A", 0, 50}};
         },
         "A 0-50 B 50-150 A 150-200 C 200-400 A 400-500"},
        {"hold after a section",
         [](auto& c) {
             c.in.sections = {{"A", 100, 200}}, c.b = {{400, 100}};
         },
         "A 0-100 A 100-200 A 200-400 B 400-500"},
        {"everything abuts",
         [](auto& c) {
             c.in.opening = c.in.closing = {"B", 4};
             c.in.sections = {{"B", 300, 400}, {"B", 100, 300}};
         },
         "B 0-100 B 100-300 B 300-400 B 400-500"},
    };
    for (const Row& row : rows) {
        Case with(500);
        row.change(with);
        const CutEngine engine = projectOf(500, {with.a, with.b, {{0, 500}}}).engine();
        EXPECT_EQ(generated(engine, with.in).cuts, row.cuts) << row.label;
    }
}

TEST(CutGeneration, holdsACameraOverTheGapsOfOthers) {
    const CutEngine engine = projectOf(500, {{{0, 500}}, {{0, 150}, {350, 150}}}).engine();
    const Outcome edit = generated(engine, fourSecondShots());
    EXPECT_EQ(edit.cuts, "A 0-100 B 100-150 A 150-350 B 350-450 A 450-500");
    EXPECT_EQ(edit.drawn, 18U); // six shots, two of which became one cut
}

TEST(CutGeneration, saysWhyNoShotCanBeLaid) {
    const auto uncovered = [](const char* at, const char* lasting, const char* advice) {
        return fmt::format("No selected camera has video at {} seconds. The uncovered section "
                           "lasts {} seconds. {}",
                           at, lasting, advice);
    };
    const char* const fillGap = "Include another camera covering this gap, or remove the uncovered "
                                "section in Final Cut and export XML again.";
    const char* const trim = "Trim the project to the end of the camera footage in Final Cut and "
                             "export XML again, or include another camera covering the ending.";
    const std::string noFrame = "The shot range must contain at least one full frame.";
    struct Row {
        const char* label;
        void (*change)(Case&);
        std::string outcome;
    };
    const Row rows[] = {
        {"gap",
         [](auto& c) {
             c.a = {{0, 200}, {350, 650}}, c.b = {{0, 150}, {301, 10}};
         },
         uncovered("8.00", "4.04", fillGap)},
        {"at the start",
         [](auto& c) {
             c.a = {{10, 990}}, c.b = {{20, 980}};
         },
         uncovered("0.00", "0.40", fillGap)},
        {"ending",
         [](auto& c) {
             c.a = {{0, 951}}, c.b = {{0, 500}};
         },
         uncovered("38.04", "1.96", trim)},
        {"up to the closing",
         [](auto& c) {
             c.in.closing = {"A", 4}, c.a = {{0, 200}, {900, 100}}, c.b = {{0, 1}};
         },
         uncovered("8.00", "28.00", fillGap)},
        {"after a section on a camera not selected",
         [](auto& c) {
             c.in.sections = {{"C", 200, 400}}, c.a = c.b = {{0, 200}};
         },
         uncovered("16.00", "24.00", trim)},
        {"main camera waits",
         [](auto& c) {
             c.in.returnTimes["A"] = 2.44, c.b = {{0, 160}};
         },
         "Minimum return times prevent a camera change at 01:00:06:10, and the current camera has "
         "no footage there. Reduce a return time or include another camera."},
        {"main camera waits no more",
         [](auto& c) {
             c.in.returnTimes["A"] = 2.4, c.b = {{0, 160}};
         },
         "A 0-100 B 100-160 A 160-1000"},
        {"no frame for the main",
         [](auto& c) {
             c.in.mainRange = {5.01, 5.02};
         },
         noFrame},
        {"no frame for the other",
         [](auto& c) {
             c.in.otherRange = {5.01, 5.02};
         },
         noFrame},
        {"no frame, no need",
         [](auto& c) {
             c.in.mainRange = {5.01, 5.02};
             c.in.sections = {{"A", 0, 900}, {"C", 950, 1000}};
         },
         "A 0-900 B 900-950 C 950-1000"},
    };
    for (const Row& row : rows) {
        Case with(1000);
        row.change(with);
        ProjectBuilder project = projectOf(1000, {with.a, with.b, {{0, 1000}}});
        project.timelineStart = 90000;
        EXPECT_EQ(generated(project.engine(), with.in).cuts, row.outcome) << row.label;
    }
    ProjectBuilder ntsc = projectOf(1000, {{{0, 100}}, {{0, 100}}});
    ntsc.frameDuration = "1001/30000s"; // 3.3366.. and 30.0299.. seconds
    GenerationInputs inputs = fourSecondShots();
    inputs.mainRange = {4, 5};
    EXPECT_EQ(generated(ntsc.engine(), inputs).cuts, uncovered("3.34", "30.03", trim));
}

/// A project and settings drawn from a seed. "A" is selected and covers everything, the other
/// angles have pieces; so nothing but return times can make an edit impossible.
class Scenario {
  public:
    explicit Scenario(std::uint64_t seed) : random_(seed) {
        project.frameDuration = upTo(1) == 0 ? "1/25s" : "1001/30000s";
        project.length = 500 + upTo(4500);
        project.angles = {{"A", "A", {{0, project.length}}}};
        for (const char* id : {"B", "C", "D", "E"})
            project.angles.push_back({id, id, pieces()});
        chooseCameras();
        chooseFixedParts(project.engine());
    }

    ProjectBuilder project;
    GenerationInputs inputs;

  private:
    std::int64_t upTo(std::int64_t most) {
        return static_cast<std::int64_t>(random_() % (static_cast<std::uint64_t>(most) + 1));
    }
    double tenths(std::int64_t most) { return static_cast<double>(upTo(most)) / 10; }

    Clips pieces() {
        Clips clips{{0, 1}};
        for (std::int64_t at = upTo(300) + 1; at < project.length;) {
            clips.push_back({at, 1 + upTo(1200)});
            at += clips.back().duration + upTo(400);
        }
        return clips;
    }

    SecondsRange shotLengths() {
        const double lower = 1 + tenths(60);
        return {lower, lower + 0.1 + tenths(60)};
    }

    void chooseCameras() {
        std::vector<std::string> cameras{"A", "B", "C", "D"};
        std::swap(cameras[0], cameras[static_cast<std::size_t>(upTo(1))]);
        cameras.resize(static_cast<std::size_t>(2 + upTo(2)));
        inputs.mainCamera = cameras.front();
        inputs.otherCameras.assign(cameras.begin() + 1, cameras.end());
        inputs.mainShare = 0.1 + tenths(8);
        inputs.doubleMain = upTo(1) == 0;
        inputs.mainRange = shotLengths();
        inputs.otherRange = shotLengths();
        for (const std::string& camera : cameras) {
            inputs.frequencies[camera] = 1 + tenths(90);
            if (upTo(2) == 0) inputs.returnTimes[camera] = tenths(150);
        }
    }

    /// Opening, sections and closing, in the project's order, wherever the drawn camera has
    /// footage.
    void chooseFixedParts(const CutEngine& engine) {
        const auto draw = [&](const FrameRange& place) -> std::optional<std::string> {
            const std::string camera(1, static_cast<char>('A' + upTo(4)));
            if (!rangeContaining(engine.coverage.at(camera), place)) return std::nullopt;
            return camera;
        };
        const BookendShot shot{"", 1 + tenths(40)};
        const std::int64_t frames = engine.bookendFrames(shot);
        std::int64_t at = 0;
        std::int64_t end = engine.length;
        if (const auto camera = draw({0, frames})) {
            inputs.opening = {*camera, shot.seconds};
            at = frames;
        }
        if (const auto camera = draw({end - frames, end})) {
            inputs.closing = {*camera, shot.seconds};
            end -= frames;
        }
        while (true) {
            at += upTo(2) == 0 ? 0 : upTo(1200);
            const FrameRange place{at, at + 1 + upTo(200)};
            if (place.upperBound > end) break;
            if (const auto camera = draw(place))
                inputs.sections.push_back({*camera, place.lowerBound, place.upperBound});
            at = place.upperBound;
        }
        std::reverse(inputs.sections.begin(), inputs.sections.end());
    }

    std::mt19937_64 random_;
};

/// What holds of every finished edit, however its shots were drawn.
class EditRules {
  public:
    EditRules(const CutEngine& engine, const GenerationInputs& inputs, const std::vector<Cut>& cuts)
        : engine_(engine), inputs_(inputs), cuts_(cuts), cameras_(inputs.otherCameras),
          fixed_(inputs.sections) {
        cameras_.push_back(inputs.mainCamera);
        const std::int64_t closing = engine.length - engine.bookendFrames(inputs.closing);
        if (inputs.opening)
            fixed_.push_back({inputs.opening->angle, 0, engine.bookendFrames(inputs.opening)});
        if (inputs.closing) fixed_.push_back({inputs.closing->angle, closing, engine.length});
    }

    /// The first rule that does not hold; empty when all do.
    std::string broken() const {
        std::int64_t position = 0;
        std::size_t fixedCuts = 0;
        std::set<std::string> ids;
        for (std::size_t i = 0; i < cuts_.size(); ++i) {
            const Cut& cut = cuts_[i];
            std::string fault;
            if (cut.start != position || cut.duration < 1) fault = "order";
            position += cut.duration;
            if (!rangeContaining(engine_.coverage.at(cut.angle), {cut.start, position}))
                fault = "coverage";
            if (!ids.insert(cut.id.text()).second) fault = "identifier";
            if (isFixed(cut)) ++fixedCuts;
            if (fault.empty() && !isFixed(cut)) fault = faultOfFree(i);
            if (!fault.empty())
                return fmt::format("{} of cut {} in {}", fault, i, described(cuts_));
        }
        if (position != engine_.length) return "length";
        // Cuts do not overlap, so as many fixed cuts as fixed parts is each of them once.
        return fixedCuts == fixed_.size() ? "" : "a fixed part is missing";
    }

  private:
    bool isFixed(const Cut& cut) const {
        const FixedCameraSection same{cut.angle, cut.start, cut.start + cut.duration};
        return std::find(fixed_.begin(), fixed_.end(), same) != fixed_.end();
    }

    double frames(double seconds) const {
        return seconds * static_cast<double>(engine_.frameDenominator) /
               static_cast<double>(engine_.frameNumerator);
    }

    /// Whether a camera not on screen may come on at `frame`, after the cuts before the i-th.
    bool mayComeOn(const std::string& camera, std::int64_t frame, std::size_t i) const {
        if (!rangeContaining(engine_.coverage.at(camera), {frame, frame + 1})) return false;
        while (i-- > 0) {
            if (cuts_[i].angle == camera)
                return static_cast<double>(frame - cuts_[i].start - cuts_[i].duration) >=
                       frames(numberFor(inputs_.returnTimes, camera, 0));
        }
        return true;
    }

    bool anotherMayComeOn(std::int64_t frame, std::size_t i) const {
        return std::any_of(cameras_.begin(), cameras_.end(), [&](const std::string& camera) {
            return camera != cuts_[i].angle && mayComeOn(camera, frame, i);
        });
    }

    std::string faultOfFree(std::size_t i) const {
        const Cut& cut = cuts_[i];
        const std::string& main = inputs_.mainCamera;
        if (std::find(cameras_.begin(), cameras_.end(), cut.angle) == cameras_.end())
            return "selection";
        const bool continues = i > 0 && cuts_[i - 1].angle == cut.angle;
        if (continues && !isFixed(cuts_[i - 1])) return "merging";
        if (continues && anotherMayComeOn(cut.start, i)) return "camera change";
        if (!continues && !mayComeOn(cut.angle, cut.start, i)) return "return time";
        const bool mainIsDue = i == 0 || cuts_[i - 1].angle != main;
        if (mainIsDue && cut.angle != main && mayComeOn(main, cut.start, i)) return "main is due";
        return faultOfLength(i);
    }

    std::string faultOfLength(std::size_t i) const {
        const Cut& cut = cuts_[i];
        const std::int64_t end = cut.start + cut.duration;
        const bool isMain = cut.angle == inputs_.mainCamera;
        const SecondsRange& range = isMain ? *inputs_.mainRange : *inputs_.otherRange;
        const auto least = static_cast<std::int64_t>(std::ceil(frames(range.lower)));
        const auto most = static_cast<std::int64_t>(std::floor(frames(range.upper))) *
                          (isMain && inputs_.doubleMain ? 2 : 1);
        if (cut.duration < least && !mustEndAt(end, cut.angle)) return "shortest length";
        if (cut.duration <= most) return "";
        // A longer hold is several shots, between which no other camera could come on.
        for (std::int64_t change = cut.start + least; change <= cut.start + most; ++change) {
            if (!anotherMayComeOn(change, i)) return "";
        }
        return "longest length";
    }

    /// True where the camera's footage, the project or the room before a fixed part ends.
    bool mustEndAt(std::int64_t end, const std::string& angle) const {
        const Coverage& footage = engine_.coverage.at(angle);
        return end == engine_.length ||
               std::any_of(footage.begin(), footage.end(),
                           [&](const FrameRange& range) { return range.upperBound == end; }) ||
               std::any_of(fixed_.begin(), fixed_.end(),
                           [&](const FixedCameraSection& part) { return part.start == end; });
    }

    const CutEngine& engine_;
    const GenerationInputs& inputs_;
    const std::vector<Cut>& cuts_;
    std::vector<std::string> cameras_;
    std::vector<FixedCameraSection> fixed_;
};

TEST(CutGeneration, keepsItsRulesWhateverIsDrawn) {
    constexpr int seeds = 400;
    int finished = 0;
    for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
        const Scenario scenario(seed);
        const CutEngine engine = scenario.project.engine();
        SeededRandom random(seed);
        std::vector<Cut> cuts;
        const std::string failure =
            failureOf([&] { cuts = engine.generateCuts(scenario.inputs, random, secureUUIDs()); });
        if (failure.empty()) {
            ++finished;
            EXPECT_EQ(EditRules(engine, scenario.inputs, cuts).broken(), "") << "seed " << seed;
        } else {
            EXPECT_TRUE(failure.starts_with("Minimum return times prevent a camera change at "))
                << "seed " << seed << ": " << failure;
        }
    }
    EXPECT_GT(finished, seeds / 2);
}

} // namespace
} // namespace shotweaver
