#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/FrameRange.h"
#include "engine/import/Name.h"
#include "platform/Uuid.h"
#include "platform/XmlDocument.h"
#include "platform/XmlWriter.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// The clips of an export: for each cut, a copy of the imported multicam clip that is switched to
/// the cut's camera and holds what belongs to the cut's time. Its sound fades in with the project's
/// first clip and out with its last.
///
/// Which cut a child of the imported clip goes to is worked out once, at construction, so a clip
/// costs what it holds.
class ClipContents {
  public:
    /// `cuts` cover the project without gaps; they and the engine must outlive this. Throws
    /// `FinalCutImportError` when a time of the imported clip cannot be read, or an annotation's is
    /// not a whole number of frames.
    ClipContents(const CutEngine& engine, const std::vector<Cut>& cuts, std::string audioAngle,
                 UUIDMaker makeUUID);

    /// Writes the clip of the cut at that place.
    void write(XmlWriter& writer, std::size_t cut) const;

  private:
    /// A child of the imported clip, as one cut gets it.
    struct Piece {
        XmlNode element;
        std::optional<FrameRange> span; // in frames of the project; absent: copied as it is
    };

    enum class SourceMode { video, audio, all };

    class CopyRule;

    void addStoryElement(XmlNode element);
    void addAnnotation(XmlNode element);
    void addRange(XmlNode element, const FrameRange& span);
    std::size_t cutAtFrame(std::int64_t frame) const;
    void findSourceSettings();
    void findFades();

    void writeAttributes(XmlWriter& writer, const Cut& cut) const;
    void writeSources(XmlWriter& writer, const std::string& angle, const CopyRule& rule) const;
    void writeSource(XmlWriter& writer, const std::string& angle, SourceMode mode,
                     CopyRule rule) const;
    void writePiece(XmlWriter& writer, const Piece& piece) const;
    void writeTime(XmlWriter& writer, Name name, std::int64_t frames) const;

    const CutEngine& engine_;
    const std::vector<Cut>& cuts_;
    std::string audioAngle_;
    UUIDMaker makeUUID_;

    std::map<std::string_view, std::vector<XmlNode>> pictureSettings_; // of each angle's source
    std::vector<XmlNode> leading_;                                     // clip settings
    std::vector<XmlNode> roles_; // of the audio angle's source
    std::set<XmlNode> fades_;    // in both of these
    std::vector<XmlNode> trailing_;
    // For each cut its story elements, then its annotations, each in document order.
    std::vector<std::vector<Piece>> pieces_;
};

} // namespace shotweaver
