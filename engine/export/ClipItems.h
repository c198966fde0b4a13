#pragma once

#include "engine/CutEngine.h"
#include "platform/XmlDocument.h"

#include <cstdint>

namespace shotweaver {

/// What lies at a time on the imported multicam clip: connected clips and captions (story
/// elements), and markers, keywords and ratings (annotations).

bool isStoryElement(XmlNode element);
bool isTimedAnnotation(XmlNode element);

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
