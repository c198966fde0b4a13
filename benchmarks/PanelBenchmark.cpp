// Measures the panel without a display: its start with a restored session beside the start of an
// empty window, and what a user's actions cost until they are painted, without their save.

#include "benchmarks/BenchmarkDocuments.h"
#include "benchmarks/Measuring.h"
#include "benchmarks/SilentHost.h"
#include "editor/views/preview/Timeline.h"
#include "host/views/ExtensionRootView.h"
#include "persistence/SavedEditSession.h"
#include "planning/EditPlan.h"
#include "planning/ProjectDefaults.h"
#include "platform/Base64.h"
#include "platform/Files.h"
#include "widgets/Style.h"

#include <fmt/format.h>

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QWheelEvent>

#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>

namespace shotweaver::benchmarks {
namespace {

constexpr QSize windowSize(960, 860);
constexpr int rounds = 9;

struct Bench {
    explicit Bench(const std::string& folder)
        : editor({host,
                  systemFileCalls(),
                  random,
                  secureUUIDs(),
                  [] { return 0.0; },
                  {folder + "/data", folder + "/config"},
                  "und"}) {}

    SilentHost host;
    SeededRandom random{7};
    ContentView editor;
};

double medianOf(const std::function<double()>& measure) {
    std::vector<double> values;
    for (int round = 0; round < rounds; ++round)
        values.push_back(measure());
    return median(values);
}

/// Lets the window paint itself, as it does once it is shown.
void firstPaint() {
    QApplication::processEvents();
}

/// Has all of the window painted, whatever it thinks has changed.
void paint(QWidget& window) {
    QApplication::processEvents();
    QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
    window.render(&image);
}

// The two programs whose starts are compared.

void startEmptyWindow() {
    QWidget window;
    window.resize(windowSize);
    window.show();
    firstPaint();
}

void startPanel(const std::string& folder) {
    Bench bench(folder);
    ExtensionRootView root(bench.editor);
    root.resize(windowSize);
    bench.editor.appear();
    root.show();
    firstPaint();
}

/// A panel with a project of 100 MB that has been edited and looked at.
void usePanel(const std::string& folder) {
    Bench bench(folder);
    ExtensionRootView root(bench.editor);
    root.resize(windowSize);
    root.show();
    bench.editor.importProject(readFile(systemFileCalls(), folder + "/Large.fcpxml"));
    bench.editor.generateEdit();
    bench.editor.generateEdit();
    paint(root);
    if (bench.editor.fields().history.items.size() != 2)
        throw std::runtime_error("the large project was not edited");
    printOwnCosts("the panel with a project of 100 MB");
}

/// A session of 5 MB: a document of 1 MB and 50 edits.
void writeSession(const std::string& folder) {
    constexpr std::size_t clipsPerAngle = 400;
    constexpr std::size_t clipFrames = 800;
    constexpr int revisions = 50;
    const std::string xml = largeDocument(clipsPerAngle, clipFrames);
    const Project project(xml);
    SeededRandom random(7);
    const EditSettings settings = importedSettings(project, {});
    EditHistory history;
    for (int i = 0; i < revisions; ++i)
        history.append({UUID::random(random), 0, settings,
                        generateCutList(settings, project, {}, random, secureUUIDs())});
    std::filesystem::create_directories(folder + "/data");
    const std::string path = folder + "/data/session-v1.json";
    replaceFile(systemFileCalls(), path, [&](ByteSink& sink) {
        SessionEncoder().write(sink, base64(xml), settings, history, {});
    });
    fmt::print("A session of {} edits, {:.1f} MB\n\n", revisions,
               static_cast<double>(std::filesystem::file_size(path)) / 1e6);
}

void compareStarts(const std::string& folder) {
    writeSession(folder);
    std::vector<double> empty;
    std::vector<double> panel;
    std::vector<double> restore;
    for (int round = 0; round < rounds; ++round) {
        empty.push_back(runProgram({ownProgram(), "--empty"}).seconds);
        restore.push_back(secondsOf([&] { Bench(folder).editor.restoreSession(); }));
        panel.push_back(runProgram({ownProgram(), "--panel", folder}).seconds);
    }
    print("start of an empty window", median(empty));
    print("restore", median(restore));
    print("start of the panel with that session", median(panel));
    printRatio("ratio to the empty window and the restore",
               median(panel) / (median(empty) + median(restore)));
}

void measureMemory(const std::string& folder) {
    std::filesystem::create_directories(folder);
    writeNewFile(systemFileCalls(), folder + "/Large.fcpxml", largeDocument());
    runProgram({ownProgram(), "--use", folder}, ProgramOutput::shown);
    fmt::print("\n");
}

void measureActions(const std::string& folder) {
    // A file where the folder for the session should be: nothing is saved.
    std::filesystem::create_directories(folder);
    writeNewFile(systemFileCalls(), folder + "/data", "");
    Bench bench(folder);
    ContentView& editor = bench.editor;
    ExtensionRootView root(editor);
    root.resize(windowSize);
    root.show();
    editor.importProject(gappedDocument(20, 1000, 15'000 * 25));
    editor.edit([](EditSettings& settings) { settings.mainMaximum = 15; });
    editor.generateEdit();
    editor.generateEdit();
    for (int turn = 0; turn < 20; ++turn)
        paint(root);
    fmt::print("20 angles of 1,000 ranges, {} cuts on show\n\n", editor.fields().cuts().size());
    const auto measure = [&](const char* name, const std::function<void()>& prepare,
                             const std::function<void()>& action) {
        print(name, medianOf([&] {
                  prepare();
                  paint(root);
                  return secondsOf([&] {
                      action();
                      paint(root);
                  });
              }));
    };
    const auto step = [&] {
        editor.edit([](EditSettings& settings) {
            settings.mainShare = settings.mainShare == 60 ? 65 : 60;
        });
    };
    measure(
        "the slider step that clears the cuts, painted", [&] { editor.goBack(); }, step);
    measure(
        "a slider step after it, painted", [] {}, step);
    editor.goBack();
    measure(
        "showing another edit, painted", [&] { editor.showRevision(0); },
        [&] { editor.showRevision(1); });
    measure(
        "keeping a shot or letting it go, painted", [] {}, [&] { editor.toggleKept({3}); });
    measure(
        "moving a shot's start by a frame, painted", [] {},
        [&, frames = std::int64_t{1}]() mutable { editor.rollCut(5, frames = -frames); });
    measure(
        "nothing but painting", [] {}, [] {});
}

/// Twelve cameras for six hours.
void measureTimeline(const std::string& folder) {
    Bench bench(folder);
    ContentView& editor = bench.editor;
    ExtensionRootView root(editor);
    root.resize(windowSize);
    root.show();
    editor.importProject(gappedDocument(12, 300, 6 * 3600 * 25));
    editor.edit([](EditSettings& settings) { settings.mainMaximum = 13; });
    editor.generateEdit();
    for (int turn = 0; turn < 20; ++turn)
        paint(root);
    auto& timeline = *root.findChild<Timeline*>();
    QWidget& lanes = *timeline.viewport();
    fmt::print("\n12 cameras, {} cuts on show\n\n", editor.fields().cuts().size());
    const auto measure = [&](const char* name, const std::function<void()>& action) {
        print(name, medianOf([&] {
                  return secondsOf([&] {
                      action();
                      paint(root);
                  });
              }));
    };
    const auto wheel = [&](int turned) {
        const QPointF at(lanes.width() / 2.0, lanes.height() / 2.0);
        QWheelEvent event(at, lanes.mapToGlobal(at), {}, {0, turned}, {}, Qt::ControlModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&lanes, &event);
    };
    const auto press = [&](int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&timeline, &event);
    };
    measure("a step of zooming in and one out, painted twice", [&] {
        wheel(120);
        paint(root);
        wheel(-120);
    });
    press(Qt::Key_Home, Qt::NoModifier);
    measure("selecting the next cut, painted", [&] { press(Qt::Key_Right, Qt::NoModifier); });
    press(Qt::Key_Home, Qt::NoModifier);
    press(Qt::Key_End, Qt::ShiftModifier);
    measure("one cut less of all that are selected, painted",
            [&] { press(Qt::Key_Left, Qt::ShiftModifier); });
    measure("nothing but painting", [] {});
}

void run(const QStringList& arguments) {
    if (arguments.value(0) == QLatin1String("--empty")) return startEmptyWindow();
    if (arguments.value(0) == QLatin1String("--panel"))
        return startPanel(arguments.value(1).toStdString());
    if (arguments.value(0) == QLatin1String("--use"))
        return usePanel(arguments.value(1).toStdString());
    const TemporaryFolder folder;
    compareStarts(folder.path.string() + "/start");
    measureMemory(folder.path.string() + "/memory");
    measureActions(folder.path.string() + "/actions");
    measureTimeline(folder.path.string() + "/actions");
}

} // namespace
} // namespace shotweaver::benchmarks

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    shotweaver::style::apply(application);
    try {
        shotweaver::benchmarks::run(QApplication::arguments().mid(1));
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
