#include "engine/export/ExportObstacles.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/import/AudioFades.h"
#include "engine/import/ClipItems.h"
#include "engine/import/XmlAccess.h"

#include <fmt/format.h>

#include <string_view>

namespace shotweaver {

namespace {

/// The fades that an export reads in a child of the multicam clip: of the sources only those of the
/// angle that is heard.
std::vector<XmlNode> fadesOf(const CutEngine& engine, XmlNode child) {
    const bool isHeard = isElement(child, "mc-source") && engine.audioSource &&
                         attribute(child, "angleID") == engine.audioID;
    std::vector<XmlNode> fades;
    if (isElement(child, "adjust-volume")) addVolumeFades(fades, child);
    if (isElement(child, "audio-role-source") || isHeard) addAudioFades(fades, child);
    return fades;
}

/// Reads the times that an export reads in a child of the multicam clip.
void readTimes(const CutEngine& engine, XmlNode child) {
    for (const XmlNode fade : fadesOf(engine, child))
        parseSeconds(attribute(fade, "duration"));
    if (isStoryElement(child)) storyOffset(child);
    if (isTimedAnnotation(child)) annotationTimes(engine, child);
}

} // namespace

std::vector<std::string> exportObstacles(const CutEngine& engine) {
    std::vector<std::string> obstacles;
    if (!attribute(engine.document->documentElement(), "version"))
        obstacles.emplace_back(missingVersion);
    for (const XmlNode child : Elements(engine.original)) {
        try {
            readTimes(engine, child);
        } catch (const FinalCutImportError& error) {
            const std::string_view label =
                attributeOr(child, "value", attributeOr(child, "name", "without a name"));
            obstacles.push_back(fmt::format("The {} “{}” on the multicam clip would stop an "
                                            "export: {}",
                                            child.name(), label, error.what()));
        }
    }
    return obstacles;
}

} // namespace shotweaver
