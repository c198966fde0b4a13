#include "planning/PresetSettings.h"

#include "engine/AngleNames.h"
#include "planning/EditPlan.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace shotweaver {

namespace {

/// A row (name, number) for each angle that has a number.
template <class Row>
std::vector<Row> namedRows(const std::vector<ImportedAngle>& angles, const AngleNumbers& numbers) {
    std::vector<Row> rows;
    for (const ImportedAngle& angle : angles) {
        if (const auto entry = numbers.find(angle.id); entry != numbers.end())
            rows.push_back({angle.name, entry->second});
    }
    return rows;
}

std::optional<PresetBookend> namedBookend(const Bookend& shot, const Project& project) {
    if (!shot.isEnabled || !project.isVideoAngle(shot.camera)) return std::nullopt;
    return PresetBookend{project.name(shot.camera), shot.seconds};
}

/// Ranges that an older preset lacks lie around the mean length that its share and average give.
void applyRanges(const EditPreset& preset, EditSettings& settings) {
    const double twiceAverage = 2 * preset.averageShot;
    const double main = preset.mainShare * twiceAverage / 100;
    const double other = (1 - preset.mainShare / 100) * twiceAverage;
    const auto lower = [](double mean) { return std::max(std::floor(0.75 * mean), 1.0); };
    const auto upper = [](double mean) { return std::max(std::ceil(1.25 * mean), 1.0); };
    settings.mainMinimum = preset.mainMinimum.value_or(lower(main));
    settings.mainMaximum = preset.mainMaximum.value_or(upper(main));
    settings.otherMinimum = preset.otherMinimum.value_or(lower(other));
    settings.otherMaximum = preset.otherMaximum.value_or(upper(other));
}

/// Angles and the names to find them by.
struct NamedAngles {
    const std::vector<ImportedAngle>& angles;
    AngleNames names{angles};
};

/// Gives every angle a number: that of the one row with its name, if no other angle has that name,
/// or else `fallback`.
template <class Row>
void applyRows(const std::optional<std::vector<Row>>& rows, double Row::*number, double fallback,
               const NamedAngles& video, AngleNumbers& numbers) {
    std::map<std::string, std::vector<double>> numbersByName;
    if (rows) {
        for (const Row& row : *rows)
            numbersByName[normalizedName(row.angleName)].push_back(row.*number);
    }
    for (const ImportedAngle& angle : video.angles) {
        const auto named = numbersByName.find(normalizedName(angle.name));
        const bool isMatched = named != numbersByName.end() && named->second.size() == 1 &&
                               !video.names.isRepeated(angle.name);
        numbers[angle.id] = isMatched ? named->second.front() : fallback;
    }
}

/// False, with the settings as they were, unless every name stands for a different angle.
bool applyCameras(const EditPreset& preset, const AngleNames& video,
                  const std::vector<ImportedAngle>& audioAngles, EditSettings& settings) {
    const auto main = video.idOf(preset.mainAngleName);
    const auto audio = AngleNames(audioAngles).idOf(preset.audioAngleName);
    if (!main || !audio || preset.otherAngleNames.empty()) return false;
    std::set<std::string, std::less<>> others;
    for (const std::string& name : preset.otherAngleNames) {
        const auto other = video.idOf(name);
        if (!other || other == main || !others.insert(*other).second) return false;
    }
    settings.mainCamera = *main;
    settings.otherCameras = std::move(others);
    settings.audio = *audio;
    return true;
}

/// False when the preset's camera was not found. The shot is off then, as without one.
bool applyBookend(const std::optional<PresetBookend>& preset, const AngleNames& video,
                  Bookend& shot) {
    shot.isEnabled = false;
    if (!preset) return true;
    const auto camera = video.idOf(preset->angleName);
    if (!camera) return false;
    shot = {true, *camera, preset->seconds};
    return true;
}

} // namespace

std::optional<EditPreset> presetOf(const EditSettings& settings, const Project& project, UUID id,
                                   std::string name) {
    const std::vector<std::string> others = selectedOtherCameras(settings, project);
    if (!project.isVideoAngle(settings.mainCamera) || !project.isAudioAngle(settings.audio) ||
        others.empty())
        return std::nullopt;
    EditPreset preset;
    for (const std::string& camera : others)
        preset.otherAngleNames.push_back(project.name(camera));

    preset.id = id;
    preset.name = std::move(name);
    preset.mainShare = settings.mainShare;
    preset.averageShot = settings.averageShot;
    preset.doubleMain = settings.doubleMain;
    preset.varyOthers = settings.varyOthers;
    preset.cutAtMarkers = settings.cutAtMarkers;
    preset.followMarkers = settings.followMarkers;
    preset.mainAngleName = project.name(settings.mainCamera);
    preset.audioAngleName = project.name(settings.audio);
    preset.returnTimes = namedRows<PresetReturnTime>(project.videoAngles, settings.returnTimes);
    preset.frequencies = namedRows<PresetFrequency>(project.videoAngles, settings.frequencies);
    preset.opening = namedBookend(settings.opening, project);
    preset.closing = namedBookend(settings.closing, project);
    preset.mainMinimum = settings.mainMinimum;
    preset.mainMaximum = settings.mainMaximum;
    preset.otherMinimum = settings.otherMinimum;
    preset.otherMaximum = settings.otherMaximum;
    return preset;
}

AppliedPreset appliedPreset(const EditPreset& preset, EditSettings settings,
                            const Project* project) {
    static const std::vector<ImportedAngle> none;
    const NamedAngles video{project ? project->videoAngles : none};
    settings.mainShare = preset.mainShare;
    settings.averageShot = preset.averageShot;
    applyRanges(preset, settings);
    settings.doubleMain = preset.doubleMain;
    settings.varyOthers = preset.varyOthers;
    settings.cutAtMarkers = preset.cutAtMarkers;
    settings.followMarkers = preset.followMarkers;
    applyRows(preset.frequencies, &PresetFrequency::weight, defaultFrequency, video,
              settings.frequencies);
    applyRows(preset.returnTimes, &PresetReturnTime::seconds, defaultReturnTime, video,
              settings.returnTimes);
    std::string notice =
        applyCameras(preset, video.names, project ? project->audioAngles : none, settings)
            ? fmt::format("Applied {}, including matching camera and audio angles.", preset.name)
            : fmt::format("Applied {}'s pacing and balance. Some angle names are missing or "
                          "repeated, so the current camera and audio selections were kept.",
                          preset.name);
    const bool hasOpening = applyBookend(preset.opening, video.names, settings.opening);
    const bool hasClosing = applyBookend(preset.closing, video.names, settings.closing);
    if (!hasOpening || !hasClosing)
        notice += " An opening or closing camera could not be matched, so that option was turned "
                  "off.";
    return {std::move(settings), std::move(notice)};
}

} // namespace shotweaver
