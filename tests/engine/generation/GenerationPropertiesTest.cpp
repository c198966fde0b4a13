#include "engine/CutEngine.h"
#include "engine/generation/CutGeneration.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace shotweaver {
namespace {

using Frames = std::int64_t;
using Cuts = std::vector<Cut>;

constexpr const char* noFrameInRange = "The shot range must contain at least one full frame.";

/// Identifiers that count up.
UUIDMaker risingUUIDs() {
    return [next = 0U]() mutable {
        UUID uuid;
        for (unsigned rest = ++next, byte = 4; byte > 0; rest >>= 8U)
            uuid.bytes[--byte] = static_cast<std::uint8_t>(rest & 0xffU);
        return uuid;
    };
}

/// What must hold for one set of inputs, apart from how shots are drawn: which sentence refuses it,
/// and whether there are draws that give a list.
class Rules {
  public:
    Rules(const CutEngine& engine, const GenerationInputs& in) : engine_(engine), in_(in) {
        std::vector<std::string> names = in.otherCameras;
        names.insert(names.begin(), in.mainCamera);
        for (const std::string& name : names)
            cameras_.push_back({name, footage(name), waitOf(name), never});
    }

    /// The sentence of the first input check that fails. Finds the fixed parts.
    std::string refusal() {
        const auto within = [](double x, double least, double most) {
            return x >= least && x <= most; // no other number, nor what is none
        };
        const auto all = [&](const AngleNumbers& numbers, double least, double most) {
            return std::all_of(numbers.begin(), numbers.end(),
                               [&](const auto& x) { return within(x.second, least, most); });
        };
        const auto isLength = [&](const auto& range) {
            return !range || (range->lower >= 1 && range->upper <= 120);
        };
        std::set<std::string> names;
        for (const Camera& camera : cameras_)
            if (!camera.footage.empty()) names.insert(camera.name); // those shown, each once
        if (!all(in_.returnTimes, 0, 600))
            return "Minimum return times must be between 0 and 600 seconds.";
        if (cameras_.size() < 2 || names.size() != cameras_.size() ||
            !within(in_.mainShare, 0.1, 0.9) || !within(in_.averageShot, 4, 20))
            return "Choose a main camera and at least one additional video angle.";
        if (!all(in_.frequencies, 1, 10)) return "Camera frequency must be between 1 and 10.";
        if (!isLength(in_.mainRange) || !isLength(in_.otherRange))
            return "Shot lengths must be between 1 and 120 seconds.";
        for (const auto& shot : {in_.opening, in_.closing})
            if (shot && !within(shot->seconds, 1, 120))
                return "Opening and closing lengths must be between 1 and 120 seconds.";
        return refusedPart();
    }

    /// Whether the walk may end with a sentence.
    bool mayEndWith(const std::string& sentence) const {
        const Lengths main = lengths(true);
        const Lengths other = lengths(false);
        if (sentence == noFrameInRange) return main.least > main.most || other.least > other.most;
        const std::vector<Frames> open = openFrames();
        const std::string late = "Minimum return times prevent a camera change at ";
        if (!sentence.starts_with(late))
            return std::any_of(open.begin(), open.end(),
                               [&](Frames frame) { return sentence == gap(frame); });
        const std::string timecode = sentence.substr(late.size(), 11);
        const Frames frame = engine_.frameForTimecode(timecode);
        const bool allWait =
            std::all_of(cameras_.begin(), cameras_.end(), [&](const Camera& camera) {
                return camera.waitFrames > 0 || !shows(camera.footage, frame, frame + 1);
            });
        const bool isReached = !notes_.empty() || open.empty() || frame < open.front();
        return frame > 0 && isReached && !isFixed(frame) && allWait &&
               sentence == late + timecode +
                               ", and the current camera has no footage there. Reduce a return "
                               "time or include another camera.";
    }

