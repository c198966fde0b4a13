#pragma once

#include "engine/CutEngine.h"
#include "platform/XmlDocument.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace shotweaver {

/// The children of the imported multicam clip that an export carries: its settings, the sources of
/// its angles, connected clips and captions (story elements), markers, keywords and ratings
/// (annotations), and what comes last.

bool isClipSetting(XmlNode element);
bool isStoryElement(XmlNode element);
bool isTimedAnnotation(XmlNode element);
bool isTrailing(XmlNode element);

/// The "mc-source" elements for one angle: where its picture and where its sound are set up. Null
/// when it has none.
struct AngleSources {
    XmlNode video;
    XmlNode audio;
    // True when chosen for its "srcEnable"; false when it is merely the first.
    bool isVideoEnabled = false;
    bool isAudioEnabled = false;
};

/// By angle identifier.
std::map<std::string_view, AngleSources> angleSources(XmlNode clip);

/// What goes with the picture of a source: all but the roles of its sound.
std::vector<XmlNode> pictureSettings(XmlNode source);

/// Where a story element lies in the multicam, in seconds. Throws `FinalCutImportError` for an
/// offset that cannot be read.
double storyOffset(XmlNode element);

/// Where an annotation lies in the multicam, in frames. Without a duration of at least a frame, or
/// when its kind has none, it is a point.
struct AnnotationTimes {
    std::int64_t start;
    std::int64_t duration;
};

/// Throws `FinalCutImportError` for a time that is not a whole number of frames.
AnnotationTimes annotationTimes(const CutEngine& engine, XmlNode element);

} // namespace shotweaver
