#include "engine/import/Preflight.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/import/AudioFades.h"
#include "engine/import/ChildOrder.h"
#include "engine/import/ClipItems.h"
#include "engine/import/XmlAccess.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <unordered_map>
#include <unordered_set>

namespace shotweaver {

namespace {

using Kind = Finding::Kind;
using IDs = std::unordered_set<std::string_view>;

constexpr const char* exportAgain = "Export XML again from Final Cut.";

// The elements with an attribute of the type ID, the attributes of the type IDREF, the elements
// that have those, and the ones whose children's order is known.
constexpr std::array<Name, 8> identified{"asset", "effect",  "format",         "locator",
                                         "media", "project", "text-style-def", "tracking-shape"};
constexpr std::array<Name, 5> references{"ref", "format", "dataLocator", "tracking", "projectRef"};
constexpr std::array<Name, 21> referring{"adjust-cinematic",
                                         "adjust-transform",
                                         "asset",
                                         "asset-clip",
                                         "audio",
                                         "clip",
                                         "filter-audio",
                                         "filter-video",
                                         "live-drawing",
                                         "mask-shape",
                                         "mc-clip",
                                         "media",
                                         "multicam",
                                         "ref-clip",
                                         "sequence",
                                         "spine",
                                         "sync-clip",
                                         "text-style",
                                         "title",
                                         "tracking-shape",
                                         "video"};
constexpr std::array<Name, 6> ordered{"asset-clip", "audio-role-source", "mc-source",
                                      "multicam",   "ref-clip",          "sync-clip"};
constexpr std::array<Name, 4> checked{"asset", "caption", "format", "locator"};

/// Which of these lists a name is in, by its number: the import of many clips is not to wait.
class Aspects {
  public:
    static constexpr unsigned isIdentified = 1;
    static constexpr unsigned isReference = 2;
    static constexpr unsigned isOrdered = 4;
    static constexpr unsigned hasOwnCheck = 8;
    static constexpr unsigned isReferring = 16;

    constexpr Aspects() {
        add(identified, isIdentified);
        add(references, isReference);
        add(referring, isReferring);
        add(ordered, isOrdered);
        add(checked, hasOwnCheck);
    }

    constexpr unsigned of(XmlName name) const { return name < all_.size() ? all_[name] : 0; }

  private:
    constexpr void add(std::span<const Name> names, unsigned aspect) {
        for (const Name name : names)
            all_[name] |= aspect;
    }

    std::array<unsigned, fcpxmlNames.size()> all_{};
};
constexpr Aspects aspects;

/// What a person calls an element of Final Cut's.
struct Noun {
    Name element;
    const char* text;
};
constexpr std::array<Noun, 17> nouns{{{"asset-clip", "clip"},
                                      {"clip", "clip"},
                                      {"video", "clip"},
                                      {"audio", "clip"},
                                      {"sync-clip", "synchronized clip"},
                                      {"ref-clip", "compound clip"},
                                      {"mc-clip", "multicam clip"},
                                      {"title", "title"},
                                      {"caption", "caption"},
                                      {"live-drawing", "drawing"},
                                      {"asset", "recording"},
                                      {"media", "media"},
                                      {"effect", "effect"},
                                      {"format", "format"},
                                      {"locator", "data file"},
                                      {"text-style-def", "text style"},
                                      {"tracking-shape", "tracked shape"}}};

const char* nounOf(XmlNode element) {
    const auto found = std::find_if(nouns.begin(), nouns.end(), [&](const Noun& noun) {
        return isElement(element, noun.element);
    });
    return found == nouns.end() ? nullptr : found->text;
}

std::optional<std::string_view> identifier(XmlNode element) {
    return (aspects.of(element.nameNumber()) & Aspects::isIdentified) != 0
               ? attribute(element, "id")
               : std::nullopt;
}

/// Whether a location is found only from where the XML stands.
bool isRelative(std::string_view url) {
    const std::size_t scheme = url.find_first_of(":/");
    return scheme == std::string_view::npos || (scheme > 0 && url[scheme] == '/');
}

bool hasFade(XmlNode element) {
    std::vector<XmlNode> fades;
    addVolumeFades(fades, element);
    return !fades.empty();
}

/// "Wide", "Wide and Band", "Wide, Pulpit and Band".
std::string listed(const std::vector<std::string>& names) {
    if (names.size() < 2) return joined(names, "");
    const std::vector<std::string> first(names.begin(), names.end() - 1);
    return joined(first, ", ") + " and " + names.back();
}

/// Goes through what an export carries: first for its identifiers, then for everything else.
class Preflight {
  public:
    explicit Preflight(const Project& project)
        : project_(project), engine_(project.engine),
          resources_(firstElement(engine_.document->documentElement(), "resources")),
          sources_(angleSources(engine_.original)) {}