    /// The first rule that a list breaks.
    std::string broken(const Cuts& cuts) {
        Frames position = 0;
        std::size_t part = 0;
        bool mayMerge = false;
        UUID lastID;
        for (const Cut& cut : cuts) {
            const Frames end = cut.start + cut.duration;
            if (cut.start != position || cut.duration < 1) return "no gaps";
            if (!shows(footage(cut.angle), cut.start, end)) return "footage";
            const bool isFixedCut = part < parts_.size() && parts_[part].start == position;
            if (isFixedCut && parts_[part] != FixedCameraSection{cut.angle, cut.start, end})
                return "fixed part";
            const auto kept = isFixedCut ? keptIDs_.find(position) : keptIDs_.end();
            if (kept == keptIDs_.end() ? cut.id.bytes <= lastID.bytes : cut.id != kept->second)
                return "identity";
            const bool isNoted = !isFixedCut && notes_.contains(position);
            if (isNoted && notes_.at(position) != cut.angle) return "note";
            Frames limit = part < parts_.size() ? parts_[part].start : engine_.length;
            if (const auto note = notes_.upper_bound(position); note != notes_.end())
                limit = std::min(limit, note->first);
            if (!isFixedCut && end > limit) return "place of a fixed part";
            if (!isFixedCut && !isNoted) {
                if (mayMerge && cut.angle == current_) return "merging";
                if (!mayChoose(cut.angle, position)) return "choice of the camera";
            }
            current_ = cut.angle;
            if (std::count(in_.otherCameras.begin(), in_.otherCameras.end(), current_) > 0)
                lastOther_ = current_;
            if (isNoted && !mayLastOnce(cut, limit)) return "length of a note's shot";
            if (!isFixedCut && !isNoted && !mayLast(cut, limit)) return "length";
            noted += isNoted ? 1 : 0;
            moved += !isFixedCut && std::count(in_.cutPoints.begin(), in_.cutPoints.end(), end);
            for (Camera& camera : cameras_)
                if (camera.name == cut.angle) camera.lastEnd = end;
            position = end;
            if (kept == keptIDs_.end()) lastID = cut.id;
            mayMerge = !isFixedCut && !isNoted;
            part += isFixedCut ? 1 : 0;
        }
        return position == engine_.length && part == parts_.size() ? "" : "completeness";
    }

    int longHolds = 0; // cuts that only several shots explain
    int noted = 0;     // shots of notes
    int moved = 0;     // free cuts that end at a cut point

  private:
    static constexpr Frames never = -1'000'000'000;
    struct Lengths {
        Frames least;
        Frames most;
    };
    struct Camera {
        std::string name;
        const Coverage& footage;
        double waitFrames;
        Frames lastEnd;
    };

    const Coverage& footage(const std::string& angle) const {
        static const Coverage none;
        const auto found = engine_.coverage.find(angle);
        return found == engine_.coverage.end() ? none : found->second;
    }
    static bool shows(const Coverage& footage, Frames from, Frames to) {
        return std::any_of(footage.begin(), footage.end(), [&](const FrameRange& range) {
            return range.lowerBound <= from && to <= range.upperBound;
        });
    }
    bool isShown(Frames frame) const {
        return std::any_of(cameras_.begin(), cameras_.end(), [&](const Camera& camera) {
            return shows(camera.footage, frame, frame + 1);
        });
    }
    double frames(double seconds) const {
        return seconds * double(engine_.frameDuration.denominator) /
               double(engine_.frameDuration.numerator);
    }
    double waitOf(const std::string& name) const {
        const auto found = in_.returnTimes.find(name);
        return found == in_.returnTimes.end() ? 0 : std::ceil(frames(found->second));
    }
    /// Where the walk may find no camera: the first frame without a picture outside of fixed parts,
    /// or any other that a note's shot, of whatever camera, leads to.
    std::vector<Frames> openFrames() const {
        std::vector<Frames> open;
        for (Frames frame = 0; frame < engine_.length; ++frame)
            if ((open.empty() || !notes_.empty()) && !isFixed(frame) && !isShown(frame))
                open.push_back(frame);
        return open;
    }
    bool isFixed(Frames frame) const {
        return std::any_of(parts_.begin(), parts_.end(), [&](const auto& part) {
            return part.start <= frame && frame < part.end;
        });
    }

