#include "engine/export/ClipContents.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/import/XmlAccess.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <unordered_map>

namespace shotweaver {

namespace {

constexpr std::array<std::string_view, 4> clipSettings{"note", "adjust-volume", "adjust-panner",
                                                       "conform-rate"};
constexpr std::array<std::string_view, 12> storyElements{
    "asset-clip", "audio", "video",        "clip",    "sync-clip", "ref-clip",
    "spine",      "title", "live-drawing", "caption", "mc-clip",   "audition"};
constexpr std::array<std::string_view, 6> timedAnnotations{
    "marker", "chapter-marker", "rating", "keyword", "analysis-marker", "hidden-clip-marker"};
constexpr std::array<std::string_view, 3> rangeAnnotations{"keyword", "rating", "analysis-marker"};
constexpr std::array<std::string_view, 2> trailingElements{"filter-audio", "metadata"};

// A connected clip this little before a cut, in seconds, belongs to the cut.
constexpr double ownerTolerance = 0.00000001;

template <std::size_t count>
bool isOneOf(const std::array<std::string_view, count>& names, pugi::xml_node element) {
    return std::find(names.begin(), names.end(), element.name()) != names.end();
}

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

/// Calls `visit` with every element below `element`, in document order. The visit may not change
/// the tree.
template <class Visit>
void forEachDescendant(pugi::xml_node element, Visit visit) {
    for (const pugi::xml_node child : elements(element)) {
        visit(child);
        forEachDescendant(child, visit);
    }
}

void addVolumeFades(std::vector<pugi::xml_node>& fades, pugi::xml_node volume) {
    forEachDescendant(volume, [&](pugi::xml_node element) {
        if (isElement(element, "fadeIn") || isElement(element, "fadeOut")) fades.push_back(element);
    });
}

/// Removes the fades of one kind from a finished clip: its own, and those of its sources' roles.
void removeFades(pugi::xml_node clip, std::string_view kind) {
    std::vector<pugi::xml_node> fades;
    for (const pugi::xml_node volume : elements(clip, "adjust-volume"))
        addVolumeFades(fades, volume);
    for (const pugi::xml_node source : elements(clip, "mc-source")) {
        for (const pugi::xml_node role : elements(source, "audio-role-source")) {
            for (const pugi::xml_node volume : elements(role, "adjust-volume"))
                addVolumeFades(fades, volume);
        }
    }
    // Backwards, so that a fade within a fade goes before the one that holds it.
    for (auto fade = fades.rbegin(); fade != fades.rend(); ++fade) {
        if (isElement(*fade, kind)) fade->parent().remove_child(*fade);
    }
}

double storyOffset(pugi::xml_node element) {
    return parseSeconds(attributeOr(element, "offset", "0s"));
}

/// Where an annotation lies in the multicam, in frames. Without a duration of at least a frame, or
/// when its kind has none, it is a point.
struct AnnotationTimes {
    std::int64_t start;
    std::int64_t duration;
};

AnnotationTimes annotationTimes(const CutEngine& engine, pugi::xml_node element) {
    const auto frames = [&](const char* name, std::int64_t absent) {
        const auto text = attribute(element, name);
        return text ? engine.frameDuration.frames(*text) : absent;
    };
    const bool isRange = isOneOf(rangeAnnotations, element);
    const std::int64_t start = frames("start", engine.sourceStart);
    const std::int64_t duration = frames("duration", isRange ? engine.length : 0);
    return {start, isRange ? duration : 0};
}

} // namespace

void addAudioFades(std::vector<pugi::xml_node>& fades, pugi::xml_node element) {
    for (const pugi::xml_node child : elements(element)) {
        if (isElement(child, "adjust-volume")) addVolumeFades(fades, child);
        if (!isElement(child, "audio-role-source")) continue;
        for (const pugi::xml_node volume : elements(child, "adjust-volume"))
            addVolumeFades(fades, volume);
    }
}

ClipContents::ClipContents(const CutEngine& engine, const std::vector<Cut>& cuts,
                           std::string audioAngle, const UUIDMaker& makeUUID)
    : engine_(engine), cuts_(cuts), audioAngle_(std::move(audioAngle)), makeUUID_(makeUUID),
      pieces_(cuts.size()) {
    std::vector<pugi::xml_node> annotations;
    for (const pugi::xml_node child : elements(engine.original)) {
        if (isOneOf(clipSettings, child)) sound_.leading.push_back(child);
        if (isElement(child, "mc-source")) addSource(child);
        if (isOneOf(storyElements, child)) addStoryElement(child);
        if (isOneOf(timedAnnotations, child)) annotations.push_back(child);
        if (isOneOf(trailingElements, child)) trailing_.push_back(child);
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
        for (const pugi::xml_node child : elements(sources.video)) {
            if (!isElement(child, "audio-role-source")) sources.pictureSettings.push_back(child);
        }
    }
    const auto heard = sources_.find(audioAngle_);
    if (heard == sources_.end()) return;
    const Elements roles = elements(heard->second.audio, "audio-role-source");
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
    const Elements roles = elements(source);
    withoutFades_.roles.assign(roles.begin(), roles.end());
    const Elements children = elements(clip);
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

std::vector<std::string> CutEngine::exportObstacles() const {
    std::vector<std::string> obstacles;
    if (!attribute(document->document_element(), "version")) obstacles.emplace_back(missingVersion);
    for (const pugi::xml_node child : elements(original)) {
        try {
            // Of the sources, an export reads only those of the angle that is heard.
            const bool isHeard = isElement(child, "mc-source") && audioSource &&
                                 attribute(child, "angleID") == audioID;
            std::vector<pugi::xml_node> fades;
            if (isElement(child, "adjust-volume")) addVolumeFades(fades, child);
            if (isElement(child, "audio-role-source") || isHeard) addAudioFades(fades, child);
            for (const pugi::xml_node fade : fades)
                parseSeconds(attribute(fade, "duration"));
            if (isOneOf(storyElements, child)) storyOffset(child);
            if (isOneOf(timedAnnotations, child)) annotationTimes(*this, child);
        } catch (const FinalCutImportError& error) {
            const std::string_view label =
                attributeOr(child, "value", attributeOr(child, "name", "without a name"));
            obstacles.push_back(fmt::format("The {} “{}” on the multicam clip would stop an "
                                            "export: {}",
                                            child.name(), label, error.what()));
        }
    }
    return obstacles;
}

} // namespace shotweaver
