#include "engine/ProjectImport.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/XmlAccess.h"
#include "platform/Text.h"

#include <cstdint>
#include <iterator>
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

/// How many media clips the media of a compound clip holds, those in further compound clips as
/// often as the compound clip is used. A media that is being expanded further up is not entered
/// again.
///
/// What a media holds depends on that media alone unless it comes back to one that is being
/// expanded, so its number is remembered; only compound clips that hold each other are counted
/// anew.
class MediaClipCounter {
  public:
    explicit MediaClipCounter(const Resources& resources) : resources_(resources) {}

    /// `depth` counts the elements around the compound clip.
    std::int64_t count(pugi::xml_node media, int depth) {
        bool isCircular = false;
        return countMedia(media, depth, isCircular);
    }

    static std::int64_t sum(std::int64_t a, std::int64_t b) {
        std::int64_t result = 0;
        if (__builtin_add_overflow(a, b, &result)) refuseExplosion();
        return result;
    }

  private:
    using MediaID = std::string_view;

    std::int64_t countBelow(pugi::xml_node element, int depth, bool& isCircular);
    std::int64_t countMedia(pugi::xml_node media, int depth, bool& isCircular);

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
    for (const pugi::xml_node child : elements(element))
        clips = sum(clips, countBelow(child, depth + 1, isCircular));
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
    for (const pugi::xml_node sequence : elements(media, "sequence"))
        clips = sum(clips, countBelow(sequence, depth + 1, mediaIsCircular));
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

/// What an angle's media clips say. The content of compound clips is visited once however often it
/// is reached, and only counted as often as that: names and the smallest offset stay the same.
class AngleContent {
  public:
    AngleContent(const Resources& resources, MediaClipCounter& counter, TextSet& missingLocations)
        : resources_(resources), counter_(counter), missingLocations_(missingLocations) {}

    /// Visits the clips below an element in document order; a compound clip's come after the
    /// element's own.
    void collectMediaClips(pugi::xml_node element, int depth = 0);

    std::string cameras() const { return joined(cameras_.sorted(), ", "); }
    std::int64_t clipCount() const { return clipCount_; }
    std::optional<double> firstRecording() const { return firstRecording_; }

  private:
    void readMediaClip(const ClipAttributes& clip);
    void readAsset(const Asset& asset);

    const Resources& resources_;
    MediaClipCounter& counter_;
    TextSet& missingLocations_;
    std::int64_t clipCount_ = 0;
    int compoundDepth_ = 0; // compound clips around the element being visited
    TextSet cameras_;
    std::optional<double> firstRecording_;
    std::unordered_set<std::string_view> seenMedia_;
    std::unordered_set<std::string_view> seenAssets_;
};

void AngleContent::collectMediaClips(pugi::xml_node element, int depth) {
    const ClipAttributes attributes(element);
    if (attributes.isDisabled()) return;
    if (isMediaClipKind(element.name())) return readMediaClip(attributes);
    if (depth >= maximumDepth) refuseExplosion();
    for (const pugi::xml_node child : elements(element))
        collectMediaClips(child, depth + 1);
    const pugi::xml_node media = referencedMedia(element, resources_);
    if (!media) return;
    if (compoundDepth_ == 0)
        clipCount_ = MediaClipCounter::sum(clipCount_, counter_.count(media, depth));
    if (!seenMedia_.insert(media.attribute("id").value()).second) return;
    ++compoundDepth_;
    for (const pugi::xml_node sequence : elements(media, "sequence"))
        collectMediaClips(sequence, depth + 1);
    --compoundDepth_;
}

void AngleContent::readMediaClip(const ClipAttributes& clip) {
    if (compoundDepth_ == 0) ++clipCount_;
    const double offset = parseSeconds(clip.offset.value_or("0s"));
    if (!firstRecording_ || offset < *firstRecording_) firstRecording_ = offset;

    const Asset* const asset = resources_.asset(clip.ref);
    if (!asset)
        missingLocations_.add(clip.name.value_or("Unnamed clip"));
    else if (!clip.ref || seenAssets_.insert(*clip.ref).second)
        readAsset(*asset);
}

void AngleContent::readAsset(const Asset& asset) {
    for (const pugi::xml_node metadata : elements(asset.element, "metadata")) {
        for (const pugi::xml_node entry : elements(metadata, "md")) {
            const std::string_view name = attributeOr(entry, "value", "");
            if (attribute(entry, "key") == "com.apple.proapps.mio.cameraName" && !name.empty())
                cameras_.add(name);
        }
    }
    if (!asset.hasLocation)
        missingLocations_.add(attributeOr(asset.element, "name", "Unnamed clip"));
}

ImportedAngle parseAngle(pugi::xml_node angle, const Resources& resources,
                         MediaClipCounter& counter, TextSet& missingLocations) {
    const auto id = attribute(angle, "angleID");
    if (!id) refuse("A camera angle is missing its identifier.");
    AngleContent content(resources, counter, missingLocations);
    content.collectMediaClips(angle);

    const Elements gaps = elements(angle, "gap");
    ImportedAngle result;
    result.id = *id;
    result.name = attributeOr(angle, "name", "Unnamed angle");
    result.cameras = content.cameras();
    result.clipCount = content.clipCount();
    result.gapCount = std::distance(gaps.begin(), gaps.end());
    result.firstRecording = content.firstRecording();
    return result;
}

pugi::xml_node findProject(pugi::xml_node root) {
    std::vector<pugi::xml_node> projects;
    const auto addProjects = [&](pugi::xml_node parent) {
        const Elements found = elements(parent, "project");
        projects.insert(projects.end(), found.begin(), found.end());
    };
    const auto addEvents = [&](pugi::xml_node parent) {
        for (const pugi::xml_node event : elements(parent, "event"))
            addProjects(event);
    };
    for (const pugi::xml_node library : elements(root, "library"))
        addEvents(library);
    addEvents(root);
    addProjects(root);
    if (projects.size() != 1)
        refuse("Export one project from Final Cut Pro, rather than a whole event or library.");
    return projects.front();
}

pugi::xml_node findMulticamClip(pugi::xml_node spine) {
    const Elements content = elements(spine);
    const pugi::xml_node clip = firstElement(spine, "mc-clip");
    if (!clip || std::distance(content.begin(), content.end()) != 1)
        refuse("For this prototype, export a timeline containing one uncut multicam clip.");
    return clip;
}

std::string audioAngleNames(pugi::xml_node multicamClip, const std::vector<ImportedAngle>& angles) {
    std::set<std::string_view> heard;
    for (const pugi::xml_node source : elements(multicamClip, "mc-source")) {
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
    for (const pugi::xml_node angle : elements(import.multicam, "mc-angle"))
        summary.angles.push_back(parseAngle(angle, import.resources, counter, missingLocations));
    requireUniqueAngles(summary.angles);
    summary.name = attributeOr(import.project, "name", "Untitled project");
    summary.version = attributeOr(import.root, "version", "Unknown");
    summary.framesPerSecond = 1 / frameSeconds;
    summary.audioAngles = audioAngleNames(import.multicamClip, summary.angles);
    summary.missingLocations = missingLocations.sorted();
    return summary;
}

} // namespace

ProjectImport readProject(ByteSource& source) {
    ProjectImport import;
    import.document = parseXml(source);
    locate(import);
    import.summary = summarize(import);
    return import;
}

ProjectImport readProject(std::string_view bytes) {
    MemorySource source(bytes);
    return readProject(source);
}

ImportedProject inspectProject(std::string_view bytes) {
    return readProject(bytes).summary;
}

} // namespace shotweaver
