#include "engine/export/ClipItems.h"

#include "engine/TimeValues.h"
#include "engine/import/XmlAccess.h"

#include <array>

namespace shotweaver {

namespace {

constexpr std::array<Name, 12> storyElements{"asset-clip",   "audio",    "video",   "clip",
                                             "sync-clip",    "ref-clip", "spine",   "title",
                                             "live-drawing", "caption",  "mc-clip", "audition"};
constexpr std::array<Name, 6> timedAnnotations{"marker",  "chapter-marker",  "rating",
                                               "keyword", "analysis-marker", "hidden-clip-marker"};
constexpr std::array<Name, 3> rangeAnnotations{"keyword", "rating", "analysis-marker"};

} // namespace

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
