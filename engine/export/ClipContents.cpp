#include "engine/export/ClipContents.h"

#include "engine/import/AudioFades.h"
#include "engine/import/ClipItems.h"
#include "engine/import/XmlAccess.h"

#include <algorithm>
#include <array>

namespace shotweaver {

namespace {

// A connected clip this little before a cut, in seconds, belongs to the cut.
constexpr double ownerTolerance = 0.00000001;

} // namespace

/// How copies differ from what was imported: fades that belong to another clip are left out, and
/// tracked shapes have identifiers of their own. An attribute that is changed comes last.
class ClipContents::CopyRule final : public XmlCopyRule {
  public:
    CopyRule(const std::set<XmlNode>& fades, bool keepsFadeIn, bool keepsFadeOut)
        : fades_(fades), keepsFadeIn_(keepsFadeIn), keepsFadeOut_(keepsFadeOut) {}

    /// Draws an identifier for each shape that is copied with an element.
    void renewShapes(XmlNode element, const UUIDMaker& makeUUID) {
        if (leavesOut(element)) return;
        const auto id = attribute(element, "id");
        if (id && isElement(element, "tracking-shape"))
            renewed_[*id] = shapes_[element] = "swtrack" + makeUUID().compactText();
        for (const XmlNode child : Elements(element))
            renewShapes(child, makeUUID);
    }

    bool leavesOut(XmlNode element) const override {
        return ((isElement(element, "fadeIn") && !keepsFadeIn_) ||
                (isElement(element, "fadeOut") && !keepsFadeOut_)) &&
               fades_.contains(element);
    }

    void writeAttributes(XmlWriter& writer, XmlNode element) const override {
        if (shapes_.empty()) return XmlCopyRule::writeAttributes(writer, element);
        const auto id = shapes_.find(element);
        const auto tracking = renewed_.find(attributeOr(element, "tracking", ""));
        const bool hasTracking = attribute(element, "tracking") && tracking != renewed_.end();
        for (const XmlAttribute each : element.attributes()) {
            const bool isRenewed = (each.nameNumber() == Name("id") && id != shapes_.end()) ||
                                   (each.nameNumber() == Name("tracking") && hasTracking);
            if (!isRenewed) writer.attribute(each.name(), each.value().data());
        }
        if (id != shapes_.end()) writer.attribute("id", id->second.c_str());
        if (hasTracking) writer.attribute("tracking", tracking->second.c_str());
    }

