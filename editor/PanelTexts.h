#pragma once

namespace shotweaver {

/// The sentences that the panel shows as they are.
namespace panelTexts {

inline constexpr const char* productName = "Shotweaver";
inline constexpr const char* tagline = "Your first pass. Your rules.";
inline constexpr const char* helpTip = "Open the included Shotweaver manual";
inline constexpr const char* aboutTip = "About Shotweaver, donations and feedback";
inline constexpr const char* importTip = "Choose a .fcpxml file or .fcpxmld bundle";

inline constexpr const char* presetsHelp =
    "Saves camera balance, shot length ranges, longer holds and angle names on this Mac. Apply "
    "restores a saved setup; Update saves your current changes.";

inline constexpr const char* waitHelp =
    "The wait starts when a camera's shot ends. For example, a 120 sec wait means a shot ending at "
    "05:00 can return at 07:00 or later. It does not set the shot length. Zero means no waiting.";
inline constexpr const char* waitPriorityHelp =
    "Fixed sections and opening or closing shots take priority over these waits. A shot may run "
    "longer while other cameras wait.";
inline constexpr const char* frequencyNeedsCameras =
    "Frequency needs at least 3 included cameras: the main camera and 2 others. With 2 cameras, "
    "use the main camera balance.";
inline constexpr const char* frequencyHelp =
    "Higher numbers choose this camera more often between main camera shots. The percentage "
    "compares additional camera choices when footage is available, not total screen time.";

inline constexpr const char* varyHelp =
    "After a shot of an additional camera, the next such shot shows another one, where another can "
    "be chosen.";
inline constexpr const char* varyTwoHelp =
    "After a shot of an additional camera, the next such shot shows another one, where another can "
    "be chosen. Your two then take turns.";

inline constexpr const char* rangesNote =
    "Ranges take priority over the target balance. Recording gaps or the end of the project may "
    "shorten a shot; a lone available camera may need a longer hold.";
inline constexpr const char* doublingHelp =
    "One in four main camera holds is doubled on average. This can exceed the main camera maximum.";
inline constexpr const char* markersHelp =
    "A shot moves its end to the nearest marker or time that its range allows. A marker named like "
    "a camera shows that camera from there on, whatever its return time.";
inline constexpr const char* cutTimesHelp =
    "Read times from a text file, one a line, in seconds from the project's start or as timecode";
inline constexpr const char* chaptersTip =
    "Add a section from one of the clip's chapter markers to the next";
inline constexpr const char* bookendsHelp =
    "These lengths override random pacing and doubling, rounded to the nearest frame. A "
    "neighbouring shot on the same camera can make the visible hold longer.";
inline constexpr const char* sectionsHelp =
    "Hold one camera for a prayer, reading or presentation. Use the project's timecodes. Audio "
    "continues unchanged. These sections are restored with your session but are not saved in "
    "presets.";

inline constexpr const char* coverageCaption =
    "Coloured sections have footage. Empty sections are gaps. All bars use the same project "
    "timecode.";
inline constexpr const char* noProject =
    "Drop a .fcpxml file or .fcpxmld bundle here to get started.";
inline constexpr const char* noCuts = "Generate an edit to preview the cuts here.";
inline constexpr const char* firstSteps[] = {
    "In Final Cut Pro, put your multicam clip into a project of its own, uncut.",
    "Select that project in the browser and choose File > Export XML…",
    "Drop the file here, or press “Import Final Cut XML…”."};
inline constexpr const char* exampleTip = "A small recording with three cameras to try things on";
inline constexpr const char* bringBackHelp =
    "Return to the replaced session; the present one is kept in its place";
inline constexpr const char* undoHelp = "Take the last change of the settings back";
inline constexpr const char* redoHelp = "Make the change again that was taken back";
inline constexpr const char* includeAnother = "Include another camera.";
inline constexpr const char* chooseAudio = "Choose continuous audio.";
inline constexpr const char* backBrings = "Back shows the last edit again.";
inline constexpr const char* restored =
    "Restored your last session from its saved XML snapshot. Import a fresh XML if the Final Cut "
    "project has changed.";
inline constexpr const char* footerHint =
    "Drop XML anywhere to load a project. Exports a separate project.";
inline constexpr const char* generateHelp = "Make a new rough edit with these settings";
inline constexpr const char* shuffleSelectionHelp =
    "Make a new rough edit in which only the selected shots are others";
inline constexpr const char* letGoHelp = "Let shuffling change all shots again";
inline constexpr const char* backHelp = "Return to the previous rough edit and its settings";
inline constexpr const char* forwardHelp = "Restore the next rough edit and its settings";
inline constexpr const char* exportHelp =
    "Save this edit as XML beside a record of its settings, and open it in Final Cut Pro";

} // namespace panelTexts

} // namespace shotweaver
