#include "engine/import/AngleImport.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"

#include <algorithm>
#include <iterator>

namespace shotweaver {

namespace {

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
    const std::int64_t clipCount = readClips(angle);

    const Elements gaps = elements(angle, "gap");
    ImportedAngle result;
    result.id = *id;
    result.name = attributeOr(angle, "name", "Unnamed angle");
    result.cameras = joined(angle_.cameras.sorted(), ", ");
    countKept(result.cameras);
    result.clipCount = clipCount;
    result.gapCount = std::distance(gaps.begin(), gaps.end());
    result.firstRecording = angle_.firstRecording;
    return result;
}

/// Reads the media clips of an angle, in document order; those of a compound clip come after the
/// clip's own children. Gives their number.
std::int64_t AngleImport::readClips(pugi::xml_node angle) {
    levels_.assign(1, {});
    readElement(angle);
    while (levels_.size() > 1) {
        Elements::Iterator& next = levels_.back().next;
        if (next == Elements::Iterator())
            leave();
        else
            readElement(*next++);
    }
    return levels_.front().count.clips;
}

void AngleImport::readElement(pugi::xml_node element) {
    const ClipAttributes attributes(element);
    if (attributes.isDisabled()) return;
    if (isMediaClipKind(element.name())) {
        addClips(levels_.back().count.clips, 1);
        return readMediaClip(attributes);
    }
    Level children;
    children.next = elements(element).begin();
    if (attributes.ref && isElement(element, "ref-clip")) enterCompound(*attributes.ref, children);
    levels_.push_back(children);
}

/// A compound clip whose media is missing, or is being entered already, contributes only its own
/// children.
void AngleImport::enterCompound(MediaID id, Level& ownChildren) {
    const Media* const media = resources_.media(id);
    if (!media) return;
    const auto [entered, isNew] = path_.try_emplace(id, path_.size());
    if (!isNew) {
        MediaCount& around = levels_.back().count;
        around.outermostHit = std::min(around.outermostHit, entered->second);
        return;
    }
    ++ownChildrenDepth_;
    ownChildren.kind = Level::Kind::ownChildren;
    ownChildren.id = id;
    ownChildren.media = media;
}

/// Goes on with what the media of a compound clip holds, unless that is known. A number that is
/// known holds wherever the media is used by other media; among a compound clip's own children it
/// may lead to that clip's media, which is being entered, and is counted anew.
void AngleImport::enterMedia(const Level& ownChildren) {
    const auto known = known_.find(ownChildren.id);
    const bool isNew = angle_.seenMedia.insert(ownChildren.id).second;
    if (!isNew && known != known_.end() && ownChildrenDepth_ == 0) {
        path_.erase(ownChildren.id);
        return addClips(levels_.back().count.clips, known->second);
    }
    if (!reading_.mayRead(ownChildren.media->element)) refuseExplosion();
    Level content = ownChildren;
    content.kind = Level::Kind::media;
    content.next = elements(ownChildren.media->element, "sequence").begin();
    content.count = {};
    levels_.push_back(content);
}

/// Ends the innermost level. What a media holds is remembered unless the media comes back to itself
/// or to one around it.
void AngleImport::leave() {
    const Level level = levels_.back();
    levels_.pop_back();
    MediaCount& around = levels_.back().count;
    addClips(around.clips, level.count.clips);
    around.outermostHit = std::min(around.outermostHit, level.count.outermostHit);
    if (level.kind == Level::Kind::ownChildren) {
        --ownChildrenDepth_;
        enterMedia(level);
    } else if (level.kind == Level::Kind::media) {
        const auto place = path_.find(level.id);
        if (level.count.outermostHit > place->second) known_.emplace(level.id, level.count.clips);
        path_.erase(place);
    }
}

void AngleImport::readMediaClip(const ClipAttributes& clip) {
    const double offset = parseSeconds(clip.offset.value_or("0s"));
    if (!angle_.firstRecording || offset < *angle_.firstRecording) angle_.firstRecording = offset;

    const Asset* const asset = resources_.asset(clip.ref);
    if (!asset)
        missingLocations_.add(clip.name.value_or("Unnamed clip"));
    else if (angle_.seenAssets.insert(asset).second)
        readAsset(*asset);
}

/// Every angle keeps the names of its cameras, and many may share a recording.
void AngleImport::countKept(std::string_view cameras) {
    constexpr std::size_t maximumKept = 20'000'000;
    keptNames_ += cameras.size();
    if (keptNames_ > maximumKept)
        throw FinalCutImportError::invalid(
            "The camera names of the recordings in this export are too long to be read. Shorten "
            "them in Final Cut and export XML again.");
}

void AngleImport::readAsset(const Asset& asset) {
    if (!reading_.mayRead(asset.element)) refuseExplosion();
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

} // namespace shotweaver
