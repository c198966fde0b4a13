#include "engine/export/ExportFiles.h"
#include "engine/export/SettingsRecord.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace shotweaver {
namespace {

using test::FailingFileCalls;
using test::TestFolder;

/// The path of the XML, or the sentence of the failure.
std::string outcome(FileCalls& calls, const std::string& folder, const std::string& project = "P") {
    std::string xml;
    const auto write = [](ByteSink& sink) { sink.write("xml"); };
    const auto call = [&] { xml = writeExportFiles(calls, folder, write, "text", project).xml; };
    const std::string failure = test::failureOf(call);
    return failure.empty() ? xml : failure;
}

TEST(ExportFiles, areNamedAfterTheProjectWithTheFirstFreeNumber) {
    const TestFolder folder;
    const std::string family = "👨‍👩‍👧"; // one character of three people
    for (const char* taken : {"P Shotweaver 2.settings.txt", "P Shotweaver 4.fcpxml"})
        folder.write(taken, "kept");
    const std::pair<std::string, std::string> rows[] = {
        {"A/B: Live\\2", "A_B_ Live_2 Shotweaver"},
        {"", "Project Shotweaver"},
        {std::string(99, '/') + family + "y", std::string(99, '_') + family + " Shotweaver"},
        {"P", "P Shotweaver"},
        {"P", "P Shotweaver 3"}};
    for (const auto& [project, stem] : rows) {
        EXPECT_EQ(outcome(systemFileCalls(), folder.path(), project),
                  folder.path(stem + ".fcpxml"));
        EXPECT_EQ(folder.read(stem + ".fcpxml") + folder.read(stem + ".settings.txt"), "xmltext");
    }
    EXPECT_EQ(folder.read("P Shotweaver 2.settings.txt"), "kept");
    for (int number = 5; number < 10000; ++number)
        folder.write(fmt::format("P Shotweaver {}.settings.txt", number), "");
    EXPECT_EQ(outcome(systemFileCalls(), folder.path()), folder.path("P Shotweaver 10000.fcpxml"));
    EXPECT_EQ(outcome(systemFileCalls(), folder.path()),
              "Choose another folder or clear space for a new export name.");
}

TEST(ExportFiles, areNeverWrittenOverAFileThatJustAppeared) {
    const TestFolder folder;
    folder.write("P Shotweaver.settings.txt", "kept");
    FailingFileCalls noRecordYet(2, ENOENT); // the second look finds nothing
    EXPECT_EQ(outcome(noRecordYet, folder.path()),
              fmt::format("The XML was saved as P Shotweaver.fcpxml, but the settings record could "
                          "not be saved: “{}” could not be created: File exists.",
                          folder.path("P Shotweaver.settings.txt")));
    EXPECT_EQ(folder.read("P Shotweaver.settings.txt"), "kept");
}

TEST(SettingsRecord, statesProjectSettingsUsageAndCuts) {
    test::ProjectBuilder project; // 60.06 seconds of drop-frame timecode; "Sound" has no picture
    project.frameDuration = "1001/30000s";
    project.sequenceAttributes = R"(tcFormat="DF")";
    project.length = project.timelineStart = 1800;
    project.projectAttributes = R"(name="Ärger &amp; Freude")";
    project.angles = {{"w1", "Wide", {{0, 1800}}},
                      {"s1", "Sound", {{0, 1800}}, false},
                      {"p1", "Pulpit", {{0, 1800}}},
                      {"c1", "Choir", {{600, 300}}}};
    project.clipContent = R"(<mc-source angleID="s1" srcEnable="audio"/>)"
                          R"(<marker start="1s"/><marker start="2s"/><marker start="2s"/>)"
                          R"(<marker value="Wide"/><marker value="wide"/>)";
    EditRevision edit;
    edit.created = 763221900.75;
    edit.settings.mainCamera = "w1";
    edit.settings.otherCameras = {"p1"};
    edit.settings.frequencies = {{"p1", 7.5}, {"s1", 9}};
    edit.settings.returnTimes = {{"w1", 12}, {"c1", 0.1}};
    edit.settings.audio = "s1";
    edit.settings.opening.isEnabled = edit.settings.doubleMain = edit.settings.varyOthers = true;
    edit.settings.cutAtMarkers = edit.settings.followMarkers = true;
    edit.settings.cutTimes = {9, 9, 1e9};
    edit.settings.opening.camera = "p1";
    edit.settings.sections = {{{}, "Solo", "c1", " 1:1:30:3 ", ""}};
    edit.cuts = {{{}, "p1", 0, 300}, {{}, "w1", 300, 899}, {{}, "gone", 1199, 601}};
    edit.cuts[1].id.bytes[0] = 7;
    const Project loaded(project.xml());
    EXPECT_EQ(settingsRecordText(loaded, edit, {edit.cuts[1].id}), R"(Shotweaver export settings
Project: Ärger & Freude
Edit ID: 00000000-0000-0000-0000-000000000000
Generated: 2025-03-09T14:05:00Z
Frame duration: 1001/30000 seconds
Project start: 00:01:00;02
Project duration: 60.06 seconds
Main camera: Wide
Target main screen time: 70.0%
Main shot range: 10.0 to 25.0 seconds
Other shot range: 4.0 to 8.0 seconds
Randomly double main holds: On (25% chance)
Vary additional cameras: On
Cut at markers: 2
Follow named markers: 2
Cut at times: 3
Continuous audio: Sound

Camera settings:
Wide: main, frequency 5.0, minimum return 12.0 seconds after previous hold ends
Pulpit: included, frequency 7.5, minimum return 0.0 seconds after previous hold ends
Choir: excluded from random cuts, frequency 5.0, minimum return 0.1 seconds after previous hold ends

Opening: Pulpit, 15.0 seconds
Closing: Off
Fixed shots override minimum return times.

Fixed sections:
Solo:  1:1:30:3  to , Choir

Kept shots:
00:01:10;02 | Wide

Actual camera usage:
Wide: 30.00 seconds, 49.9%, 1 shots
Pulpit: 10.01 seconds, 16.7%, 1 shots
Choir: 0.00 seconds, 0.0%, 0 shots

Cut list (start timecode | camera | duration in seconds):
00:01:00;02 | Pulpit | 10.01
00:01:10;02 | Wide | 29.99663333333333
00:01:40;01 | gone | 20.053366666666665
)");

    const std::string plain = settingsRecordText(loaded, EditRevision(), {});
    for (const char* part :
         {"holds: Off\nContinuous", "Opening: Off\n", "Fixed sections:\nNone\n\n"})
        EXPECT_NE(plain.find(part), std::string::npos) << part;
}

} // namespace
} // namespace shotweaver
