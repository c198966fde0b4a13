#include "editor/ContentView.h"
#include "engine/AngleNames.h"
#include "engine/FinalCutImportError.h"
#include "planning/PresetSettings.h"
#include "platform/Locale.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace shotweaver {

namespace {

const EditPreset* presetWithID(const std::vector<EditPreset>& presets, std::string_view id) {
    const auto found = std::find_if(presets.begin(), presets.end(), [&](const EditPreset& preset) {
        return preset.id.text() == id;
    });
    return found == presets.end() ? nullptr : &*found;
}

/// Refuses the name of another preset.
void checkNameIsFree(const std::vector<EditPreset>& presets, std::string_view name,
                     const UUID& id) {
    const std::string wanted = normalizedName(name);
    if (std::any_of(presets.begin(), presets.end(), [&](const EditPreset& preset) {
            return preset.id != id && normalizedName(preset.name) == wanted;
        }))
        throw FinalCutImportError::invalid(
            "A preset with that name already exists. Choose it and use Update, or save with "
            "another name.");
}

/// The settings as a preset of a list; nothing without a name, and when their cameras do not
/// resolve. Throws `FinalCutImportError` for another preset's name.
std::optional<EditPreset> newPreset(const std::vector<EditPreset>& presets,
                                    const PresetIdentity& identity, const EditSettings& settings,
                                    const Project* project) {
    const std::string name(trimmed(identity.name));
    if (name.empty()) return std::nullopt;
    checkNameIsFree(presets, name, identity.id);
    return project ? presetOf(settings, *project, identity.id, name) : std::nullopt;
}

/// A list with a preset in place of the one with its identifier, in the order of the names.
std::vector<EditPreset> withPreset(std::vector<EditPreset> presets, EditPreset preset,
                                   const std::string& locale) {
    std::erase_if(presets, [&](const EditPreset& each) { return each.id == preset.id; });
    presets.push_back(std::move(preset));
    const NameCollator collator(locale);
    std::stable_sort(presets.begin(), presets.end(),
                     [&](const EditPreset& first, const EditPreset& second) {
                         return collator.compare(first.name, second.name) < 0;
                     });
    return presets;
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
    change([&](EditorFields& fields) {
        fields.chosenPreset = id;
        restoreIsNews_ = false;
    });
}

void ContentView::openSavePreset() {
    change([this](EditorFields& fields) {
        // A name that was refused waits to be changed.
        if (!std::exchange(nameWasRefused_, false)) fields.presetName.clear();
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
    storePreset([&](const std::vector<EditPreset>&) {
        return PresetIdentity{environment_.makeUUID(), fields_.presetName};
    });
}

void ContentView::updatePreset() {
    storePreset([&](const std::vector<EditPreset>& presets) -> std::optional<PresetIdentity> {
        const EditPreset* const chosen = presetWithID(presets, fields_.chosenPreset);
        if (!chosen) return std::nullopt;
        return PresetIdentity{chosen->id, chosen->name};
    });
}

void ContentView::storePreset(const IdentityChoice& choose) {
    change([&](EditorFields& fields) {
        // A failure closes the sheet.
        const bool wasNaming = std::exchange(fields.showSavePreset, false);
        nameWasRefused_ = wasNaming;
        readPresetData();
        std::vector<EditPreset> presets = storedPresets();
        const auto identity = choose(presets);
        const auto preset =
            identity ? newPreset(presets, *identity, fields.settings, project()) : std::nullopt;
        nameWasRefused_ = false;
        if (!preset) {
            fields.showSavePreset = wasNaming;
            return;
        }
        const EditPreset* const former = presetWithID(presets, preset->id.text());
        std::optional<UndoStep> update;
        if (former)
            update = UndoStep{UndoStep::Preset{*former, fields.chosenPreset},
                              UndoStep::Preset{*preset, fields.chosenPreset},
                              {}};
        storePresets(withPreset(std::move(presets), *preset, environment_.locale));
        if (update) undoSteps_.add(std::move(*update));
        fields.chosenPreset = preset->id.text();
        fields.presetNotice = "Saved " + preset->name + ".";
    });
}

void ContentView::replacePreset(const UUID& id, const std::optional<EditPreset>& preset) {
    std::vector<EditPreset> presets = storedPresets();
    std::erase_if(presets, [&](const EditPreset& each) { return each.id == id; });
    if (preset) {
        checkNameIsFree(presets, preset->name, id);
        presets = withPreset(std::move(presets), *preset, environment_.locale);
    }
    storePresets(presets);
}

void ContentView::applyPreset() {
    change([&](EditorFields& fields) {
        readPresetData();
        const auto preset = selectedPreset();
        if (!preset) return;
        AppliedPreset applied = appliedPreset(*preset, fields.settings, project());
        fields.settings = std::move(applied.settings);
        fields.presetNotice = std::move(applied.notice);
        fields.showsCurrentEdit = false;
        fields.status.clear();
        saveIsWanted_ = true;
    });
}

void ContentView::deletePreset() {
    if (fields_.chosenPreset.empty()) return;
    change([&](EditorFields& fields) {
        readPresetData();
        std::vector<EditPreset> presets = storedPresets();
        const EditPreset* const chosen = presetWithID(presets, fields.chosenPreset);
        if (!chosen) return;
        const EditPreset deleted = *chosen;
        std::erase_if(presets, [&](const EditPreset& each) { return each.id == deleted.id; });
        storePresets(presets);
        undoSteps_.add({UndoStep::Preset{deleted, fields.chosenPreset}, UndoStep::Preset{}, {}});
        fields.chosenPreset.clear();
        fields.presetNotice =
            "Deleted " + deleted.name + ". Your current editing settings are unchanged.";
    });
}

} // namespace shotweaver
