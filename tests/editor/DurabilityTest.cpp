#include "platform/Base64.h"
#include "platform/Files.h"
#include "tests/support/EditorBench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <map>
#include <stdexcept>
#include <system_error>

#include <sys/wait.h>
#include <unistd.h>

namespace shotweaver::test {
namespace {

using Work = std::function<void()>;

const std::string restoreRefusal =
    "The previous session could not be restored. Its saved file has been kept. You can import an "
    "XML to start a new session. ";
const std::string presetsFile = "config/Shotweaver.savedPresets.v1";
const std::string oldPreset =
    R"([{"id":"00000000-0000-0000-0000-000000000000","name":"Old","mainShare":30,"averageShot":10,)"
    R"("doubleMain":false,"mainAngleName":"A","otherAngleNames":["B"],"audioAngleName":"A"}])";

/// Without waits for the device, which would show only after a loss of power, in small writes.
struct QuickFileCalls final : WatchedFileCalls {
    QuickFileCalls() {
        isQuick = true;
        knowsSizes = false;
        shortWrites = 600;
    }
};

/// An editor with a small project and an edit.
struct Loaded : EditorBench {
    explicit Loaded(FileCalls& calls = systemFileCalls()) : EditorBench(calls) {
        editor().importProject(ProjectBuilder().xml());
        editor().generateEdit();
    }

