#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "platform/Uuid.h"

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// The clips of an export: for each cut, a copy of the imported multicam clip that is switched to
/// the cut's camera and holds what belongs to the cut's time.
///
/// Which cut a child of the imported clip goes to is worked out once, at construction, so a clip
/// costs what it holds.
class ClipContents {
  public:
    /// `cuts` cover the project without gaps; they and the engine must outlive this. Throws
    /// `FinalCutImportError` when a time of the imported clip cannot be read, or an annotation's is
    /// not a whole number of frames.
    ClipContents(const CutEngine& engine, const std::vector<Cut>& cuts, std::string audioAngle,
                 const UUIDMaker& makeUUID);

    /// The clip of the cut at that place. Valid until the next call.
    pugi::xml_node clip(std::size_t cut);

  private:
    /// A child of the imported clip, as one cut gets it.
    struct Piece {
        pugi::xml_node element;
        std::optional<FrameRange> span; // in frames of the project; absent: copied as it is
    };

    /// The imported clip's "mc-source" elements for one angle: where its picture and where its
    /// sound are set up. Null when it has none.
    struct AngleSources {
        pugi::xml_node video;
        pugi::xml_node audio;
        // True when chosen for its "srcEnable"; false when it is merely the first.
        bool isVideoEnabled = false;
        bool isAudioEnabled = false;
        std::vector<pugi::xml_node> pictureSettings; // what goes with the picture
    };

    /// Sound settings that every clip gets; they may contain fades.
    struct SoundSettings {
        std::vector<pugi::xml_node> leading; // clip settings
        std::vector<pugi::xml_node> roles;   // of the audio angle's source
    };

    enum class SourceMode { video, audio, all };

    void addSource(pugi::xml_node source);
    void addStoryElement(pugi::xml_node element);
    void addAnnotation(pugi::xml_node element);
    void addRange(pugi::xml_node element, const FrameRange& span);
    std::size_t cutAtFrame(std::int64_t frame) const;
    void findSourceSettings();
    void copyWithoutFades();

    pugi::xml_node makeShell(const Cut& cut);
    void makeSources(pugi::xml_node clip, const std::string& angle,
                     const SoundSettings& sound) const;
    void makeMulticamSource(pugi::xml_node clip, const std::string& angle, SourceMode mode,
                            const SoundSettings& sound) const;
    void copyPiece(pugi::xml_node clip, const Piece& piece) const;
    void renewTracking(pugi::xml_node source) const;
    void setTime(pugi::xml_node element, const char* name, std::int64_t frames) const;

    const CutEngine& engine_;
    const std::vector<Cut>& cuts_;
    std::string audioAngle_;
    const UUIDMaker& makeUUID_;

    std::map<std::string_view, AngleSources> sources_;
    SoundSettings sound_;
    SoundSettings withoutFades_; // copies, for clips that neither begin nor end the project
    std::vector<pugi::xml_node> trailing_;
    // For each cut its story elements, then its annotations, each in document order.
    std::vector<std::vector<Piece>> pieces_;
    pugi::xml_document copies_;
    pugi::xml_document scratch_;
};

} // namespace shotweaver
