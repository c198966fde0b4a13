#include "engine/import/AngleMediaWalker.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace shotweaver {

namespace {

constexpr int deepestLevel = 39;

bool isWalkable(XmlNode element) {
    static constexpr std::array<Name, 10> walkableKinds{
        "asset-clip", "audio", "video", "clip",  "sync-clip",
        "ref-clip",   "spine", "gap",   "title", "live-drawing"};
    return isOneOf(walkableKinds, element);
}

} // namespace

/// What a clip shows of its content and where: in seconds of its own time, but for the offset,
/// which is in its parent's. Without a known duration nothing is clipped.
struct AngleMediaWalker::Window {
    Window(const ClipAttributes& clip, const Window* around)
        : offset(parseSeconds(clip.offset.value_or("0s"))),
          start(parseSeconds(clip.start.value_or("0s"))), parent(around) {
        if (clip.duration) duration = parseSeconds(clip.duration);
        const std::string_view sources = clip.srcEnable.value_or("all");
        keepsVideo = sources != "audio" && sources != "none";
        keepsAudio = sources != "video" && sources != "none";
    }

    double offset;
    double start;
    std::optional<double> duration;
    bool keepsVideo;
    bool keepsAudio;
    const Window* parent; // null for an angle's child
};

void AngleMediaWalker::walk(XmlNode element, std::string_view camera, const SpanSink& sink) {
    camera_ = camera;
    sink_ = &sink;
    walkElement(element, 0, nullptr);
}

void AngleMediaWalker::refuse(std::string_view rest) const {
    throw FinalCutImportError::invalid(fmt::format("Camera {}{}", camera_, rest));
}

void AngleMediaWalker::walkElement(XmlNode element, int depth, const Window* around) {
    if (depth > deepestLevel) refuse(" contains excessively nested clips.");
    const ClipAttributes clip(element);
    if (!isWalkable(element))
        refuse(fmt::format(" contains an unsupported clip type: {}.", element.name()));
    budget_.visit(clip.size);
    if (clip.isDisabled()) return;
    checkSettings(element, clip);

    Window window(clip, around);
    if (isMediaClip(element)) {
        const Asset& asset = recordingOf(clip);
        if (!window.duration) window.duration = parseSeconds(asset.duration);
        place({window.start, window.start + *window.duration,
               !isElement(element, "audio") && asset.hasVideo,
               !isElement(element, "video") && asset.hasAudio},
              &window);
    }
    if (isElement(element, "ref-clip"))
        walkCompound(element, mediaOf(clip), depth, window);
    else
        walkChildren(element, depth, window);
    // After the children, whose failures come first.
    if (window.duration && !(*window.duration > 0)) refuse(" contains invalid clip duration.");
}

void AngleMediaWalker::walkChildren(XmlNode parent, int depth, const Window& window) {
    for (const XmlNode child : parent.children()) {
        if (isWalkable(child))
            walkElement(child, depth + 1, &window);
        else
            budget_.step(child.name().size());
    }
}

/// The clip's own children come before what its media holds, for both of which the media counts as
/// entered.
void AngleMediaWalker::walkCompound(XmlNode clip, const Media& media, int depth,
                                    const Window& window) {
    entered_.insert(&media);
    walkChildren(clip, depth, window);
    if (media.isSelfContained) {
        for (const Span& span : walkSelfContained(media, depth).spans)
            place(span, &window);
    } else {
        walkSpines(media, depth, &window);
    }
    entered_.erase(&media);
}

void AngleMediaWalker::walkSpines(const Media& media, int depth, const Window* around) {
    for (const XmlNode child : media.sequence.children()) {
        if (isElement(child, "spine"))
            walkElement(child, depth + 1, around);
        else
            budget_.step();
    }
}

/// Walks the media once, and again where it lies deeper, which may be too deep.
const AngleMediaWalker::Walk& AngleMediaWalker::walkSelfContained(const Media& media, int depth) {
    const auto [entry, isFirst] = selfContained_.try_emplace(&media);
    Walk& walk = entry->second;
    if (!isFirst && depth <= walk.depth) {
        budget_.spend(walk.cost);
        return walk;
    }
    walk = {};
    const SpanSink collect = [&](const Span& span) { walk.spans.push_back(span); };
    const SpanSink* const outer = std::exchange(sink_, &collect);
    const std::size_t spentBefore = budget_.spent();
    walkSpines(media, depth, nullptr);
    walk.cost = budget_.spent() - spentBefore;
    walk.depth = depth;
    sink_ = outer;
    return walk;
}

/// Clips a span to its window and moves it into the parent's time, and so on up to the angle's.
void AngleMediaWalker::place(Span span, const Window* window) {
    for (const Window* each = window; each; each = each->parent) {
        budget_.step();
        if (each->duration) {
            span.start = std::max(span.start, each->start);
            span.end = std::min(span.end, each->start + *each->duration);
        }
        if (!(span.start < span.end)) return;
        span = {each->offset + span.start - each->start, each->offset + span.end - each->start,
                span.video && each->keepsVideo, span.audio && each->keepsAudio};
    }
    (*sink_)(span);
}

void AngleMediaWalker::checkSettings(XmlNode element, const ClipAttributes& clip) const {
    if (firstElement(element, "timeMap"))
        refuse(fmt::format(", clip {}, contains an unsupported setting: timeMap. Speed changes are "
                           "not supported yet.",
                           clip.label()));
    if (hasScaledConformRate(element) || clip.hasSplitAudio())
        refuse(" contains speed changes or split audio, which are not supported yet.");
}

const Asset& AngleMediaWalker::recordingOf(const ClipAttributes& clip) const {
    const Asset* const asset = resources_.asset(clip.ref);
    if (!asset) refuse(fmt::format(", clip {}, refers to a missing recording.", clip.label()));
    if (!asset->hasLocation)
        throw FinalCutImportError::invalid(
            fmt::format("No media location in export: {}. Finish importing media in Final Cut and "
                        "export XML again.",
                        attributeOr(asset->element, "name", camera_)));
    return *asset;
}

const Media& AngleMediaWalker::mediaOf(const ClipAttributes& compoundClip) const {
    const Media* const media = compoundClip.ref ? resources_.media(compoundClip.ref) : nullptr;
    if (!media || entered_.contains(media) || !media->sequence)
        refuse(" contains a missing or circular compound clip reference.");
    return *media;
}

} // namespace shotweaver