    std::vector<Finding> run();

  private:
    void collect(XmlNode element);
    void collectBelow(XmlNode element);
    void collectOwnShapes();

    void checkVersion();
    void checkProject();
    void checkClip();
    void checkSource(XmlNode source);
    void checkTimes(XmlNode child);
    void checkEffectsOfHidden();

    void check(XmlNode element);
    void checkKind(XmlNode element);
    void checkIdentifier(XmlNode element);
    void checkReferences(XmlNode element);
    void checkRecording(XmlNode asset);
    void checkFormat(XmlNode format);
    void checkLocator(XmlNode locator);
    void checkPlace(ChildOrder& order, XmlNode child);

    void find(Kind kind, std::string text) { findings_.push_back({kind, std::move(text)}); }
    std::string subject() const;
    std::string placeOf(std::size_t onPath) const;
    std::string timecode(double multicamSeconds) const;

    const Project& project_;
    const CutEngine& engine_;
    XmlNode resources_;
    std::map<std::string_view, AngleSources> sources_;
    std::unordered_map<std::string_view, XmlNode> exported_; // by identifier
    std::map<XmlNode, XmlNode> repeated_;                    // elements, and whose identifier it is
    std::unordered_map<std::string_view, XmlNode> pictureFormats_; // and a recording of each
    IDs clipShapes_;                                               // of all sources of the clip
    std::vector<XmlNode> path_; // to the element that is looked at
    // While a source of the clip is looked at: what it is, when it counts, its own shapes.
    std::string scope_;
    std::string condition_;
    IDs ownShapes_;
    bool toldHidden_ = false;
    std::vector<Finding> findings_;
};

std::vector<Finding> Preflight::run() {
    collectBelow(resources_);
    collect(engine_.project);
    for (const XmlNode child : Elements(engine_.original))
        if (isStoryElement(child)) {
            collect(child);
            collectBelow(child);
        }
    collectOwnShapes();

    checkVersion();
    check(resources_);
    checkProject();
    return std::move(findings_);
}

void Preflight::collect(XmlNode element) {
    if (const auto id = identifier(element)) {
        const auto [owner, isNew] = exported_.emplace(*id, element);
        if (!isNew) repeated_.emplace(element, owner->second);
    }
    if (isElement(element, "asset") && attribute(element, "hasVideo") == "1")
        if (const auto format = attribute(element, "format"))
            pictureFormats_.emplace(*format, element);
}

void Preflight::collectBelow(XmlNode element) {
    for (const XmlNode child : Elements(element)) {
        collect(child);
        if (child.firstChild()) collectBelow(child);
    }
}

void Preflight::collectOwnShapes() {
    for (const XmlNode source : Elements(engine_.original, "mc-source"))
        forEachDescendant(source, [&](XmlNode element) {
            if (const auto id = identifier(element)) clipShapes_.insert(*id);
        });
}

void Preflight::checkVersion() {
    const auto version = attribute(engine_.document->documentElement(), "version");
    if (!version) find(Kind::refused, missingVersion);
    if (version == "1.5")
        find(Kind::refused,
             "This XML has FCPXML version 1.5, of which Final Cut imports no project on its own. "
             "Choose a newer version in Final Cut's export dialog and export XML again.");
}

void Preflight::checkProject() {
    const XmlNode spine = firstElement(engine_.sequence, "spine");
    path_.push_back(engine_.project);
    checkIdentifier(engine_.project);
    for (const XmlNode child : Elements(engine_.project))
        if (child != engine_.sequence) check(child);
    checkReferences(engine_.sequence);
    checkReferences(spine);
    path_.pop_back();
    checkClip();
}

void Preflight::checkClip() {
    checkReferences(engine_.original);
    ChildOrder settings;
    ChildOrder trailing;
    for (const XmlNode child : Elements(engine_.original)) {
        if (isClipSetting(child)) checkPlace(settings, child);
        if (isTrailing(child)) checkPlace(trailing, child);
        if (isElement(child, "mc-source")) checkSource(child);
        if (isClipSetting(child) || isTrailing(child) || isStoryElement(child)) check(child);
        checkTimes(child);
    }
}

/// Its picture settings and its roles, where an angle's shots or sound take them from here.
void Preflight::checkSource(XmlNode source) {
    const std::string_view angle = attributeOr(source, "angleID", "");
    const auto found = sources_.find(angle);
    if (found == sources_.end()) return;
    const std::string name = project_.name(angle);
    if (found->second.audio == source && project_.isAudioAngle(angle)) {
        scope_ = fmt::format("The sound of {} on the timeline clip", name);
        condition_ = fmt::format(" when {} is the audio", name);
        for (const XmlNode role : Elements(source, "audio-role-source"))
            check(role);
    }
    if (found->second.video == source && project_.isVideoAngle(angle)) {
        scope_ = fmt::format("The picture of {} on the timeline clip", name);
        condition_ = fmt::format(" as soon as {} is shown", name);
        const std::vector<XmlNode> settings = pictureSettings(source);
        for (const XmlNode setting : settings)
            forEachDescendant(setting, [&](XmlNode element) {
                if (const auto id = identifier(element)) ownShapes_.insert(*id);
            });
        ChildOrder order;
        for (const XmlNode setting : settings) {
            checkPlace(order, setting);
            check(setting);
        }
        if (std::any_of(settings.begin(), settings.end(), [](XmlNode each) {
                return isElement(each, "adjust-blend") && hasFade(each);
            }))
            find(Kind::changed,
                 fmt::format("{} fades: the fade repeats on every shot of that camera. Remove it, "
                             "and fade in the finished edit instead.",
                             scope_));
        ownShapes_.clear();
    }
    scope_.clear();
    condition_.clear();
    if (attribute(source, "srcEnable") == "none") checkEffectsOfHidden();
}

/// All of them at the first one's place.
void Preflight::checkEffectsOfHidden() {
    if (std::exchange(toldHidden_, true)) return;
    std::vector<std::string> cameras;
    for (const ImportedAngle& angle : project_.videoAngles) {
        const auto found = sources_.find(angle.id);
        if (found != sources_.end() && attribute(found->second.video, "srcEnable") == "none" &&
            !pictureSettings(found->second.video).empty())
            cameras.push_back(angle.name);
    }
    if (cameras.empty()) return;
    find(Kind::changed, fmt::format("{} {} effects on the timeline clip; they stay only on shots "
                                    "of that camera. Grade in the angle editor instead.",
                                    listed(cameras), cameras.size() == 1 ? "has" : "have"));
}

/// The fades that an export reads in a child of the multicam clip: of the sources only those of the
/// angle that is heard.
std::vector<XmlNode> fadesOf(const CutEngine& engine, XmlNode child) {
    const bool isHeard = isElement(child, "mc-source") && engine.audioSource &&
                         attribute(child, "angleID") == engine.audioID;
    std::vector<XmlNode> fades;
    if (isElement(child, "adjust-volume")) addVolumeFades(fades, child);
    if (isElement(child, "audio-role-source") || isHeard) addAudioFades(fades, child);
    return fades;
}

/// Reads what an export reads in a child of the multicam clip.
void Preflight::checkTimes(XmlNode child) {
    try {
        for (const XmlNode fade : fadesOf(engine_, child))
            parseSeconds(attribute(fade, "duration"));
        if (isStoryElement(child)) storyOffset(child);
        if (isTimedAnnotation(child)) annotationTimes(engine_, child);
    } catch (const FinalCutImportError& error) {
        const std::string_view label =
            attributeOr(child, "value", attributeOr(child, "name", "without a name"));
        find(Kind::refused, fmt::format("The {} “{}” on the multicam clip would stop an export: {}",
                                        child.name(), label, error.what()));
    }
}

void Preflight::check(XmlNode element) {
    path_.push_back(element);
    checkIdentifier(element);
    const unsigned aspect = aspects.of(element.nameNumber());
    if ((aspect & Aspects::isReferring) != 0) checkReferences(element);
    if ((aspect & Aspects::hasOwnCheck) != 0) checkKind(element);
    const bool isOrdered = (aspect & Aspects::isOrdered) != 0;
    const bool isSource = isElement(element, "mc-source");
    ChildOrder order;
    for (const XmlNode child : Elements(element)) {
        // Of a source only its picture settings.
        if (isOrdered && !(isSource && isElement(child, "audio-role-source")))
            checkPlace(order, child);
        check(child);
    }
    path_.pop_back();
}

void Preflight::checkKind(XmlNode element) {
    if (isElement(element, "asset")) checkRecording(element);
    if (isElement(element, "format")) checkFormat(element);
    if (isElement(element, "locator")) checkLocator(element);
    if (isElement(element, "caption") && attributeOr(element, "role", "").empty())
        find(Kind::changed, fmt::format("{} has no role: Final Cut gives it one of its own. Assign "
                                        "it a caption role and export XML again.",
                                        subject()));
}

void Preflight::checkIdentifier(XmlNode element) {
    if (repeated_.empty()) return;
    const auto found = repeated_.find(element);
    if (found == repeated_.end()) return;
    const char* const other = nounOf(found->second);
    find(Kind::refused,
         fmt::format("{} has the identifier “{}”, which the {} “{}” has already: Final Cut refuses "
                     "the XML. {}",
                     subject(), *attribute(element, "id"), other ? other : "project",
                     attributeOr(found->second, "name", "without a name"), exportAgain));
}

void Preflight::checkReferences(XmlNode element) {
    for (const XmlAttribute each : element.attributes()) {
        if ((aspects.of(each.nameNumber()) & Aspects::isReference) == 0) continue;
        const std::string_view id = each.value();
        if (exported_.contains(id)) continue;
        const bool isTracking = each.nameNumber() == Name("tracking");
        if (isTracking && ownShapes_.contains(id)) continue;
        find(Kind::refused,
             isTracking && clipShapes_.contains(id)
                 ? fmt::format("{} follows a tracked shape of another camera on the timeline clip, "
                               "of which each shot gets a copy: Final Cut refuses the XML{}. "
                               "Remove the tracking and export XML again.",
                               subject(), condition_)
                 : fmt::format("{} refers to “{}”, which the XML of the edit does not hold: Final "
                               "Cut refuses it{}. {}",
                               subject(), id, condition_, exportAgain));
    }
}

/// One that an angle uses has a location, or the project would not have been accepted.
void Preflight::checkRecording(XmlNode asset) {
    std::vector<std::optional<std::string_view>> locations;
    for (const XmlNode each : Elements(asset, "media-rep"))
        locations.push_back(attribute(each, "src"));
    if (const auto own = attribute(asset, "src")) locations.push_back(own);
    const bool hasLocation = std::any_of(locations.begin(), locations.end(),
                                         [](const auto& each) { return each && !each->empty(); });
    const bool lacksOne =
        std::find(locations.begin(), locations.end(), std::nullopt) != locations.end();
    if (hasLocation && lacksOne)
        find(Kind::refused,
             fmt::format("{} has a media file that is nowhere: Final Cut refuses the "
                         "XML. Relink its media and export XML again.",
                         subject()));
    else if (locations.empty() || lacksOne)
        find(Kind::refused,
             fmt::format("{} has no media file, and no angle uses it: Final Cut refuses the XML. "
                         "Remove it from the multicam clip or relink its media, and export XML "
                         "again.",
                         subject()));
    else if (!hasLocation)
        find(Kind::changed, fmt::format("{} has an empty file location: Final Cut will show it as "
                                        "missing. Relink its media and export XML again.",
                                        subject()));
    for (const auto& location : locations)
        if (location && !location->empty() && isRelative(*location))
            find(Kind::changed,
                 fmt::format("{} lies at “{}”, counted from the imported XML: from where the edit "
                             "is saved Final Cut will not find it. Relink it after the import, or "
                             "save the edit beside that XML.",
                             subject(), *location));
}

void Preflight::checkFormat(XmlNode format) {
    if (attribute(format, "frameDuration") ||
        attribute(format, "name") == "FFVideoFormatRateUndefined")
        return;
    const auto user = pictureFormats_.find(attributeOr(format, "id", ""));
    if (user == pictureFormats_.end() || exported_.at(user->first) != format) return;
    find(Kind::refused,
         fmt::format("The format of the recording “{}” has no frame rate: Final Cut refuses the "
                     "XML for insufficient data. Relink or transcode the recording and export XML "
                     "again.",
                     attributeOr(user->second, "name", "without a name")));
}

void Preflight::checkLocator(XmlNode locator) {
    const std::string_view url = attributeOr(locator, "url", "");
    if (isRelative(url))
        find(Kind::changed,
             fmt::format("The tracking or analysis data at “{}” is counted from the imported XML: "
                         "from where the edit is saved Final Cut will not find it. Save the edit "
                         "beside that XML, or analyse again in Final Cut.",
                         url));
}

/// Tells the first child that is out of place.
void Preflight::checkPlace(ChildOrder& order, XmlNode child) {
    if (!order.isOutOfPlace(child)) return;
    const std::string_view before = order.last().name();
    find(Kind::refused,
         child.name() == before
             ? fmt::format("{} has a second “{}”, where Final Cut reads one: it refuses the XML{}. "
                           "Remove one of them and export XML again.",
                           subject(), before, condition_)
             : fmt::format("{} has “{}” after “{}”, an order in which Final Cut does not read "
                           "them: it refuses the XML{}. Export XML again from a newer version of "
                           "Final Cut, or without that setting.",
                           subject(), child.name(), before, condition_));
}

/// What is looked at, as a person knows it: the innermost element on the path that has a noun.
std::string Preflight::subject() const {
    if (!scope_.empty()) return scope_;
    for (std::size_t i = path_.size(); i-- > 0;) {
        const char* const noun = nounOf(path_[i]);
        if (!noun) continue;
        const std::string_view name =
            attributeOr(path_[i], "name", attributeOr(path_[i], "id", ""));
        return fmt::format("The {} “{}”{}", noun, name.empty() ? "without a name" : name,
                           placeOf(i));
    }
    return path_.empty() ? "The timeline clip" : "The project";
}

/// " at 01:00:10:00 in the angle Wide", as far as it can be told.
std::string Preflight::placeOf(std::size_t onPath) const {
    std::size_t angle = 0;
    while (angle < onPath && !isElement(path_[angle], "mc-angle"))
        ++angle;
    const bool isInAngle = angle < onPath;
    if (!isInAngle && !isStoryElement(path_.front())) return "";
    const XmlNode clip = isInAngle ? path_[angle + 1] : path_.front();
    try {
        double seconds = storyOffset(clip);
        if (isInAngle) seconds += parseSeconds(attributeOr(path_[angle - 1], "tcStart", "0s"));
        std::string at = " at " + timecode(seconds);
        if (!isInAngle) return at;
        return fmt::format("{} in the angle {}", at, attributeOr(path_[angle], "name", ""));
    } catch (const FinalCutImportError&) {
        return "";
    }
}

std::string Preflight::timecode(double multicamSeconds) const {
    const double frame =
        engine_.frameDuration.frames(multicamSeconds) - static_cast<double>(engine_.sourceStart);
    constexpr double farthest = 1e9;
    return engine_.timecode(std::llround(std::clamp(frame, -farthest, farthest)));
}

} // namespace

std::vector<Finding> preflight(const Project& project) {
    return Preflight(project).run();
}

} // namespace shotweaver
