#include "fuzz/ExportChecks.h"

#include "engine/TimeValues.h"
#include "engine/import/XmlAccess.h"
#include "fuzz/Check.h"
#include "platform/XmlIntake.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <tuple>

namespace shotweaver::fuzz {

namespace {

__extension__ using Wide = __int128;

const std::set<std::string_view> points{"marker", "chapter-marker", "hidden-clip-marker"};
const std::set<std::string_view> spans{"keyword", "rating", "analysis-marker"};
const std::set<std::string_view> connected{"asset-clip",   "audio",    "video",   "clip",
                                           "sync-clip",    "ref-clip", "spine",   "title",
                                           "live-drawing", "caption",  "mc-clip", "audition"};

/// A time of a clip in an export, in frames: frames × numerator "/" denominator.
std::int64_t exportedFrames(const CutEngine& engine, XmlNode element, Name name) {
    const RationalTime time = parseRationalTime(attributeOr(element, name, ""));
    require(time.denominator == engine.frameDuration.denominator &&
                time.numerator % engine.frameDuration.numerator == 0,
            "an exported time is unreduced whole frames", std::string(name.text()));
    return time.numerator / engine.frameDuration.numerator;
}

/// An annotation's time in frames, however large: the import has checked it already, and what an
/// export makes of it may be past the limit of what is imported.
std::int64_t annotationFrames(const CutEngine& engine, XmlNode element, Name name,
                              std::int64_t absent) {
    const auto text = attribute(element, name);
    if (!text) return absent;
    const RationalTime time = parseRationalTime(*text);
    const Wide divisor = Wide{time.denominator} * engine.frameDuration.numerator;
    const Wide dividend = Wide{time.numerator} * engine.frameDuration.denominator;
    require(dividend % divisor == 0, "an annotation is on a frame", std::string(name.text()));
    return static_cast<std::int64_t>(dividend / divisor);
}

std::string labelOf(XmlNode element) {
    return std::string(element.name()) + "|" +
           std::string(attributeOr(element, "value", attributeOr(element, "name", "")));
}

/// What of a kind of child an edit holds: how many points or items, and how many frames of spans.
struct Amount {
    std::int64_t count = 0;
    std::int64_t frames = 0;

    bool operator==(const Amount&) const = default;
};
using Amounts = std::map<std::string, Amount>;

void addImported(Amounts& amounts, const CutEngine& engine, XmlNode child) {
    Amount& amount = amounts[labelOf(child)];
    if (connected.count(child.name()) == 1) {
        ++amount.count;
        return;
    }
    const std::int64_t start =
        annotationFrames(engine, child, "start", engine.sourceStart) - engine.sourceStart;
    const std::int64_t duration = spans.count(child.name()) == 1
                                      ? annotationFrames(engine, child, "duration", engine.length)
                                      : 0;
    if (duration < 1) {
        amount.count += start >= 0 && start < engine.length ? 1 : 0;
        return;
    }
    const std::int64_t inside =
        std::min(start + duration, engine.length) - std::max<std::int64_t>(start, 0);
    amount.frames += std::max<std::int64_t>(inside, 0);
}

bool isPlaced(XmlNode child) {
    const std::string_view name = child.name();
    return points.count(name) == 1 || spans.count(name) == 1 || connected.count(name) == 1;
}

bool isSameTree(XmlNode a, XmlNode b) {
    if (a.kind() != b.kind() || a.name() != b.name() || a.value() != b.value()) return false;
    const auto isSameAttribute = [](XmlAttribute left, XmlAttribute right) {
        return left.name() == right.name() && left.value() == right.value();
    };
    const auto left = a.attributes();
    const auto right = b.attributes();
    if (!std::equal(left.begin(), left.end(), right.begin(), right.end(), isSameAttribute))
        return false;
    const auto below = a.children();
    const auto belowB = b.children();
    return std::equal(below.begin(), below.end(), belowB.begin(), belowB.end(), isSameTree);
}

/// Whether there is a fade of that kind below an element's "adjust-volume" children.
bool hasVolumeFade(XmlNode element, Name fade) {
    bool isFound = false;
    for (const XmlNode volume : Elements(element, "adjust-volume"))
        forEachDescendant(volume, [&](XmlNode each) { isFound |= isElement(each, fade); });
    return isFound;
}

bool hasFade(XmlNode clip, Name fade) {
    bool isFound = hasVolumeFade(clip, fade);
    for (const XmlNode source : Elements(clip, "mc-source")) {
        for (const XmlNode role : Elements(source, "audio-role-source"))
            isFound |= hasVolumeFade(role, fade);
    }
    return isFound;
}

/// The identifiers of the shapes that a clip with an angle's picture has to renew; none for an
/// angle with more than one source, of which an export chooses.
std::set<std::string> importedShapes(XmlNode clip, std::string_view angle) {
    std::set<std::string> shapes;
    int sources = 0;
    for (const XmlNode source : Elements(clip, "mc-source")) {
        if (attribute(source, "angleID") != angle) continue;
        ++sources;
        const auto add = [&](XmlNode each) {
            const auto id = attribute(each, "id");
            if (id && isElement(each, "tracking-shape")) shapes.emplace(*id);
        };
        for (const XmlNode child : Elements(source)) {
            if (isElement(child, "audio-role-source")) continue;
            add(child);
            forEachDescendant(child, add);
        }
    }
    return sources == 1 ? shapes : std::set<std::string>();
}

/// The exported document, clip by clip.
class ExportReading {
  public:
    ExportReading(const CutEngine& engine, const std::vector<Cut>& cuts, const std::string& audio)
        : engine_(engine), cuts_(cuts), audio_(audio) {
        for (const XmlNode child : Elements(engine.original)) {
            if (isPlaced(child)) addImported(imported_, engine, child);
        }
        for (auto entry = imported_.begin(); entry != imported_.end();)
            entry = entry->second == Amount{} ? imported_.erase(entry) : std::next(entry);
    }

