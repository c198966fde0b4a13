#pragma once

#include "engine/FrameDuration.h"
#include "engine/FrameRange.h"
#include "engine/import/ProjectImport.h"
#include "platform/XmlDocument.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// A loaded project: what every later step reads. Never changed once built.
///
/// Frames count from the first frame of the multicam clip in the project; frame f shows at timeline
/// timecode `timelineStart` + f. Operations throw `FinalCutImportError` with the sentence of the
/// first failed check.
class CutEngine {
  public:
    /// Runs the import, then the checks of the engine, and walks every angle. Throws
    /// `FinalCutImportError`, or `PlatformError` for bytes that are not well-formed XML.
    explicit CutEngine(std::string_view bytes);

    /// The same from a document that the import has accepted already.
    explicit CutEngine(ProjectImport intake);

    std::unique_ptr<const XmlDocument> document; // the elements below are nodes of it
    XmlNode project;
    XmlNode sequence;
    XmlNode original; // the multicam clip
    FrameDuration frameDuration;
    std::int64_t length = 0;             // of the project in frames, at least 1
    std::int64_t sourceStart = 0;        // the clip's in-point inside the multicam, frames
    std::int64_t timelineStart = 0;      // the clip's place in the timeline, frames
    DropFrame dropFrame = DropFrame::no; // as the sequence asks for, whether or not it applies
    CoverageMap coverage;                // picture; an entry for every angle, perhaps empty
    std::string audioID;                 // the clip's one audio source; empty when not exactly one
    XmlNode audioSource;                 // its "mc-source"; null when not exactly one
    CoverageMap audioCoverage;           // sound; an entry for every angle

    /// A frame of the project as timecode of its timeline.
    std::string timecode(std::int64_t frame) const;

    /// Reads HH:MM:SS:FF (or ;FF, fields of any number of digits, white space around) as a frame of
    /// the project. The result may lie outside of the project.
    std::int64_t frameForTimecode(std::string_view text) const;

    /// The label that follows one that drop-frame timecode skips; nothing for any other text.
    ///     given  "00:01:00;00"     gives  "00:01:00;02"
    std::optional<std::string> labelAfterSkipped(std::string_view text) const;

    /// The frame of a label of the timeline, counted as `FrameDuration::frameOfLabel` does. May lie
    /// outside of the project.
    std::int64_t firstFrameLabelled(std::int64_t label) const;

    double seconds(std::int64_t frames) const { return frameDuration.seconds(frames); }

    /// An angle's picture. Empty for an unknown angle.
    const Coverage& coverageOf(std::string_view angle) const;

    /// An angle's picture within [from, to). Empty for an unknown angle.
    std::vector<FrameRange> coveredParts(std::string_view angle, std::int64_t from,
                                         std::int64_t to) const;

  private:
    void readTiming(const ProjectImport& intake);
    void checkClip() const;
    void findAudioSource();
    void checkFormats(const ProjectImport& intake) const;
    void readCoverage(const ProjectImport& intake);
};

/// True when a multicam's format suits the project's: one and the same, or equal in frame duration
/// and the attributes that describe the picture. Throws `FinalCutImportError` for a frame duration
/// that cannot be read.
bool formatsMatch(XmlNode projectFormat, XmlNode multicamFormat);

} // namespace shotweaver