    SavedEditSession stored() const { return readSession(session().value()); }
    SavedEditSession held() {
        return {1, fromBase64(fields().sourceXML.value_or("")).value(), editor().fields().settings,
                fields().history};
    }
    /// What the next launch makes of the files, which it must take.
    SavedEditSession relaunched() {
        restart();
        editor().appear();
        EXPECT_EQ(told(editor()) + fields().sessionSaveError.value_or(""), "");
        return held();
    }
    /// What the alert says, which is read.
    static std::string told(ContentView& editor) {
        const std::string text = editor.fields().error.value_or("");
        editor.dismissError();
        return text;
    }
    /// Names of the stored presets, each with the main camera's share.
    std::string presets() const {
        std::string text;
        for (const EditPreset& preset : loadPresets(folder.read(presetsFile)))
            text += fmt::format("{} {},", preset.name, preset.mainShare);
        return text;
    }
    /// Makes a new file: some file systems wait for the device when an old one is cut off.
    void put(const std::string& name, const std::string& bytes) const {
        std::filesystem::remove(folder.path(name));
        folder.write(name, bytes);
    }
    void storeAndChoosePreset() {
        put(presetsFile, oldPreset);
        editor().choosePreset(UUID().text());
    }
    /// Does something with presets while the sheet is open, and gives what is told.
    static std::string toldBy(ContentView& editor, void (ContentView::*operation)()) {
        editor.openSavePreset();
        editor.setPresetName("New");
        (editor.*operation)();
        const bool closes =
            operation == &ContentView::savePreset || operation == &ContentView::updatePreset;
        EXPECT_NE(editor.fields().showSavePreset, closes);
        return told(editor);
    }
    /// An editor that another process would have.
    ContentView another() {
        return ContentView({host, systemFileCalls(), random,
                            [this] { return UUID::random(random); }, [] { return 0.0; }, folders(),
                            "und"});
    }
};

/// The bytes of every file, by path.
std::map<std::string, std::string> tree(const TestFolder& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
        const std::string path = entry.path().string();
        EXPECT_FALSE(fileName(path).starts_with('.')) << "a temporary file";
        if (entry.is_regular_file()) files[path] = readFile(systemFileCalls(), path);
    }
    return files;
}

/// Something that uses files, again and again.
struct Action {
    std::string refusal; // part of what is told when it fails
    Work prepare;
    std::function<std::string()> run; // gives what is told
    std::function<bool()> isDone;     // as a whole
};

/// Lets each file call of an action fail in turn, and then none.
void expectAllOrNothing(QuickFileCalls& calls, const TestFolder& folder, const Action& action,
                        int error) {
    int refusals = 0;
    int made = 0;
    for (int failing = 1; made >= failing - 1; ++failing) {
        SCOPED_TRACE(fmt::format("error {} at call {}: {}", error, failing, action.refusal));
        action.prepare();
        const auto before = tree(folder);
        made = 0;
        calls.beforeEach = [&] { return ++made == failing ? error : 0; };
        const std::string told = action.run();
        calls.beforeEach = [] { return 0; };
        const auto after = tree(folder);
        if (!told.empty()) {
            ++refusals;
            EXPECT_NE(told.find(action.refusal), std::string::npos) << told;
            EXPECT_TRUE(told.ends_with(": " + std::generic_category().message(error) + "."));
            EXPECT_TRUE(std::includes(after.begin(), after.end(), before.begin(), before.end()));
            action.prepare();
            EXPECT_EQ(action.run(), "");
        }
        EXPECT_TRUE(action.isDone());
    }
    EXPECT_EQ(refusals == 0, error == EINTR);
}

TEST(Durability, everyUseOfFilesIsWholeOrRefusedWhateverCallFails) {
    QuickFileCalls calls;
    Loaded bench(calls);
    const std::string exported = "out/Sunday Shotweaver";
    bench.host.chosen = bench.folder.path("out");
    const auto save = [&] {
        set(bench.editor(), &EditSettings::doubleMain, !bench.fields().settings.doubleMain);
        return bench.fields().sessionSaveError.value_or("");
    };
    const auto isHeld = [&] { return bench.stored() == bench.held(); };
    const auto restore = [&] {
        bench.restart();
        bench.editor().appear();
        const std::string told = bench.told(bench.editor());
        if (!told.starts_with(restoreRefusal)) return std::string(); // the presets are met below
        set(bench.editor(), &EditSettings::mainShare, 33);           // saves nothing
        EXPECT_FALSE(bench.fields().project);
        return told;
    };
    const auto preset = [&](auto operation, const char* presets) {
        return Action{"“" + bench.presetsPath() + "” could not be ",
                      [&] { bench.storeAndChoosePreset(); },
                      [&, operation] { return bench.toldBy(bench.editor(), operation); },
                      [&, presets] { return bench.presets() == presets; }};
    };
    const std::vector<Action> actions{
        {"Session could not be saved: “" + bench.sessionPath(), [] {}, save, isHeld},
        {"Session could not be saved: “" + bench.folder.path("data"), // or the file in it
         [&] { std::filesystem::remove_all(bench.folder.path("data")); }, save, isHeld},
        {restoreRefusal + "“" + bench.sessionPath(), [] {}, restore, isHeld},
        preset(&ContentView::savePreset, "New 70,Old 30,"),
        preset(&ContentView::updatePreset, "Old 70,"),
        preset(&ContentView::deletePreset, ""),
        {"“" + bench.folder.path(exported),
         [&] {
             std::filesystem::remove_all(bench.folder.path("out"));
             std::filesystem::create_directory(bench.folder.path("out"));
             bench.editor().showRevision(0);
         },
         [&] { return bench.editor().exportEdit(), bench.told(bench.editor()); },
         [&] {
             return bench.folder.read(exported + ".fcpxml").ends_with("</fcpxml>\n") &&
                    bench.folder.read(exported + ".settings.txt").ends_with("\n");
         }},
    };
    for (const Action& action : actions) {
        for (const int error : {ENOSPC, EACCES, EIO, EINTR})
            expectAllOrNothing(calls, bench.folder, action, error);
    }
}

/// A process of its own, which leaves the test's folders to this one.
class Process {
  public:
    /// `work` gets a function that tells of a step, and ends the process once nobody listens.
    explicit Process(const std::function<void(const Work&)>& work) {
        int ends[2];
        if (pipe(ends) != 0 || (id_ = fork()) < 0) throw std::runtime_error("no process");
        steps_ = ends[0];
        if (id_ == 0) run(work, ends[1]);
        ::close(ends[1]);
    }
    ~Process() { ::close(steps_); }

    /// Waits for the next step; false when it has ended instead.
    bool step() {
        char byte = 0;
        return read(steps_, &byte, 1) == 1;
    }
    void kill() { ::kill(id_, SIGKILL); }
    /// How it has ended, once it has.
    int status() {
        int status = -1;
        EXPECT_EQ(waitpid(id_, &status, 0), id_);
        return status;
    }

  private:
    /// What is thrown ends this process, too, rather than to go on with the tests in it.
    [[noreturn]] void run(const std::function<void(const Work&)>& work, int tell) noexcept {
        ::close(steps_);
        work([&] {
            if (write(tell, "", 1) != 1) _exit(1);
        });
        _exit(0);
    }

