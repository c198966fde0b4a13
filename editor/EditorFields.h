#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/ImportedProject.h"
#include "persistence/EditHistory.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace shotweaver {

/// Everything that the panel shows and binds to. `ContentView` owns and changes it.
struct EditorFields {
    bool showingHelp = false;
    bool showingAbout = false;
    std::optional<std::string> sourceXML; // the loaded project's document, byte for byte
    EditHistory history;
    bool didRestore = false; // the restore at the start has run, or an XML came before it
    std::optional<EditSettings> restoredSettings; // written by a restore, not yet judged
    std::optional<std::string> sessionSaveError;
    AngleNumbers returnTimes; // seconds
    std::vector<SectionDraft> fixedSections;
    double aShare = EditSettings().mainShare;        // of the main camera, percent
    double averageShot = EditSettings().averageShot; // seconds, like the ranges
    double mainMinimum = EditSettings().mainMinimum;
    double mainMaximum = EditSettings().mainMaximum;
    double otherMinimum = EditSettings().otherMinimum;
    double otherMaximum = EditSettings().otherMaximum;
    std::optional<ImportedProject> imported;
    std::shared_ptr<const CutEngine> engine; // null without a project
    std::vector<Cut> cuts;                   // on show
    std::string cameraA;                     // the main camera
    std::set<std::string, std::less<>> otherCameras;
    AngleNumbers frequencies;
    std::string audioAngle;
    bool doubleMain = false;
    bool openingEnabled = false;
    bool closingEnabled = false;
    std::string openingCamera;
    std::string closingCamera;
    double openingSeconds = EditSettings().openingSeconds;
    double closingSeconds = EditSettings().closingSeconds;
    std::optional<std::string> error; // the alert's text
    std::string status;
    bool dropTargeted = false;
    std::string presetData;   // the presets as stored
    std::string chosenPreset; // identifier, empty for none
    bool showSavePreset = false;
    std::string presetName; // typed in the save sheet
    std::string presetNotice;
};

} // namespace shotweaver
