#include "engine/export/ClipItems.h"

#include "engine/TimeValues.h"
#include "engine/import/XmlAccess.h"

#include <array>
#include <string_view>

namespace shotweaver {

namespace {

constexpr std::array<std::string_view, 12> storyElements{
    "asset-clip", "audio", "video",        "clip",    "sync-clip", "ref-clip",
    "spine",      "title", "live-drawing", "caption", "mc-clip",   "audition"};
constexpr std::array<std::string_view, 6> timedAnnotations{
    "marker", "chapter-marker", "rating", "keyword", "analysis-marker", "hidden-clip-marker"};
constexpr std::array<std::string_view, 3> rangeAnnotations{"keyword", "rating", "analysis-marker"};

} // namespace

bool isStoryElement(pugi::xml_node element) {
    return isOneOf(storyElements, element.name());
}

bool isTimedAnnotation(pugi::xml_node element) {
    return isOneOf(timedAnnotations, element.name());
}

double storyOffset(pugi::xml_node element) {
    return parseSeconds(attributeOr(element, "offset", "0s"));
}

AnnotationTimes annotationTimes(const CutEngine& engine, pugi::xml_node element) {
    const auto frames = [&](const char* name, std::int64_t absent) {
        const auto text = attribute(element, name);
        return text ? engine.frameDuration.frames(*text) : absent;
    };
    const bool isRange = isOneOf(rangeAnnotations, element.name());
    const std::int64_t start = frames("start", engine.sourceStart);
    const std::int64_t duration = frames("duration", isRange ? engine.length : 0);
    return {start, isRange ? duration : 0};
}

} // namespace shotweaver
