// Measures the editor with a large session: a save after one changed setting beside a plain write
// of a file of that size, a restore beside an import of its XML, and what else a user's action
// costs.

#include "benchmarks/BenchmarkDocuments.h"
#include "benchmarks/SilentHost.h"
#include "editor/ContentView.h"
#include "persistence/SavedEditSession.h"
#include "planning/EditPlan.h"
#include "planning/EditTexts.h"
#include "planning/ProjectDefaults.h"
#include "platform/Base64.h"
#include "platform/Files.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
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
constexpr std::size_t clipsPerAngle = 16'000; // a document of 40 MB
constexpr std::size_t clipFrames = 20;        // and of three hours
constexpr int revisions = 200;

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

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void print(const std::string& name, double seconds) {
    fmt::print("{:<58} {:>9.2f} ms\n", name, seconds * 1000);
}

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
    fmt::print("{:<58} {:>9.2f}\n\n", "ratio", median(ours) / median(theirs));
}

/// Stores a session of many edits of a project.
void writeSession(const std::string& xml, const fs::path& folder) {
    const Project project(xml);
    SeededRandom random(7);
    EditSettings settings = importedSettings(project, {});
    settings.doubleMain = true;
    EditHistory history;
    for (int i = 0; i < revisions; ++i)
        history.append({UUID::random(random), 700'000'000.5 + i, settings,
                        generateCutList(settings, project, random, secureUUIDs())});
    const std::string path = (folder / "data" / "session-v1.json").string();
    fs::create_directories(folder / "data");
    replaceFile(systemFileCalls(), path, [&](ByteSink& sink) {
        SessionEncoder().write(sink, base64(xml), settings, history);
    });
    fmt::print("A session of {} edits of {} cuts, {:.0f} MB with its document of {:.0f} MB\n\n",
               revisions, history.items.front().cuts.size(),
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
    const std::string xml = largeDocument(clipsPerAngle, clipFrames);
    writeSession(xml, folder);
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
    measure("rows of the cut list", [&] {
        for (std::size_t row = 0; row < editor.fields().cuts().size(); ++row)
            editor.cutRow(row);
    });
    measure("lanes of its overview", [&] { cutLanes(editor.fields().cuts(), project); });
    measure("summary and usage", [&] {
        summaryLine(editor.fields().cuts(), editor.fields().settings, project);
        usageRows(editor.fields().cuts(), project);
    });
}

void run() {
    std::string pattern = (fs::temp_directory_path() / "shotweaver-benchmark-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder to work in");
    const fs::path folder = pattern;
    measureSession(folder / "session");
    measureOperations(folder / "operations");
    fs::remove_all(folder);
}

} // namespace
} // namespace shotweaver::benchmarks

int main() {
    try {
        shotweaver::benchmarks::run();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
