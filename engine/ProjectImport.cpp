#include "engine/ProjectImport.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/XmlAccess.h"
#include "platform/Text.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shotweaver {

namespace {

[[noreturn]] void refuse(const char* sentence) {
    throw FinalCutImportError::invalid(sentence);
}

[[noreturn]] void refuseExplosion() {
    refuse("The compound clips in this export are nested too often to be read. Simplify them in "
           "Final Cut and export XML again.");
}

// Compound clips within compound clips go on this deep, counted in elements; it bounds the stack.
// An angle that is kept at all may be 40 deep.
constexpr int maximumDepth = 4000;

// Elements that may be looked at again in compound clips that hold each other.
constexpr std::int64_t maximumRevisits = 2'000'000;

/// The media of a compound clip that can be entered from this reference: its identifier is known.
pugi::xml_node referencedMedia(pugi::xml_node element, const Resources& resources) {
    if (!isElement(element, "ref-clip")) return {};
    const auto reference = attribute(element, "ref");
    return reference ? resources.media(reference) : pugi::xml_node();
}

/// What an angle's media clips say, each clip taken once however often it is reached: names and the
/// smallest offset stay the same.
class AngleContent {
  public:
    AngleContent(const Resources& resources, TextSet& missingLocations)
        : resources_(resources), missingLocations_(missingLocations) {}

    /// Visits the clips below an element in document order; a compound clip's come after the
    /// element's own.
    void collectMediaClips(pugi::xml_node element, int depth = 0);

    std::string cameras() const { return joined(cameras_.sorted(), ", "); }
    std::optional<double> firstRecording() const { return firstRecording_; }

  private:
    void readMediaClip(pugi::xml_node clip);
    void readAsset(pugi::xml_node asset);

    const Resources& resources_;
    TextSet& missingLocations_;
    TextSet cameras_;
    std::optional<double> firstRecording_;
    std::unordered_set<std::string_view> seenMedia_;
    std::unordered_set<std::string_view> seenAssets_;
};

void AngleContent::collectMediaClips(pugi::xml_node element, int depth) {
    if (attribute(element, "enabled") == "0") return;
    if (isMediaClipKind(element.name())) return readMediaClip(element);
    if (depth >= maximumDepth) refuseExplosion();
    for (const pugi::xml_node child : element.children()) {
        if (isElement(child)) collectMediaClips(child, depth + 1);
    }
    const pugi::xml_node media = referencedMedia(element, resources_);
    if (!media || !seenMedia_.insert(media.attribute("id").value()).second) return;
    for (const pugi::xml_node child : media.children()) {
        if (isElement(child, "sequence")) collectMediaClips(child, depth + 1);
    }
}

void AngleContent::readMediaClip(pugi::xml_node clip) {
    const double offset = parseSeconds(attributeOr(clip, "offset", "0s"));
    if (!firstRecording_ || offset < *firstRecording_) firstRecording_ = offset;

    const auto reference = attribute(clip, "ref");
    const pugi::xml_node asset = resources_.asset(reference);
    if (!asset)
        missingLocations_.add(attributeOr(clip, "name", "Unnamed clip"));
    else if (!reference || seenAssets_.insert(*reference).second)
        readAsset(asset);
}

void AngleContent::readAsset(pugi::xml_node asset) {
    for (const pugi::xml_node metadata : asset.children()) {
        if (!isElement(metadata, "metadata")) continue;
        for (const pugi::xml_node entry : metadata.children()) {
            if (!isElement(entry, "md")) continue;
            const std::string_view name = attributeOr(entry, "value", "");
            if (attribute(entry, "key") == "com.apple.proapps.mio.cameraName" && !name.empty())
                cameras_.add(name);
        }
    }
    if (!hasMediaLocation(asset)) missingLocations_.add(attributeOr(asset, "name", "Unnamed clip"));
}

/// How many media clips are reached below an element, those in compound clips as often as the
/// compound clip is used. A media that is being expanded further up is not entered again.
///
/// What a media holds depends on that media alone unless it comes back to one that is being
/// expanded, so its number is remembered; only compound clips that hold each other are counted
/// anew.
class MediaClipCounter {
  public:
    explicit MediaClipCounter(const Resources& resources) : resources_(resources) {}