  private:
    const std::set<XmlNode>& fades_;
    bool keepsFadeIn_;
    bool keepsFadeOut_;
    std::map<XmlNode, std::string> shapes_;           // the new identifier of each
    std::map<std::string_view, std::string> renewed_; // by the former one
};

ClipContents::ClipContents(const CutEngine& engine, const std::vector<Cut>& cuts,
                           std::string audioAngle, UUIDMaker makeUUID)
    : engine_(engine), cuts_(cuts), audioAngle_(std::move(audioAngle)),
      makeUUID_(std::move(makeUUID)), pieces_(cuts.size()) {
    std::vector<XmlNode> annotations;
    for (const XmlNode child : Elements(engine.original)) {
        if (isClipSetting(child)) leading_.push_back(child);
        if (isStoryElement(child)) addStoryElement(child);
        if (isTimedAnnotation(child)) annotations.push_back(child);
        if (isTrailing(child)) trailing_.push_back(child);
    }
    // After all story elements: theirs is the first failure, and the first place in a clip.
    for (const XmlNode annotation : annotations)
        addAnnotation(annotation);
    findSourceSettings();
    findFades();
}

void ClipContents::findSourceSettings() {
    const std::map<std::string_view, AngleSources> angles = angleSources(engine_.original);
    for (const auto& [angle, sources] : angles)
        pictureSettings_[angle] = pictureSettings(sources.video);
    const auto heard = angles.find(audioAngle_);
    if (heard == angles.end()) return;
    const Elements roles(heard->second.audio, "audio-role-source");
    roles_.assign(roles.begin(), roles.end());
}

void ClipContents::findFades() {
    std::vector<XmlNode> fades;
    for (const XmlNode setting : leading_) {
        if (isElement(setting, "adjust-volume")) addVolumeFades(fades, setting);
    }
    for (const XmlNode role : roles_) {
        for (const XmlNode volume : Elements(role, "adjust-volume"))
            addVolumeFades(fades, volume);
    }
    fades_.insert(fades.begin(), fades.end());
}

void ClipContents::addStoryElement(XmlNode element) {
    const double position =
        storyOffset(element) - engine_.seconds(engine_.sourceStart) + ownerTolerance;
    const auto after =
        std::upper_bound(cuts_.begin(), cuts_.end(), position, [&](double seconds, const Cut& cut) {
            return seconds < engine_.seconds(cut.start);
        });
    const std::size_t owner =
        after == cuts_.begin() ? 0 : static_cast<std::size_t>(after - cuts_.begin()) - 1;
    pieces_[owner].push_back({element, std::nullopt});
}

void ClipContents::addAnnotation(XmlNode element) {
    const AnnotationTimes times = annotationTimes(engine_, element);
    // In frames of the project.
    const std::int64_t start = times.start - engine_.sourceStart;
    if (times.duration >= 1) return addRange(element, {start, start + times.duration});
    if (start < 0 || start >= engine_.length) return;
    pieces_[cutAtFrame(start)].push_back({element, std::nullopt});
}

void ClipContents::addRange(XmlNode element, const FrameRange& span) {
    const std::int64_t start = std::max<std::int64_t>(span.lowerBound, 0);
    const std::int64_t end = std::min(span.upperBound, engine_.length);
    if (start >= end) return;
    for (std::size_t cut = cutAtFrame(start); cut < cuts_.size() && cuts_[cut].start < end; ++cut) {
        const std::int64_t cutEnd = cuts_[cut].start + cuts_[cut].duration;
        pieces_[cut].push_back(
            {element, FrameRange{std::max(start, cuts_[cut].start), std::min(end, cutEnd)}});
    }
}

/// The cut that shows a frame of the project.
std::size_t ClipContents::cutAtFrame(std::int64_t frame) const {
    const auto after =
        std::upper_bound(cuts_.begin(), cuts_.end(), frame,
                         [](std::int64_t each, const Cut& cut) { return each < cut.start; });
    return static_cast<std::size_t>(after - cuts_.begin()) - 1;
}

void ClipContents::write(XmlWriter& writer, std::size_t cutIndex) const {
    const Cut& cut = cuts_[cutIndex];
    const CopyRule rule(fades_, cut.start == 0, cut.start + cut.duration == engine_.length);
    writer.begin(engine_.original.name());
    writeAttributes(writer, cut);
    for (const XmlNode setting : leading_)
        writer.node(setting, rule);
    writeSources(writer, cut.angle, rule);
    for (const Piece& piece : pieces_[cutIndex])
        writePiece(writer, piece);
    for (const XmlNode element : trailing_)
        writer.node(element);
    writer.end();
}

/// The imported clip's own attributes, then the cut's times.
void ClipContents::writeAttributes(XmlWriter& writer, const Cut& cut) const {
    static constexpr std::array<Name, 4> changed{"srcEnable", "offset", "start", "duration"};
    for (const XmlAttribute each : engine_.original.attributes()) {
        if (!isOneOf(changed, each.nameNumber()))
            writer.attribute(each.name(), each.value().data());
    }
    writer.attribute("srcEnable", "all");
    writeTime(writer, "offset", engine_.timelineStart + cut.start);
    writeTime(writer, "start", engine_.sourceStart + cut.start);
    writeTime(writer, "duration", cut.duration);
}

void ClipContents::writeSources(XmlWriter& writer, const std::string& angle,
                                const CopyRule& rule) const {
    if (angle == audioAngle_) return writeSource(writer, angle, SourceMode::all, rule);
    writeSource(writer, angle, SourceMode::video, rule);
    writeSource(writer, audioAngle_, SourceMode::audio, rule);
}

void ClipContents::writeSource(XmlWriter& writer, const std::string& angle, SourceMode mode,
                               CopyRule rule) const {
    static constexpr std::array<const char*, 3> modeNames{"video", "audio", "all"};
    writer.begin("mc-source");
    writer.attribute("angleID", angle.c_str());
    writer.attribute("srcEnable", modeNames[static_cast<std::size_t>(mode)]);

    std::vector<XmlNode> children;
    const auto found = pictureSettings_.find(angle);
    const bool isKnown = found != pictureSettings_.end();
    if (isKnown && mode != SourceMode::video) children = roles_;
    if (isKnown && mode != SourceMode::audio) {
        children.insert(children.end(), found->second.begin(), found->second.end());
    }
    // Identifiers of tracked shapes are unique in a document.
    for (const XmlNode child : children)
        rule.renewShapes(child, makeUUID_);
    for (const XmlNode child : children)
        writer.node(child, rule);
    writer.end();
}

void ClipContents::writePiece(XmlWriter& writer, const Piece& piece) const {
    if (!piece.span) return writer.node(piece.element);
    writer.beginLike(piece.element);
    for (const XmlAttribute each : piece.element.attributes()) {
        if (each.nameNumber() != Name("start") && each.nameNumber() != Name("duration"))
            writer.attribute(each.name(), each.value().data());
    }
    writeTime(writer, "start", engine_.sourceStart + piece.span->lowerBound);
    writeTime(writer, "duration", piece.span->length());
    for (const XmlNode child : piece.element.children())
        writer.node(child);
    writer.end();
}

void ClipContents::writeTime(XmlWriter& writer, Name name, std::int64_t frames) const {
    writer.attribute(name.text(), engine_.frameDuration.time(frames).c_str());
}

} // namespace shotweaver
