#include "planning/ProjectDefaults.h"

#include "engine/FinalCutImportError.h"

#include <algorithm>

namespace shotweaver {

namespace {

std::string defaultAudio(const Project& project) {
    const std::vector<ImportedAngle>& candidates = project.audioAngles;
    if (candidates.empty()) return "";
    const auto first = [&](auto condition) {
        return std::find_if(candidates.begin(), candidates.end(), condition);
    };
    const CutEngine& engine = project.engine;
    auto chosen = first([&](const ImportedAngle& angle) { return angle.id == engine.audioID; });
    if (chosen == candidates.end())
        chosen = first([&](const ImportedAngle& angle) {
            return engine.audioCoverage.at(angle.id) == Coverage{{0, engine.length}};
        });
    return chosen == candidates.end() ? candidates.front().id : chosen->id;
}

} // namespace

EditSettings importedSettings(const Project& project, EditSettings previous) {
    const std::vector<ImportedAngle>& cameras = project.videoAngles;
    if (cameras.size() < 2)
        throw FinalCutImportError::invalid("Include at least two video angles in your multicam.");

    EditSettings settings = std::move(previous);
    settings.returnTimes.clear();
    settings.sections.clear();
    settings.cutTimes.clear();
    settings.mainCamera = cameras.front().id;
    for (Bookend* const shot : {&settings.opening, &settings.closing}) {
        shot->isEnabled = false;
        shot->camera = settings.mainCamera;
    }
    settings.otherCameras.clear();
    settings.frequencies.clear();
    for (const ImportedAngle& camera : cameras) {
        if (camera.id != settings.mainCamera) settings.otherCameras.insert(camera.id);
        settings.frequencies[camera.id] = defaultFrequency;
    }
    settings.audio = defaultAudio(project);
    return settings;
}

void chooseMainCamera(EditSettings& settings, const std::string& camera, const Project& project) {
    if (project.isVideoAngle(settings.mainCamera))
        settings.otherCameras.insert(settings.mainCamera);
    settings.otherCameras.erase(camera);
    settings.mainCamera = camera;
}

} // namespace shotweaver
