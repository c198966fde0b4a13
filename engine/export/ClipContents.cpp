#include "engine/export/ClipContents.h"

#include "engine/export/AudioFades.h"
#include "engine/export/ClipItems.h"
#include "engine/import/XmlAccess.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace shotweaver {

namespace {

constexpr std::array<std::string_view, 4> clipSettings{"note", "adjust-volume", "adjust-panner",
                                                       "conform-rate"};
constexpr std::array<std::string_view, 2> trailingElements{"filter-audio", "metadata"};

// A connected clip this little before a cut, in seconds, belongs to the cut.
constexpr double ownerTolerance = 0.00000001;

/// Sets an attribute the way that the exported order relies on: removed, then appended.
void setAttribute(pugi::xml_node element, const char* name, const std::string& value) {
    element.remove_attribute(name);
    element.append_attribute(name).set_value(value.c_str());
}

void copyAttributes(pugi::xml_node from, pugi::xml_node to,
                    std::initializer_list<std::string_view> except) {
    for (const pugi::xml_attribute each : from.attributes()) {
        if (std::find(except.begin(), except.end(), each.name()) == except.end())
            to.append_copy(each);
    }
}

} // namespace

ClipContents::ClipContents(const CutEngine& engine, const std::vector<Cut>& cuts,
                           std::string audioAngle, const UUIDMaker& makeUUID)
    : engine_(engine), cuts_(cuts), audioAngle_(std::move(audioAngle)), makeUUID_(makeUUID),
      pieces_(cuts.size()) {
    std::vector<pugi::xml_node> annotations;
    for (const pugi::xml_node child : Elements(engine.original)) {
        if (isOneOf(clipSettings, child.name())) sound_.leading.push_back(child);
        if (isElement(child, "mc-source")) addSource(child);
        if (isStoryElement(child)) addStoryElement(child);
        if (isTimedAnnotation(child)) annotations.push_back(child);
        if (isOneOf(trailingElements, child.name())) trailing_.push_back(child);
    }
    // After all story elements: theirs is the first failure, and the first place in a clip.
    for (const pugi::xml_node annotation : annotations)
        addAnnotation(annotation);
    findSourceSettings();
    copyWithoutFades();
}

void ClipContents::addSource(pugi::xml_node source) {
    const auto angle = attribute(source, "angleID");
    if (!angle) return;
    const std::string_view enabled = attributeOr(source, "srcEnable", "all");
    const bool isVideo = enabled == "all" || enabled == "video";
    const bool isAudio = enabled == "all" || enabled == "audio";
    AngleSources& sources = sources_[*angle];
    if (!sources.video || (isVideo && !sources.isVideoEnabled)) sources.video = source;
    if (!sources.audio || (isAudio && !sources.isAudioEnabled)) sources.audio = source;
    sources.isVideoEnabled |= isVideo;
    sources.isAudioEnabled |= isAudio;
}

void ClipContents::findSourceSettings() {
    for (auto& [angle, sources] : sources_) {
        for (const pugi::xml_node child : Elements(sources.video)) {
            if (!isElement(child, "audio-role-source")) sources.pictureSettings.push_back(child);
        }
    }
    const auto heard = sources_.find(audioAngle_);
    if (heard == sources_.end()) return;
    const Elements roles(heard->second.audio, "audio-role-source");
    sound_.roles.assign(roles.begin(), roles.end());
}

/// Fades are removed once, not from every clip.
void ClipContents::copyWithoutFades() {
    pugi::xml_node clip = copies_.append_child("mc-clip");
    for (const pugi::xml_node setting : sound_.leading)
        clip.append_copy(setting);
    pugi::xml_node source = clip.append_child("mc-source");
    for (const pugi::xml_node role : sound_.roles)
        source.append_copy(role);
    removeFades(clip, "fadeIn");
    removeFades(clip, "fadeOut");
    const Elements roles(source);
    withoutFades_.roles.assign(roles.begin(), roles.end());
    const Elements children(clip);
    withoutFades_.leading.assign(children.begin(), children.end());
    withoutFades_.leading.pop_back(); // the source
}

void ClipContents::addStoryElement(pugi::xml_node element) {
    const double position =
        storyOffset(element) - engine_.seconds(engine_.sourceStart) + ownerTolerance;
    const auto after =
        std::upper_bound(cuts_.begin(), cuts_.end(), position, [&](double seconds, const Cut& cut) {
            return seconds < engine_.seconds(cut.start);
        });
    const std::size_t owner =
        after == cuts_.begin() ? 0 : static_cast<std::size_t>(after - cuts_.begin()) - 1;
    pieces_[owner].push_back({element, std::nullopt});
}

void ClipContents::addAnnotation(pugi::xml_node element) {
    const AnnotationTimes times = annotationTimes(engine_, element);
    // In frames of the project.
    const std::int64_t start = times.start - engine_.sourceStart;
    if (times.duration >= 1) return addRange(element, {start, start + times.duration});
    if (start < 0 || start >= engine_.length) return;
    pieces_[cutAtFrame(start)].push_back({element, std::nullopt});
}

