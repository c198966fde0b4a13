#include "engine/AngleImport.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"

#include <algorithm>
#include <iterator>

namespace shotweaver {

namespace {

// Elements may lie in each other this deep, through compound clips too; it bounds the stack. An
// angle that is kept at all may be 40 deep.
constexpr int maximumDepth = 4000;

// Elements in compound clips that may be looked at more than once.
constexpr std::int64_t maximumVisits = 10'000'000;

[[noreturn]] void refuseExplosion() {
    throw FinalCutImportError::invalid(
        "The compound clips in this export are nested too often to be read. Simplify them in Final "
        "Cut and export XML again.");
}

void addClips(std::int64_t& count, std::int64_t clips) {
    if (__builtin_add_overflow(count, clips, &count)) refuseExplosion();
}

} // namespace

ImportedAngle AngleImport::parseAngle(pugi::xml_node angle) {
    const auto id = attribute(angle, "angleID");
    if (!id) throw FinalCutImportError::invalid("A camera angle is missing its identifier.");
    angle_ = {};
    collectMediaClips(angle, 0);

    const Elements gaps = elements(angle, "gap");
    ImportedAngle result;
    result.id = *id;
    result.name = attributeOr(angle, "name", "Unnamed angle");
    result.cameras = joined(angle_.cameras.sorted(), ", ");
    result.clipCount = angle_.clipCount;
    result.gapCount = std::distance(gaps.begin(), gaps.end());
    result.firstRecording = angle_.firstRecording;
    return result;
}

/// Reads the media clips below an element, in document order; those of a compound clip come after
/// the element's own.
void AngleImport::collectMediaClips(pugi::xml_node element, int depth) {
    const ClipAttributes attributes(element);
    if (attributes.isDisabled()) return;
    if (isMediaClipKind(element.name())) return readMediaClip(attributes);
    if (depth >= maximumDepth) refuseExplosion();
    if (compoundDepth_ > 0) countVisit();
    if (referencedMedia(attributes, element)) return enterCompound(attributes, element, depth);
    for (const pugi::xml_node child : elements(element))
        collectMediaClips(child, depth + 1);
}

void AngleImport::enterCompound(const ClipAttributes& clip, pugi::xml_node element, int depth) {
    const MediaID id = *clip.ref;
    const Media& media = *resources_.media(id);
    // Entered for the clip's own children already.
    path_.emplace(id, static_cast<int>(path_.size()));
    ++ownChildrenDepth_;
    for (const pugi::xml_node child : elements(element))
        collectMediaClips(child, depth + 1);
    --ownChildrenDepth_;
    const bool isFirstVisit = angle_.seenMedia.insert(id).second;
    ++compoundDepth_;
    if (isFirstVisit) {
        for (const pugi::xml_node sequence : elements(media.element, "sequence"))
            collectMediaClips(sequence, depth + 1);
    }
    --compoundDepth_;
    path_.erase(id);

    if (compoundDepth_ > 0) return;
    MediaCount count;
    countMedia(id, media, depth, count);
    addClips(angle_.clipCount, count.clips);
}

void AngleImport::readMediaClip(const ClipAttributes& clip) {
    if (compoundDepth_ == 0)
        ++angle_.clipCount;
    else
        countVisit();
    const double offset = parseSeconds(clip.offset.value_or("0s"));
    if (!angle_.firstRecording || offset < *angle_.firstRecording) angle_.firstRecording = offset;

    const Asset* const asset = resources_.asset(clip.ref);
    if (!asset)
        missingLocations_.add(clip.name.value_or("Unnamed clip"));
    else if (angle_.seenAssets.insert(asset).second)
        readAsset(*asset);
}

void AngleImport::readAsset(const Asset& asset) {
    for (const pugi::xml_node metadata : elements(asset.element, "metadata")) {
        for (const pugi::xml_node entry : elements(metadata, "md")) {
            const std::string_view name = attributeOr(entry, "value", "");
            if (attribute(entry, "key") == "com.apple.proapps.mio.cameraName" && !name.empty())
                angle_.cameras.add(name);
        }
    }
    if (!asset.hasLocation)
        missingLocations_.add(attributeOr(asset.element, "name", "Unnamed clip"));
}

void AngleImport::countBelow(pugi::xml_node element, int depth, MediaCount& into) {
    if (repeatedExpansions_ > 0) countVisit();
    const ClipAttributes attributes(element);
    if (attributes.isDisabled()) return;
    if (isMediaClipKind(element.name())) return addClips(into.clips, 1);
    if (depth >= maximumDepth) refuseExplosion();

    const bool isCompound = isElement(element, "ref-clip") && attributes.ref;
    if (isCompound) {
        if (const auto entered = path_.find(*attributes.ref); entered != path_.end())
            into.outermostHit = std::min(into.outermostHit, entered->second);
    }
    const Media* const media = referencedMedia(attributes, element);
    if (media) path_.emplace(*attributes.ref, static_cast<int>(path_.size()));
    ownChildrenDepth_ += media ? 1 : 0;
    for (const pugi::xml_node child : elements(element))
        countBelow(child, depth + 1, into);
    if (!media) return;
    --ownChildrenDepth_;
    path_.erase(*attributes.ref);
    countMedia(*attributes.ref, *media, depth, into);
}

/// Adds what the media holds. That is remembered unless the media comes back to itself or to one
/// around it. A remembered number holds wherever the media is used by other media; among a compound
/// clip's own children it may lead to that clip's media, which is being entered, and is counted
/// anew.
void AngleImport::countMedia(MediaID id, const Media& media, int depth, MediaCount& into) {
    const auto found = known_.find(id);
    if (found != known_.end() && ownChildrenDepth_ == 0) return addClips(into.clips, found->second);

    const auto place = static_cast<int>(path_.size());
    const MediaCount count = expandMedia(id, media, depth);
    addClips(into.clips, count.clips);
    into.outermostHit = std::min(into.outermostHit, count.outermostHit);
    if (count.outermostHit > place) known_.emplace(id, count.clips);
}

AngleImport::MediaCount AngleImport::expandMedia(MediaID id, const Media& media, int depth) {
    const int repeated = expanded_.insert(id).second ? 0 : 1;
    repeatedExpansions_ += repeated;
    path_.emplace(id, static_cast<int>(path_.size()));
    MediaCount count;
    for (const pugi::xml_node sequence : elements(media.element, "sequence"))
        countBelow(sequence, depth + 1, count);
    path_.erase(id);
    repeatedExpansions_ -= repeated;
    return count;
}

/// The media of a compound clip that can be entered: it exists and is not being entered already.
const Media* AngleImport::referencedMedia(const ClipAttributes& clip,
                                          pugi::xml_node element) const {
    if (!clip.ref || !isElement(element, "ref-clip") || path_.contains(*clip.ref)) return nullptr;
    return resources_.media(clip.ref);
}

void AngleImport::countVisit() {
    if (++visits_ > maximumVisits) refuseExplosion();
}

} // namespace shotweaver
