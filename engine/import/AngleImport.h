#pragma once

#include "engine/ImportedProject.h"
#include "engine/import/RepeatedReading.h"
#include "engine/import/Resources.h"
#include "engine/import/XmlAccess.h"
#include "platform/Text.h"

#include <pugixml.hpp>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shotweaver {

/// Summarises the angles of a multicam, one after the other.
///
/// Media clips lie directly in an angle, in containers, and in compound clips, which are entered
/// unless their media is being entered further up already. What compound clips hold is read once
/// for an angle, and only counted as often as they are used: chains of media that use each other
/// twice would otherwise be visited without end. Nothing bounds how deep they lie in each other.
class AngleImport {
  public:
    /// `resources` must outlive this.
    explicit AngleImport(const Resources& resources) : resources_(resources) {}

    /// Throws `FinalCutImportError` for an angle without an identifier, for a clip's offset that
    /// cannot be read, and for compound clips that multiply beyond reading.
    ImportedAngle parseAngle(pugi::xml_node angle);

    /// Names of the clips so far whose recording has no location, unique and sorted.
    std::vector<std::string> missingLocations() const { return missingLocations_.sorted(); }

  private:
    using MediaID = std::string_view;

    /// How many media clips something holds, those in its compound clips as often as they are used.
    struct MediaCount {
        std::int64_t clips = 0;
        // Of the media that were not entered again, the place of the outermost.
        std::size_t outermostHit = std::numeric_limits<std::size_t>::max();
    };

    /// Elements that lie beside each other, while they are being read.
    struct Level {
        enum class Kind { container, ownChildren, media }; // the last two of a compound clip

        Elements::Iterator next;
        Kind kind = Kind::container;
        MediaID id; // of the compound clip's media
        const Media* media = nullptr;
        MediaCount count;
    };

    /// What has been found of the angle being read.
    struct AngleContent {
        std::optional<double> firstRecording;
        TextSet cameras;
        std::unordered_set<MediaID> seenMedia;
        std::unordered_set<const Asset*> seenAssets;
    };

    std::int64_t readClips(pugi::xml_node angle);
    void readElement(pugi::xml_node element);
    void enterCompound(MediaID id, Level& ownChildren);
    void enterMedia(const Level& ownChildren);
    void leave();
    void readMediaClip(const ClipAttributes& clip);
    void readAsset(const Asset& asset);
    void countKept(std::string_view cameras);

    const Resources& resources_;
    TextSet missingLocations_;
    AngleContent angle_;
    std::vector<Level> levels_; // from the angle downward
    // The media being entered, each with its place on the way from the angle downward.
    std::unordered_map<MediaID, std::size_t> path_;
    int ownChildrenDepth_ = 0; // compound clips among whose own children the reading is
    std::unordered_map<MediaID, std::int64_t> known_; // clips of media
    RepeatedReading reading_;
    std::size_t keptNames_ = 0; // bytes
};

} // namespace shotweaver