    std::string refusedPart() {
        const auto length = [&](const auto& shot) {
            return shot ? std::max<Frames>(std::llround(frames(shot->seconds)), 1) : 0;
        };
        const Frames begin = length(in_.opening);
        const Frames end = engine_.length - length(in_.closing);
        const std::string missing = " camera does not have footage for the whole requested shot. "
                                    "Choose another camera or shorten the shot.";
        if (begin > end)
            return "The opening and closing shots are longer than the project. Reduce their "
                   "lengths.";
        if (in_.opening && !shows(footage(in_.opening->angle), 0, begin))
            return "The chosen opening" + missing;
        if (in_.closing && !shows(footage(in_.closing->angle), end, engine_.length))
            return "The chosen closing" + missing;
        parts_ = in_.sections;
        std::stable_sort(parts_.begin(), parts_.end(),
                         [](const auto& a, const auto& b) { return a.start < b.start; });
        Frames free = begin;
        for (const auto& [angle, from, to] : parts_) {
            if (from < begin || to > end || to <= from)
                return "Fixed sections must have an end after their start, stay inside the "
                       "project, and not overlap opening or closing shots.";
            if (from < free)
                return "Fixed camera sections overlap. Adjust their start or end timecodes.";
            if (!shows(footage(angle), from, to))
                return "The camera chosen for a fixed section has missing footage between " +
                       engine_.timecode(from) + " and " + engine_.timecode(to) +
                       ". Choose another camera or shorten the section.";
            free = to;
        }
        if (in_.opening) parts_.insert(parts_.begin(), {in_.opening->angle, 0, begin});
        if (in_.closing) parts_.push_back({in_.closing->angle, end, engine_.length});
        return refusedKept();
    }

    /// The fixed parts are the others' before.
    std::string refusedKept() {
        auto parts = parts_;
        for (const Cut& cut : in_.kept) {
            const FixedCameraSection part{cut.angle, cut.start, cut.start + cut.duration};
            const std::string name = "The kept shot at " + engine_.timecode(cut.start);
            if (cut.duration < 1 || !shows(footage(cut.angle), part.start, part.end))
                return name + " has missing footage. Let go of it or choose another camera.";
            keptIDs_[cut.start] = cut.id;
            if (std::count(parts_.begin(), parts_.end(), part) > 0) continue;
            std::string met;
            const auto meets = [&](const FixedCameraSection& other) {
                return part.start < other.end && other.start < part.end;
            };
            const bool isOpening = in_.opening && meets(parts_.front());
            const bool isClosing = in_.closing && meets(parts_.back());
            if (isOpening)
                met = "the opening shot";
            else if (isClosing)
                met = "the closing shot";
            else if (std::any_of(parts_.begin(), parts_.end(), meets))
                met = "a fixed section";
            else if (std::any_of(parts.begin(), parts.end(), meets))
                met = "another kept shot";
            if (!met.empty())
                return name + " overlaps " + met + ". Let go of it or change one of them.";
            parts.push_back(part);
        }
        std::sort(parts.begin(), parts.end(),
                  [](const auto& a, const auto& b) { return a.start < b.start; });
        parts_ = std::move(parts);
        return refusedNote();
    }

    std::string refusedNote() {
        for (const CameraNote& note : in_.notes) {
            if (isFixed(note.frame) || !notes_.emplace(note.frame, note.angle).second) continue;
            if (!shows(footage(note.angle), note.frame, note.frame + 1))
                return "The marker “" + note.name + "” at " + engine_.timecode(note.frame) +
                       " asks for a camera without footage there.";
        }
        return "";
    }

    std::string gap(Frames frame) const {
        Frames end = engine_.length;
        bool isLast = true;
        for (const Camera& camera : cameras_) {
            for (const FrameRange& range : camera.footage) {
                isLast = isLast && range.lowerBound <= frame;
                if (range.lowerBound > frame) end = std::min(end, range.lowerBound);
            }
        }
        const auto seconds = [&](Frames frames) {
            return double(frames * engine_.frameDuration.numerator) /
                   double(engine_.frameDuration.denominator);
        };
        return fmt::format("No selected camera has video at {:.2f} seconds. The uncovered section "
                           "lasts {:.2f} seconds. {}",
                           seconds(frame), seconds(end - frame),
                           isLast ? "Trim the project to the end of the camera footage in Final "
                                    "Cut and export XML again, or include another camera covering "
                                    "the ending."
                                  : "Include another camera covering this gap, or remove the "
                                    "uncovered section in Final Cut and export XML again.");
    }

    /// Whether a camera may take the next free shot, after the shots so far.
    bool mayChoose(const std::string& name, Frames frame) const {
        bool isEligible = false;
        bool isMainNext = false;
        bool hasOther = false; // that is neither the main nor the current camera
        bool hasNew = false;   // nor the last additional one
        for (const Camera& camera : cameras_) {
            const bool isCurrent = camera.name == current_;
            const bool isMain = camera.name == in_.mainCamera;
            if (!shows(camera.footage, frame, frame + 1)) continue;
            if (!isCurrent && double(frame - camera.lastEnd) < camera.waitFrames) continue;
            isEligible |= camera.name == name;
            isMainNext |= isMain && !isCurrent;
            hasOther |= !isMain && !isCurrent;
            hasNew |= !isMain && !isCurrent && camera.name != lastOther_;
        }
        const bool isMain = name == in_.mainCamera;
        if (isMainNext || !isEligible) return isEligible && isMain;
        if (in_.varyOthers && hasNew && name == lastOther_) return false;
        return !hasOther || (!isMain && name != current_);
    }

