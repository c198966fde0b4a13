#include "engine/export/ExportDocument.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/export/AudioFades.h"
#include "engine/export/ClipContents.h"
#include "engine/export/ExportObstacles.h"
#include "engine/generation/EditChecks.h"
#include "engine/import/XmlAccess.h"
#include "platform/NumberText.h"
#include "platform/XmlWriter.h"

#include <fmt/format.h>

#include <cmath>

namespace shotweaver {

namespace {

[[noreturn]] void refuse(const std::string& sentence) {
    throw FinalCutImportError::invalid(sentence);
}

// Bytes by which an export is expected to outgrow the import, which is nearly all of it.
constexpr std::size_t spareSize = std::size_t{1} << 20U;

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
void checkFade(const CutEngine& engine, pugi::xml_node fade, const std::vector<Cut>& cuts) {
    const double fadeSeconds = parseSeconds(attribute(fade, "duration"));
    const Cut& cut = isElement(fade, "fadeIn") ? cuts.front() : cuts.back();
    if (fadeSeconds > engine.seconds(cut.duration) + fadeTolerance)
        refuse(fmt::format("An audio fade extends across a camera cut. Set the opening or closing "
                           "shot to at least {} seconds to keep the fade intact.",
                           fixedDecimal(std::ceil(fadeSeconds), 0)));
}

/// Writes the exported project: everything as imported but the spine, whose one clip becomes a copy
/// for each cut. Copies are made one at a time and written at once.
class ExportWriter {
  public:
    ExportWriter(const CutEngine& engine, ClipContents& contents)
        : engine_(engine), contents_(contents),
          writer_(holdsText, engine.documentSize + spareSize) {}

    std::string write(std::size_t cutCount);

  private:
    void writeProject(std::size_t cutCount);
    void writeSequence(std::size_t cutCount);
    void writeSpine(pugi::xml_node spine, std::size_t cutCount);
    void writeAttributes(pugi::xml_node element);

    const CutEngine& engine_;
    ClipContents& contents_;
    XmlWriter writer_;
};

std::string ExportWriter::write(std::size_t cutCount) {
    const pugi::xml_node root = engine_.document->document_element();
    if (!root.attribute("version")) refuse(missingVersion);
    writer_.begin("fcpxml");
    writer_.attribute("version", root.attribute("version").value());
    writer_.node(firstElement(root, "resources"));
    writeProject(cutCount);
    writer_.end();
    return writer_.take();
}

void ExportWriter::writeProject(std::size_t cutCount) {
    const auto name = attribute(engine_.project, "name");
    writer_.beginLike(engine_.project);
    for (const pugi::xml_attribute each : engine_.project.attributes()) {
        const std::string_view key = each.name();
        // The new project is not the imported one, so it takes neither its identity nor its date.
        if (key != "uid" && key != "modDate" && key != "name") writer_.attribute(key, each.value());
    }
    if (name) writer_.attribute("name", (std::string(*name) + " Shotweaver").c_str());
    for (const pugi::xml_node child : engine_.project.children()) {
        if (child == engine_.sequence)
            writeSequence(cutCount);
        else
            writer_.node(child);
    }
    writer_.end();
}

void ExportWriter::writeSequence(std::size_t cutCount) {
    const pugi::xml_node spine = firstElement(engine_.sequence, "spine");
    writer_.beginLike(engine_.sequence);
    writeAttributes(engine_.sequence);
    for (const pugi::xml_node child : engine_.sequence.children()) {
        if (child == spine)
            writeSpine(spine, cutCount);
        else
            writer_.node(child);
    }
    writer_.end();
}

void ExportWriter::writeSpine(pugi::xml_node spine, std::size_t cutCount) {
    writer_.begin(spine.name());
    writeAttributes(spine);
    for (std::size_t cut = 0; cut < cutCount; ++cut)
        writer_.node(contents_.clip(cut));
    writer_.end();
}

void ExportWriter::writeAttributes(pugi::xml_node element) {
    for (const pugi::xml_attribute each : element.attributes())
        writer_.attribute(each.name(), each.value());
}

} // namespace

std::string exportDocument(const CutEngine& engine, const std::vector<Cut>& cuts,
                           const std::optional<std::string>& audioAngle,
                           const UUIDMaker& makeUUID) {
    const std::string& audio = audioAngle ? *audioAngle : engine.audioID;
    checkAudioCoverage(engine, audio);
    requireWholeEdit(engine, cuts);
    for (const pugi::xml_node fade : audioFades(engine.original, audio))
        checkFade(engine, fade, cuts);
    ClipContents contents(engine, cuts, audio, makeUUID);
    return ExportWriter(engine, contents).write(cuts.size());
}

} // namespace shotweaver
