#include "planning/PresetSettings.h"

#include "engine/AngleNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace shotweaver {

namespace {

const ImportedAngle* angleWithID(const std::vector<ImportedAngle>& angles, std::string_view id) {
    const auto found = std::find_if(angles.begin(), angles.end(),
                                    [&](const ImportedAngle& angle) { return angle.id == id; });
    return found == angles.end() ? nullptr : &*found;
}

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

std::optional<PresetBookend> namedBookend(const std::vector<ImportedAngle>& angles, bool isEnabled,
                                          std::string_view camera, double seconds) {
    const ImportedAngle* const angle = isEnabled ? angleWithID(angles, camera) : nullptr;
    if (!angle) return std::nullopt;
    return PresetBookend{angle->name, seconds};
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
    const auto main = video.find(preset.mainAngleName);
    const auto audio = AngleNames(audioAngles).find(preset.audioAngleName);
    if (!main || !audio || preset.otherAngleNames.empty()) return false;
    std::set<std::string, std::less<>> others;
    for (const std::string& name : preset.otherAngleNames) {
        const auto other = video.find(name);
        if (!other || other == main || !others.insert(*other).second) return false;
    }
    settings.mainCamera = *main;
    settings.otherCameras = std::move(others);
    settings.audio = *audio;
    return true;
}

/// The fields of an opening or closing shot in the settings.
struct BookendFields {
    bool& isEnabled;
    std::string& camera;
    double& seconds;
};

/// False when the shot's camera was not found. The shot is off then, as without one.
bool applyBookend(const std::optional<PresetBookend>& shot, const AngleNames& video,
                  BookendFields fields) {
    fields.isEnabled = false;
    if (!shot) return true;
    const auto camera = video.find(shot->angleName);
    if (!camera) return false;
    fields.camera = *camera;
    fields.seconds = shot->seconds;
    fields.isEnabled = true;
    return true;
}

} // namespace

std::optional<EditPreset> presetOf(const EditSettings& settings, const ProjectAngles& angles,
                                   UUID id, std::string name) {
    const ImportedAngle* const main = angleWithID(angles.video, settings.mainCamera);
    const ImportedAngle* const audio = angleWithID(angles.audio, settings.audio);
    EditPreset preset;
    for (const ImportedAngle& angle : angles.video) {
        if (angle.id != settings.mainCamera && settings.otherCameras.contains(angle.id))
            preset.otherAngleNames.push_back(angle.name);
    }
    if (!main || !audio || preset.otherAngleNames.empty()) return std::nullopt;

    preset.id = id;
    preset.name = std::move(name);
    preset.mainShare = settings.mainShare;
    preset.averageShot = settings.averageShot;
    preset.doubleMain = settings.doubleMain;
    preset.mainAngleName = main->name;
    preset.audioAngleName = audio->name;
    preset.returnTimes = namedRows<PresetReturnTime>(angles.video, settings.returnTimes);
    preset.frequencies = namedRows<PresetFrequency>(angles.video, settings.frequencies);
    preset.opening = namedBookend(angles.video, settings.openingEnabled, settings.openingCamera,
                                  settings.openingSeconds);
    preset.closing = namedBookend(angles.video, settings.closingEnabled, settings.closingCamera,
                                  settings.closingSeconds);
    preset.mainMinimum = settings.mainMinimum;
    preset.mainMaximum = settings.mainMaximum;
    preset.otherMinimum = settings.otherMinimum;
    preset.otherMaximum = settings.otherMaximum;
    return preset;
}

AppliedPreset appliedPreset(const EditPreset& preset, EditSettings settings,
                            const ProjectAngles& angles) {
    const NamedAngles video{angles.video};
    settings.mainShare = preset.mainShare;
    settings.averageShot = preset.averageShot;
    applyRanges(preset, settings);
    settings.doubleMain = preset.doubleMain;
    applyRows(preset.frequencies, &PresetFrequency::weight, defaultFrequency, video,
              settings.frequencies);
    applyRows(preset.returnTimes, &PresetReturnTime::seconds, defaultReturnTime, video,
              settings.returnTimes);
    std::string notice =
        applyCameras(preset, video.names, angles.audio, settings)
            ? fmt::format("Applied {}, including matching camera and audio angles.", preset.name)
            : fmt::format("Applied {}'s pacing and balance. Some angle names are missing or "
                          "repeated, so the current camera and audio selections were kept.",
                          preset.name);
    const bool hasOpening =
        applyBookend(preset.opening, video.names,
                     {settings.openingEnabled, settings.openingCamera, settings.openingSeconds});
    const bool hasClosing =
        applyBookend(preset.closing, video.names,
                     {settings.closingEnabled, settings.closingCamera, settings.closingSeconds});
    if (!hasOpening || !hasClosing)
        notice += " An opening or closing camera could not be matched, so that option was turned "
                  "off.";
    return {std::move(settings), std::move(notice)};
}

} // namespace shotweaver
