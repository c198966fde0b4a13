#include "engine/import/ClipItems.h"

#include "engine/TimeValues.h"
#include "engine/import/XmlAccess.h"

#include <array>

namespace shotweaver {

namespace {

constexpr std::array<Name, 4> clipSettings{"note", "adjust-volume", "adjust-panner",
                                           "conform-rate"};
constexpr std::array<Name, 2> trailingElements{"filter-audio", "metadata"};
constexpr std::array<Name, 12> storyElements{"asset-clip",   "audio",    "video",   "clip",
                                             "sync-clip",    "ref-clip", "spine",   "title",
                                             "live-drawing", "caption",  "mc-clip", "audition"};
constexpr std::array<Name, 6> timedAnnotations{"marker",  "chapter-marker",  "rating",
                                               "keyword", "analysis-marker", "hidden-clip-marker"};
constexpr std::array<Name, 3> rangeAnnotations{"keyword", "rating", "analysis-marker"};

} // namespace

bool isClipSetting(XmlNode element) {
    return isOneOf(clipSettings, element);
}

bool isTrailing(XmlNode element) {
    return isOneOf(trailingElements, element);
}

std::map<std::string_view, AngleSources> angleSources(XmlNode clip) {
    std::map<std::string_view, AngleSources> found;
    for (const XmlNode source : Elements(clip, "mc-source")) {
        const auto angle = attribute(source, "angleID");
        if (!angle) continue;
        const std::string_view enabled = attributeOr(source, "srcEnable", "all");
        const bool isVideo = enabled == "all" || enabled == "video";
        const bool isAudio = enabled == "all" || enabled == "audio";
        AngleSources& sources = found[*angle];
        if (!sources.video || (isVideo && !sources.isVideoEnabled)) sources.video = source;
        if (!sources.audio || (isAudio && !sources.isAudioEnabled)) sources.audio = source;
        sources.isVideoEnabled |= isVideo;
        sources.isAudioEnabled |= isAudio;
    }
    return found;
}

std::vector<XmlNode> pictureSettings(XmlNode source) {
    std::vector<XmlNode> settings;
    for (const XmlNode child : Elements(source))
        if (!isElement(child, "audio-role-source")) settings.push_back(child);
    return settings;
}

bool isStoryElement(XmlNode element) {
    return isOneOf(storyElements, element);
}

bool isTimedAnnotation(XmlNode element) {
    return isOneOf(timedAnnotations, element);
}

double storyOffset(XmlNode element) {
    return parseSeconds(attributeOr(element, "offset", "0s"));
}

AnnotationTimes annotationTimes(const CutEngine& engine, XmlNode element) {
    const auto frames = [&](Name name, std::int64_t absent) {
        const auto text = attribute(element, name);
        return text ? engine.frameDuration.frames(*text) : absent;
    };
    const bool isRange = isOneOf(rangeAnnotations, element);
    const std::int64_t start = frames("start", engine.sourceStart);
    const std::int64_t duration = frames("duration", isRange ? engine.length : 0);
    return {start, isRange ? duration : 0};
}

} // namespace shotweaver