    /// The shortest and the longest length that a shot may draw, before doubling.
    Lengths lengths(bool isMain) const {
        const auto& range = isMain ? in_.mainRange : in_.otherRange;
        if (range)
            return {Frames(std::ceil(frames(range->lower))),
                    Frames(std::floor(frames(range->upper)))};
        const double mean =
            frames(2 * in_.averageShot * std::abs((isMain ? 0 : 1) - in_.mainShare));
        return {std::max<Frames>(std::llround(0.75 * mean), 1),
                std::max<Frames>(std::llround(1.25 * mean), 1)};
    }

    /// Where a shot that starts here has to end.
    Frames limitOf(const Cut& cut, Frames limit) const {
        for (const FrameRange& range : footage(cut.angle))
            if (range.lowerBound <= cut.start && cut.start < range.upperBound)
                limit = std::min(limit, range.upperBound);
        return limit;
    }

    /// Whether one draw explains a shot, without cut points.
    bool mayLastOnce(const Cut& cut, Frames limit) const {
        const bool isMain = cut.angle == in_.mainCamera;
        const Lengths drawn = lengths(isMain);
        const bool isCutShort = cut.start + cut.duration == limitOf(cut, limit);
        const auto mayBe = [&](Frames holds) {
            return cut.duration <= drawn.most * holds &&
                   (isCutShort ||
                    (cut.duration >= drawn.least * holds && cut.duration % holds == 0));
        };
        return drawn.least <= drawn.most && (mayBe(1) || (isMain && in_.doubleMain && mayBe(2)));
    }

    /// Where a shot ends that was to end somewhere else, by looking at every cut point.
    Frames movedEnd(Frames from, Frames end, Frames least, Frames most, Frames limit) const {
        if (end >= limit) return limit;
        std::optional<Frames> nearest;
        for (const Frames point : in_.cutPoints)
            if (point > from && point >= from + least && point <= from + most && point < limit &&
                (!nearest || std::abs(point - end) < std::abs(*nearest - end)))
                nearest = point;
        return nearest.value_or(end);
    }

    /// Whether some draw, of so many holds, makes a shot from here end there.
    bool mayEndAt(Frames from, Frames end, const Lengths& drawn, Frames holds, Frames limit) const {
        const Frames least = drawn.least * holds;
        const Frames most = drawn.most * holds;
        if (end == limit) return from + most >= limit; // where the longest draw ends
        if (in_.cutPoints.empty())
            return end - from >= least && end - from <= most && (end - from) % holds == 0;
        for (Frames length = least; length <= most; length += holds)
            if (movedEnd(from, from + length, least, most, limit) == end) return true;
        return false;
    }

    /// Whether one shot, or several between which no other camera could come on, make a free cut.
    bool mayLast(const Cut& cut, Frames limit) {
        const bool isMain = cut.angle == in_.mainCamera;
        const Lengths drawn = lengths(isMain);
        if (drawn.least > drawn.most) return false;
        limit = limitOf(cut, limit);
        std::vector<Frames> changes{0}; // where a shot may begin, from the cut's start
        for (Frames end = 1; end <= cut.duration; ++end) {
            if (end < cut.duration && !mayChoose(cut.angle, cut.start + end)) continue;
            const bool mayEnd = std::any_of(changes.begin(), changes.end(), [&](Frames at) {
                const auto mayBe = [&](Frames holds) {
                    return mayEndAt(cut.start + at, cut.start + end, drawn, holds, limit);
                };
                return mayBe(1) || (isMain && in_.doubleMain && mayBe(2));
            });
            if (end == cut.duration && changes.size() > 1 && changes.front() < end - drawn.most)
                ++longHolds;
            if (end == cut.duration) return mayEnd;
            if (mayEnd) changes.push_back(end);
        }
        return false;
    }

