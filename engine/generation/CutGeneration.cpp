#include "engine/generation/CutGeneration.h"

#include "engine/FinalCutImportError.h"
#include "engine/generation/EditChecks.h"
#include "engine/generation/FixedParts.h"
#include "engine/generation/ShotLengths.h"
#include "platform/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>

namespace shotweaver {

namespace {

[[noreturn]] void refuse(const std::string& sentence) {
    throw FinalCutImportError::invalid(sentence);
}

/// Uniform in [0, 1): the low 53 bits of a draw, times 2^-53.
double randomUnit(RandomSource& random) {
    constexpr std::uint64_t lowBits = (std::uint64_t{1} << 53U) - 1;
    return static_cast<double>(random.bits() & lowBits) * 0x1p-53;
}

// More shots than anyone reviews; the limit keeps memory bounded.
constexpr std::size_t maximumCuts = 5'000'000;

using Kind = FixedPart::Kind;

/// Inside the walk a camera is its place in the list of selected cameras, the main camera first.
using CameraIndex = std::size_t;
constexpr CameraIndex mainIndex = 0;
constexpr CameraIndex notSelected = std::numeric_limits<CameraIndex>::max();

struct Camera {
    const Coverage* footage = nullptr;
    double weight = 0;
    std::int64_t waitFrames = 0;
};

/// Where the walk through the project stands.
struct WalkState {
    std::int64_t position = 0; // first frame not yet covered
    bool mainDue = true;
    CameraIndex current = notSelected;   // angle of the last cut
    CameraIndex lastOther = notSelected; // the latest additional camera that any cut shows
    bool canMerge = false;               // the last cut is a free shot
    // For each camera: where its latest shot ended, and its first range that ends after position.
    std::vector<std::optional<std::int64_t>> lastShotEnd;
    std::vector<std::size_t> range;
};

struct FreeShot {
    CameraIndex camera;
    std::int64_t end;
};

/// A shot's drawn length, and how long it could have been, in frames.
struct DrawnLength {
    std::int64_t frames;
    std::int64_t least;
    std::int64_t most;
};

class GenerationWalk {
  public:
    GenerationWalk(const CutEngine& engine, const GenerationInputs& inputs, RandomSource& random,
                   const UUIDMaker& makeUUID);

    void lay(const std::vector<FixedPart>& parts);

    std::vector<Cut> takeCuts() { return std::move(cuts_); }

  private:
    void layGap(const FixedPart* before, const FixedPart* after);
    void layBestOf(int layings, std::int64_t limit, const FixedPart* before,
                   const FixedPart* after);
    int faultsSince(std::size_t first, const FixedPart* before, const FixedPart* after) const;
    void layFixed(const FixedPart& part);
    void layNote(const FixedPart& note);
    void layAlone(const FixedPart& part, const UUID& id, std::int64_t end);
    void layFreeShots(std::int64_t limit);
    void layFree(const FreeShot& shot);
    void moveOn(CameraIndex camera, std::int64_t end);
    void addCut(const UUID& id, const std::string& angle, std::int64_t duration);
    FreeShot drawFreeShot(std::int64_t limit);

    void findAvailable();
    void findEligible();
    void findCandidates();
    void leaveOutLastOther();
    CameraIndex drawCamera();
    DrawnLength drawLength(bool isMain);
    std::int64_t atCutPoint(const DrawnLength& drawn, std::int64_t limit) const;

    [[noreturn]] void refuseUncovered() const;
    CameraIndex indexOf(const std::string& angle) const;
    double frames(double seconds) const { return engine_.frameDuration.frames(seconds); }

