#include "engine/import/ChildOrder.h"

#include "engine/import/Name.h"

#include <array>
#include <vector>

namespace shotweaver {

namespace {

struct Place {
    int rank = 0; // from 1; 0 for none
    bool repeats = false;
};

/// Kinds of elements that stand at one place, in their order.
struct Group {
    bool repeats;
    std::vector<Name> kinds;
};

/// By name number.
constexpr std::array<Place, fcpxmlNames.size()> places() {
    const std::vector<Group> groups{
        {false, {"note"}},
        {false, {"conform-rate"}},
        {false, {"timeMap"}},
        // The picture
        {false, {"object-tracker"}},
        {false, {"adjust-crop"}},
        {false, {"adjust-corners"}},
        {false, {"adjust-conform"}},
        {false, {"adjust-transform"}},
        {false, {"adjust-blend"}},
        {false, {"adjust-stabilization"}},
        {false, {"adjust-rollingShutter"}},
        {false, {"adjust-360-transform"}},
        {false, {"adjust-reorient"}},
        {false, {"adjust-orientation"}},
        {false, {"adjust-cinematic"}},
        {false, {"adjust-colorConform"}},
        {false, {"adjust-stereo-3D"}},
        // The sound
        {false, {"adjust-loudness"}},
        {false, {"adjust-noiseReduction"}},
        {false, {"adjust-humReduction"}},
        {false, {"adjust-EQ", "adjust-matchEQ"}},
        {false, {"adjust-voiceIsolation"}},
        {false, {"adjust-volume"}},
        {false, {"adjust-panner"}},
        {true,
         {"asset-clip", "audio", "audition", "caption", "clip", "gap", "live-drawing", "mc-angle",
          "mc-clip", "ref-clip", "spine", "sync-clip", "title", "video"}},
        {true,
         {"analysis-marker", "chapter-marker", "hidden-clip-marker", "keyword", "marker",
          "rating"}},
        {true, {"audio-channel-source", "audio-role-source", "sync-source"}},
        {true, {"filter-video", "filter-video-mask"}},
        {true, {"filter-audio"}},
        {true, {"mute"}},
        {false, {"metadata"}},
    };
    std::array<Place, fcpxmlNames.size()> all{};
    int rank = 0;
    for (const Group& group : groups) {
        ++rank;
        for (const Name kind : group.kinds)
            all[kind] = {rank, group.repeats};
    }
    return all;
}

constexpr std::array<Place, fcpxmlNames.size()> allPlaces = places();

} // namespace

bool ChildOrder::isOutOfPlace(XmlNode child) {
    const XmlName name = child.nameNumber();
    if (name >= allPlaces.size() || isTold_) return false;
    const auto [rank, repeats] = allPlaces[name];
    if (rank == 0) return false;
    isTold_ = rank < rank_ || (rank == rank_ && !repeats);
    if (isTold_) return true;
    rank_ = rank;
    last_ = child;
    return false;
}

} // namespace shotweaver
