#include "engine/SettingsRecord.h"
#include "tests/support/ProjectBuilder.h"

#include <gtest/gtest.h>

namespace shotweaver {
namespace {

/// 60.06 seconds of drop-frame timecode from 00:01:00;02. "Sound" has no picture.
test::ProjectBuilder dropFrameProject() {
    test::ProjectBuilder project;
    project.frameDuration = "1001/30000s";
    project.sequenceAttributes = R"(tcFormat="DF")";
    project.length = 1800;
    project.timelineStart = 1800;
    project.projectAttributes = R"(name="Sunday: Ärger &amp; Freude")";
    project.angles = {{"w1", "Wide", {{0, 1800}}},
                      {"s1", "Sound", {{0, 1800}}, false},
                      {"p1", "Pulpit", {{0, 1800}}},
                      {"c1", "Choir", {{600, 300}}},
                      {"u1", "Unused", {{0, 1800}}}};
    project.clipContent = R"(<mc-source angleID="s1" srcEnable="audio"/>)";
    return project;
}

EditRevision revision() {
    EditRevision edit;
    for (std::size_t i = 0; i < edit.id.bytes.size(); ++i)
        edit.id.bytes[i] = static_cast<std::uint8_t>(0xA0 + i);
    edit.created = 763221900.75;
    EditSettings& settings = edit.settings;
    settings.mainShare = 62.5;
    settings.mainMaximum = 60;
    settings.otherMinimum = 2.5;
    settings.otherMaximum = 8.1;
    settings.mainCamera = "w1";
    settings.otherCameras = {"p1"};
    settings.frequencies = {{"p1", 7.5}, {"s1", 9}};
    settings.returnTimes = {{"w1", 12}, {"c1", 0.1}};
    settings.audio = "s1";
    settings.doubleMain = true;
    settings.openingEnabled = true;
    settings.openingCamera = "p1";
    settings.openingSeconds = 10.01;
    settings.closingCamera = "w1";
    settings.sections = {{{}, "Choral", "c1", "00:01:20;04", " 1:1:30:3 "},
                         {{}, "", "gone", "typed wrong", ""}};
    edit.cuts = {{{}, "p1", 0, 300},   {{}, "w1", 300, 300},  {{}, "c1", 600, 30},
                 {{}, "w1", 630, 570}, {{}, "w1", 1200, 599}, {{}, "gone", 1799, 1}};
    return edit;
}

TEST(SettingsRecord, statesProjectSettingsUsageAndCuts) {
    const test::ProjectBuilder project = dropFrameProject();
    EXPECT_EQ(settingsRecordText(inspectProject(project.xml()), project.engine(), revision()),
              R"(Shotweaver export settings
Project: Sunday: Ärger & Freude
Edit ID: A0A1A2A3-A4A5-A6A7-A8A9-AAABACADAEAF
Generated: 2025-03-09T14:05:00Z
Frame duration: 1001/30000 seconds
Project start: 00:01:00;02
Project duration: 60.06 seconds
Main camera: Wide
Target main screen time: 62.5%
Main shot range: 10.0 to 60.0 seconds
Other shot range: 2.5 to 8.1 seconds
Randomly double main holds: On (25% chance)
Continuous audio: Sound

Camera settings:
Wide: main, frequency 5.0, minimum return 12.0 seconds after previous hold ends
Pulpit: included, frequency 7.5, minimum return 0.0 seconds after previous hold ends
Choir: excluded from random cuts, frequency 5.0, minimum return 0.1 seconds after previous hold ends
Unused: excluded from random cuts, frequency 5.0, minimum return 0.0 seconds after previous hold ends

Opening: Pulpit, 10.01 seconds
Closing: Off
Fixed shots override minimum return times.

Fixed sections:
Choral: 00:01:20;04 to  1:1:30:3 , Choir
: typed wrong to , gone

Actual camera usage:
Wide: 49.02 seconds, 81.6%, 2 shots
Pulpit: 10.01 seconds, 16.7%, 1 shots
Choir: 1.00 seconds, 1.7%, 1 shots
Unused: 0.00 seconds, 0.0%, 0 shots

Cut list (start timecode | camera | duration in seconds):
00:01:00;02 | Pulpit | 10.01
00:01:10;02 | Wide | 10.01
00:01:20;02 | Choir | 1.001
00:01:21;02 | Wide | 19.019
00:01:40;02 | Wide | 19.986633333333334
00:02:00;03 | gone | 0.03336666666666667
)");
}

TEST(SettingsRecord, namesWhatIsOffNoneOrUnknown) {
    test::ProjectBuilder project;
    project.angles[1].name = "Same name as no identifier";
    EditRevision edit;
    edit.settings.mainCamera = "gone";
    edit.settings.audio = "";
    edit.settings.closingEnabled = true;
    edit.settings.closingCamera = "left";
    edit.cuts = {{{}, "A", 0, 1000}};
    EXPECT_EQ(settingsRecordText(inspectProject(project.xml()), project.engine(), edit),
              R"(Shotweaver export settings
Project: Sunday
Edit ID: 00000000-0000-0000-0000-000000000000
Generated: 2001-01-01T00:00:00Z
Frame duration: 1/25 seconds
Project start: 00:00:00:00
Project duration: 40.0 seconds
Main camera: gone
Target main screen time: 70.0%
Main shot range: 10.0 to 25.0 seconds
Other shot range: 4.0 to 8.0 seconds
Randomly double main holds: Off
)"
              "Continuous audio: \n"
              R"(
Camera settings:
A: excluded from random cuts, frequency 5.0, minimum return 0.0 seconds after previous hold ends
Same name as no identifier: excluded from random cuts, frequency 5.0, minimum return 0.0 seconds after previous hold ends

Opening: Off
Closing: left, 15.0 seconds
Fixed shots override minimum return times.

Fixed sections:
None

Actual camera usage:
A: 40.00 seconds, 100.0%, 1 shots
Same name as no identifier: 0.00 seconds, 0.0%, 0 shots

Cut list (start timecode | camera | duration in seconds):
00:00:00:00 | A | 40.0
)");
}

} // namespace
} // namespace shotweaver