    const CutEngine& engine_;
    const GenerationInputs& inputs_;
    RandomSource& random_;
    const UUIDMaker& makeUUID_;
    std::vector<std::string> names_;
    std::vector<Camera> cameras_;
    ShotKind mainKind_;
    ShotKind otherKind_;
    WalkState state_;
    std::vector<Cut> cuts_;
    // Of the shot being laid, in the order of the cameras; members only to keep their memory.
    std::vector<CameraIndex> available_;
    std::vector<CameraIndex> eligible_;
    std::vector<CameraIndex> candidates_;
};

GenerationWalk::GenerationWalk(const CutEngine& engine, const GenerationInputs& inputs,
                               RandomSource& random, const UUIDMaker& makeUUID)
    : engine_(engine), inputs_(inputs), random_(random),
      makeUUID_(makeUUID), names_{inputs.mainCamera} {
    names_.insert(names_.end(), inputs.otherCameras.begin(), inputs.otherCameras.end());
    for (const std::string& name : names_) {
        const double wait = numberFor(inputs.returnTimes, name, defaultReturnTime);
        cameras_.push_back({&engine.coverage.at(name),
                            numberFor(inputs.frequencies, name, defaultFrequency),
                            static_cast<std::int64_t>(std::ceil(frames(wait)))});
    }
    state_.lastShotEnd.resize(cameras_.size());
    state_.range.resize(cameras_.size());
    mainKind_ = mainShotKind(inputs, engine.frameDuration);
    otherKind_ = otherShotKind(inputs, engine.frameDuration);
}

CameraIndex GenerationWalk::indexOf(const std::string& angle) const {
    const auto found = std::find(names_.begin(), names_.end(), angle);
    return found == names_.end() ? notSelected : static_cast<CameraIndex>(found - names_.begin());
}

void GenerationWalk::lay(const std::vector<FixedPart>& parts) {
    const FixedPart* before = nullptr;
    for (const FixedPart& part : parts) {
        layGap(before, &part);
        if (part.kind == Kind::note)
            layNote(part);
        else
            layFixed(part);
        before = &part;
    }
    layGap(before, nullptr);
}

/// Lays the free shots between two parts, or the ends of the project.
void GenerationWalk::layGap(const FixedPart* before, const FixedPart* after) {
    constexpr int mostLayings = 16;
    const auto isChosen = [](const FixedPart* part) {
        return part && (part->kind == Kind::kept || part->kind == Kind::note);
    };
    const std::int64_t limit = after ? after->start : engine_.length;
    if (isChosen(before) || isChosen(after))
        layBestOf(mostLayings, limit, before, after);
    else
        layFreeShots(limit);
}

/// Stops at the first laying without a fault. A refused one is the worst; when all are, the first
/// refusal counts.
void GenerationWalk::layBestOf(int layings, std::int64_t limit, const FixedPart* before,
                               const FixedPart* after) {
    const auto first = static_cast<std::ptrdiff_t>(cuts_.size());
    const WalkState start = state_;
    std::optional<int> fewestFaults;
    std::vector<Cut> best;
    WalkState bestState;
    std::exception_ptr refusal;
    for (int laying = 0; laying < layings && fewestFaults != 0; ++laying) {
        try {
            layFreeShots(limit);
            const int faults = faultsSince(static_cast<std::size_t>(first), before, after);
            if (!fewestFaults || faults < *fewestFaults) {
                fewestFaults = faults;
                best.assign(cuts_.begin() + first, cuts_.end());
                bestState = state_;
            }
        } catch (const FinalCutImportError&) {
            if (!refusal) refusal = std::current_exception();
        }
        cuts_.erase(cuts_.begin() + first, cuts_.end());
        state_ = start;
    }
    if (!fewestFaults) std::rethrow_exception(refusal);
    cuts_.insert(cuts_.end(), best.begin(), best.end());
    state_ = std::move(bestState);
}

/// Counts the cuts from `first` on that are too short for their kind, and the sides on which a
/// camera meets itself.
int GenerationWalk::faultsSince(std::size_t first, const FixedPart* before,
                                const FixedPart* after) const {
    if (first == cuts_.size()) return 0;
    int faults = 0;
    for (std::size_t i = first; i < cuts_.size(); ++i) {
        const ShotKind& kind = cuts_[i].angle == inputs_.mainCamera ? mainKind_ : otherKind_;
        faults += cuts_[i].duration < kind.least() ? 1 : 0;
    }
    faults += before && before->angle == cuts_[first].angle ? 1 : 0;
    faults += after && after->angle == cuts_.back().angle ? 1 : 0;
    return faults;
}

void GenerationWalk::layFreeShots(std::int64_t limit) {
    while (state_.position < limit)
        layFree(drawFreeShot(limit));
}

void GenerationWalk::layFixed(const FixedPart& part) {
    layAlone(part, part.keptID ? *part.keptID : makeUUID_(), part.end);
}

/// Draws only the length.
void GenerationWalk::layNote(const FixedPart& note) {
    const DrawnLength drawn = drawLength(note.angle == inputs_.mainCamera);
    layAlone(note, makeUUID_(), std::min(note.start + drawn.frames, note.end));
}

/// Lays a shot that nothing merges with.
void GenerationWalk::layAlone(const FixedPart& part, const UUID& id, std::int64_t end) {
    addCut(id, part.angle, end - part.start);
    state_.canMerge = false;
    moveOn(indexOf(part.angle), end);
}

/// Takes note of a shot that has been laid.
void GenerationWalk::moveOn(CameraIndex camera, std::int64_t end) {
    if (camera != notSelected) {
        state_.lastShotEnd[camera] = end;
        if (camera != mainIndex) state_.lastOther = camera;
    }
    state_.current = camera;
    state_.mainDue = camera != mainIndex;
    state_.position = end;
}

void GenerationWalk::addCut(const UUID& id, const std::string& angle, std::int64_t duration) {
    if (cuts_.size() == maximumCuts)
        refuse("This edit would have more than 5,000,000 shots. Use longer shots or a shorter "
               "project.");
    cuts_.push_back({id, angle, state_.position, duration});
}

void GenerationWalk::layFree(const FreeShot& shot) {
    const std::int64_t duration = shot.end - state_.position;
    if (state_.canMerge && state_.current == shot.camera)
        cuts_.back().duration += duration;
    else
        addCut(makeUUID_(), names_[shot.camera], duration);
    state_.canMerge = true;
    moveOn(shot.camera, shot.end);
}

/// Draws a shot from the walk's position to `limit`, the next fixed part, at most.
FreeShot GenerationWalk::drawFreeShot(std::int64_t limit) {
    findAvailable();
    findEligible();
    findCandidates();
    const CameraIndex camera = drawCamera();
    const DrawnLength drawn = drawLength(camera == mainIndex);
    const FrameRange& footage = (*cameras_[camera].footage)[state_.range[camera]];
    const std::int64_t end = atCutPoint(drawn, std::min(footage.upperBound, limit));
    if (end <= state_.position) refuse("No valid cut boundary is available.");
    return {camera, end};
}

void GenerationWalk::findAvailable() {
    available_.clear();
    for (CameraIndex camera = 0; camera < cameras_.size(); ++camera) {
        const Coverage& footage = *cameras_[camera].footage;
        std::size_t& range = state_.range[camera];
        while (range < footage.size() && footage[range].upperBound <= state_.position)
            ++range;
        if (range < footage.size() && footage[range].lowerBound <= state_.position)
            available_.push_back(camera);
    }
    if (available_.empty()) refuseUncovered();
}

void GenerationWalk::findEligible() {
    eligible_.clear();
    for (const CameraIndex camera : available_) {
        const auto& lastEnd = state_.lastShotEnd[camera];
        if (camera == state_.current || !lastEnd ||
            state_.position - *lastEnd >= cameras_[camera].waitFrames)
            eligible_.push_back(camera);
    }
    if (eligible_.empty())
        refuse(fmt::format("Minimum return times prevent a camera change at {}, and the current "
                           "camera has no footage there. Reduce a return time or include another "
                           "camera.",
                           engine_.timecode(state_.position)));
}

void GenerationWalk::findCandidates() {
    candidates_.clear();
    if (state_.mainDue && eligible_.front() == mainIndex) {
        candidates_.push_back(mainIndex);
        return;
    }
    for (const CameraIndex camera : eligible_) {
        if (camera != mainIndex && camera != state_.current) candidates_.push_back(camera);
    }
    if (inputs_.varyOthers) leaveOutLastOther();
    // A lone camera keeps its hold, and the main camera comes again when nothing else can.
    if (candidates_.empty()) candidates_ = eligible_;
}

/// Unless it is the only one.
void GenerationWalk::leaveOutLastOther() {
    const auto last = std::find(candidates_.begin(), candidates_.end(), state_.lastOther);
    if (last != candidates_.end() && candidates_.size() > 1) candidates_.erase(last);
}

CameraIndex GenerationWalk::drawCamera() {
    double total = 0;
    for (const CameraIndex camera : candidates_)
        total += cameras_[camera].weight;
    double target = total * randomUnit(random_);
    for (const CameraIndex camera : candidates_) {
        target -= cameras_[camera].weight;
        if (target < 0) return camera;
    }
    return candidates_.back();
}

DrawnLength GenerationWalk::drawLength(bool isMain) {
    const ShotKind& kind = isMain ? mainKind_ : otherKind_;
    // The pacing factor is drawn even where the range then replaces its result.
    const double pacing = kind.pacing * (0.75 + 0.5 * randomUnit(random_));
    std::int64_t drawn = std::max<std::int64_t>(std::llround(pacing), 1);
    if (kind.hasRange) {
        if (kind.maximum < kind.minimum)
            refuse("The shot range must contain at least one full frame.");
        const double place = std::pow(randomUnit(random_), kind.exponent);
        const auto span = static_cast<double>(kind.maximum - kind.minimum);
        drawn = kind.minimum + std::llround(place * span);
    }
    const int holds = inputs_.doubleMain && isMain && randomUnit(random_) < 0.25 ? 2 : 1;
    return {drawn * holds, kind.least() * holds, kind.most() * holds};
}

/// Where a drawn shot ends: at the cut point that is nearest to its drawn end, within what could
/// have been drawn, and at `limit` where that comes first.
std::int64_t GenerationWalk::atCutPoint(const DrawnLength& drawn, std::int64_t limit) const {
    const std::int64_t end = state_.position + drawn.frames;
    if (end >= limit) return limit;
    const std::int64_t first = std::max(state_.position + drawn.least, state_.position + 1);
    const std::int64_t last = std::min(state_.position + drawn.most, limit - 1);
    const auto& points = inputs_.cutPoints;
    const auto next = std::lower_bound(points.begin(), points.end(), end);
    const bool hasNext = next != points.end() && *next <= last;
    const bool hasPrevious = next != points.begin() && *(next - 1) >= first;
    if (hasPrevious && (!hasNext || end - *(next - 1) <= *next - end)) return *(next - 1);
    return hasNext ? *next : end;
}

void GenerationWalk::refuseUncovered() const {
    std::int64_t gapEnd = engine_.length;
    bool hasLater = false;
    for (CameraIndex camera = 0; camera < cameras_.size(); ++camera) {
        const Coverage& footage = *cameras_[camera].footage;
        const std::size_t range = state_.range[camera];
        if (range == footage.size()) continue;
        hasLater = true;
        gapEnd = std::min(gapEnd, footage[range].lowerBound);
    }
    refuse(fmt::format(
        "No selected camera has video at {} seconds. The uncovered section lasts {} seconds. {}",
        fixedDecimal(engine_.seconds(state_.position), 2),
        fixedDecimal(engine_.seconds(gapEnd - state_.position), 2),
        hasLater ? "Include another camera covering this gap, or remove the uncovered section in "
                   "Final Cut and export XML again."
                 : "Trim the project to the end of the camera footage in Final Cut and export XML "
                   "again, or include another camera covering the ending."));
}

} // namespace

std::vector<Cut> generateCuts(const CutEngine& engine, const GenerationInputs& inputs,
                              RandomSource& random, const UUIDMaker& makeUUID) {
    checkInputs(engine, inputs);
    const BookendFrames bookends = checkBookends(engine, inputs);
    const std::vector<FixedCameraSection> sections =
        validateSections(engine, inputs.sections, bookends.opening, bookends.closingStart);

    const std::vector<FixedPart> parts =
        fixedParts(engine, bookends, inputs.opening, inputs.closing, sections, inputs.kept);

    GenerationWalk walk(engine, inputs, random, makeUUID);
    walk.lay(withNotes(engine, parts, inputs.notes));
    return walk.takeCuts();
}

} // namespace shotweaver
