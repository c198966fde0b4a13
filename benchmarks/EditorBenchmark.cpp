// Measures the editor with a large session: a save after one changed setting beside a plain write
// of a file of that size, a restore beside an import of its XML, and what else a user's action
// costs.

#include "benchmarks/BenchmarkDocuments.h"
#include "benchmarks/Measuring.h"
#include "benchmarks/SilentHost.h"
#include "editor/ContentView.h"
#include "editor/TimelineContent.h"
#include "persistence/SavedEditSession.h"
#include "planning/CutReasons.h"
#include "planning/EditPlan.h"
#include "planning/EditTexts.h"
#include "planning/ProjectDefaults.h"
#include "platform/Base64.h"
#include "platform/Files.h"

#include <fmt/format.h>

#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace shotweaver::benchmarks {
namespace {

namespace fs = std::filesystem;

constexpr int rounds = 7;

/// A session, by its document and its edits.
struct Sized {
    std::size_t clipsPerAngle;
    std::size_t clipFrames;
    int edits;
    double longestShot; // seconds
};

constexpr Sized largeDocumentSession{16'000, 20, 200, 20}; // 40 MB, three hours
constexpr Sized longHistorySession{400, 800, 1'000, 7.6};  // 1 MB, three hours

/// An editor on the state in a folder.
struct Bench {
    explicit Bench(const fs::path& folder)
        : editor({host,
                  systemFileCalls(),
                  random,
                  secureUUIDs(),
                  [] { return 0.0; },
                  {(folder / "data").string(), (folder / "config").string()},
                  "und"}) {}

    SilentHost host;
    SeededRandom random{7};
    ContentView editor;
};

/// Runs both in turn and prints their medians and ratio.
void compare(const std::string& name, const std::function<void()>& work,
             const std::string& yardstickName, const std::function<void()>& yardstick) {
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < rounds; ++round) {
        theirs.push_back(secondsOf(yardstick));
        ours.push_back(secondsOf(work));
    }
    print(yardstickName, median(theirs));
    print(name, median(ours));
    printRatio("ratio", median(ours) / median(theirs));
}

/// Stores a session.
void writeSession(const Sized& sized, const fs::path& folder) {
    const std::string xml = largeDocument(sized.clipsPerAngle, sized.clipFrames);
    const Project project(xml);
    SeededRandom random(7);
    EditSettings settings = importedSettings(project, {});
    settings.mainMinimum = settings.otherMinimum = 4;
    settings.mainMaximum = settings.otherMaximum = sized.longestShot;
    EditHistory history;
    for (int i = 0; i < sized.edits; ++i)
        history.append({UUID::random(random), 700'000'000.5 + i, settings,
                        generateCutList(settings, project, {}, random, secureUUIDs())});
    const std::string path = (folder / "data" / "session-v1.json").string();
    fs::create_directories(folder / "data");
    replaceFile(systemFileCalls(), path, [&](ByteSink& sink) {
        SessionEncoder().write(sink, base64(xml), settings, history, {});
    });
    fmt::print("A session of {} edits of {} cuts, {:.0f} MB with its document of {:.0f} MB\n\n",
               sized.edits, history.items.front().cuts.size(),
               static_cast<double>(fs::file_size(path)) / 1e6,
               static_cast<double>(xml.size()) / 1e6);
}

void writePlainly(const std::string& path, const std::string& bytes) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    for (std::size_t at = 0; at < bytes.size();) {
        const auto count = write(file, bytes.data() + at, bytes.size() - at);
        if (count <= 0) throw std::runtime_error("the plain write failed");
        at += static_cast<std::size_t>(count);
    }
    fsync(file);
    close(file);
}

void measureSession(const fs::path& folder) {
    writeSession(largeDocumentSession, folder);
    const std::string xml =
        largeDocument(largeDocumentSession.clipsPerAngle, largeDocumentSession.clipFrames);
    compare(
        "restore", [&] { Bench(folder).editor.restoreSession(); }, "import of its XML",
        [&] { const CutEngine engine(xml); });

    Bench bench(folder);
    bench.editor.appear();
    if (bench.editor.fields().error) throw std::runtime_error(*bench.editor.fields().error);
    const std::string bytes =
        readFile(systemFileCalls(), (folder / "data" / "session-v1.json").string());
    compare(
        "save after one changed setting",
        [&] {
            bench.editor.edit([](EditSettings& settings) {
                settings.mainShare = settings.mainShare == 60 ? 70 : 60;
            });
        },
        "write and sync of a file of that size",
        [&] { writePlainly((folder / "plain").string(), bytes); });
}

/// In programs of their own, so that neither counts what the other has taken.
void measureLongHistory(const fs::path& folder) {
    runProgram({ownProgram(), "--write", folder.string()}, ProgramOutput::shown);
    for (int round = 0; round < 3; ++round)
        runProgram({ownProgram(), "--restore", folder.string()}, ProgramOutput::shown);
    fmt::print("\n");
}

void restore(const fs::path& folder) {
    Bench bench(folder);
    bench.editor.appear();
    if (bench.editor.fields().error) throw std::runtime_error(*bench.editor.fields().error);
    printOwnCosts("restore");
}

/// The median of many calls.
void measure(const std::string& name, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < 30; ++i)
        times.push_back(secondsOf(work));
    print(name, median(times));
}