void ClipContents::addRange(pugi::xml_node element, const FrameRange& span) {
    const std::int64_t start = std::max<std::int64_t>(span.lowerBound, 0);
    const std::int64_t end = std::min(span.upperBound, engine_.length);
    if (start >= end) return;
    for (std::size_t cut = cutAtFrame(start); cut < cuts_.size() && cuts_[cut].start < end; ++cut) {
        const std::int64_t cutEnd = cuts_[cut].start + cuts_[cut].duration;
        pieces_[cut].push_back(
            {element, FrameRange{std::max(start, cuts_[cut].start), std::min(end, cutEnd)}});
    }
}

/// The cut that shows a frame of the project.
std::size_t ClipContents::cutAtFrame(std::int64_t frame) const {
    const auto after =
        std::upper_bound(cuts_.begin(), cuts_.end(), frame,
                         [](std::int64_t each, const Cut& cut) { return each < cut.start; });
    return static_cast<std::size_t>(after - cuts_.begin()) - 1;
}

pugi::xml_node ClipContents::clip(std::size_t cutIndex) {
    const Cut& cut = cuts_[cutIndex];
    const bool isFirst = cut.start == 0;
    const bool isLast = cut.start + cut.duration == engine_.length;
    const SoundSettings& sound = isFirst || isLast ? sound_ : withoutFades_;
    pugi::xml_node clip = makeShell(cut);
    for (const pugi::xml_node setting : sound.leading)
        clip.append_copy(setting);
    makeSources(clip, cut.angle, sound);
    for (const Piece& piece : pieces_[cutIndex])
        copyPiece(clip, piece);
    for (const pugi::xml_node element : trailing_)
        clip.append_copy(element);
    if (!isFirst && isLast) removeFades(clip, "fadeIn");
    if (isFirst && !isLast) removeFades(clip, "fadeOut");
    return clip;
}

/// The imported clip's own attributes with the cut's times.
pugi::xml_node ClipContents::makeShell(const Cut& cut) {
    scratch_.reset();
    pugi::xml_node clip = scratch_.append_child(engine_.original.name());
    copyAttributes(engine_.original, clip, {"srcEnable", "offset", "start", "duration"});
    clip.append_attribute("srcEnable").set_value("all");
    setTime(clip, "offset", engine_.timelineStart + cut.start);
    setTime(clip, "start", engine_.sourceStart + cut.start);
    setTime(clip, "duration", cut.duration);
    return clip;
}

void ClipContents::makeSources(pugi::xml_node clip, const std::string& angle,
                               const SoundSettings& sound) const {
    if (angle == audioAngle_) {
        makeMulticamSource(clip, angle, SourceMode::all, sound);
        return;
    }
    makeMulticamSource(clip, angle, SourceMode::video, sound);
    makeMulticamSource(clip, audioAngle_, SourceMode::audio, sound);
}

void ClipContents::makeMulticamSource(pugi::xml_node clip, const std::string& angle,
                                      SourceMode mode, const SoundSettings& sound) const {
    static constexpr std::array<const char*, 3> modeNames{"video", "audio", "all"};
    pugi::xml_node source = clip.append_child("mc-source");
    source.append_attribute("angleID").set_value(angle.c_str());
    source.append_attribute("srcEnable").set_value(modeNames[static_cast<std::size_t>(mode)]);

    const auto found = sources_.find(angle);
    if (found == sources_.end()) return;
    if (mode != SourceMode::video) {
        for (const pugi::xml_node role : sound.roles)
            source.append_copy(role);
    }
    if (mode != SourceMode::audio) {
        for (const pugi::xml_node setting : found->second.pictureSettings)
            source.append_copy(setting);
    }
    renewTracking(source);
}

/// Identifiers of tracked shapes are unique in a document, so every copy gets its own.
void ClipContents::renewTracking(pugi::xml_node source) const {
    std::unordered_map<std::string, std::string> renewed;
    forEachDescendant(source, [&](pugi::xml_node element) {
        const auto id = attribute(element, "id");
        if (!id || !isElement(element, "tracking-shape")) return;
        std::string fresh = "swtrack" + makeUUID_().compactText();
        renewed.insert_or_assign(std::string(*id), fresh);
        setAttribute(element, "id", fresh);
    });
    if (renewed.empty()) return;
    forEachDescendant(source, [&](pugi::xml_node element) {
        const auto found = renewed.find(element.attribute("tracking").value());
        if (element.attribute("tracking") && found != renewed.end())
            setAttribute(element, "tracking", found->second);
    });
}

void ClipContents::copyPiece(pugi::xml_node clip, const Piece& piece) const {
    const pugi::xml_node copy = clip.append_copy(piece.element);
    if (!piece.span) return;
    setTime(copy, "start", engine_.sourceStart + piece.span->lowerBound);
    setTime(copy, "duration", piece.span->length());
}

void ClipContents::setTime(pugi::xml_node element, const char* name, std::int64_t frames) const {
    setAttribute(element, name, engine_.frameDuration.time(frames));
}

} // namespace shotweaver
