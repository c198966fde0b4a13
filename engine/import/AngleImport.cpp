#include "engine/import/AngleImport.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"

#include <iterator>
#include <utility>

namespace shotweaver {

namespace {

// Levels of elements below an angle, as many as the XML itself may have: references add to those.
constexpr int deepestLevel = 1'000;

constexpr std::string_view unnamed = "Unnamed clip";

} // namespace

ImportedAngle AngleImport::parseAngle(XmlNode angle) {
    const auto id = attribute(angle, "angleID");
    if (!id) throw FinalCutImportError::invalid("A camera angle is missing its identifier.");
    angle_ = {};
    read(angle, 0);

    const Elements gaps(angle, "gap");
    ImportedAngle result;
    result.id = *id;
    result.name = attributeOr(angle, "name", "Unnamed angle");
    result.cameras = joined(angle_.cameras.sorted(), ", ");
    result.clipCount = angle_.clips.count;
    result.gapCount = std::distance(gaps.begin(), gaps.end());
    result.firstRecording = angle_.clips.firstRecording;
    return result;
}

/// Reads the media clips in document order; those of a compound clip come after its own children.
void AngleImport::read(XmlNode node, int depth) {
    if (!node.isElement()) return budget_.step();
    const ClipAttributes clip(node);
    budget_.visit(clip.size);
    if (depth > deepestLevel) ReadingBudget::refuse();
    if (clip.isDisabled()) return;
    if (isMediaClip(node)) return readMediaClip(clip);

    const Media* const media = enter(clip);
    for (const XmlNode child : node.children())
        read(child, depth + 1);
    if (!media) return;
    if (media->isSelfContained)
        readSelfContained(*media, depth);
    else
        readSequences(*media, depth);
    entered_.erase(media);
}

void AngleImport::readSequences(const Media& media, int depth) {
    for (const XmlNode child : media.element.children()) {
        if (isElement(child, "sequence"))
            read(child, depth + 1);
        else
            budget_.step();
    }
}

/// Reads the media once in an angle, and again where it lies deeper, which may be too deep.
void AngleImport::readSelfContained(const Media& media, int depth) {
    const auto [entry, isFirst] = angle_.selfContained.try_emplace(&media);
    Reading& reading = entry->second;
    if (!isFirst && depth <= reading.depth) {
        budget_.spend(reading.cost);
    } else {
        const std::size_t spentBefore = budget_.spent();
        const Clips before = std::exchange(angle_.clips, {});
        readSequences(media, depth);
        reading = {std::exchange(angle_.clips, before), budget_.spent() - spentBefore, depth};
    }
    angle_.clips.add(reading.clips);
}

void AngleImport::Clips::add(const Clips& others) {
    count += others.count;
    if (others.firstRecording && (!firstRecording || *others.firstRecording < *firstRecording))
        firstRecording = others.firstRecording;
}

/// The media of a compound clip, now being entered; null when it is missing, when it is being
/// entered already, and for other kinds of element.
const Media* AngleImport::enter(const ClipAttributes& compoundClip) {
    if (!isElement(compoundClip.element, "ref-clip") || !compoundClip.ref) return nullptr;
    const Media* const media = resources_.media(compoundClip.ref);
    return media && entered_.insert(media).second ? media : nullptr;
}

void AngleImport::readMediaClip(const ClipAttributes& clip) {
    angle_.clips.add({1, parseSeconds(clip.offset.value_or("0s"))});

    const Asset* const asset = resources_.asset(clip.ref);
    if (!asset)
        addMissing(clip.name.value_or(unnamed));
    else if (angle_.seenAssets.insert(asset).second)
        readAsset(*asset);
}

void AngleImport::readAsset(const Asset& asset) {
    for (const XmlNode child : asset.element.children()) {
        budget_.step();
        if (isElement(child, "metadata")) readMetadata(child);
    }
    if (!asset.hasLocation) addMissing(attributeOr(asset.element, "name", unnamed));
}

void AngleImport::readMetadata(XmlNode metadata) {
    for (const XmlNode entry : metadata.children()) {
        budget_.step();
        if (!isElement(entry, "md")) continue;
        const std::string_view key = attributeOr(entry, "key", "");
        const std::string_view value = attributeOr(entry, "value", "");
        budget_.visit(key.size() + value.size());
        if (key != "com.apple.proapps.mio.cameraName" || value.empty()) continue;
        // Every angle keeps the name, and many may share a recording.
        budget_.visits(value.size());
        angle_.cameras.add(value);
    }
}

/// A name is normalized once, however often its clip is read.
void AngleImport::addMissing(std::string_view name) {
    if (seenNames_.insert(name.data()).second) missingLocations_.add(name);
}

} // namespace shotweaver
