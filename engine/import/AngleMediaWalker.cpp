#include "engine/import/AngleMediaWalker.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

namespace shotweaver {

namespace {

constexpr int deepestLevel = 39;

bool isWalkableKind(std::string_view kind) {
    static constexpr std::array<std::string_view, 10> walkableKinds{
        "asset-clip", "audio", "video", "clip",  "sync-clip",
        "ref-clip",   "spine", "gap",   "title", "live-drawing"};
    return isOneOf(walkableKinds, kind);
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

void AngleMediaWalker::walk(pugi::xml_node element, std::string_view camera, const SpanSink& sink) {
    camera_ = camera;
    sink_ = &sink;
    walkElement(element, 0, nullptr);
}

void AngleMediaWalker::refuse(std::string_view rest) const {
    throw FinalCutImportError::invalid(fmt::format("Camera {}{}", camera_, rest));
}

void AngleMediaWalker::walkElement(pugi::xml_node element, int depth, const Window* around) {
    if (depth > deepestLevel) refuse(" contains excessively nested clips.");
    const ClipAttributes clip(element);
    if (!isWalkableKind(clip.kind))
        refuse(fmt::format(" contains an unsupported clip type: {}.", clip.kind));
    budget_.visit(clip.size);
    if (clip.isDisabled()) return;
    checkSettings(element, clip);

    Window window(clip, around);
    if (isMediaClipKind(clip.kind)) {
        const Asset& asset = recordingOf(clip);
        if (!window.duration) window.duration = parseSeconds(asset.duration);
        place({window.start, window.start + *window.duration,
               clip.kind != "audio" && asset.hasVideo, clip.kind != "video" && asset.hasAudio},
              window);
    }
    if (clip.kind == "ref-clip")
        walkCompound(element, mediaOf(clip), depth, window);
    else
        walkChildren(element, depth, window);
    // After the children, whose failures come first.
    if (window.duration && !(*window.duration > 0)) refuse(" contains invalid clip duration.");
}

void AngleMediaWalker::walkChildren(pugi::xml_node parent, int depth, const Window& window) {
    for (const pugi::xml_node child : parent.children()) {
        const std::string_view kind = child.name();
        if (isElement(child) && isWalkableKind(kind))
            walkElement(child, depth + 1, &window);
        else
            budget_.step(kind.size());
    }
}

/// The clip's own children come before what its media holds, for both of which the media counts as
/// entered.
void AngleMediaWalker::walkCompound(pugi::xml_node clip, const Media& media, int depth,
                                    const Window& window) {
    entered_.insert(&media);
    walkChildren(clip, depth, window);
    for (const pugi::xml_node child : media.sequence.children()) {
        if (isElement(child, "spine"))
            walkElement(child, depth + 1, &window);
        else
            budget_.step();
    }
    entered_.erase(&media);
}

/// Clips a span to its window and moves it into the parent's time, and so on up to the angle's.
void AngleMediaWalker::place(Span span, const Window& window) {
    for (const Window* each = &window; each; each = each->parent) {
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

void AngleMediaWalker::checkSettings(pugi::xml_node element, const ClipAttributes& clip) const {
    if (firstElement(element, "timeMap"))
        refuse(fmt::format(", clip {}, contains an unsupported setting: timeMap. Speed changes are "
                           "not supported yet.",
                           clip.name.value_or(clip.kind)));
    if (hasScaledConformRate(element) || clip.hasSplitAudio())
        refuse(" contains speed changes or split audio, which are not supported yet.");
}

const Asset& AngleMediaWalker::recordingOf(const ClipAttributes& clip) const {
    const Asset* const asset = resources_.asset(clip.ref);
    if (!asset)
        refuse(fmt::format(", clip {}, refers to a missing recording.",
                           clip.name.value_or(clip.kind)));
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