void measureOperations(const fs::path& folder) {
    fmt::print("20 angles of 1,000 ranges, 2,000 cuts on show\n\n");
    // Without a place to save to, since a save is measured above.
    fs::create_directories(folder);
    {
        const std::string path = (folder / "data").string();
        writePlainly(path, "");
    }
    Bench bench(folder);
    ContentView& editor = bench.editor;
    editor.importProject(gappedDocument(20, 1000, 27'000 * 25));
    editor.edit([](EditSettings& settings) { settings.mainMaximum = 15; });
    editor.generateEdit();
    editor.generateEdit();
    fmt::print("({} cuts)\n", editor.fields().cuts().size());
    const Project& project = *editor.project();
    const std::string camera = project.videoAngles.back().id;
    const auto exclude = [&](EditSettings& settings) { settings.otherCameras.erase(camera); };
    const auto include = [&](EditSettings& settings) { settings.otherCameras.insert(camera); };
    measure("a changed setting, with coverage, warning and rows", [&] {
        const bool isIncluded = editor.fields().settings.otherCameras.contains(camera);
        if (isIncluded)
            editor.edit(exclude);
        else
            editor.edit(include);
        editor.coverageContent();
        editor.coverageWarning();
        cameraRows(editor.fields().settings, project);
        editor.actionBar();
    });
    editor.edit(include);
    measure("back and forward", [&] {
        editor.goBack();
        editor.goForward();
    });
    const auto shuffle = [&] { editor.generateEdit(); };
    measure("a shuffle", shuffle);
    std::vector<std::size_t> tenth;
    for (std::size_t row = 5; row < editor.fields().cuts().size(); row += 10)
        tenth.push_back(row);
    editor.toggleKept(tenth);
    measure("a shuffle around every tenth shot", shuffle);
    editor.letGoOfAll();
    editor.edit([](EditSettings& settings) {
        for (int i = 0; i < 20'000; ++i)
            settings.cutTimes.push_back(1.35 * i);
    });
    measure("a shuffle with 20,000 times to cut at", shuffle);
    editor.edit([](EditSettings& settings) { settings.cutTimes.clear(); });
    editor.generateEdit();
    measure("a kept shot more or less, with what is shown of it", [&] {
        editor.toggleKept({3});
        editor.coverageContent();
        editor.coverageWarning();
        editor.actionBar();
        editor.cutReason(3);
    });
    measure("reasons of all shots",
            [&] { explainCuts(editor.fields().settings, project, editor.fields().cuts(), {}); });
    measure("rows of the cut list", [&] {
        for (std::size_t row = 0; row < editor.fields().cuts().size(); ++row)
            editor.cutRow(row);
    });
    measure("lanes of its timeline", [&] { cutLanes(editor.fields().cuts(), project); });
    measure("summary and usage", [&] {
        summaryLine(editor.fields().cuts(), editor.fields().settings, project);
        usageRows(editor.fields().cuts(), project);
    });
}

void run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 2 && arguments[0] == "--write")
        return writeSession(longHistorySession, arguments[1]);
    if (arguments.size() == 2 && arguments[0] == "--restore") return restore(arguments[1]);
    const TemporaryFolder folder;
    measureSession(folder.path / "session");
    measureLongHistory(folder.path / "history");
    measureOperations(folder.path / "operations");
}

} // namespace
} // namespace shotweaver::benchmarks

int main(int argc, char** argv) {
    try {
        shotweaver::benchmarks::run({argv + 1, argv + argc});
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
