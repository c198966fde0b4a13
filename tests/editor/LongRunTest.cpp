#include "engine/generation/EditChecks.h"
#include "platform/Base64.h"
#include "tests/support/EditorBench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <random>

namespace shotweaver::test {
namespace {

/// The system's calls without waits for the device. Sessions cannot be stored while told so.
class QuickFileCalls final : public WatchedFileCalls {
  public:
    QuickFileCalls() { isQuick = true; }

    bool isFull = false;

    int rename(const std::string& from, const std::string& to) override {
        if (!isFull || !to.ends_with("session-v1.json")) return WatchedFileCalls::rename(from, to);
        errno = ENOSPC;
        return -1;
    }
};

/// A user who does anything at any time.
class LongRun {
  public:
    explicit LongRun(std::uint64_t seed) : chance_(seed) { bench.editor().appear(); }

    void act() {
        ContentView& editor = bench.editor();
        calls.isFull = below(10) == 0;
        switch (below(16)) {
        case 0:
            return importProject();
        case 1:
            return editor.addSection();
        case 2:
            return type(editor, below(3), &SectionDraft::end, below(2) ? "01:00:40:00" : "soon");
        case 3:
            return editor.removeSection(below(4));
        case 4:
            return editor.goForward();
        case 5:
            return editor.goBack();
        case 6:
            return preset();
        case 7:
            return exportEdit();
        case 8:
        case 9:
            return editor.edit([&](EditSettings& settings) { changeOne(settings); });
        case 10:
        case 11:
            return refine();
        case 12:
        case 13:
            return takeBack();
        default:
            return editor.generateEdit();
        }
    }

    std::size_t below(std::size_t end) { return chance_() % end; }

    QuickFileCalls calls;
    EditorBench bench{calls};

  private:
    void importProject() {
        ProjectBuilder marked = concert();
        marked.clipContent += R"(<marker start="4s"/><marker start="30s" value="band"/>)";
        static const std::string others[] = {marked.xml(), ProjectBuilder().xml(), "<fcpxml/>"};
        bench.editor().importProject(others[below(3)]);
    }

    void takeBack() {
        ContentView& editor = bench.editor();
        switch (below(5)) {
        case 0:
            return editor.bringBackSession();
        case 1:
            return editor.redo();
        default:
            return editor.undo();
        }
    }

    void changeOne(EditSettings& settings) {
        const std::string camera = below(2) ? "W" : "B";
        const double seconds = 1 + static_cast<double>(below(30));
        switch (below(7)) {
        case 0:
            return setMinimum(settings.mainMinimum, settings.mainMaximum, seconds);
        case 1:
            settings.opening.isEnabled = !settings.opening.isEnabled;
            return;
        case 2:
            settings.closing.seconds = seconds;
            return;
        case 3:
            settings.returnTimes[camera] = seconds;
            return;
        case 4:
            settings.cutAtMarkers = !settings.cutAtMarkers;
            return settings.cutTimes.push_back(seconds);
        case 5:
            settings.followMarkers = !settings.followMarkers;
            return;
        default:
            settings.doubleMain = !settings.doubleMain;
        }
    }

    /// Also rows that are not there.
    void refine() {
        ContentView& editor = bench.editor();
        const std::size_t row = below(12);
        switch (below(6)) {
        case 0:
            return editor.shuffleRows({row, below(12)});
        case 1:
            return editor.keepCamera("B");
        case 2:
            return editor.letGoOfAll();
        case 3:
            return editor.setCutCamera(row, below(2) ? "P" : "B");
        case 4:
            return editor.rollCut(row, static_cast<std::int64_t>(below(401)) - 200);
        default:
            return editor.toggleKept({row, below(12)});
        }
    }

    void preset() {
        ContentView& editor = bench.editor();
        const std::vector<PickerOption> options = editor.presetOptions();
        editor.choosePreset(options[below(options.size())].id);
        editor.setPresetName(fmt::format("Preset {}", below(6)));
        const auto operations = {&ContentView::savePreset, &ContentView::updatePreset,
                                 &ContentView::applyPreset, &ContentView::deletePreset};
        (editor.*operations.begin()[below(4)])();
    }

    void exportEdit() {
        bench.host.chosen.reset();
        if (below(2)) bench.host.chosen = bench.folder.path();
        bench.editor().exportEdit();
    }

    std::mt19937_64 chance_;
};

/// What must hold whatever was done.
void expectSound(LongRun& run) {
    const EditorFields& fields = run.bench.fields();
    ASSERT_TRUE(fields.history.hasValidIndex());
    EXPECT_EQ(fields.cuts().empty(), !fields.showsCurrentEdit);
    if (fields.showsCurrentEdit) {
        ASSERT_TRUE(fields.history.current());
        EXPECT_EQ(fields.history.current()->settings, fields.settings);
        EXPECT_EQ(checkCuts(fields.project->engine, fields.cuts()), CutFault::none);
    }
    if (!fields.sourceXML || fields.sessionSaveError) return;
    const SavedEditSession stored = readSession(run.bench.session().value());
    EXPECT_EQ(stored, (SavedEditSession{1, *fromBase64(*fields.sourceXML), fields.settings,
                                        fields.history, fields.kept}));
    KeptShots known;
    for (const EditRevision& edit : fields.history.items)
        for (const Cut& cut : keptCuts(edit.cuts, fields.kept))
            known.insert(cut.id);
    EXPECT_EQ(fields.kept, known); // none that no edit has
}

TEST(LongRun, whatIsHeldIsWhatIsStoredAndComesBack) {
    LongRun run(41);
    int restarts = 0;
    for (int action = 0; action < 2'000; ++action) {
        SCOPED_TRACE(action);
        run.act();
        run.bench.host.endTurn();
        expectSound(run);
        if (testing::Test::HasFailure()) return;
        run.bench.editor().dismissError();
        if (run.below(100) != 0 || !run.bench.fields().sourceXML ||
            run.bench.fields().sessionSaveError)
            continue;
        const EditSettings settings = run.bench.fields().settings;
        const EditHistory history = run.bench.fields().history;
        const KeptShots kept = run.bench.fields().kept;
        run.bench.restart();
        run.bench.editor().appear();
        EXPECT_EQ(run.bench.fields().settings, settings);
        EXPECT_EQ(run.bench.fields().history, history);
        EXPECT_EQ(run.bench.fields().kept, kept);
        ++restarts;
    }
    EXPECT_GT(restarts, 5);
}

} // namespace
} // namespace shotweaver::test
