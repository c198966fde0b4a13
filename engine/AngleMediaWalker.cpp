#include "engine/AngleMediaWalker.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/XmlAccess.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace shotweaver {

namespace {

constexpr int deepestLevel = 39;

// Spans that may be handled for one document. A real export of three hours holds thousands;
// compound clips inside of each other can multiply them without end.
constexpr std::size_t maximumWork = 10'000'000;

bool isWalkable(pugi::xml_node element) {
    static constexpr std::array<std::string_view, 10> WalkableKinds{
        "asset-clip", "audio", "video", "clip",  "sync-clip",
        "ref-clip",   "spine", "gap",   "title", "live-drawing"};
    return isElement(element) && std::find(WalkableKinds.begin(), WalkableKinds.end(),
                                           element.name()) != WalkableKinds.end();
}

std::string_view nameOrKind(pugi::xml_node clip) {
    return attributeOr(clip, "name", clip.name());
}

} // namespace

std::vector<AngleMediaWalker::Span> AngleMediaWalker::walk(pugi::xml_node element,
                                                           std::string_view camera) {
    camera_ = camera;
    entered_.clear();
    return walk(element, 0).spans;
}

void AngleMediaWalker::refuse(std::string_view rest) const {
    throw FinalCutImportError::invalid(fmt::format("Camera {}{}", camera_, rest));
}

AngleMediaWalker::Walked AngleMediaWalker::walk(pugi::xml_node element, int depth) {
    if (depth > deepestLevel) refuse(" contains excessively nested clips.");
    if (!isWalkable(element))
        refuse(fmt::format(" contains an unsupported clip type: {}.", element.name()));
    if (attribute(element, "enabled") == "0") return {};
    checkSettings(element);

    Window window;
    window.offset = parseSeconds(attributeOr(element, "offset", "0s"));
    window.start = parseSeconds(attributeOr(element, "start", "0s"));
    if (const auto duration = attribute(element, "duration"))
        window.duration = parseSeconds(duration);

    Walked walked;
    const std::string_view kind = element.name();
    if (isMediaClipKind(kind)) {
        const pugi::xml_node asset = recordingOf(element);
        if (!window.duration) window.duration = parseSeconds(attribute(asset, "duration"));
        const bool video = kind != "audio" && attribute(asset, "hasVideo") == "1";
        const bool audio = kind != "video" && attribute(asset, "hasAudio") == "1";
        walked.spans.push_back({window.start, window.start + *window.duration, video, audio});
    }
    if (kind == "ref-clip") {
        const pugi::xml_node media = compoundMedia(element);
        const std::string_view id = media.attribute("id").value();
        entered_.insert(id);
        addChildren(walked, element, depth);
        addCompound(walked, media, depth);
        entered_.erase(id);
    } else {
        addChildren(walked, element, depth);
    }
    // After the children, whose failures come first.
    if (window.duration && !(*window.duration > 0)) refuse(" contains invalid clip duration.");
    moveToParent(walked.spans, window, attributeOr(element, "srcEnable", "all"));
    return walked;
}

void AngleMediaWalker::checkSettings(pugi::xml_node element) const {
    if (hasElement(element, "timeMap"))
        refuse(fmt::format(", clip {}, contains an unsupported setting: timeMap. Speed changes are "
                           "not supported yet.",
                           nameOrKind(element)));
    if (hasScaledConformRate(element) || hasSplitAudio(element))
        refuse(" contains speed changes or split audio, which are not supported yet.");
}

pugi::xml_node AngleMediaWalker::recordingOf(pugi::xml_node clip) const {
    const pugi::xml_node asset = resources_.asset(attribute(clip, "ref"));
    if (!asset) refuse(fmt::format(", clip {}, refers to a missing recording.", nameOrKind(clip)));
    if (!hasMediaLocation(asset))
        throw FinalCutImportError::invalid(
            fmt::format("No media location in export: {}. Finish importing media in Final Cut and "
                        "export XML again.",
                        attributeOr(asset, "name", camera_)));
    return asset;
}

pugi::xml_node AngleMediaWalker::compoundMedia(pugi::xml_node clip) const {
    const auto reference = attribute(clip, "ref");
    const pugi::xml_node media = reference ? resources_.media(reference) : pugi::xml_node();
    if (!media || entered_.contains(*reference) || !hasElement(media, "sequence"))
        refuse(" contains a missing or circular compound clip reference.");
    return media;
}

void AngleMediaWalker::addChildren(Walked& walked, pugi::xml_node parent, int depth) {
    for (const pugi::xml_node child : parent.children()) {
        if (!isWalkable(child)) continue;
        const Walked below = walk(child, depth + 1);
        walked.height = std::max(walked.height, below.height + 1);
        walked.spans.insert(walked.spans.end(), below.spans.begin(), below.spans.end());
    }
}

void AngleMediaWalker::addCompound(Walked& walked, pugi::xml_node media, int depth) {
    const std::string_view id = media.attribute("id").value();
    auto found = known_.find(id);
    if (found == known_.end()) {
        Walked content;
        for (const pugi::xml_node child : firstElement(media, "sequence").children()) {
            if (!isElement(child, "spine")) continue;
            const Walked spine = walk(child, depth + 1);
            content.height = std::max(content.height, spine.height + 1);
            content.spans.insert(content.spans.end(), spine.spans.begin(), spine.spans.end());
        }
        found = known_.emplace(id, std::move(content)).first;
    }
    const Walked& content = found->second;
    // It was walked at another depth, perhaps.
    if (depth + content.height > deepestLevel) refuse(" contains excessively nested clips.");
    walked.height = std::max(walked.height, content.height);
    countWork(content.spans.size());
    walked.spans.insert(walked.spans.end(), content.spans.begin(), content.spans.end());
}

void AngleMediaWalker::moveToParent(std::vector<Span>& spans, const Window& window,
                                    std::string_view sources) {
    countWork(spans.size());
    const bool keepsVideo = sources != "audio" && sources != "none";
    const bool keepsAudio = sources != "video" && sources != "none";
    std::size_t kept = 0;
    for (Span span : spans) {
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
    if (work_ > maximumWork)
        refuse(" contains too many compound clips inside of each other. Simplify them in Final Cut "
               "and export XML again.");
}

} // namespace shotweaver
