#include "engine/import/Markers.h"

#include "engine/AngleNames.h"
#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/import/XmlAccess.h"
#include "platform/Text.h"

#include <algorithm>
#include <optional>

namespace shotweaver {

namespace {

/// A product of a time's 64 bits with a frame rate and a position.
__extension__ using Wide = __int128;

bool isStandard(XmlNode marker) {
    return !attribute(marker, "completed");
}

/// Where a marker stands, from the clip's start; nothing when its time cannot be read.
std::optional<Wide> frameOf(XmlNode marker, const CutEngine& engine) {
    const auto start = attribute(marker, "start");
    if (!start) return 0;
    try {
        const RationalTime time = parseRationalTime(*start);
        const Wide divisor = Wide{time.denominator} * engine.frameDuration.numerator;
        const Wide distance = Wide{time.numerator} * engine.frameDuration.denominator -
                              Wide{engine.sourceStart} * divisor;
        const Wide half = distance < 0 ? -divisor : divisor;
        return (2 * distance + half) / (2 * divisor);
    } catch (const FinalCutImportError&) {
        return std::nullopt;
    }
}

std::size_t markersOnTitles(XmlNode clip) {
    std::size_t count = 0;
    forEachDescendant(clip, [&](XmlNode element) {
        if (!isElement(element, "title")) return;
        const Elements markers(element, "marker");
        count +=
            static_cast<std::size_t>(std::count_if(markers.begin(), markers.end(), isStandard));
    });
    return count;
}

/// The same, where it lies inside of the project.
std::optional<std::int64_t> frameInside(XmlNode marker, const CutEngine& engine) {
    const auto place = frameOf(marker, engine);
    if (!place || *place < 0 || *place >= engine.length) return std::nullopt;
    return static_cast<std::int64_t>(*place);
}

std::string nameOf(XmlNode marker) {
    return std::string(trimmed(attributeOr(marker, "value", "")));
}

template <class Marked>
void sortByFrame(std::vector<Marked>& marks) {
    std::stable_sort(marks.begin(), marks.end(),
                     [](const Marked& a, const Marked& b) { return a.frame < b.frame; });
}

std::vector<Chapter> readChapters(const CutEngine& engine) {
    std::vector<Chapter> chapters;
    for (const XmlNode marker : Elements(engine.original, "chapter-marker"))
        if (const auto frame = frameInside(marker, engine))
            chapters.push_back({*frame, nameOf(marker)});
    sortByFrame(chapters);
    return chapters;
}

} // namespace

Markers readMarkers(const CutEngine& engine, const std::vector<ImportedAngle>& videoAngles) {
    const AngleNames cameras(videoAngles);
    Markers found;
    bool hasSome = false;
    for (const XmlNode marker : Elements(engine.original, "marker")) {
        if (!isStandard(marker)) continue;
        hasSome = true;
        const auto frame = frameInside(marker, engine);
        if (!frame) continue;
        std::string name = nameOf(marker);
        const auto camera = name.empty() ? std::nullopt : cameras.idOf(name);
        if (camera)
            found.notes.push_back({*frame, *camera, std::move(name)});
        else if (*frame > 0)
            found.cutPoints.push_back(*frame);
    }
    std::sort(found.cutPoints.begin(), found.cutPoints.end());
    found.cutPoints.erase(std::unique(found.cutPoints.begin(), found.cutPoints.end()),
                          found.cutPoints.end());
    sortByFrame(found.notes);
    found.chapters = readChapters(engine);
    if (!hasSome) found.onTitles = markersOnTitles(engine.original);
    return found;
}

} // namespace shotweaver