    std::int64_t count(pugi::xml_node element) {
        bool isCircular = false;
        return countBelow(element, 0, isCircular);
    }

  private:
    using MediaID = std::string_view;

    std::int64_t countBelow(pugi::xml_node element, int depth, bool& isCircular);
    std::int64_t countMedia(pugi::xml_node media, int depth, bool& isCircular);

    static std::int64_t sum(std::int64_t a, std::int64_t b) {
        std::int64_t result = 0;
        if (__builtin_add_overflow(a, b, &result)) refuseExplosion();
        return result;
    }

    const Resources& resources_;
    std::unordered_map<MediaID, std::int64_t> known_;
    std::unordered_set<MediaID> entered_;
    std::unordered_set<MediaID> circular_;
    int revisiting_ = 0; // circular media being expanded that were expanded before
    std::int64_t revisits_ = 0;
};

std::int64_t MediaClipCounter::countBelow(pugi::xml_node element, int depth, bool& isCircular) {
    if (revisiting_ > 0 && ++revisits_ > maximumRevisits) refuseExplosion();
    if (attribute(element, "enabled") == "0") return 0;
    if (isMediaClipKind(element.name())) return 1;
    if (depth >= maximumDepth) refuseExplosion();
    std::int64_t clips = 0;
    for (const pugi::xml_node child : element.children()) {
        if (isElement(child)) clips = sum(clips, countBelow(child, depth + 1, isCircular));
    }
    const pugi::xml_node media = referencedMedia(element, resources_);
    return media ? sum(clips, countMedia(media, depth, isCircular)) : clips;
}

std::int64_t MediaClipCounter::countMedia(pugi::xml_node media, int depth, bool& isCircular) {
    const MediaID id = media.attribute("id").value();
    if (const auto found = known_.find(id); found != known_.end()) return found->second;
    if (!entered_.insert(id).second) {
        isCircular = true;
        return 0;
    }
    const int revisit = circular_.contains(id) ? 1 : 0;
    revisiting_ += revisit;
    std::int64_t clips = 0;
    bool mediaIsCircular = false;
    for (const pugi::xml_node child : media.children()) {
        if (isElement(child, "sequence"))
            clips = sum(clips, countBelow(child, depth + 1, mediaIsCircular));
    }
    revisiting_ -= revisit;
    entered_.erase(id);
    if (mediaIsCircular) {
        circular_.insert(id);
        isCircular = true;
    } else {
        known_.emplace(id, clips);
    }
    return clips;
}

ImportedAngle parseAngle(pugi::xml_node angle, const Resources& resources,
                         MediaClipCounter& counter, TextSet& missingLocations) {
    const auto id = attribute(angle, "angleID");
    if (!id) refuse("A camera angle is missing its identifier.");
    AngleContent content(resources, missingLocations);
    content.collectMediaClips(angle);

    const auto children = angle.children();
    ImportedAngle result;
    result.id = *id;
    result.name = attributeOr(angle, "name", "Unnamed angle");
    result.cameras = content.cameras();
    result.clipCount = counter.count(angle);
    result.gapCount = std::count_if(children.begin(), children.end(),
                                    [](pugi::xml_node child) { return isElement(child, "gap"); });
    result.firstRecording = content.firstRecording();
    return result;
}

pugi::xml_node findProject(pugi::xml_node root) {
    std::vector<pugi::xml_node> projects;
    const auto addProjects = [&](pugi::xml_node parent) {
        for (const pugi::xml_node child : parent.children()) {
            if (isElement(child, "project")) projects.push_back(child);
        }
    };
    const auto addEvents = [&](pugi::xml_node parent) {
        for (const pugi::xml_node child : parent.children()) {
            if (isElement(child, "event")) addProjects(child);
        }
    };
    for (const pugi::xml_node child : root.children()) {
        if (isElement(child, "library")) addEvents(child);
    }
    addEvents(root);
    addProjects(root);
    if (projects.size() != 1)
        refuse("Export one project from Final Cut Pro, rather than a whole event or library.");
    return projects.front();
}

pugi::xml_node findMulticamClip(pugi::xml_node spine) {
    const auto children = spine.children();
    const auto elements = std::count_if(children.begin(), children.end(),
                                        [](pugi::xml_node c) { return isElement(c); });
    const pugi::xml_node clip = firstElement(spine, "mc-clip");
    if (elements != 1 || !clip)
        refuse("For this prototype, export a timeline containing one uncut multicam clip.");
    return clip;
}

std::string audioAngleNames(pugi::xml_node multicamClip, const std::vector<ImportedAngle>& angles) {
    std::set<std::string_view> heard;
    for (const pugi::xml_node source : multicamClip.children()) {
        if (!isElement(source, "mc-source")) continue;
        const std::string_view enabled = attributeOr(source, "srcEnable", "all");
        const auto id = attribute(source, "angleID");
        if (id && (enabled == "all" || enabled == "audio")) heard.insert(*id);
    }
    std::vector<std::string> names;
    for (const ImportedAngle& angle : angles) {
        if (heard.contains(angle.id)) names.push_back(angle.name);
    }
    return names.empty() ? "Not specified" : joined(names, ", ");
}

/// Finds the elements that the import and everything after it read.
void locate(ProjectImport& import) {
    import.root = import.document->document_element();
    if (!isElement(import.root, "fcpxml")) refuse("This file is not a Final Cut XML export.");
    import.project = findProject(import.root);
    import.sequence = firstElement(import.project, "sequence");
    const pugi::xml_node spine = firstElement(import.sequence, "spine");
    if (!spine) refuse("The project has no timeline to inspect.");
    import.multicamClip = findMulticamClip(spine);
    const pugi::xml_node resources = firstElement(import.root, "resources");
    if (!resources) refuse("The export has no media resources.");
    import.resources = Resources(resources);
    import.multicam =
        firstElement(import.resources.media(attribute(import.multicamClip, "ref")), "multicam");
    if (!import.multicam) refuse("The multicam definition is missing from this export.");
    import.projectFormat = import.resources.format(attribute(import.sequence, "format"));
}

void requireUniqueAngles(const std::vector<ImportedAngle>& angles) {
    std::set<std::string_view> ids;
    for (const ImportedAngle& angle : angles)
        ids.insert(angle.id);
    if (angles.size() < 2 || ids.size() != angles.size())
        refuse("The multicam needs at least two uniquely identified angles.");
}

ImportedProject summarize(const ProjectImport& import) {
    const double frameSeconds = parseSeconds(attribute(import.projectFormat, "frameDuration"));
    ImportedProject summary;
    summary.duration = parseSeconds(attribute(import.sequence, "duration"));
    if (!(frameSeconds > 0 && summary.duration > 0))
        refuse("The project must have a positive duration and frame rate.");

    TextSet missingLocations;
    MediaClipCounter counter(import.resources);
    for (const pugi::xml_node angle : import.multicam.children()) {
        if (isElement(angle, "mc-angle"))
            summary.angles.push_back(
                parseAngle(angle, import.resources, counter, missingLocations));
    }
    requireUniqueAngles(summary.angles);
    summary.name = attributeOr(import.project, "name", "Untitled project");
    summary.version = attributeOr(import.root, "version", "Unknown");
    summary.framesPerSecond = 1 / frameSeconds;
    summary.audioAngles = audioAngleNames(import.multicamClip, summary.angles);
    summary.missingLocations = missingLocations.sorted();
    return summary;
}

} // namespace

ProjectImport readProject(std::string_view bytes) {
    ProjectImport import;
    import.document = parseXml(bytes);
    locate(import);
    import.summary = summarize(import);
    return import;
}

ImportedProject inspectProject(std::string_view bytes) {
    return readProject(bytes).summary;
}

} // namespace shotweaver
