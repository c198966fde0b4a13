#include "engine/Project.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace shotweaver {

namespace {

bool hasFootage(const CoverageMap& coverage, std::string_view id) {
    const auto found = coverage.find(id);
    return found != coverage.end() && !found->second.empty();
}

std::vector<ImportedAngle> anglesWithFootage(const std::vector<ImportedAngle>& angles,
                                             const CoverageMap& coverage) {
    std::vector<ImportedAngle> found;
    std::copy_if(angles.begin(), angles.end(), std::back_inserter(found),
                 [&](const ImportedAngle& angle) { return hasFootage(coverage, angle.id); });
    return found;
}

} // namespace

Project::Project(ProjectImport intake)
    : summary(intake.summary), engine(std::move(intake)),
      videoAngles(anglesWithFootage(summary.angles, engine.coverage)),
      audioAngles(anglesWithFootage(summary.angles, engine.audioCoverage)),
      markers(readMarkers(engine, videoAngles)) {
    for (const ImportedAngle& angle : summary.angles)
        angles_.emplace(angle.id, &angle);
}

const ImportedAngle* Project::angle(std::string_view id) const {
    const auto found = angles_.find(id);
    return found == angles_.end() ? nullptr : found->second;
}

std::string Project::name(std::string_view id) const {
    const ImportedAngle* const found = angle(id);
    return found ? found->name : std::string(id);
}

std::string Project::label(std::string_view id) const {
    const ImportedAngle* const found = angle(id);
    if (!found || found->cameras.empty()) return name(id);
    return fmt::format("{} ({})", found->name, found->cameras);
}

bool Project::isVideoAngle(std::string_view id) const {
    return hasFootage(engine.coverage, id);
}

bool Project::isAudioAngle(std::string_view id) const {
    return hasFootage(engine.audioCoverage, id);
}

} // namespace shotweaver
