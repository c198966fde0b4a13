#pragma once

#include "platform/XmlDocument.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace shotweaver {

/// The elements with character data, whose white space is content, then every other name of FCPXML
/// that the engine asks for.
inline constexpr auto fcpxmlNames = std::to_array<std::string_view>({
    // clang-format off
    "text", "text-style", "note", "data", "bookmark", "string", "reserved",
    // Elements
    "adjust-360-transform", "adjust-blend", "adjust-cinematic", "adjust-colorConform",
    "adjust-conform", "adjust-corners", "adjust-crop", "adjust-EQ", "adjust-humReduction",
    "adjust-loudness", "adjust-matchEQ", "adjust-noiseReduction", "adjust-orientation",
    "adjust-panner", "adjust-reorient", "adjust-rollingShutter", "adjust-stabilization",
    "adjust-stereo-3D", "adjust-transform", "adjust-voiceIsolation", "adjust-volume",
    "analysis-marker", "asset", "asset-clip", "audio", "audio-channel-source", "audio-role-source",
    "audition", "caption", "chapter-marker", "clip", "conform-rate", "effect", "event", "fadeIn",
    "fadeOut", "fcpxml", "filter-audio", "filter-video", "filter-video-mask", "gap",
    "hidden-clip-marker", "keyword", "library", "live-drawing", "locator", "marker", "mask-shape",
    "mc-angle", "mc-clip", "mc-source", "md", "media", "media-rep", "metadata", "multicam", "mute",
    "object-tracker", "project", "rating", "ref-clip", "resources", "sequence", "spine",
    "sync-clip", "sync-source", "text-style-def", "timeMap", "title", "tracking-shape", "video",
    // Attributes
    "angleID", "audioDuration", "audioStart", "colorSpace", "completed", "dataLocator", "duration",
    "enabled", "fieldOrder", "format", "frameDuration", "hasAudio", "hasVideo", "height", "id",
    "key", "modDate", "name", "offset", "paspH", "paspV", "projection", "projectRef", "ref",
    "role", "scaleEnabled", "src", "srcEnable", "start", "stereoscopic", "tcFormat", "tcStart",
    "tracking", "uid", "url", "value", "version", "width",
    // clang-format on
});

/// What documents are parsed with.
inline constexpr XmlVocabulary fcpxmlVocabulary{fcpxmlNames, 7};

/// One of these names as its number: `isElement(node, "spine")` compares numbers. A name that the
/// list lacks does not compile.
class Name {
  public:
    consteval Name(const char* text) : number_(place(text)) {}

    constexpr operator XmlName() const { return number_; }
    constexpr std::string_view text() const { return fcpxmlNames[number_]; }

  private:
    static consteval XmlName place(std::string_view text) {
        XmlName number = 0;
        while (fcpxmlNames.at(number) != text)
            ++number;
        return number;
    }

    XmlName number_;
};

} // namespace shotweaver