    pid_t id_ = 0;
    int steps_ = 0;
};

/// A session of which each number from 0 to 79 has its own, of its own length.
SavedEditSession numbered(SavedEditSession session, int number) {
    session.settings.mainShare = 10 + number;
    const std::string name(static_cast<std::size_t>(number * 100), 'x');
    session.settings.sections = {{UUID(), name, session.settings.mainCamera, "", ""}};
    return session;
}

bool isNumbered(const SavedEditSession& session, const SavedEditSession& base) {
    return session == numbered(base, static_cast<int>(session.settings.mainShare) - 10);
}

TEST(Durability, deathAtAnyCallOrMomentLeavesOneOfTheStates) {
    constexpr int deaths = 50; // rounds that end at each call in turn; in the others it is killed
    QuickFileCalls calls;
    Loaded bench(calls);
    bench.storeAndChoosePreset();
    SavedEditSession now = numbered(bench.held(), 0);
    apply(bench.editor(), now.settings);
    int renewed = 0;
    for (int round = 1; round <= deaths + 29; ++round) {
        Process process([&](const Work& step) {
            calls.beforeEach = [&, left = round <= deaths ? round : -1]() mutable {
                if (--left == 0) _exit(1);
                step();
                return 0;
            };
            for (int number = round; number == round || round > deaths; number = number % 79 + 1) {
                apply(bench.editor(), numbered(now, number).settings);
                bench.editor().setPresetName(std::to_string(number));
                bench.editor().savePreset();
            }
        });
        for (int steps = round <= deaths ? 1000 : (round - deaths) * 7;
             steps > 0 && process.step();)
            --steps;
        if (round > deaths) process.kill();
        const int status = process.status();
        EXPECT_EQ(WIFSIGNALED(status), round > deaths);
        EXPECT_TRUE(round != deaths || status == 0); // there are no more calls
        const SavedEditSession before = now;
        now = bench.relaunched(); // which takes the presets, too
        const bool isNew = now == numbered(before, round);
        EXPECT_TRUE(isNew || now == before || (round > deaths && isNumbered(now, before))) << round;
        renewed += isNew ? 1 : 0;
    }
    EXPECT_GT(renewed, 10);
}

TEST(Durability, editorsInTurnKeepTheLastSessionAndAllPresets) {
    Loaded bench;
    ContentView other = bench.another();
    other.appear();
    for (int turn = 0; turn < 6; ++turn) {
        ContentView& editor = turn % 2 == 0 ? bench.editor() : other;
        set(editor, &EditSettings::mainShare, 20 + turn);
        editor.setPresetName(std::to_string(turn));
        editor.savePreset();
        EXPECT_EQ(bench.stored().settings, editor.fields().settings);
    }
    EXPECT_EQ(bench.presets(), "0 20,1 21,2 22,3 23,4 24,5 25,");
    bench.editor().deletePreset();
    other.choosePreset(other.presetOptions().at(1).id);
    other.updatePreset();
    EXPECT_EQ(bench.presets(), "0 25,1 21,2 22,3 23,5 25,");
}

TEST(Durability, presetsThatCannotBeReadAreNeverWrittenOver) {
    Loaded bench;
    bench.storeAndChoosePreset();
    EXPECT_EQ(bench.toldBy(bench.editor(), &ContentView::savePreset), "");
    const std::string whole = bench.folder.read(presetsFile);
    // In an editor that has been there for long, and in a new one.
    const auto expectRefused = [&](const std::string& text) {
        ContentView fresh = bench.another();
        fresh.restoreSession();
        EXPECT_EQ(bench.told(fresh), "");
        for (ContentView* const editor : {&bench.editor(), &fresh}) {
            editor->choosePreset(UUID().text());
            for (const auto operation : {&ContentView::savePreset, &ContentView::updatePreset,
                                         &ContentView::deletePreset, &ContentView::applyPreset}) {
                const EditSettings settings = editor->fields().settings;
                EXPECT_EQ(bench.toldBy(*editor, operation),
                          operation == &ContentView::applyPreset ? "" : text);
                EXPECT_EQ(editor->fields().settings, settings);
            }
        }
    };
    for (const std::string& bytes : {whole.substr(0, 40), replaced(whole, ":70", ":95")}) {
        bench.put(presetsFile, bytes);
        expectRefused(failureOf([&] { loadPresets(bytes); }));
        EXPECT_EQ(bench.folder.read(presetsFile), bytes);
    }
    std::filesystem::remove(bench.presetsPath());
    bench.folder.write(presetsFile + "/file", "kept"); // a folder in its place
    expectRefused("“" + bench.presetsPath() + "” could not be read: Is a directory.");
    EXPECT_EQ(bench.folder.read(presetsFile + "/file"), "kept");
}

} // namespace
} // namespace shotweaver::test
