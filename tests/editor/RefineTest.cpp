#include "engine/EditRevision.h"
#include "persistence/SavedEditSession.h"
#include "tests/support/EditorBench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

/// An edit of short shots on show: a minute of 1,500 frames.
struct Refining : testing::Test {
    Refining() {
        editor().appear();
        editor().importProject(concert().xml());
        editor().edit([](EditSettings& settings) {
            settings.mainMinimum = settings.mainMaximum = 5;
            settings.otherMinimum = settings.otherMaximum = 3;
        });
        editor().generateEdit();
    }
    ContentView& editor() { return bench.editor(); }
    const EditorFields& fields() { return bench.fields(); }
    const std::vector<Cut>& cuts() { return fields().cuts(); }
    std::string hint() { return editor().actionBar().kept.value_or(""); }
    KeptShots ids(std::initializer_list<std::size_t> rows) {
        KeptShots ids;
        for (const std::size_t row : rows)
            ids.insert(cuts().at(row).id);
        return ids;
    }
    KeptShots stored() {
        bench.host.endTurn();
        return readSession(bench.session().value()).keptShots;
    }
    bool storesKept() {
        bench.host.endTurn();
        return bench.session().value().find("keptCuts") != std::string::npos;
    }
    /// "W 125-200"
    std::string text(std::size_t row) {
        const Cut& cut = cuts().at(row);
        return fmt::format("{} {}-{}", cut.angle, cut.start, cut.start + cut.duration);
    }

    EditorBench bench;
};

TEST_F(Refining, keptShotsStayWhereverTheyAre) {
    EXPECT_FALSE(storesKept());
    EXPECT_EQ(hint(), "");
    editor().toggleKept({3});
    EXPECT_EQ(hint(), "1 shot kept.");
    editor().toggleKept({3, 5, 99});
    EXPECT_EQ(hint(), "2 shots kept.");
    const std::vector<Cut> first = cuts();
    const KeptShots kept = ids({3, 5});
    EXPECT_EQ(stored(), kept);
    editor().generateEdit();
    EXPECT_EQ(keptCuts(cuts(), kept), (std::vector<Cut>{first[3], first[5]}));
    EXPECT_NE(cuts(), first);

    // A changed setting takes the preview, not the shots; nor does a restart.
    set(editor(), &EditSettings::mainShare, 60);
    EXPECT_EQ(hint(), "2 shots kept.");
    bench.restart();
    editor().appear();
    EXPECT_EQ(hint(), "2 shots kept.");
    editor().generateEdit();
    EXPECT_EQ(keptCuts(cuts(), kept), (std::vector<Cut>{first[3], first[5]}));

    // One that is kept only in the last edit is not in the others, and is forgotten with it.
    editor().keepCamera("P");
    EXPECT_GT(stored().size(), 2U);
    editor().goBack();
    EXPECT_EQ(hint(), "2 shots kept.");
    editor().generateEdit();
    EXPECT_EQ(stored(), kept);
    editor().toggleKept({0});
    editor().letGoOfAll();
    EXPECT_EQ(hint(), "");
    EXPECT_FALSE(storesKept());
    editor().toggleKept({0, 1});
    editor().importProject(concert().xml());
    EXPECT_TRUE(stored().empty());
}

TEST_F(Refining, aKeptShotThatDoesNotFitIsToldWhenGenerating) {
    editor().toggleKept({1});
    const std::string timecode = editor().cutRow(1).start;
    editor().addSection();
    type(editor(), 0, &SectionDraft::start, "01:00:00:00");
    type(editor(), 0, &SectionDraft::end, "01:00:06:00");
    const std::string sentence = "The kept shot at " + timecode +
                                 " overlaps a fixed section. Let go of it or change one of them.";
    EXPECT_EQ(editor().coverageWarning(), sentence);
    editor().generateEdit();
    EXPECT_EQ(fields().error, sentence);
    EXPECT_EQ(hint(), "1 shot kept.");
    editor().letGoOfAll();
    EXPECT_EQ(editor().coverageWarning(), std::nullopt);
}