    const CutEngine& engine_;
    const GenerationInputs& in_;
    std::vector<FixedCameraSection> parts_; // in order, with the opening, closing and kept cuts
    std::map<Frames, UUID> keptIDs_;        // by their start
    std::map<Frames, std::string> notes_;   // those that count
    std::vector<Camera> cameras_;           // the main camera first
    std::string current_;
    std::string lastOther_;
};

struct Dice {
    std::mt19937_64 engine;

    Frames below(Frames end) { return Frames(engine() % std::uint64_t(end)); }
    bool oneIn(Frames count) { return below(count) == 0; }
    double tenths(Frames least, Frames most) {
        return double(least * 10 + below((most - least) * 10 + 1)) / 10;
    }
    std::string angle() { return std::string(1, char('A' + below(4))); }
};

/// Four cameras, each whole or with gaps, and sound.
CutEngine drawnProject(Dice& dice) {
    test::ProjectBuilder project;
    const char* const rates[] = {"1/25s", "1001/30000s", "1/24s", "1/50s"};
    project.frameDuration = rates[dice.below(4)];
    project.length = 150 + dice.below(1500);
    project.angles.clear();
    for (const char* id : {"A", "B", "C", "D"}) {
        test::AngleSpec angle{id, id, {}};
        const bool isWhole = dice.oneIn(2);
        for (Frames at = isWhole ? 0 : dice.below(200); at < project.length;) {
            const Frames duration = isWhole ? project.length : 1 + dice.below(project.length);
            angle.clips.push_back({at, duration});
            at += duration + 1 + dice.below(200);
        }
        project.angles.push_back(angle);
    }
    project.angles.push_back({"E", "E", {{0, project.length}}, false});
    return project.engine();
}

std::optional<SecondsRange> drawnRange(Dice& dice) {
    if (dice.oneIn(4)) return std::nullopt;
    if (dice.oneIn(40)) return SecondsRange{5.001, 5.009}; // without a frame at most rates
    const double least = dice.tenths(1, 6);
    return SecondsRange{least, least + (dice.oneIn(20) ? 0 : dice.tenths(1, 5))};
}

std::vector<FixedCameraSection> drawnSections(Dice& dice, const CutEngine& engine, Frames from) {
    std::vector<FixedCameraSection> sections;
    for (Frames count = dice.below(4); count > 0; --count) {
        const std::string angle = dice.angle();
        from += dice.below(2) * dice.below(engine.length / 3);
        Frames length = 1 + dice.below(engine.length / 5);
        for (const FrameRange& part : engine.coveredParts(angle, from, from + length))
            if (!dice.oneIn(20)) from = part.lowerBound, length = part.upperBound - from;
        if (dice.oneIn(100)) length = 0;
        sections.insert(sections.begin(), {angle, from, from + length});
        from += length - (dice.oneIn(40) ? 1 : 0);
    }
    return sections;
}

/// Makes one of the values wrong that the checks look at.
void spoil(GenerationInputs& in, Dice& dice) {
    const double wrong[] = {-1, 0.9, 1000, std::numeric_limits<double>::infinity(), std::nan("")};
    const double number = wrong[dice.below(5)];
    const Frames which = dice.below(10);
    if (which == 0) in.returnTimes[dice.angle()] = number == 0.9 ? 600.5 : number;
    if (which == 1) in.otherCameras.clear();
    if (which == 2) in.otherCameras.push_back(dice.oneIn(2) ? in.mainCamera : "E");
    if (which == 3) in.mainShare = number == 0.9 ? 0.95 : number;
    if (which == 4) in.averageShot = number;
    if (which == 5) in.frequencies["E"] = number;
    if (which == 6) in.mainRange = SecondsRange{0.9, 5};
    if (which == 7) in.otherRange = SecondsRange{5, 120.5};
    if (which == 8) in.opening = BookendShot{"A", number};
    if (which == 9) in.closing = BookendShot{"A", dice.oneIn(2) ? number : 119};
}

GenerationInputs drawnInputs(Dice& dice, const CutEngine& engine) {
    GenerationInputs in;
    in.mainCamera = dice.angle();
    for (const char* id : {"A", "B", "C", "D"}) {
        if (id != in.mainCamera && !dice.oneIn(3)) in.otherCameras.push_back(id);
        if (dice.oneIn(2)) in.frequencies[id] = dice.tenths(1, 10);
        if (dice.oneIn(4)) in.returnTimes[id] = dice.tenths(0, 15);
    }
    in.mainShare = dice.tenths(1, 9) / 10;
    in.averageShot = dice.tenths(4, 20);
    in.doubleMain = dice.oneIn(2);
    in.varyOthers = dice.oneIn(2);
    in.mainRange = drawnRange(dice);
    in.otherRange = drawnRange(dice);
    if (dice.oneIn(5)) in.opening = BookendShot{dice.angle(), dice.tenths(1, 5)};
    if (dice.oneIn(5)) in.closing = BookendShot{dice.angle(), dice.tenths(1, 5)};
    const double rate =
        double(engine.frameDuration.denominator) / double(engine.frameDuration.numerator);
    in.sections =
        drawnSections(dice, engine, in.opening ? std::llround(rate * in.opening->seconds) : 0);
    std::set<Frames> points;
    for (Frames count = dice.oneIn(4) ? dice.below(20) : 0; count > 0; --count)
        points.insert(1 + dice.below(engine.length));
    points.erase(engine.length);
    in.cutPoints.assign(points.begin(), points.end());
    for (Frames at = dice.oneIn(4) ? dice.below(500) : engine.length; at < engine.length;
         at += dice.below(400)) {
        const std::string angle = dice.angle();
        const bool hasFootage = !engine.coveredParts(angle, at, at + 1).empty();
        if (hasFootage || dice.oneIn(20)) in.notes.push_back({at, angle, angle});
    }
    for (Frames faults = dice.oneIn(8) ? 1 + dice.below(3) : 0; faults > 0; --faults)
        spoil(in, dice);
    return in;
}

/// Some shots of an edit like the one to be made, now and then in a wrong place.
void keepSome(GenerationInputs& in, Dice& dice, const CutEngine& engine) {
    Cuts cuts;
    SeededRandom random(dice.engine());
    if (!test::failureOf([&] { cuts = generateCuts(engine, in, random, risingUUIDs()); }).empty())
        return;
    for (Cut& cut : cuts) {
        cut.id.bytes.back() = 1;
        if (dice.oneIn(200)) cut.start = std::max<Frames>(cut.start - dice.below(50), 0);
        if (dice.oneIn(200)) cut.duration += dice.below(50);
        if (dice.oneIn(400)) cut.angle = dice.angle();
        if (dice.oneIn(400)) cut.duration = 0;
        if (dice.oneIn(4)) in.kept.push_back(cut);
    }
    std::stable_sort(in.kept.begin(), in.kept.end(),
                     [](const Cut& a, const Cut& b) { return a.start < b.start; });
}

TEST(GenerationProperties, everyListKeepsTheRulesAndEveryRefusalIsTheFirst) {
    std::map<std::string, int> outcomes; // by the beginning of the sentence
    int longHolds = 0;
    int noted = 0;
    int moved = 0;
    for (std::uint64_t seed = 1; seed <= 500; ++seed) {
        Dice dice{std::mt19937_64(seed)};
        const CutEngine engine = drawnProject(dice);
        for (int turn = 0; turn < 200; ++turn) {
            GenerationInputs in = drawnInputs(dice, engine);
            if (dice.oneIn(3)) keepSome(in, dice, engine);
            SeededRandom random(seed + 1000 * std::uint64_t(turn));
            Cuts cuts;
            const std::string failure =
                test::failureOf([&] { cuts = generateCuts(engine, in, random, risingUUIDs()); });
            Rules rules(engine, in);
            const std::string refusal = rules.refusal();
            if (!refusal.empty())
                ASSERT_EQ(failure, refusal) << "seed " << seed << ", turn " << turn;
            else if (!failure.empty())
                ASSERT_TRUE(rules.mayEndWith(failure)) << failure << seed << ", turn " << turn;
            else
                ASSERT_EQ(rules.broken(cuts), "") << "seed " << seed << ", turn " << turn;
            // Without the timecode that the sentence begins with.
            std::size_t head = failure.starts_with("The kept shot at ") ? 29 : 0;
            if (failure.starts_with("The marker ")) head = 34;
            ++outcomes[failure.substr(head, 26)];
            longHolds += rules.longHolds;
            noted += rules.noted;
            moved += rules.moved;
        }
    }
    EXPECT_GT(outcomes[""], 40'000);
    EXPECT_GT(longHolds, 1000);
    EXPECT_GT(noted, 10'000);
    EXPECT_GT(moved, 10'000);
    EXPECT_EQ(outcomes.size(), 21U); // a list, and all sentences but the guard's
}

} // namespace
} // namespace shotweaver
