#include "persistence/EditPreset.h"

#include "engine/AngleNames.h"
#include "engine/FinalCutImportError.h"
#include "engine/SettingLimits.h"
#include "platform/RecordCoding.h"

#include <algorithm>
#include <array>

namespace shotweaver {

template <RecordOf<PresetReturnTime> Record, class Visit>
void visitFields(Record& row, Visit visit) {
    visit("angleName", row.angleName);
    visit("seconds", row.seconds);
}

template <RecordOf<PresetFrequency> Record, class Visit>
void visitFields(Record& row, Visit visit) {
    visit("angleName", row.angleName);
    visit("weight", row.weight);
}

template <RecordOf<PresetBookend> Record, class Visit>
void visitFields(Record& bookend, Visit visit) {
    visit("angleName", bookend.angleName);
    visit("seconds", bookend.seconds);
}

template <RecordOf<EditPreset> Record, class Visit>
void visitFields(Record& preset, Visit visit) {
    visit("id", preset.id);
    visit("name", preset.name);
    visit("mainShare", preset.mainShare);
    visit("averageShot", preset.averageShot);
    visit("doubleMain", preset.doubleMain);
    visit("varyOthers", OrDefault(preset.varyOthers));
    visit("cutAtMarkers", OrDefault(preset.cutAtMarkers));
    visit("followMarkers", OrDefault(preset.followMarkers));
    visit("mainAngleName", preset.mainAngleName);
    visit("otherAngleNames", preset.otherAngleNames);
    visit("audioAngleName", preset.audioAngleName);
    visit("returnTimes", preset.returnTimes);
    visit("frequencies", preset.frequencies);
    visit("opening", preset.opening);
    visit("closing", preset.closing);
    visit("mainMinimum", preset.mainMinimum);
    visit("mainMaximum", preset.mainMaximum);
    visit("otherMinimum", preset.otherMinimum);
    visit("otherMaximum", preset.otherMaximum);
}

namespace {

bool isNamed(std::string_view name) {
    return !normalizedName(name).empty();
}

bool isValid(const PresetReturnTime& row) {
    return isNamed(row.angleName) && limits::returnSeconds.contains(row.seconds);
}

bool isValid(const PresetFrequency& row) {
    return isNamed(row.angleName) && limits::frequency.contains(row.weight);
}

bool isValid(const PresetBookend& bookend) {
    return isNamed(bookend.angleName) && limits::shotSeconds.contains(bookend.seconds);
}

template <class Row>
bool isValid(const std::vector<Row>& rows) {
    return std::all_of(rows.begin(), rows.end(), [](const Row& row) { return isValid(row); });
}

template <class Part>
bool isAbsentOrValid(const std::optional<Part>& part) {
    return !part || isValid(*part);
}

bool isAbsentOrOrdered(const std::optional<double>& minimum, const std::optional<double>& maximum) {
    if (!minimum || !maximum) return !minimum && !maximum;
    return limits::shotSeconds.contains(*minimum) && limits::shotSeconds.contains(*maximum) &&
           *minimum <= *maximum;
}

bool isUsable(const EditPreset& preset) {
    return isNamed(preset.name) && isAbsentOrValid(preset.returnTimes) &&
           isAbsentOrValid(preset.frequencies) && isAbsentOrValid(preset.opening) &&
           isAbsentOrValid(preset.closing) &&
           isAbsentOrOrdered(preset.mainMinimum, preset.mainMaximum) &&
           isAbsentOrOrdered(preset.otherMinimum, preset.otherMaximum) &&
           limits::mainShare.contains(preset.mainShare) &&
           limits::averageShot.contains(preset.averageShot);
}

bool areDistinct(const std::vector<EditPreset>& presets) {
    std::set<std::array<std::uint8_t, 16>> ids;
    std::set<std::string> names;
    return std::all_of(presets.begin(), presets.end(), [&](const EditPreset& preset) {
        return ids.insert(preset.id.bytes).second &&
               names.insert(normalizedName(preset.name)).second;
    });
}

} // namespace

std::vector<EditPreset> loadPresets(std::string_view bytes) {
    std::vector<EditPreset> presets;
    if (bytes.empty()) return presets;
    const Json json = parseJson(bytes);
    decode(JsonReader(json), presets);
    if (!areDistinct(presets) || !std::all_of(presets.begin(), presets.end(), isUsable))
        throw FinalCutImportError::invalid(
            "The saved presets could not be read. Your existing saved data has been kept.");
    return presets;
}

std::string encodePresets(const std::vector<EditPreset>& presets) {
    std::string json;
    encode(json, presets);
    loadPresets(json);
    return json;
}

} // namespace shotweaver
