#pragma once

#include "engine/ImportedProject.h"
#include "engine/Resources.h"
#include "engine/XmlAccess.h"
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
/// unless their media is being entered further up already. What compound clips hold is looked at
/// once for an angle, and only counted as often as they are used: chains of media that use each
/// other twice would otherwise be visited without end.
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

    /// The media being entered, each with its place on the way from the angle downward.
    using Path = std::unordered_map<MediaID, int>;

    /// How many media clips a media holds, those in its compound clips as often as they are used.
    struct MediaCount {
        std::int64_t clips = 0;
        // Of the media that were not entered again, the place of the outermost.
        int outermostHit = std::numeric_limits<int>::max();
    };

    /// What has been found of the angle being read.
    struct AngleContent {
        std::int64_t clipCount = 0;
        std::optional<double> firstRecording;
        TextSet cameras;
        std::unordered_set<MediaID> seenMedia;
        std::unordered_set<const Asset*> seenAssets;
    };

    void collectMediaClips(pugi::xml_node element, int depth);
    void enterCompound(const ClipAttributes& clip, pugi::xml_node element, int depth);
    void readMediaClip(const ClipAttributes& clip);
    void readAsset(const Asset& asset);

    void countBelow(pugi::xml_node element, int depth, MediaCount& into);
    void countMedia(MediaID id, const Media& media, int depth, MediaCount& into);
    MediaCount expandMedia(MediaID id, const Media& media, int depth);

    const Media* referencedMedia(const ClipAttributes& clip, pugi::xml_node element) const;
    void countVisit();

    const Resources& resources_;
    TextSet missingLocations_;
    AngleContent angle_;
    Path path_;
    int compoundDepth_ = 0;    // compound clips around the element being read
    int ownChildrenDepth_ = 0; // compound clips among whose own children it lies
    std::unordered_map<MediaID, std::int64_t> known_;
    std::unordered_set<MediaID> expanded_;
    int repeatedExpansions_ = 0; // of those being expanded, the ones that were before
    std::int64_t visits_ = 0;
};

} // namespace shotweaver