    void check(XmlNode root);

  private:
    void checkProject(XmlNode project) const;
    void checkClip(XmlNode clip, const Cut& cut);
    void checkFades(XmlNode clip, const Cut& cut) const;
    void checkSources(XmlNode clip, const Cut& cut);
    void checkTracking(XmlNode source);
    void addPlaced(XmlNode child, const Cut& cut);
    void checkConnected(XmlNode child, const Cut& cut) const;

    const CutEngine& engine_;
    const std::vector<Cut>& cuts_;
    const std::string& audio_;
    Amounts imported_;
    Amounts exported_;
    std::set<std::string> shapes_;
};

void ExportReading::check(XmlNode root) {
    require(isElement(root, "fcpxml"), "the root is fcpxml");
    std::vector<std::string> parts;
    for (const XmlNode part : Elements(root))
        parts.emplace_back(part.name());
    require(parts == std::vector<std::string>{"resources", "project"},
            "an export holds resources and a project");
    require(isSameTree(firstElement(root, "resources"),
                       firstElement(engine_.document->documentElement(), "resources")),
            "the resources are the imported ones");
    const XmlNode project = firstElement(root, "project");
    checkProject(project);

    std::size_t index = 0;
    for (const XmlNode clip : Elements(firstElement(firstElement(project, "sequence"), "spine"))) {
        require(index < cuts_.size(), "no more clips than cuts");
        checkClip(clip, cuts_[index++]);
    }
    require(index == cuts_.size(), "a clip for every cut");
    require(exported_ == imported_, "items and annotations come through once and whole");
}

void ExportReading::checkProject(XmlNode project) const {
    require(!attribute(project, "uid") && !attribute(project, "modDate"),
            "the new project has no identity yet");
    const auto name = attribute(engine_.project, "name");
    require(name ? attribute(project, "name") == std::string(*name) + " Shotweaver"
                 : !attribute(project, "name"),
            "the new project is named after the imported one");
}

void ExportReading::checkClip(XmlNode clip, const Cut& cut) {
    require(isElement(clip, "mc-clip"), "the spine holds multicam clips");
    require(exportedFrames(engine_, clip, "offset") == engine_.timelineStart + cut.start &&
                exportedFrames(engine_, clip, "start") == engine_.sourceStart + cut.start &&
                exportedFrames(engine_, clip, "duration") == cut.duration,
            "a clip's times are its cut's");
    require(attribute(clip, "srcEnable") == "all", "a clip is on");
    checkSources(clip, cut);
    for (const Name name : {Name("note"), Name("adjust-panner"), Name("conform-rate"),
                            Name("filter-audio"), Name("metadata")}) {
        const Elements copies(clip, name);
        const Elements originals(engine_.original, name);
        require(std::equal(copies.begin(), copies.end(), originals.begin(), originals.end(),
                           isSameTree),
                "every clip has the imported clip's settings", std::string(name.text()));
    }
    for (const XmlNode child : Elements(clip)) {
        if (isPlaced(child)) addPlaced(child, cut);
    }
    checkFades(clip, cut);
}

void ExportReading::checkFades(XmlNode clip, const Cut& cut) const {
    const bool isFirst = cut.start == 0;
    const bool isLast = cut.start + cut.duration == engine_.length;
    require(isFirst || !hasFade(clip, "fadeIn"), "only the first clip fades in");
    require(isLast || !hasFade(clip, "fadeOut"), "only the last clip fades out");
}

void ExportReading::checkSources(XmlNode clip, const Cut& cut) {
    using Source = std::pair<std::string, std::string>;
    std::vector<Source> expected{{cut.angle, "video"}, {audio_, "audio"}};
    if (cut.angle == audio_) expected = {{audio_, "all"}};
    std::vector<Source> sources;
    for (const XmlNode source : Elements(clip, "mc-source")) {
        sources.emplace_back(attributeOr(source, "angleID", ""),
                             attributeOr(source, "srcEnable", ""));
        checkTracking(source);
    }
    require(sources == expected, "a clip shows its cut's camera and plays the chosen sound");
}

void ExportReading::checkTracking(XmlNode source) {
    std::set<std::string> own;
    forEachDescendant(source, [&](XmlNode shape) {
        const auto id = attribute(shape, "id");
        if (!id || !isElement(shape, "tracking-shape")) return;
        own.emplace(*id);
        require(shapes_.emplace(*id).second, "no two shapes share an identifier", std::string(*id));
    });
    const std::string_view angle = attributeOr(source, "angleID", "");
    const std::set<std::string> old = attribute(source, "srcEnable") == "audio"
                                          ? std::set<std::string>()
                                          : importedShapes(engine_.original, angle);
    forEachDescendant(source, [&](XmlNode user) {
        if (!attribute(user, "tracking")) return;
        const std::string name(*attribute(user, "tracking"));
        require(old.count(name) == 0, "what tracks a shape follows its renewed identifier", name);
        require(!name.starts_with("swtrack") || own.count(name) == 1,
                "a renewed identifier is that of a shape beside it", name);
    });
}

void ExportReading::addPlaced(XmlNode child, const Cut& cut) {
    Amount& amount = exported_[labelOf(child)];
    if (connected.count(child.name()) == 1) {
        ++amount.count;
        checkConnected(child, cut);
        return;
    }
    const std::int64_t start =
        annotationFrames(engine_, child, "start", engine_.sourceStart) - engine_.sourceStart;
    const std::int64_t duration =
        spans.count(child.name()) == 1 ? annotationFrames(engine_, child, "duration", 0) : 0;
    const bool isSpan = duration > 0;
    const std::int64_t end = start + (isSpan ? duration : 1);
    require(start >= cut.start && end <= cut.start + cut.duration, "an annotation lies in its clip",
            labelOf(child));
    if (isSpan)
        amount.frames += end - start;
    else
        ++amount.count;
}

/// Exact, but for a frame where seconds of this size are coarser than the tolerance at a cut.
void ExportReading::checkConnected(XmlNode child, const Cut& cut) const {
    const Elements originals(engine_.original);
    require(std::any_of(originals.begin(), originals.end(),
                        [&](XmlNode original) { return isSameTree(original, child); }),
            "a connected item is copied as it is", labelOf(child));
    RationalTime offset;
    if (refusalOf([&] { offset = parseRationalTime(attributeOr(child, "offset", "0s")); })) return;
    const Wide divisor = Wide{offset.denominator} * engine_.frameDuration.numerator;
    const Wide source = Wide{engine_.sourceStart} * divisor;
    const Wide position = Wide{offset.numerator} * engine_.frameDuration.denominator - source;
    const bool beginsBefore = cut.start == 0 || position >= Wide{cut.start - 1} * divisor;
    const Wide end = Wide{cut.start} + cut.duration + 1;
    const bool endsAfter = cut.start + cut.duration == engine_.length || position < end * divisor;
    require(beginsBefore && endsAfter, "a connected item goes to the clip at its time",
            labelOf(child));
}

/// Exports write unreduced times, which no longer fit into 64 bits when read with a frame duration
/// of two large terms.
bool isReadable(const CutEngine& engine) {
    const Wide largest =
        std::max({std::abs(engine.timelineStart), std::abs(engine.sourceStart), engine.length});
    return largest * engine.frameDuration.numerator * engine.frameDuration.denominator <= INT64_MAX;
}

void checkReadBack(const CutEngine& engine, std::size_t cutCount, std::string_view exported) {
    if (cutCount > 1) {
        require(refusalOf([&] { inspectProject(exported); }) ==
                    "For this prototype, export a timeline containing one uncut multicam clip.",
                "an export of many clips is refused for them");
        return;
    }
    if (!isReadable(engine)) return;
    const auto refusal = refusalOf([&] {
        const CutEngine again(exported);
        require(again.length == engine.length && again.sourceStart == engine.sourceStart &&
                    again.timelineStart == engine.timelineStart &&
                    again.coverage == engine.coverage &&
                    again.audioCoverage == engine.audioCoverage,
                "an export of one clip is the same project");
    });
    require(!refusal, "an export of one clip imports again", refusal.value_or(""));
}

} // namespace

void checkExport(const CutEngine& engine, const std::vector<Cut>& cuts, const std::string& audio,
                 std::string_view exported) {
    require(isUTF8(exported), "an export is UTF-8");
    std::unique_ptr<const XmlDocument> document;
    const auto refusal = refusalOf([&] { document = parseXml(exported, fcpxmlVocabulary); });
    require(!refusal, "an export is well-formed", refusal.value_or(""));
    ExportReading(engine, cuts, audio).check(document->documentElement());
    checkReadBack(engine, cuts.size(), exported);
}

} // namespace shotweaver::fuzz
