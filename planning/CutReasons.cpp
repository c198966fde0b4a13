#include "planning/CutReasons.h"

#include "engine/generation/ShotLengths.h"
#include "planning/CutPoints.h"
#include "planning/EditPlan.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace shotweaver {

namespace {

using Kind = FixedPart::Kind;

constexpr const char* otherThanChosen = "Another camera than the settings would choose here.";

/// Goes through the cuts as the walk that makes them does.
class Explanation {
  public:
    Explanation(const EditSettings& settings, const Project& project, const std::vector<Cut>& cuts,
                const KeptShots& kept);

    std::vector<std::vector<std::string>> tell();

  private:
    struct Camera {
        std::string name;
        std::string label;
        std::string choice; // "Wide (frequency 5)"
        const Coverage* footage;
        std::int64_t waitFrames;
        std::optional<std::int64_t> lastEnd; // of its latest shot
    };

    void tellPart(const FixedPart& part);
    void tellChoice(const Cut& cut);
    void tellChoiceAmong(const Cut& cut, const std::vector<const Camera*>& others);
    void tellEnd(const Cut& cut, bool isMovable);
    void tellCutPoint(std::int64_t end);
    void tellLength(const Cut& cut, bool isFree);
    void tellReturn(const Cut& cut);
    void moveOn(const Cut& cut);

    void say(std::string sentence) { sentences_.push_back(std::move(sentence)); }
    const FixedPart* partOf(const Cut& cut) const;
    const CameraNote* noteOf(const Cut& cut) const;
    bool hasFootage(const Camera& camera) const;
    bool isWaiting(const Camera& camera) const;
    std::vector<const Camera*> othersToChooseFrom() const;
    std::string whyNot(const Camera& camera) const;
    std::string whyNoOther(std::string_view shown) const;
    std::string seconds(std::int64_t frames) const {
        return fixedDecimal(engine_.seconds(frames), 1);
    }

