#include "engine/import/ProjectImport.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/import/AngleImport.h"
#include "engine/import/XmlAccess.h"
#include "platform/Text.h"
#include "platform/XmlIntake.h"

#include <iterator>
#include <set>
#include <vector>

namespace shotweaver {

namespace {

[[noreturn]] void refuse(const char* sentence) {
    throw FinalCutImportError::invalid(sentence);
}

XmlNode findProject(XmlNode root) {
    std::vector<XmlNode> projects;
    const auto addProjects = [&](XmlNode parent) {
        const Elements found(parent, "project");
        projects.insert(projects.end(), found.begin(), found.end());
    };
    const auto addEvents = [&](XmlNode parent) {
        for (const XmlNode event : Elements(parent, "event"))
            addProjects(event);
    };
    for (const XmlNode library : Elements(root, "library"))
        addEvents(library);
    addEvents(root);
    addProjects(root);
    if (projects.size() != 1)
        refuse("Export one project from Final Cut Pro, rather than a whole event or library.");
    return projects.front();
}

XmlNode findMulticamClip(XmlNode spine) {
    const Elements content(spine);
    const XmlNode clip = firstElement(spine, "mc-clip");
    if (!clip || std::distance(content.begin(), content.end()) != 1)
        refuse("For this prototype, export a timeline containing one uncut multicam clip.");
    return clip;
}

std::string audioAngleNames(XmlNode multicamClip, const std::vector<ImportedAngle>& angles) {
    std::set<std::string_view> heard;
    for (const XmlNode source : Elements(multicamClip, "mc-source")) {
        const std::string_view enabled = attributeOr(source, "srcEnable", "all");
        const auto id = attribute(source, "angleID");
        if (id && (enabled == "all" || enabled == "audio")) heard.insert(*id);
    }
    std::vector<std::string> names;
    for (const ImportedAngle& angle : angles) {
        if (heard.contains(angle.id)) names.push_back(angle.name);
    }
    return names.empty() ? "Not specified" : joined(names, ", ");
}

/// Finds the elements that the import and everything after it read.
void locate(ProjectImport& intake) {
    intake.root = intake.document->documentElement();
    if (!isElement(intake.root, "fcpxml")) refuse("This file is not a Final Cut XML export.");
    intake.project = findProject(intake.root);
    intake.sequence = firstElement(intake.project, "sequence");
    const XmlNode spine = firstElement(intake.sequence, "spine");
    if (!spine) refuse("The project has no timeline to inspect.");
    intake.multicamClip = findMulticamClip(spine);
    const XmlNode resources = firstElement(intake.root, "resources");
    if (!resources) refuse("The export has no media resources.");
    intake.resources = Resources(resources);
    const Media* const media = intake.resources.media(attribute(intake.multicamClip, "ref"));
    if (media) intake.multicam = firstElement(media->element, "multicam");
    if (!intake.multicam) refuse("The multicam definition is missing from this export.");
    intake.projectFormat = intake.resources.format(attribute(intake.sequence, "format"));
}

void requireUniqueAngles(const std::vector<ImportedAngle>& angles) {
    std::set<std::string_view> ids;
    for (const ImportedAngle& angle : angles)
        ids.insert(angle.id);
    if (angles.size() < 2 || ids.size() != angles.size())
        refuse("The multicam needs at least two uniquely identified angles.");
}

ImportedProject summarize(const ProjectImport& intake) {
    const double frameSeconds = parseSeconds(attribute(intake.projectFormat, "frameDuration"));
    ImportedProject summary;
    summary.duration = parseSeconds(attribute(intake.sequence, "duration"));
    if (!(frameSeconds > 0 && summary.duration > 0))
        refuse("The project must have a positive duration and frame rate.");

    AngleImport angles(intake.resources);
    for (const XmlNode angle : Elements(intake.multicam, "mc-angle"))
        summary.angles.push_back(angles.parseAngle(angle));
    requireUniqueAngles(summary.angles);
    summary.name = attributeOr(intake.project, "name", "Untitled project");
    summary.version = attributeOr(intake.root, "version", "Unknown");
    summary.framesPerSecond = 1 / frameSeconds;
    summary.audioAngles = audioAngleNames(intake.multicamClip, summary.angles);
    summary.missingLocations = angles.missingLocations();
    return summary;
}

} // namespace

ProjectImport readProject(ByteSource& source) {
    ProjectImport intake;
    intake.document = parseXml(source, fcpxmlVocabulary);
    locate(intake);
    intake.summary = summarize(intake);
    return intake;
}

ProjectImport readProject(std::string_view bytes) {
    MemorySource source(bytes);
    return readProject(source);
}

ImportedProject inspectProject(std::string_view bytes) {
    return readProject(bytes).summary;
}

} // namespace shotweaver
