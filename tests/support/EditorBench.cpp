#include "tests/support/EditorBench.h"

#include "planning/ProjectDefaults.h"
#include "platform/Files.h"

#include <utility>

namespace shotweaver::test {

std::optional<std::string> FakeHost::chooseItem(const OpenPanel& panel) {
    panels.push_back(panel);
    duringDialog();
    return chosen;
}

bool FakeHost::startAccess(const std::string& path) {
    events.push_back("start " + fileName(path));
    return true;
}

void FakeHost::stopAccess(const std::string& path) {
    events.push_back("stop " + fileName(path));
}

void FakeHost::openInFinalCut(const std::string& path, OpenCompletion reply) {
    events.push_back("open " + fileName(path));
    completion = std::move(reply);
    if (answersAtOnce) completion(openError);
}

void FakeHost::showInFolder(const std::string& path, OpenCompletion reply) {
    events.push_back("show " + fileName(path));
    reply(openError);
}

void FakeHost::endTurn() {
    for (auto turn = std::exchange(waiting, {}); !turn.empty(); turn.pop_front())
        turn.front()();
}

void EditorBench::restart() {
    subscription_ = {};
    editor_.reset();
    editor_ = std::make_unique<ContentView>(
        EditorEnvironment{host, calls_, random, [this] { return UUID::random(random); },
                          [this] { return now; }, folders(), "und"});
    subscription_ = editor_->observe([this] { ++changes; });
}

std::optional<std::string> EditorBench::session() const {
    if (!fileExists(systemFileCalls(), sessionPath())) return std::nullopt;
    return readFile(systemFileCalls(), sessionPath());
}

void include(ContentView& editor, const std::string& camera, bool isIncluded) {
    editor.edit([&](EditSettings& settings) {
        settings.otherCameras.erase(camera);
        if (isIncluded) settings.otherCameras.insert(camera);
    });
}

void chooseMain(ContentView& editor, const std::string& camera) {
    editor.edit(
        [&](EditSettings& settings) { chooseMainCamera(settings, camera, *editor.project()); });
}

void apply(ContentView& editor, const EditSettings& settings) {
    editor.edit([&](EditSettings& held) { held = settings; });
}

void type(ContentView& editor, std::size_t row, std::string SectionDraft::*field,
          const std::string& text) {
    editor.editSection(
        row, [&](SectionDraft& section) { section.*field = text; }, ContentView::Saving::soon);
}

ProjectBuilder concert() {
    ProjectBuilder project;
    project.projectAttributes = R"(name="Concert")";
    project.length = 1500;
    project.timelineStart = 90000;
    project.angles = {{"W", "Wide", {{0, 1500}}},
                      {"P", "Pulpit", {{0, 500}, {600, 900}}},
                      {"B", "Band", {{0, 1500}}},
                      {"R", "Recorder", {{0, 1500}}, false}};
    project.clipContent = R"(<mc-source angleID="R" srcEnable="audio"/>)";
    return project;
}

} // namespace shotweaver::test
