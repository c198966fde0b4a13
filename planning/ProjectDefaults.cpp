#include "planning/ProjectDefaults.h"

#include "engine/FinalCutImportError.h"

#include <algorithm>
#include <iterator>

namespace shotweaver {

namespace {

std::vector<ImportedAngle> anglesWithFootage(const ImportedProject& imported,
                                             const CoverageMap& coverage) {
    std::vector<ImportedAngle> angles;
    std::copy_if(imported.angles.begin(), imported.angles.end(), std::back_inserter(angles),
                 [&](const ImportedAngle& angle) {
                     const auto found = coverage.find(angle.id);
                     return found != coverage.end() && !found->second.empty();
                 });
    return angles;
}

std::string defaultAudio(const ImportedProject& imported, const CutEngine& engine) {
    const std::vector<ImportedAngle> candidates = audioAngles(imported, engine);
    if (candidates.empty()) return "";
    const auto first = [&](auto condition) {
        return std::find_if(candidates.begin(), candidates.end(), condition);
    };
    auto chosen = first([&](const ImportedAngle& angle) { return angle.id == engine.audioID; });
    if (chosen == candidates.end())
        chosen = first([&](const ImportedAngle& angle) {
            return engine.audioCoverage.at(angle.id) == Coverage{{0, engine.length}};
        });
    return chosen == candidates.end() ? candidates.front().id : chosen->id;
}

} // namespace

std::vector<ImportedAngle> videoAngles(const ImportedProject& imported, const CutEngine& engine) {
    return anglesWithFootage(imported, engine.coverage);
}

std::vector<ImportedAngle> audioAngles(const ImportedProject& imported, const CutEngine& engine) {
    return anglesWithFootage(imported, engine.audioCoverage);
}

std::vector<std::string> videoAngleIDs(const ImportedProject& imported, const CutEngine& engine) {
    std::vector<std::string> ids;
    for (const ImportedAngle& angle : videoAngles(imported, engine))
        ids.push_back(angle.id);
    return ids;
}

EditSettings importedSettings(const ImportedProject& imported, const CutEngine& engine,
                              EditSettings previous) {
    const std::vector<std::string> cameras = videoAngleIDs(imported, engine);
    if (cameras.size() < 2)
        throw FinalCutImportError::invalid("Include at least two video angles in your multicam.");

    EditSettings settings = std::move(previous);
    settings.returnTimes.clear();
    settings.sections.clear();
    settings.openingEnabled = false;
    settings.closingEnabled = false;
    settings.openingCamera = cameras.front();
    settings.closingCamera = cameras.front();
    settings.mainCamera = cameras.front();
    settings.otherCameras = {cameras.begin() + 1, cameras.end()};
    settings.frequencies.clear();
    for (const std::string& camera : cameras)
        settings.frequencies[camera] = defaultFrequency;
    settings.audio = defaultAudio(imported, engine);
    return settings;
}

void chooseMainCamera(EditSettings& settings, const std::string& camera,
                      const std::vector<std::string>& videoAngles) {
    if (std::find(videoAngles.begin(), videoAngles.end(), settings.mainCamera) != videoAngles.end())
        settings.otherCameras.insert(settings.mainCamera);
    settings.otherCameras.erase(camera);
    settings.mainCamera = camera;
}

} // namespace shotweaver
