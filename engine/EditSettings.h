#pragma once

#include "platform/Uuid.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace shotweaver {

/// Angle identifier → number.
using AngleNumbers = std::map<std::string, double, std::less<>>;

constexpr double defaultFrequency = 5;  // of a camera without an entry
constexpr double defaultReturnTime = 0; // seconds, of a camera without an entry

/// The entry of an angle, or `fallback` when it has none.
double numberFor(const AngleNumbers& numbers, std::string_view angle, double fallback);

/// A fixed-section row as typed.
struct SectionDraft {
    UUID id;
    std::string name;   // a label only
    std::string camera; // angle identifier
    std::string start;  // project timecode
    std::string end;

    bool operator==(const SectionDraft&) const = default;
};

/// An opening or closing shot as it is set up.
struct Bookend {
    bool isEnabled = false;
    std::string camera;  // angle identifier
    double seconds = 15; // 1 to 120

    bool operator==(const Bookend&) const = default;
};

/// Every user setting of one edit, with a fresh editor's initial values. Cameras are angle
/// identifiers.
struct EditSettings {
    double mainShare = 70;   // percent of screen time, 10 to 90
    double averageShot = 10; // seconds, 4 to 20
    double mainMinimum = 10; // seconds, 1 to 120; shot lengths of the main camera
    double mainMaximum = 25; // seconds, mainMinimum to 120
    double otherMinimum = 4; // seconds, 1 to 120; shot lengths of the additional cameras
    double otherMaximum = 8; // seconds, otherMinimum to 120
    std::string mainCamera;
    std::set<std::string, std::less<>> otherCameras;
    AngleNumbers frequencies; // 1 to 10; a missing entry counts as 5
    AngleNumbers returnTimes; // seconds, 0 to 600; a missing entry counts as 0
    std::string audio;
    bool doubleMain = false;
    bool varyOthers = false;      // not the same additional camera twice in a row
    bool cutAtMarkers = false;    // where shot lengths allow
    bool followMarkers = false;   // those that are named like a camera
    std::vector<double> cutTimes; // seconds from the project's start, at most 20,000, in any order
    Bookend opening;
    Bookend closing;
    std::vector<SectionDraft> sections;

    /// Throws `FinalCutImportError` with the one sentence for stored settings when a number is out
    /// of its range (bounds included; a not-a-number is out of every range).
    void validate() const;

    bool operator==(const EditSettings&) const = default;
};

/// A shot length range with its minimum above its maximum, seconds.
struct ReversedRange {
    bool isMain; // of the main camera, or of the others
    double minimum;
    double maximum;
};

/// The first such range. The controls of the panel keep their order; settings that arrive whole may
/// hold anything.
std::optional<ReversedRange> reversedRange(const EditSettings& settings);

/// Each sets one end of a shot length range, seconds, and moves the other where it would be passed.
void setMinimum(double& minimum, double& maximum, double seconds);
void setMaximum(double& minimum, double& maximum, double seconds);

/// A requested opening or closing shot.
struct BookendShot {
    std::string angle;
    double seconds = 0;

    bool operator==(const BookendShot&) const = default;
};

/// A fixed section in project frames: [start, end).
struct FixedCameraSection {
    std::string angle;
    std::int64_t start = 0;
    std::int64_t end = 0;

    bool operator==(const FixedCameraSection&) const = default;
};

/// A director's note: a marker that is named like a camera asks for it from there on.
struct CameraNote {
    std::int64_t frame = 0; // of the project
    std::string angle;
    std::string name; // the marker's, without white space at both ends

    bool operator==(const CameraNote&) const = default;
};

/// One shot of a cut list, in project frames.
struct Cut {
    UUID id;
    std::string angle;
    std::int64_t start = 0;
    std::int64_t duration = 0; // at least 1

    bool operator==(const Cut&) const = default;
};

/// Shot lengths in seconds, both bounds included.
struct SecondsRange {
    double lower = 0;
    double upper = 0;

    bool operator==(const SecondsRange&) const = default;
};

/// What a rough edit is generated from.
struct GenerationInputs {
    std::string mainCamera;
    std::vector<std::string> otherCameras; // in the order of the project's angles
    double mainShare = 0.7;                // a fraction, 0.1 to 0.9
    double averageShot = 10;               // seconds, 4 to 20
    bool doubleMain = false;
    bool varyOthers = false;
    std::optional<SecondsRange> mainRange;  // 1 to 120 seconds
    std::optional<SecondsRange> otherRange; // 1 to 120 seconds
    std::optional<BookendShot> opening;
    std::optional<BookendShot> closing;
    AngleNumbers frequencies;
    std::vector<FixedCameraSection> sections; // in any order
    AngleNumbers returnTimes;                 // seconds
    std::vector<Cut> kept;                    // shots of an earlier edit that stay
    std::vector<std::int64_t> cutPoints; // frames where a shot may rather end, ascending, each once
    std::vector<CameraNote> notes;       // that are followed, by frame
};

} // namespace shotweaver
