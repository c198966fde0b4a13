#include "engine/export/ExportDocument.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/generation/EditChecks.h"
#include "engine/import/AudioFades.h"
#include "engine/import/Preflight.h"
#include "engine/import/XmlAccess.h"
#include "platform/NumberText.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

namespace shotweaver {

namespace {

[[noreturn]] void refuse(const std::string& sentence) {
    throw FinalCutImportError::invalid(sentence);
}

// A fade may exceed its shot by this much, in seconds, for the sake of rounding.
constexpr double fadeTolerance = 0.00000001;

void requireWholeEdit(const CutEngine& engine, const std::vector<Cut>& cuts) {
    if (cuts.empty()) refuse("Generate a rough edit first.");
    const CutFault fault = checkCuts(engine, cuts);
    if (fault == CutFault::invalid)
        refuse("The cut list contains invalid timing or unavailable footage.");
    if (fault == CutFault::incomplete) refuse("The cut list does not cover the entire project.");
}

/// A fade-in must end within the first cut, a fade-out begin within the last: it would be cut
/// apart.
void checkFade(const CutEngine& engine, XmlNode fade, const std::vector<Cut>& cuts) {
    const double fadeSeconds = parseSeconds(attribute(fade, "duration"));
    const Cut& cut = isElement(fade, "fadeIn") ? cuts.front() : cuts.back();
    if (fadeSeconds > engine.seconds(cut.duration) + fadeTolerance)
        refuse(fmt::format("An audio fade extends across a camera cut. Set the opening or closing "
                           "shot to at least {} seconds to keep the fade intact.",
                           fixedDecimal(std::ceil(fadeSeconds), 0)));
}

/// What an edit is heard by, once the edit has passed the checks.
const std::string& checkedAudio(const CutEngine& engine, const std::vector<Cut>& cuts,
                                const std::optional<std::string>& audioAngle) {
    const std::string& audio = audioAngle ? *audioAngle : engine.audioID;
    checkAudioCoverage(engine, audio);
    requireWholeEdit(engine, cuts);
    for (const XmlNode fade : audioFades(engine.original, audio))
        checkFade(engine, fade, cuts);
    return audio;
}

} // namespace

ExportDocument::ExportDocument(const CutEngine& engine, const std::vector<Cut>& cuts,
                               const std::optional<std::string>& audioAngle, UUIDMaker makeUUID)
    : engine_(engine), cuts_(cuts),
      contents_(engine, cuts, checkedAudio(engine, cuts, audioAngle), std::move(makeUUID)) {
    if (!attribute(engine.document->documentElement(), "version")) refuse(missingVersion);
}

/// Everything is written as imported but the spine, whose one clip becomes a copy for each cut.
void ExportDocument::write(ByteSink& sink) const {
    const XmlNode root = engine_.document->documentElement();
    XmlWriter writer(sink);
    writer.begin("fcpxml");
    writer.attribute("version", attributeOr(root, "version", "").data());
    writer.node(firstElement(root, "resources"));
    writeProject(writer);
    writer.end();
    writer.finish();
}

void ExportDocument::writeProject(XmlWriter& writer) const {
    // The new project is not the imported one, so it takes neither its identity nor its date.
    static constexpr std::array<Name, 3> own{"uid", "modDate", "name"};
    writer.beginLike(engine_.project);
    for (const XmlAttribute each : engine_.project.attributes()) {
        if (!isOneOf(own, each.nameNumber())) writer.attribute(each.name(), each.value().data());
    }
    if (const auto name = attribute(engine_.project, "name"))
        writer.attribute("name", (std::string(*name) + " Shotweaver").c_str());
    for (const XmlNode child : engine_.project.children()) {
        if (child == engine_.sequence)
            writeSequence(writer);
        else
            writer.node(child);
    }
    writer.end();
}

void ExportDocument::writeSequence(XmlWriter& writer) const {
    const XmlNode spine = firstElement(engine_.sequence, "spine");
    writer.beginLike(engine_.sequence);
    XmlCopyRule().writeAttributes(writer, engine_.sequence);
    for (const XmlNode child : engine_.sequence.children()) {
        if (child == spine)
            writeSpine(writer, spine);
        else
            writer.node(child);
    }
    writer.end();
}

void ExportDocument::writeSpine(XmlWriter& writer, XmlNode spine) const {
    writer.begin(spine.name());
    XmlCopyRule().writeAttributes(writer, spine);
    for (std::size_t cut = 0; cut < cuts_.size(); ++cut)
        contents_.write(writer, cut);
    writer.end();
}

std::string exportDocument(const CutEngine& engine, const std::vector<Cut>& cuts,
                           const std::optional<std::string>& audioAngle,
                           const UUIDMaker& makeUUID) {
    StringSink sink;
    ExportDocument(engine, cuts, audioAngle, makeUUID).write(sink);
    return sink.take();
}

} // namespace shotweaver
