#include "editor/ProjectDefaults.h"

#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

/// Settings that an import leaves of `previous`.
EditSettings imported(const ProjectBuilder& project, EditSettings previous = {}) {
    return importedSettings(inspectProject(project.xml()), project.engine(), std::move(previous));
}

AngleSpec angle(const std::string& id, std::vector<ClipSpec> clips, bool hasVideo, bool hasAudio) {
    return {id, fmt::format("Camera {}", id), std::move(clips), hasVideo, hasAudio};
}

constexpr bool yes = true;
constexpr bool no = false;

TEST(ProjectDefaults, camerasAndFrequenciesComeFromTheProject) {
    ProjectBuilder project;
    project.angles = {angle("Z1", {{0, 1000}}, no, yes), angle("C1", {{400, 10}}, yes, no),
                      angle("empty", {}, yes, yes), angle("B1", {{0, 1000}}, yes, yes),
                      angle("A1", {{0, 1000}}, yes, yes)};
    EditSettings previous;
    previous.mainShare = 30;
    previous.averageShot = 5;
    previous.mainMinimum = 2;
    previous.mainMaximum = 3;
    previous.otherMinimum = 6;
    previous.otherMaximum = 7;
    previous.doubleMain = true;
    previous.openingSeconds = 20;
    previous.closingSeconds = 21;
    EditSettings expected = previous;

    previous.mainCamera = "B1";
    previous.otherCameras = {"gone"};
    previous.frequencies = {{"gone", 9}, {"B1", 9}};
    previous.returnTimes = {{"B1", 60}};
    previous.audio = "B1";
    previous.openingEnabled = previous.closingEnabled = true;
    previous.openingCamera = previous.closingCamera = "A1";
    previous.sections = {{UUID(), "Prayer", "B1", "00:00:01:00", "00:00:02:00"}};

    expected.mainCamera = expected.openingCamera = expected.closingCamera = "C1";
    expected.otherCameras = {"A1", "B1"};
    expected.frequencies = {{"A1", 5}, {"B1", 5}, {"C1", 5}};
    expected.audio = "Z1";
    project.clipContent = "";
    EXPECT_EQ(imported(project, previous), expected);

    const ImportedProject summary = inspectProject(project.xml());
    const CutEngine engine = project.engine();
    EXPECT_EQ(videoAngleIDs(summary, engine), (std::vector<std::string>{"C1", "B1", "A1"}));
    std::vector<std::string> heard;
    for (const ImportedAngle& each : audioAngles(summary, engine))
        heard.push_back(each.id);
    EXPECT_EQ(heard, (std::vector<std::string>{"Z1", "B1", "A1"}));
}

TEST(ProjectDefaults, audioFollowsTheClipThenTheFirstWholeThenTheFirst) {
    const AngleSpec silent = angle("silent", {{0, 1000}}, yes, no);
    const AngleSpec gapped = angle("gapped", {{0, 400}, {500, 500}}, yes, yes);
    const AngleSpec late = angle("late", {{1, 999}}, yes, yes);
    const AngleSpec whole = angle("whole", {{0, 300}, {300, 700}}, yes, yes);
    const AngleSpec whole2 = angle("whole2", {{0, 1000}}, yes, yes);
    const struct {
        const char* label;
        std::vector<AngleSpec> angles;
        const char* content;
        const char* audio;
    } rows[] = {
        {"the clip's one source, gaps or not",
         {silent, whole, gapped},
         R"(<mc-source angleID="silent" srcEnable="video"/>)"
         R"(<mc-source angleID="gapped" srcEnable="audio"/>)",
         "gapped"},
        {"a source without sound is passed over",
         {silent, gapped, whole, whole2},
         R"(<mc-source angleID="silent"/>)",
         "whole"},
        {"so is a source that is no angle",
         {silent, gapped, whole2, whole},
         R"(<mc-source angleID="none"/>)",
         "whole2"},
        {"two sources are none",
         {gapped, whole2, whole},
         R"(<mc-source angleID="gapped"/><mc-source angleID="whole"/>)",
         "whole2"},
        {"none is whole", {silent, late, gapped}, "", "late"},
        {"no sound at all", {silent, angle("B1", {{0, 1000}}, yes, no)}, "", ""},
    };
    for (const auto& row : rows) {
        ProjectBuilder project;
        project.angles = row.angles;
        project.clipContent = row.content;
        EXPECT_EQ(imported(project).audio, row.audio) << row.label;
    }
}

TEST(ProjectDefaults, twoAnglesNeedPicture) {
    ProjectBuilder project;
    project.angles = {angle("A1", {{0, 1000}}, yes, yes), angle("B1", {{0, 1000}}, no, yes),
                      angle("C1", {}, yes, yes), angle("D1", {{2000, 500}}, yes, yes)};
    EXPECT_EQ(failureOf([&] { imported(project); }),
              "Include at least two video angles in your multicam.");
}

TEST(ProjectDefaults, theFormerMainCameraBecomesAnAdditionalOne) {
    const std::vector<std::string> video{"A1", "B1", "C1"};
    const struct {
        const char* label;
        const char* main;
        std::set<std::string, std::less<>> others;
        const char* chosen;
        std::set<std::string, std::less<>> othersAfter;
    } rows[] = {
        {"an included camera", "A1", {"B1", "C1"}, "B1", {"A1", "C1"}},
        {"a camera that is not included", "A1", {"C1"}, "B1", {"A1", "C1"}},
        {"the main camera again", "A1", {"C1"}, "A1", {"C1"}},
        {"after one without picture", "sound", {"C1"}, "B1", {"C1"}},
        {"after none", "", {"B1", "C1"}, "B1", {"C1"}},
    };
    for (const auto& row : rows) {
        EditSettings settings;
        settings.mainCamera = row.main;
        settings.otherCameras = row.others;
        settings.openingCamera = "C1";
        EditSettings expected = settings;
        expected.mainCamera = row.chosen;
        expected.otherCameras = row.othersAfter;
        chooseMainCamera(settings, row.chosen, video);
        EXPECT_EQ(settings, expected) << row.label;
    }
}

} // namespace
} // namespace shotweaver::test