    const EditSettings& settings_;
    const Project& project_;
    const CutEngine& engine_;
    const std::vector<Cut>& cuts_;
    const KeptShots& kept_;
    std::vector<FixedPart> parts_;
    std::vector<std::int64_t> cutPoints_;
    std::vector<Camera> cameras_; // selected, the main camera first
    ShotKind mainKind_;
    ShotKind otherKind_;
    // Where the walk stands.
    std::int64_t position_ = 0;
    std::string current_;   // angle of the last cut
    std::string lastOther_; // additional camera that was shown last
    std::map<std::string, std::int64_t, std::less<>> lastEnds_;
    std::vector<std::string> sentences_;
};

Explanation::Explanation(const EditSettings& settings, const Project& project,
                         const std::vector<Cut>& cuts, const KeptShots& kept)
    : settings_(settings), project_(project), engine_(project.engine), cuts_(cuts), kept_(kept),
      parts_(plannedParts(settings, project)), cutPoints_(cutPoints(settings, project)) {
    std::vector<std::string> names = selectedOtherCameras(settings, project);
    names.insert(names.begin(), settings.mainCamera);
    for (const std::string& name : names) {
        const double wait = numberFor(settings.returnTimes, name, defaultReturnTime);
        const std::string label = project.label(name);
        cameras_.push_back(
            {name,
             label,
             fmt::format("{} (frequency {})", label,
                         numberFor(settings.frequencies, name, defaultFrequency)),
             &engine_.coverageOf(name),
             static_cast<std::int64_t>(std::ceil(engine_.frameDuration.frames(wait))),
             {}});
    }
    EditSettings withoutSections = settings; // whose timecodes may be anything
    withoutSections.sections.clear();
    const GenerationInputs inputs = generationInputs(withoutSections, project);
    mainKind_ = mainShotKind(inputs, engine_.frameDuration);
    otherKind_ = otherShotKind(inputs, engine_.frameDuration);
}

std::vector<std::vector<std::string>> Explanation::tell() {
    std::vector<std::vector<std::string>> told;
    for (const Cut& cut : cuts_) {
        position_ = cut.start;
        const FixedPart* const part = partOf(cut);
        const bool isKept = kept_.contains(cut.id);
        const CameraNote* const note = noteOf(cut);
        if (part) tellPart(*part);
        if (isKept) say("Kept.");
        const bool isFree = !part && !isKept;
        if (isFree && note) say(fmt::format("The marker “{}” asks for it.", note->name));
        if (isFree && !note) tellChoice(cut);
        if (isFree) tellEnd(cut, !note);
        if (!part) tellLength(cut, isFree);
        tellReturn(cut);
        told.push_back(std::move(sentences_));
        sentences_.clear();
        moveOn(cut);
    }
    return told;
}

const FixedPart* Explanation::partOf(const Cut& cut) const {
    const auto found =
        std::lower_bound(parts_.begin(), parts_.end(), cut.start,
                         [](const FixedPart& part, std::int64_t at) { return part.start < at; });
    return found != parts_.end() && isPlaceOf(cut, *found) ? &*found : nullptr;
}

/// The note that a cut follows, unless it is fixed or kept.
const CameraNote* Explanation::noteOf(const Cut& cut) const {
    if (partOf(cut) || kept_.contains(cut.id)) return nullptr;
    const CameraNote* const note = noteAt(cut.start, settings_, project_);
    return note && note->angle == cut.angle ? note : nullptr;
}

void Explanation::tellPart(const FixedPart& part) {
    if (part.kind == Kind::opening) return say("Opening shot.");
    if (part.kind == Kind::closing) return say("Closing shot.");
    const auto sections = fixedCameraSections(settings_, project_);
    for (std::size_t row = 0; row < sections.size(); ++row) {
        const std::string_view name = trimmed(settings_.sections[row].name);
        if (sections[row].start == part.start && !name.empty())
            return say(fmt::format("Fixed section “{}”.", name));
    }
    say("Fixed section.");
}

bool Explanation::hasFootage(const Camera& camera) const {
    return rangeContaining(*camera.footage, {position_, position_ + 1}) != nullptr;
}

bool Explanation::isWaiting(const Camera& camera) const {
    return camera.name != current_ && camera.lastEnd &&
           position_ - *camera.lastEnd < camera.waitFrames;
}

/// The additional cameras among which the next shot was, without the one on screen before.
std::vector<const Explanation::Camera*> Explanation::othersToChooseFrom() const {
    std::vector<const Camera*> others;
    for (const Camera& camera : cameras_)
        if (camera.name != settings_.mainCamera && camera.name != current_ && hasFootage(camera) &&
            !isWaiting(camera))
            others.push_back(&camera);
    const auto last = std::find_if(others.begin(), others.end(), [&](const Camera* camera) {
        return camera->name == lastOther_;
    });
    if (settings_.varyOthers && others.size() > 1 && last != others.end()) others.erase(last);
    return others;
}

void Explanation::tellChoice(const Cut& cut) {
    const auto shown = std::find_if(cameras_.begin(), cameras_.end(),
                                    [&](const Camera& camera) { return camera.name == cut.angle; });
    if (shown == cameras_.end()) return say("This camera is not among those that are chosen from.");
    const auto recorded = std::count_if(cameras_.begin(), cameras_.end(),
                                        [&](const Camera& camera) { return hasFootage(camera); });
    const bool isMain = shown == cameras_.begin();
    if (recorded == 1)
        say("The only camera that recorded here.");
    else if (isWaiting(*shown))
        say(otherThanChosen);
    else if (isMain && current_ != cut.angle)
        say("The main camera's turn.");
    else
        tellChoiceAmong(cut, othersToChooseFrom());
}

void Explanation::tellChoiceAmong(const Cut& cut, const std::vector<const Camera*>& others) {
    const bool isAmong = std::any_of(others.begin(), others.end(), [&](const Camera* camera) {
        return camera->name == cut.angle;
    });
    if (!isAmong && !others.empty()) return say(otherThanChosen);
    if (others.size() > 1) {
        std::string names;
        for (const Camera* camera : others)
            names += (names.empty() ? "One of " : ", ") + camera->choice;
        return say(names + ".");
    }
    const std::string reasons = whyNoOther(cut.angle);
    say(fmt::format("The only camera that could {}{}.", isAmong ? "take over" : "go on",
                    reasons.empty() ? "" : ": " + reasons));
}

/// Of every other additional camera.
std::string Explanation::whyNoOther(std::string_view shown) const {
    std::vector<std::string> reasons;
    for (const Camera& camera : cameras_)
        if (camera.name != shown && camera.name != settings_.mainCamera && camera.name != current_)
            reasons.push_back(whyNot(camera));
    return fmt::format("{}", fmt::join(reasons, ", "));
}

std::string Explanation::whyNot(const Camera& camera) const {
    if (!hasFootage(camera)) {
        const Coverage& footage = *camera.footage;
        const auto next =
            std::find_if(footage.begin(), footage.end(),
                         [&](const FrameRange& range) { return range.lowerBound > position_; });
        return next == footage.end() ? fmt::format("{} has no more footage", camera.label)
                                     : fmt::format("{} has no footage until {}", camera.label,
                                                   engine_.timecode(next->lowerBound));
    }
    if (isWaiting(camera))
        return fmt::format("{} waits until {}", camera.label,
                           engine_.timecode(*camera.lastEnd + camera.waitFrames));
    return fmt::format("{} was shown last", camera.label);
}

/// `isMovable` says whether cut points hold for it.
void Explanation::tellEnd(const Cut& cut, bool isMovable) {
    const std::int64_t end = cut.start + cut.duration;
    const FrameRange* const footage =
        rangeContaining(engine_.coverageOf(cut.angle), {cut.start, end});
    const Cut* const next = &cut == &cuts_.back() ? nullptr : &cut + 1;
    if (!next)
        say("It ends with the project.");
    else if (footage && footage->upperBound == end)
        say("It ends with its recording.");
    else if (partOf(*next))
        say("It ends where a fixed shot begins.");
    else if (kept_.contains(next->id))
        say("It ends where a kept shot begins.");
    else if (const CameraNote* const note = noteOf(*next))
        say(fmt::format("It ends at the marker “{}”.", note->name));
    else if (isMovable)
        tellCutPoint(end);
}

void Explanation::tellCutPoint(std::int64_t end) {
    if (isAtMarker(end, settings_, project_))
        say("It ends at a marker.");
    else if (std::binary_search(cutPoints_.begin(), cutPoints_.end(), end))
        say("It ends at a time from the file.");
}

void Explanation::tellLength(const Cut& cut, bool isFree) {
    const bool isMain = cut.angle == settings_.mainCamera;
    const ShotKind& kind = isMain ? mainKind_ : otherKind_;
    const bool isShort = cut.duration < kind.least();
    if (!isShort && cut.duration <= kind.most()) return;
    std::string sentence = fmt::format("{} seconds, {} than its range of {} to {}",
                                       seconds(cut.duration), isShort ? "shorter" : "longer",
                                       isMain ? settings_.mainMinimum : settings_.otherMinimum,
                                       isMain ? settings_.mainMaximum : settings_.otherMaximum);
    if (isFree && isShort)
        sentence += ": cut short";
    else if (isFree && isMain && settings_.doubleMain && cut.duration <= 2 * kind.most())
        sentence += ": doubled";
    else if (isFree)
        sentence += ": several turns in one";
    say(sentence + ".");
}

void Explanation::tellReturn(const Cut& cut) {
    const auto last = lastEnds_.find(cut.angle);
    if (last == lastEnds_.end() || current_ == cut.angle) return;
    const double wait = numberFor(settings_.returnTimes, cut.angle, defaultReturnTime);
    const std::int64_t away = cut.start - last->second;
    if (away < static_cast<std::int64_t>(std::ceil(engine_.frameDuration.frames(wait))))
        say(fmt::format("Back after {} seconds, before its return time of {}.", seconds(away),
                        wait));
}

void Explanation::moveOn(const Cut& cut) {
    const std::int64_t end = cut.start + cut.duration;
    lastEnds_[cut.angle] = end;
    current_ = cut.angle;
    for (Camera& camera : cameras_) {
        if (camera.name != cut.angle) continue;
        camera.lastEnd = end;
        if (camera.name != settings_.mainCamera) lastOther_ = camera.name;
    }
}

} // namespace

std::vector<std::vector<std::string>> explainCuts(const EditSettings& settings,
                                                  const Project& project,
                                                  const std::vector<Cut>& cuts,
                                                  const KeptShots& kept) {
    return Explanation(settings, project, cuts, kept).tell();
}

} // namespace shotweaver