TEST_F(Refining, aSelectionIsShuffledAlone) {
    const std::vector<Cut> first = cuts();
    editor().shuffleRows({99});
    EXPECT_EQ(fields().history.items.size(), 1U);
    editor().shuffleRows({4, 5, 6, 7});
    EXPECT_TRUE(fields().kept.empty());
    EXPECT_NE(cuts(), first);
    const auto rest = std::ssize(first) - 8;
    EXPECT_TRUE(std::equal(first.begin(), first.begin() + 4, cuts().begin()));
    EXPECT_TRUE(std::equal(first.end() - rest, first.end(), cuts().end() - rest));
}

TEST_F(Refining, camerasAndStartsAreChangedByHand) {
    const std::vector<Cut> first = cuts();
    ASSERT_EQ(text(0) + ", " + text(1), "W 0-125, B 125-200");
    editor().setCutCamera(1, "B"); // as it is
    editor().setCutCamera(1, "R"); // without picture
    editor().rollCut(0, 5);
    editor().rollCut(1, 0);
    EXPECT_EQ(fields().history.items.size(), 1U);
    editor().setCutCamera(1, "P");
    EXPECT_EQ(text(1), "P 125-200");
    EXPECT_EQ(fields().kept, ids({1}));
    EXPECT_EQ(cuts()[0], first[0]);
    // The same row again is the same step.
    editor().rollCut(1, -10);
    editor().rollCut(1, 3);
    EXPECT_EQ(text(0) + ", " + text(1), "W 0-118, P 118-200");
    EXPECT_EQ(stored(), ids({0, 1}));
    EXPECT_EQ(fields().history.items.size(), 2U);
    editor().rollCut(2, 1'000);
    EXPECT_EQ(fields().history.items.size(), 3U);
    EXPECT_EQ(text(2),
              fmt::format("W {}-{}", first[2].start + first[2].duration - 1, first[3].start));
    editor().rollCut(2, -1'000'000);
    EXPECT_EQ(text(1), "P 118-119");
    editor().goBack();
    EXPECT_EQ(text(1), "P 118-200");
    editor().goBack();
    EXPECT_EQ(cuts(), first);
    // Another step lies between.
    editor().setCutCamera(1, "P");
    editor().toggleKept({4});
    editor().rollCut(1, 1);
    EXPECT_EQ(fields().history.items.size(), 3U);
    editor().generateEdit();
    EXPECT_EQ(text(1), "P 126-200");
}

TEST_F(Refining, whatIsSetElsewhereIsNotChangedByHand) {
    editor().edit([](EditSettings& settings) {
        settings.opening = {true, "W", 4};
        settings.closing = {true, "B", 5};
        settings.sections = {{{}, "", "P", "01:00:08:00", "01:00:12:00"}};
    });
    editor().generateEdit();
    const std::size_t last = cuts().size() - 1;
    std::size_t section = 0;
    while (cuts()[section].start != 200)
        ++section;
    const std::string bookends = "shot is changed under “Opening and closing shots”.";
    EXPECT_EQ(editor().cameraIsFixed(0), "The opening " + bookends);
    EXPECT_EQ(editor().cameraIsFixed(last), "The closing " + bookends);
    EXPECT_EQ(editor().cameraIsFixed(section),
              "A fixed section is changed under “Fixed camera sections”.");
    EXPECT_EQ(editor().cameraIsFixed(section + 1), std::nullopt);
    EXPECT_EQ(editor().startIsFixed(0), "The first shot begins with the project.");
    EXPECT_EQ(editor().startIsFixed(section + 1), editor().cameraIsFixed(section));
    EXPECT_EQ(editor().startIsFixed(last), editor().cameraIsFixed(last));
    const std::vector<Cut> before = cuts();
    for (const std::size_t row : {std::size_t{0}, section, last}) {
        editor().setCutCamera(row, "B");
        editor().rollCut(row, 1);
    }
    EXPECT_EQ(cuts(), before);
}

} // namespace
} // namespace shotweaver::test
