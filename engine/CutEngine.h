#pragma once

#include "engine/EditSettings.h"
#include "engine/FrameDuration.h"
#include "engine/FrameRange.h"
#include "engine/import/ProjectImport.h"
#include "platform/Random.h"
#include "platform/Uuid.h"
#include "platform/XmlIntake.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// The coverage of a planned selection: the parts of the project that have recorded video, neither
/// sorted nor merged, or a message in their place.
struct SelectedCoverage {
    std::vector<FrameRange> covered;
    std::optional<std::string> message;

    bool operator==(const SelectedCoverage&) const = default;
};

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

    XmlDocument document;         // the elements below are nodes of it; nothing changes it
    std::size_t documentSize = 0; // of its text as read, bytes
    pugi::xml_node project;
    pugi::xml_node sequence;
    pugi::xml_node original; // the multicam clip
    FrameDuration frameDuration;
    std::int64_t length = 0;             // of the project in frames, at least 1
    std::int64_t sourceStart = 0;        // the clip's in-point inside the multicam, frames
    std::int64_t timelineStart = 0;      // the clip's place in the timeline, frames
    DropFrame dropFrame = DropFrame::no; // as the sequence asks for, whether or not it applies
    CoverageMap coverage;                // picture; an entry for every angle, perhaps empty
    std::string audioID;                 // the clip's one audio source; empty when not exactly one
    pugi::xml_node audioSource;          // its "mc-source"; null when not exactly one
    CoverageMap audioCoverage;           // sound; an entry for every angle

    /// A frame of the project as timecode of its timeline.
    std::string timecode(std::int64_t frame) const;

    /// Reads HH:MM:SS:FF (or ;FF, fields of any number of digits, white space around) as a frame of
    /// the project. The result may lie outside of the project.
    std::int64_t frameForTimecode(std::string_view text) const;

    /// Refuses an audio angle whose sound does not cover the whole project.
    void checkAudioCoverage(std::string_view audio) const;

    /// The length of an opening or closing shot, at least 1 frame; 0 without one.
    std::int64_t bookendFrames(const std::optional<BookendShot>& shot) const;

    /// The sections sorted by start (a stable sort): inside of [openingFrames, closingStart), not
    /// overlapping, each within footage of its camera.
    std::vector<FixedCameraSection> validateSections(std::vector<FixedCameraSection> sections,
                                                     std::int64_t openingFrames,
                                                     std::int64_t closingStart) const;

    /// A rough edit: an ordered, gap-free cut list from frame 0 to `length`. Draws from `random`
    /// for each free shot, in this order: the weighted choice, the pacing factor, the length within
    /// the range (when the kind has one), the doubling (main shots with `doubleMain` only).
    std::vector<Cut> generateCuts(const GenerationInputs& inputs, RandomSource& random,
                                  const UUIDMaker& makeUUID) const;

    /// An angle's picture within [from, to). Empty for an unknown angle.
    std::vector<FrameRange> coveredParts(std::string_view angle, std::int64_t from,
                                         std::int64_t to) const;

    /// The parts of the project that a selection has footage for. `cameras` is the main camera
    /// followed by the additional ones. Inside of fixed sections and bookends only their own camera
    /// counts.
    SelectedCoverage selectedCoverage(const std::vector<std::string>& cameras,
                                      const std::optional<BookendShot>& opening,
                                      const std::optional<BookendShot>& closing,
                                      const std::vector<FixedCameraSection>& sections) const;

    /// A cut list as a new FCPXML project, UTF-8. `audioAngle` is heard throughout; `audioID` when
    /// absent. The cost grows with the input plus the output.
    std::string exportDocument(const std::vector<Cut>& cuts,
                               const std::optional<std::string>& audioAngle,
                               const UUIDMaker& makeUUID) const;

    /// What would stop an export whatever the cut list, with the imported audio: no format version,
    /// times on the multicam clip that cannot be read, annotations off the frame grid. One sentence
    /// each, in document order.
    std::vector<std::string> exportObstacles() const;

    double seconds(std::int64_t frames) const { return frameDuration.seconds(frames); }

  private:
    struct BookendFrames {
        std::int64_t opening;
        std::int64_t closingStart;
    };

    void readTiming(const ProjectImport& intake);
    void checkClip() const;
    void findAudioSource();
    void checkFormats(const ProjectImport& intake) const;
    void readCoverage(const ProjectImport& intake);

    const Coverage& coverageOf(std::string_view angle) const;
    void checkInputs(const GenerationInputs& inputs) const;
    BookendFrames checkBookends(const GenerationInputs& inputs) const;
};

/// True when a multicam's format suits the project's: one and the same, or equal in frame duration
/// and the attributes that describe the picture. Throws `FinalCutImportError` for a frame duration
/// that cannot be read.
bool formatsMatch(pugi::xml_node projectFormat, pugi::xml_node multicamFormat);

} // namespace shotweaver
