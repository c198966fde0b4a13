#include "engine/import/AngleMediaWalker.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace shotweaver {

namespace {

constexpr int deepestLevel = 39;

// Spans that may be handled for one document. A real export of three hours holds thousands;
// compound clips inside of each other can multiply them without end.
constexpr std::size_t maximumWork = 4'000'000;

bool isWalkableKind(std::string_view kind) {
    static constexpr std::array<std::string_view, 10> WalkableKinds{
        "asset-clip", "audio", "video", "clip",  "sync-clip",
        "ref-clip",   "spine", "gap",   "title", "live-drawing"};
    return std::find(WalkableKinds.begin(), WalkableKinds.end(), kind) != WalkableKinds.end();
}

} // namespace

void AngleMediaWalker::walk(pugi::xml_node element, std::string_view camera,
                            std::vector<Span>& spans) {
    camera_ = camera;
    walkElement(element, 0, spans);
}

void AngleMediaWalker::refuse(std::string_view rest) const {
    throw FinalCutImportError::invalid(fmt::format("Camera {}{}", camera_, rest));
}

int AngleMediaWalker::walkElement(pugi::xml_node element, int depth, std::vector<Span>& spans) {
    const std::string_view kind = element.name();
    if (depth > deepestLevel) refuse(" contains excessively nested clips.");
    if (!isWalkableKind(kind)) refuse(fmt::format(" contains an unsupported clip type: {}.", kind));
    const ClipAttributes attributes(element);
    if (attributes.isDisabled()) return 1;
    checkSettings(element, attributes);

    Window window = readWindow(attributes);
    const std::size_t first = spans.size();
    int below = 0;
    if (isMediaClipKind(kind)) {
        const Asset& asset = recordingOf(element, attributes);
        if (!window.duration) window.duration = durationOf(asset);
        spans.push_back({window.start, window.start + *window.duration,
                         kind != "audio" && asset.hasVideo, kind != "video" && asset.hasAudio});
    }
    if (kind == "ref-clip") {
        const Media& media = compoundMedia(attributes);
        entered_.insert(*attributes.ref);
        ++ownChildrenDepth_;
        below = walkChildren(element, depth, spans);
        --ownChildrenDepth_;
        below = std::max(below, walkMedia(*attributes.ref, media, depth, spans));
        entered_.erase(*attributes.ref);
    } else {
        below = walkChildren(element, depth, spans);
    }
    // After the children, whose failures come first.
    if (window.duration && !(*window.duration > 0)) refuse(" contains invalid clip duration.");
    moveToParent(spans, first, window, attributes.srcEnable.value_or("all"));
    return below + 1;
}

int AngleMediaWalker::walkChildren(pugi::xml_node parent, int depth, std::vector<Span>& spans) {
    int levels = 0;
    for (const pugi::xml_node child : elements(parent)) {
        if (isWalkableKind(child.name()))
            levels = std::max(levels, walkElement(child, depth + 1, spans));
    }
    return levels;
}

int AngleMediaWalker::walkMedia(std::string_view id, const Media& media, int depth,
                                std::vector<Span>& spans) {
    auto found = known_.find(id);
    if (found == known_.end() || ownChildrenDepth_ > 0) {
        if (!reading_.mayRead(media.element)) refuseTooMuch();
        MediaContent content;
        for (const pugi::xml_node spine : elements(media.sequence, "spine"))
            content.height = std::max(content.height, walkElement(spine, depth + 1, content.spans));
        found = known_.insert_or_assign(id, std::move(content)).first;
    }
    const MediaContent& content = found->second;
    // It was walked at another depth, perhaps.
    if (depth + content.height > deepestLevel) refuse(" contains excessively nested clips.");
    countWork(content.spans.size());
    spans.insert(spans.end(), content.spans.begin(), content.spans.end());
    return content.height;
}

AngleMediaWalker::Window AngleMediaWalker::readWindow(const ClipAttributes& clip) const {
    Window window;
    window.offset = parseSeconds(clip.offset.value_or("0s"));
    window.start = parseSeconds(clip.start.value_or("0s"));
    if (clip.duration) window.duration = parseSeconds(clip.duration);
    return window;
}

/// Read once: many clips may show one recording.
double AngleMediaWalker::durationOf(const Asset& asset) {
    const auto known = durations_.find(&asset);
    if (known != durations_.end()) return known->second;
    return durations_.emplace(&asset, parseSeconds(asset.duration)).first->second;
}

void AngleMediaWalker::checkSettings(pugi::xml_node element,
                                     const ClipAttributes& attributes) const {
    if (firstElement(element, "timeMap"))
        refuse(fmt::format(", clip {}, contains an unsupported setting: timeMap. Speed changes are "
                           "not supported yet.",
                           attributes.name.value_or(element.name())));
    if (hasScaledConformRate(element) || attributes.hasSplitAudio())
        refuse(" contains speed changes or split audio, which are not supported yet.");
}

const Asset& AngleMediaWalker::recordingOf(pugi::xml_node clip,
                                           const ClipAttributes& attributes) const {
    const Asset* const asset = resources_.asset(attributes.ref);
    if (!asset)
        refuse(fmt::format(", clip {}, refers to a missing recording.",
                           attributes.name.value_or(clip.name())));
    if (!asset->hasLocation)
        throw FinalCutImportError::invalid(
            fmt::format("No media location in export: {}. Finish importing media in Final Cut and "
                        "export XML again.",
                        attributeOr(asset->element, "name", camera_)));
    return *asset;
}

const Media& AngleMediaWalker::compoundMedia(const ClipAttributes& clip) const {
    const Media* const media = clip.ref ? resources_.media(clip.ref) : nullptr;
    if (!media || entered_.contains(*clip.ref) || !media->sequence)
        refuse(" contains a missing or circular compound clip reference.");
    return *media;
}

/// Clips the spans from `first` on to the window and moves them into the parent's time.
void AngleMediaWalker::moveToParent(std::vector<Span>& spans, std::size_t first,
                                    const Window& window, std::string_view sources) {
    countWork(spans.size() - first);
    const bool keepsVideo = sources != "audio" && sources != "none";
    const bool keepsAudio = sources != "video" && sources != "none";
    std::size_t kept = first;
    for (std::size_t i = first; i < spans.size(); ++i) {
        Span span = spans[i];
        if (window.duration) {
            span.start = std::max(span.start, window.start);
            span.end = std::min(span.end, window.start + *window.duration);
        }
        if (!(span.start < span.end)) continue;
        spans[kept++] = {window.offset + span.start - window.start,
                         window.offset + span.end - window.start, span.video && keepsVideo,
                         span.audio && keepsAudio};
    }
    spans.resize(kept);
}

void AngleMediaWalker::countWork(std::size_t spans) {
    work_ += spans;
    if (work_ > maximumWork) refuseTooMuch();
}

void AngleMediaWalker::refuseTooMuch() const {
    refuse(" contains more clips than can be read. Simplify its compound clips in Final Cut and "
           "export XML again.");
}

} // namespace shotweaver
