#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "tests/support/ProjectBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace shotweaver {
namespace {

using test::failureOf;
using test::ProjectBuilder;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::string returnTimes = "Minimum return times must be between 0 and 600 seconds.";
const std::string chooseCameras = "Choose a main camera and at least one additional video angle.";
const std::string frequency = "Camera frequency must be between 1 and 10.";
const std::string shotLengths = "Shot lengths must be between 1 and 120 seconds.";
const std::string bookendLengths = "Opening and closing lengths must be between 1 and 120 seconds.";
const std::string bookendsTooLong =
    "The opening and closing shots are longer than the project. Reduce their lengths.";
const std::string openingFootage =
    "The chosen opening camera does not have footage for the whole requested shot. Choose another "
    "camera or shorten the shot.";
const std::string closingFootage =
    "The chosen closing camera does not have footage for the whole requested shot. Choose another "
    "camera or shorten the shot.";
const std::string sectionPlace =
    "Fixed sections must have an end after their start, stay inside the project, and not overlap "
    "opening or closing shots.";
const std::string sectionOverlap =
    "Fixed camera sections overlap. Adjust their start or end timecodes.";

/// The bounds of a number, and what lies just out of them.
std::vector<double> within(double lower, double upper) {
    return {lower, upper};
}
std::vector<double> outOf(double lower, double upper) {
    return {std::nextafter(lower, -1), std::nextafter(upper, 1000), infinity, -infinity,
            notANumber};
}

TEST(EditSettings, validatesEveryNumber) {
    struct Row {
        const char* label;
        void (*set)(EditSettings&, double);
        double lower;
        double upper;
    };
    const Row rows[] = {
        {"main share", [](auto& s, double x) { s.mainShare = x; }, 10, 90},
        {"average shot", [](auto& s, double x) { s.averageShot = x; }, 4, 20},
        {"main minimum", [](auto& s, double x) { s.mainMinimum = x; }, 1, 25},
        {"main maximum", [](auto& s, double x) { s.mainMaximum = x; }, 10, 120},
        {"main range", [](auto& s, double x) { s.mainMinimum = s.mainMaximum = x; }, 1, 120},
        {"other minimum", [](auto& s, double x) { s.otherMinimum = x; }, 1, 8},
        {"other maximum", [](auto& s, double x) { s.otherMaximum = x; }, 4, 120},
        {"opening, though off", [](auto& s, double x) { s.openingSeconds = x; }, 1, 120},
        {"closing, though off", [](auto& s, double x) { s.closingSeconds = x; }, 1, 120},
        {"frequency", [](auto& s, double x) { s.frequencies["B"] = x; }, 1, 10},
        {"return time", [](auto& s, double x) { s.returnTimes["B"] = x; }, 0, 600},
    };
    const auto failureWith = [](const Row& row, double number) {
        EditSettings settings;
        settings.frequencies = {{"A", 5}, {"C", 5}};
        settings.returnTimes = {{"A", 5}, {"C", 5}};
        row.set(settings, number);
        return failureOf([&] { settings.validate(); });
    };
    for (const Row& row : rows) {
        for (const double number : within(row.lower, row.upper))
            EXPECT_EQ(failureWith(row, number), "") << row.label << number;
        for (const double number : outOf(row.lower, row.upper))
            EXPECT_EQ(failureWith(row, number),
                      "The saved session contains invalid settings. Its stored data has been kept.")
                << row.label << number;
    }
}

/// 400 seconds at 25 frames a second. "A" and "B" cover it all, "C" all but [0,100) and
/// [9900,9920), "S" is heard only.
CutEngine tenThousandFrames() {
    ProjectBuilder project;
    project.length = 10000;
    project.angles = {{"A", "A", {{0, 10000}}},
                      {"B", "B", {{0, 10000}}},
                      {"C", "C", {{100, 4900}, {5000, 4900}, {9920, 80}}},
                      {"S", "S", {{0, 10000}}, false}};
    return project.engine();
}

GenerationInputs plainInputs() {
    GenerationInputs inputs;
    inputs.mainCamera = "A";
    inputs.otherCameras = {"B"};
    inputs.mainRange = SecondsRange{5, 6};
    inputs.otherRange = SecondsRange{4, 5};
    return inputs;
}

std::string generationFailure(const CutEngine& engine, const GenerationInputs& inputs) {
    SeededRandom random(1);
    return failureOf([&] { engine.generateCuts(inputs, random, secureUUIDs()); });
}

TEST(EditChecks, refuseNumbersOutOfTheirRanges) {
    struct Row {
        const char* label;
        void (*set)(GenerationInputs&, double);
        double lower;
        double upper;
        std::string sentence;
    };
    const Row rows[] = {
        {"return time", [](auto& i, double x) { i.returnTimes["B"] = x; }, 0, 600, returnTimes},
        {"of no camera", [](auto& i, double x) { i.returnTimes["gone"] = x; }, 0, 600, returnTimes},
        {"main share", [](auto& i, double x) { i.mainShare = x; }, 0.1, 0.9, chooseCameras},
        {"average shot", [](auto& i, double x) { i.averageShot = x; }, 4, 20, chooseCameras},
        {"frequency", [](auto& i, double x) { i.frequencies["B"] = x; }, 1, 10, frequency},
        {"of no camera", [](auto& i, double x) { i.frequencies["gone"] = x; }, 1, 10, frequency},
        {"main range",
         [](auto& i, double x) {
             i.mainRange = {x, x};
         },
         1, 120, shotLengths},
        {"other range",
         [](auto& i, double x) {
             i.otherRange = {x, x};
         },
         1, 120, shotLengths},
        {"opening",
         [](auto& i, double x) {
             i.opening = {"A", x};
         },
         1, 120, bookendLengths},
        {"closing",
         [](auto& i, double x) {
             i.closing = {"A", x};
         },
         1, 120, bookendLengths},
    };
    const CutEngine engine = tenThousandFrames();
    const auto failureWith = [&](const Row& row, double number) {
        GenerationInputs inputs = plainInputs();
        row.set(inputs, number);
        return generationFailure(engine, inputs);
    };
    for (const Row& row : rows) {
        for (const double number : within(row.lower, row.upper))
            EXPECT_EQ(failureWith(row, number), "") << row.label << number;
        for (const double number : outOf(row.lower, row.upper))
            EXPECT_EQ(failureWith(row, number), row.sentence) << row.label << number;
    }
}

TEST(EditChecks, refuseCamerasAndBookendsThatDoNotFit) {
    struct Row {
        const char* label;
        void (*change)(GenerationInputs&);
        std::string sentence = "";
    };
    const Row rows[] = {
        {"no ranges", [](auto& i) { i.mainRange.reset(), i.otherRange.reset(); }},
        {"bookends to the edge of footage",
         [](auto& i) {
             i.closing = {"C", 3.2};
         }},
        {"section between bookends that it abuts",
         [](auto& i) {
             i.opening = i.closing = {"A", 4}, i.sections = {{"B", 100, 9900}};
         }},

        {"no additional camera", [](auto& i) { i.otherCameras.clear(); }, chooseCameras},
        {"main camera twice",
         [](auto& i) {
             i.otherCameras = {"B", "A"};
         },
         chooseCameras},
        {"camera twice",
         [](auto& i) {
             i.otherCameras = {"B", "C", "B"};
         },
         chooseCameras},
        {"unknown main camera", [](auto& i) { i.mainCamera = "gone"; }, chooseCameras},
        {"main camera without picture", [](auto& i) { i.mainCamera = "S"; }, chooseCameras},
        {"camera without picture",
         [](auto& i) {
             i.otherCameras = {"B", "S"};
         },
         chooseCameras},
        {"opening without its first frames",
         [](auto& i) {
             i.opening = {"C", 5};
         },
         openingFootage},
        {"opening on no camera",
         [](auto& i) {
             i.opening = {"gone", 5};
         },
         openingFootage},
        {"closing over a gap",
         [](auto& i) {
             i.closing = {"C", 3.24};
         },
         closingFootage},
        {"section into the opening",
         [](auto& i) {
             i.opening = {"A", 4}, i.sections = {{"A", 99, 200}};
         },
         sectionPlace},
        {"section into the closing",
         [](auto& i) {
             i.closing = {"A", 4}, i.sections = {{"A", 800, 9901}};
         },
         sectionPlace},
    };
    const CutEngine engine = tenThousandFrames();
    for (const Row& row : rows) {
        GenerationInputs inputs = plainInputs();
        row.change(inputs);
        EXPECT_EQ(generationFailure(engine, inputs), row.sentence) << row.label;
    }

    const CutEngine fortySeconds = ProjectBuilder().engine();
    GenerationInputs inputs = plainInputs();
    inputs.opening = {"A", 15};
    inputs.closing = {"B", 25};
    EXPECT_EQ(generationFailure(fortySeconds, inputs), "");
    inputs.opening->seconds = 15.04;
    EXPECT_EQ(generationFailure(fortySeconds, inputs), bookendsTooLong);
}

TEST(EditChecks, failInOrder) {
    // Everything is wrong at first; each repair uncovers the next fault.
    ProjectBuilder project;
    project.angles.push_back({"C", "C", {{100, 800}, {920, 40}}});
    const CutEngine engine = project.engine();
    GenerationInputs inputs = plainInputs();
    inputs.returnTimes["A"] = 601;
    inputs.otherCameras.clear();
    inputs.mainShare = 0.95;
    inputs.frequencies["B"] = 11;
    inputs.mainRange->lower = 0.5;
    inputs.otherRange->upper = 121;
    inputs.opening = {"C", 0.5};
    inputs.closing = {"C", 121};
    inputs.sections = {{"C", 850, 950}, {"A", 300, 300}};

    struct Step {
        std::string sentence;
        void (*repair)(GenerationInputs&);
    };
    const Step steps[] = {
        {returnTimes, [](auto& i) { i.returnTimes.clear(); }},
        {chooseCameras, [](auto& i) { i.otherCameras = {"B"}; }},
        {chooseCameras, [](auto& i) { i.mainShare = 0.7; }},
        {frequency, [](auto& i) { i.frequencies.clear(); }},
        {shotLengths, [](auto& i) { i.mainRange->lower = 5; }},
        {shotLengths, [](auto& i) { i.otherRange->upper = 5; }},
        {bookendLengths, [](auto& i) { i.opening->seconds = 30; }},
        {bookendLengths, [](auto& i) { i.closing->seconds = 30; }},
        {bookendsTooLong, [](auto& i) { i.opening->seconds = i.closing->seconds = 1; }},
        {openingFootage, [](auto& i) { i.opening->angle = "A"; }},
        {closingFootage, [](auto& i) { i.closing->angle = "A"; }},
        {sectionPlace, [](auto& i) { i.sections[1].end = 400; }},
        {"The camera chosen for a fixed section has missing footage between 00:00:34:00 and "
         "00:00:38:00. Choose another camera or shorten the section.",
         [](auto& i) { i.sections[0].end = 900; }},
        {"", [](auto&) {}},
    };
    for (const Step& step : steps) {
        EXPECT_EQ(generationFailure(engine, inputs), step.sentence);
        step.repair(inputs);
    }
}

TEST(EditChecks, turnBookendSecondsIntoFrames) {
    const CutEngine engine = ProjectBuilder().engine();
    EXPECT_EQ(engine.bookendFrames(std::nullopt), 0);
    const std::pair<double, std::int64_t> at25[] = {{1, 25},      {1.5, 38}, {1.06, 27},
                                                    {1.0599, 26}, {1.7, 43}, {120, 3000}};
    for (const auto& [seconds, frames] : at25)
        EXPECT_EQ(engine.bookendFrames(BookendShot{"A", seconds}), frames) << seconds;

    ProjectBuilder slow;
    slow.frameDuration = "3/1s";
    const std::pair<double, std::int64_t> atAThird[] = {{1, 1}, {4.49, 1}, {4.5, 2}, {120, 40}};
    for (const auto& [seconds, frames] : atAThird)
        EXPECT_EQ(slow.engine().bookendFrames(BookendShot{"A", seconds}), frames) << seconds;
}

TEST(EditChecks, validateSectionsInOrderOfTheirStarts) {
    ProjectBuilder project;
    project.timelineStart = 90000;
    project.angles.push_back({"C", "C", {{150, 350}}});
    const CutEngine engine = project.engine();
    const auto missing = [](const char* from, const char* to) {
        return std::string("The camera chosen for a fixed section has missing footage between ") +
               from + " and " + to + ". Choose another camera or shorten the section.";
    };
    // The opening takes 100 frames, the closing starts at 900.
    EXPECT_EQ(
        engine.validateSections({{"A", 500, 900}, {"C", 150, 500}, {"A", 100, 150}}, 100, 900),
        (std::vector<FixedCameraSection>{{"A", 100, 150}, {"C", 150, 500}, {"A", 500, 900}}));
    struct Row {
        const char* label;
        std::vector<FixedCameraSection> sections;
        std::string sentence;
    };
    const Row refused[] = {
        {"before the opening's end", {{"A", 99, 200}}, sectionPlace},
        {"after the closing's start", {{"A", 800, 901}}, sectionPlace},
        {"empty", {{"A", 300, 300}}, sectionPlace},
        {"backwards", {{"A", 300, 200}}, sectionPlace},
        {"overlap, typed backwards", {{"A", 299, 400}, {"B", 200, 300}}, sectionOverlap},
        {"footage starts late", {{"C", 149, 200}}, missing("01:00:05:24", "01:00:08:00")},
        {"footage ends early", {{"C", 400, 501}}, missing("01:00:16:00", "01:00:20:01")},
        {"unknown camera", {{"gone", 400, 500}}, missing("01:00:16:00", "01:00:20:00")},
        {"empty before overlap", {{"A", 200, 300}, {"A", 250, 250}}, sectionPlace},
        {"overlap before footage", {{"A", 200, 300}, {"C", 250, 600}}, sectionOverlap},
        {"the earlier section first",
         {{"A", 300, 300}, {"C", 100, 200}},
         missing("01:00:04:00", "01:00:08:00")},
    };
    for (const Row& row : refused)
        EXPECT_EQ(failureOf([&] { engine.validateSections(row.sections, 100, 900); }), row.sentence)
            << row.label;

    // Sections with one start stay as typed.
    std::vector<FixedCameraSection> sameStart(40, {"A", 450, 500});
    sameStart.front().angle = "gone";
    EXPECT_EQ(failureOf([&] { engine.validateSections(sameStart, 100, 900); }),
              missing("01:00:18:00", "01:00:20:00"));
}

TEST(EditChecks, wantSoundThroughout) {
    ProjectBuilder project;
    project.angles = {
        {"whole", "whole", {{0, 1000}}},          {"abutting", "abutting", {{0, 400}, {400, 600}}},
        {"ends early", "ends early", {{0, 999}}}, {"starts late", "starts late", {{1, 999}}},
        {"gap", "gap", {{0, 400}, {401, 599}}},   {"silent", "silent", {{0, 1000}}, true, false}};
    const CutEngine engine = project.engine();
    for (const char* audio : {"whole", "abutting"})
        EXPECT_EQ(failureOf([&] { engine.checkAudioCoverage(audio); }), "") << audio;
    for (const char* audio : {"ends early", "starts late", "gap", "silent", "unknown", ""})
        EXPECT_EQ(failureOf([&] { engine.checkAudioCoverage(audio); }),
                  "This audio angle does not cover the whole project. Choose a continuous audio "
                  "angle.")
            << audio;
}

} // namespace
} // namespace shotweaver
