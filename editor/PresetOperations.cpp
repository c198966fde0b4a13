#include "editor/ContentView.h"
#include "editor/ContentViewChange.h"
#include "engine/AngleNames.h"
#include "engine/FinalCutImportError.h"
#include "planning/ProjectDefaults.h"
#include "platform/Locale.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <algorithm>

namespace shotweaver {

namespace {

const EditPreset* presetWithID(const std::vector<EditPreset>& presets, std::string_view id) {
    const auto found = std::find_if(presets.begin(), presets.end(), [&](const EditPreset& preset) {
        return preset.id.text() == id;
    });
    return found == presets.end() ? nullptr : &*found;
}

bool hasNameOfAnother(const std::vector<EditPreset>& presets, std::string_view name,
                      const UUID& id) {
    const std::string wanted = normalizedName(name);
    return std::any_of(presets.begin(), presets.end(), [&](const EditPreset& preset) {
        return preset.id != id && normalizedName(preset.name) == wanted;
    });
}

void sortByName(std::vector<EditPreset>& presets, const std::string& locale) {
    const NameCollator collator(locale);
    std::stable_sort(presets.begin(), presets.end(),
                     [&](const EditPreset& first, const EditPreset& second) {
                         return collator.compare(first.name, second.name) < 0;
                     });
}

} // namespace

/// The entry may have changed since: another editor stores its presets there as well.
void ContentView::readPresetData() {
    try {
        fields_.presetData = defaults_.data(presetsEntry);
        presetFailure_.reset();
    } catch (const PlatformError& failure) {
        fields_.presetData.clear();
        presetFailure_ = failure.what();
    }
}

std::vector<EditPreset> ContentView::storedPresets() const {
    if (presetFailure_) throw PlatformError(*presetFailure_);
    return loadPresets(fields_.presetData);
}

void ContentView::storePresets(const std::vector<EditPreset>& presets) {
    std::string bytes = encodePresets(presets);
    defaults_.setData(presetsEntry, bytes);
    fields_.presetData = std::move(bytes);
}

ProjectAngles ContentView::angles() const {
    if (!fields_.engine) return {};
    return {videoAngles(*fields_.imported, *fields_.engine),
            audioAngles(*fields_.imported, *fields_.engine)};
}

std::vector<PickerOption> ContentView::presetOptions() const {
    try {
        return shotweaver::presetOptions(storedPresets());
    } catch (const std::exception&) {
        return shotweaver::presetOptions({});
    }
}

std::optional<EditPreset> ContentView::selectedPreset() const {
    try {
        const std::vector<EditPreset> presets = storedPresets();
        const EditPreset* const chosen = presetWithID(presets, fields_.chosenPreset);
        return chosen ? std::optional(*chosen) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

void ContentView::choosePreset(const std::string& id) {
    change([&](EditorFields& fields) { fields.chosenPreset = id; });
}

void ContentView::openSavePreset() {
    change([](EditorFields& fields) {
        fields.presetName.clear();
        fields.showSavePreset = true;
    });
}

void ContentView::cancelSavePreset() {
    change([](EditorFields& fields) { fields.showSavePreset = false; });
}

void ContentView::setPresetName(const std::string& name) {
    change([&](EditorFields& fields) { fields.presetName = name; });
}

void ContentView::savePreset() {
    storePreset(PresetTarget::fresh);
}

void ContentView::updatePreset() {
    storePreset(PresetTarget::chosen);
}

void ContentView::storePreset(PresetTarget target) {
    change([&](EditorFields& fields) {
        try {
            readPresetData();
            std::vector<EditPreset> presets = storedPresets();
            const EditPreset* const chosen = target == PresetTarget::chosen
                                                 ? presetWithID(presets, fields.chosenPreset)
                                                 : nullptr;
            if (target == PresetTarget::chosen && !chosen) return;
            const std::string name(trimmed(chosen ? chosen->name : fields.presetName));
            if (name.empty()) return;
            const UUID id = chosen ? chosen->id : environment_.makeUUID();
            if (hasNameOfAnother(presets, name, id))
                throw FinalCutImportError::invalid(
                    "A preset with that name already exists. Choose it and use Update, or save "
                    "with another name.");
            auto preset = presetOf(currentSettings(), angles(), id, name);
            if (!preset) return;

            std::erase_if(presets, [&](const EditPreset& each) { return each.id == id; });
            presets.push_back(std::move(*preset));
            sortByName(presets, environment_.locale);
            storePresets(presets);
            fields.chosenPreset = id.text();
            fields.presetNotice = "Saved " + name + ".";
            fields.showSavePreset = false;
        } catch (const std::exception& failure) {
            fields.showSavePreset = false;
            report(failure);
        }
    });
}

void ContentView::applyPreset() {
    change([&](EditorFields& fields) {
        readPresetData();
        const auto preset = selectedPreset();
        if (!preset) return;
        AppliedPreset applied = appliedPreset(*preset, currentSettings(), angles());
        applySettings(applied.settings);
        fields.presetNotice = std::move(applied.notice);
        fields.cuts.clear();
        fields.status.clear();
        saveIsWanted_ = true;
    });
}

void ContentView::deletePreset() {
    if (fields_.chosenPreset.empty()) return;
    change([&](EditorFields& fields) {
        try {
            readPresetData();
            std::vector<EditPreset> presets = storedPresets();
            const EditPreset* const chosen = presetWithID(presets, fields.chosenPreset);
            if (!chosen) return;
            const std::string name = chosen->name;
            std::erase_if(presets, [id = chosen->id](const auto& each) { return each.id == id; });
            storePresets(presets);
            fields.chosenPreset.clear();
            fields.presetNotice =
                "Deleted " + name + ". Your current editing settings are unchanged.";
        } catch (const std::exception& failure) {
            report(failure);
        }
    });
}

} // namespace shotweaver
