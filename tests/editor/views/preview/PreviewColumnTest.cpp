#include "editor/views/preview/PreviewColumn.h"

#include "editor/views/BarDrawing.h"
#include "editor/views/preview/CutActions.h"
#include "editor/views/preview/CutTable.h"
#include "editor/views/preview/LaneDrawing.h"
#include "editor/views/preview/Timeline.h"
#include "planning/EditTexts.h"
#include "tests/support/EditorBench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPointingDevice>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

namespace shotweaver::test {
namespace {

/// The column in a window of its own, following its editor.
struct Preview {
    explicit Preview(const ProjectBuilder& project = concert()) : column(bench.editor()) {
        subscription = editor.observe([this] { column.refresh(); });
        editor.importProject(project.xml());
        column.resize(700, 800);
        column.show();
        column.activateWindow();
        QCoreApplication::processEvents();
    }

    template <class Widget = QWidget>
    Widget& find(const char* name) {
        return *column.findChild<Widget*>(QString::fromUtf8(name));
    }
    /// What the timeline tells a screen reader.
    std::string told() {
        auto* const accessible = QAccessible::queryAccessibleInterface(&timeline);
        return accessible->text(QAccessible::Description).toStdString();
    }
    std::string toldWith(std::size_t row) {
        const std::string cuts = std::to_string(bench.fields().cuts().size());
        return std::to_string(editor.project()->videoAngles.size()) + " cameras, " + cuts +
               " cuts. " + editor.cutLine(row) + ". " + editor.cutReason(row);
    }
    /// What is on show, from top to bottom; what is disabled stands in brackets.
    std::string seen() {
        QStringList all;
        for (const char* const name :
             {"coverageWarning", "generate", "back", "forward", "position", "hint", "export",
              "summary", "timeline", "cutTable", "noCuts", "usageTable"}) {
            const QWidget& widget = find(name);
            const QString text = widget.property("text").toString();
            const QString shown = text.isEmpty() ? widget.objectName() : text;
            // The warning's place is always there.
            if (widget.isVisible() && (!text.isEmpty() || !qobject_cast<const QLabel*>(&widget)))
                all += widget.isEnabled() ? shown : QStringLiteral("[%1]").arg(shown);
        }
        return all.join(QStringLiteral(" | ")).toStdString();
    }

    EditorBench bench;
    ContentView& editor = bench.editor();
    PreviewColumn column;
    CutTable& table = find<CutTable>("cutTable");
    Timeline& timeline = find<Timeline>("timeline");
    QWidget& lanes = *timeline.viewport();
    Observers::Subscription subscription;
};

TEST(PreviewColumn, showsWhatThereIsAndWhatCanBeDone) {
    Preview preview;
    ContentView& editor = preview.editor;
    const std::string none =
        " | [Export to Final Cut…] | Generate an edit to preview the cuts here.";
    EXPECT_EQ(preview.seen(), "Generate rough edit | [Back] | [Forward]" + none);
    include(editor, "P", false);
    include(editor, "B", false);
    EXPECT_EQ(preview.seen(),
              "[Generate rough edit] | [Back] | [Forward] | Include another camera." + none);
    include(editor, "B", true);
    editor.generateEdit();
    editor.generateEdit();
    editor.goBack();
    EXPECT_EQ(preview.seen(),
              "Shuffle rough edit | [Back] | Forward | Edit 1 of 2 | Export to Final Cut… | " +
                  summaryLine(editor.fields().cuts(), editor.fields().settings, *editor.project()) +
                  " | timeline | cutTable | usageTable");
    editor.addSection();
    type(editor, 0, &SectionDraft::start, "later");
    EXPECT_EQ(preview.seen(), editor.coverageWarning().value() +
                                  " | Generate rough edit | Back | Forward" + none +
                                  " Back shows the last edit again.");
}

TEST(PreviewColumn, buttonsAndShortcutsRunTheOperations) {
    Preview preview;
    const EditHistory& history = preview.bench.fields().history;
    // The current edit after a click, and after the shortcut.
    const std::tuple<const char*, Qt::Key, int, int> cases[] = {
        {"generate", Qt::Key_G, 0, 1},       {"generate", Qt::Key_G, 2, 3},
        {"back", Qt::Key_BracketLeft, 2, 1}, {"forward", Qt::Key_BracketRight, 2, 3},
        {"export", Qt::Key_E, 3, 3},
    };
    for (const auto& [name, key, clicked, pressed] : cases) {
        auto& button = preview.find<QPushButton>(name);
        QTest::mouseClick(&button, Qt::LeftButton);
        EXPECT_EQ(history.index, clicked) << name;
        QTest::keyClick(&preview.column, key, Qt::ControlModifier);
        EXPECT_EQ(history.index, pressed) << name;
        const QString told = QKeySequence(Qt::CTRL | key).toString(QKeySequence::NativeText);
        EXPECT_TRUE(button.toolTip().endsWith(QStringLiteral(" (%1)").arg(told))) << name;
    }
    EXPECT_EQ(preview.bench.host.panels.size(), 2U);
}

TEST(PreviewColumn, copiesRowsAndKeepsThemWhileTheCutsStay) {
    Preview preview;
    preview.editor.generateEdit();
    QItemSelectionModel& selection = *preview.table.selectionModel();
    for (const int row : {2, 0})
        selection.setCurrentIndex(selection.model()->index(row, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    preview.editor.setDropTargeted(true);
    preview.editor.showError("Something went wrong.");
    preview.table.setFocus();
    QTest::keyClick(&preview.table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QStringLiteral("Wide\t01:00:00:00\t11.84\nWide\t01:00:19:15\t23.72"));
    EXPECT_EQ(preview.told(), preview.toldWith(0));
    preview.editor.generateEdit();
    EXPECT_FALSE(selection.hasSelection());
    EXPECT_TRUE(preview.told().ends_with(" cuts")) << preview.told();
}

/// Twenty cameras throughout an hour.
ProjectBuilder manyCameras() {
    ProjectBuilder project;
    project.length = 25 * 3600;
    project.angles.clear();
    for (const char id : std::string("ABCDEFGHIJKLMNOPQRST"))
        project.angles.push_back({std::string(1, id), "Camera", {{0, project.length}}});
    return project;
}

TEST(Timeline, sharesTheListsSelection) {
    Preview preview(manyCameras());
    preview.editor.generateEdit();
    Timeline& timeline = preview.timeline;
    const std::vector<Cut>& cuts = preview.bench.fields().cuts();
    const auto placeOf = [&](std::size_t row) { return timeline.rowRect(row).center(); };
    const auto reveal = [&](std::size_t row) { preview.table.selectRow(static_cast<int>(row)); };
    // Narrow cuts may share a point, but only with their own camera's. Lanes come into view.
    for (std::size_t row = 0; row < cuts.size(); ++row) {
        reveal(row);
        EXPECT_EQ(cuts.at(timeline.rowAt(placeOf(row)).value()).angle, cuts[row].angle) << row;
    }
    reveal(5);
    const QPointF place = placeOf(5);
    reveal(6);
    reveal(5);
    preview.table.clearSelection();
    const QImage unmarked = preview.lanes.grab().toImage();
    QTest::mouseClick(&preview.lanes, Qt::LeftButton, {}, place.toPoint());
    EXPECT_EQ(preview.table.currentIndex().row(), 5);
    const QRect far = preview.table.visualRect(preview.table.model()->index(40, 0));
    QTest::mouseClick(&preview.lanes, Qt::LeftButton, {},
                      QPoint(int(placeOf(40).x()), 2)); // brings the row to the middle
    const QRect middle = preview.table.visualRect(preview.table.currentIndex());
    EXPECT_FALSE(preview.table.viewport()->rect().intersects(far));
    EXPECT_NEAR(middle.center().y(), preview.table.viewport()->height() / 2, middle.height());
    preview.table.selectRow(5);
    EXPECT_NE(preview.lanes.grab().toImage(), unmarked);
    EXPECT_EQ(timeline.textAt(placeOf(5)),
              preview.editor.cutLine(5) + "\n" + preview.editor.cutReason(5));
    preview.table.selectRow(8);
    EXPECT_EQ(preview.told(), preview.toldWith(8));
    const int last = static_cast<int>(cuts.size()) - 1;
    const std::pair<Qt::Key, int> keys[] = {
        {Qt::Key_Right, 9}, {Qt::Key_Home, 0}, {Qt::Key_End, last}, {Qt::Key_Left, last - 1}};
    for (const auto& [key, row] : keys) {
        QTest::keyClick(&timeline, key);
        EXPECT_EQ(preview.table.currentIndex().row(), row) << key;
    }
    // A place between bars stands for the cut that is on screen then.
    const QRectF bar = timeline.rowRect(static_cast<std::size_t>(last - 1));
    QTest::mouseClick(&preview.lanes, Qt::LeftButton, {}, QPoint(int(bar.center().x()), 2));
    EXPECT_EQ(preview.table.currentIndex().row(), last - 1);
}

TEST(Timeline, zoomsAroundAPlaceAndScrollsToWhatIsSelected) {
    Preview preview(manyCameras());
    preview.editor.generateEdit();
    Timeline& timeline = preview.timeline;
    const TimelineAxis& axis = timeline.axis();
    const auto wheel = [&](int turned, Qt::KeyboardModifiers modifiers) {
        const QPointF at(axis.left() + axis.width() * 0.75, 60);
        QWheelEvent event(at, preview.lanes.mapToGlobal(at), {}, {0, turned}, {}, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&preview.lanes, &event);
        return axis.frameAt(at.x());
    };
    const double before = axis.frameAt(axis.left() + axis.width() * 0.75);
    EXPECT_NEAR(wheel(240, Qt::ControlModifier), before, 1);
    EXPECT_NEAR(axis.shownFrames() * 2.25, 90'000, 1);
    const double first = axis.firstFrame();
    wheel(120, Qt::ShiftModifier);
    EXPECT_LT(axis.firstFrame(), first);
    EXPECT_EQ(timeline.horizontalScrollBar()->value(), std::lround(axis.firstFrame()));

    for (int press = 0; press < 40; ++press)
        QTest::keyClick(&timeline, Qt::Key_Plus);
    EXPECT_EQ(axis.shownFrames(), 25);
    preview.table.selectRow(20);
    const Cut& cut = preview.bench.fields().cuts()[20];
    EXPECT_EQ(axis.firstFrame(), cut.start);
    // To the pixel column's last frame: single frames can be hit.
    EXPECT_EQ(axis.wholeFrameAt(axis.left() + axis.width() - 1), cut.start + 24);
    QTest::keyClick(&timeline, Qt::Key_Minus);
    EXPECT_EQ(axis.shownFrames(), 37.5);
    QTest::keyClick(&timeline, Qt::Key_0);
    EXPECT_FALSE(axis.isZoomed());
    wheel(-1200, Qt::NoModifier); // scrolls the lanes
    EXPECT_EQ(timeline.verticalScrollBar()->value(), timeline.verticalScrollBar()->maximum());
    EXPECT_GT(timeline.verticalScrollBar()->maximum(), 0);

    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                              {300, 50}, {300, 50}, {300, 50}, 1.0, {});
    QApplication::sendEvent(&preview.lanes, &pinch);
    EXPECT_NEAR(axis.shownFrames(), 45'000, 1);
}

TEST(Timeline, whatSharesAPixelIsAsOpaqueAsItIsLong) {
    TimelineAxis axis;
    axis.setPlace(0, 100);
    axis.setLength(1000);
    std::vector<FrameRange> ranges{{100, 200}, {300, 301}, {505, 510}, {510, 520}};
    QImage image(100, 4, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    drawLane(painter, QRectF(0, 0, 100, 4), axis, ranges, Qt::white);
    painter.end();
    const auto at = [&](int x) { return qRed(image.pixel(x, 2)); };
    EXPECT_EQ(at(15), 255);
    EXPECT_EQ(at(9), 0);
    EXPECT_EQ(at(20), 0);
    EXPECT_GT(at(30), 40);  // a tenth is seen
    EXPECT_LT(at(30), 110); // and no more than a tenth
    EXPECT_GT(at(50), at(30));
    EXPECT_GT(at(51), at(50));
    EXPECT_LT(at(50), 200);
}

TEST(Timeline, marksTellWhatTheyStandFor) {
    ProjectBuilder project = concert();
    project.clipContent += R"(<marker start="4s"/><marker start="30s" value="Band"/>
        <chapter-marker start="10s" value="Sermon"/>)";
    Preview preview(project);
    preview.editor.generateEdit();
    preview.editor.edit([](EditSettings& settings) {
        settings.cutAtMarkers = settings.followMarkers = true;
        settings.cutTimes = {10, 20, 20.001};
        settings.mainCamera = "P";
        settings.otherCameras = {"B"};
        settings.opening = {true, "W", 5};
        settings.sections = {{UUID(), "Reading", "B", "01:00:40:00", "01:00:45:00"}};
    });
    preview.editor.generateEdit();
    ASSERT_TRUE(preview.bench.fields().shownEdit()) << preview.bench.fields().error.value_or("");
    std::string texts;
    const TimelineAxis& axis = preview.timeline.axis();
    for (const double seconds : {2.0, 10.0, 22.0, 30.0, 42.0})
        for (int y = 0; y < preview.lanes.height(); ++y) {
            const std::string text = preview.timeline.textAt({axis.x(seconds * 25 + 0.5), y + 0.5});
            if (!text.empty() && text.find(" seconds") == std::string::npos &&
                texts.find(text) == std::string::npos)
                texts += text + "\n";
        }
    EXPECT_EQ(texts, "Opening shot · 01:00:00:00 to 01:00:05:00\n"
                     "Chapter “Sermon” · 01:00:10:00\n"
                     "Pulpit has no footage · 01:00:20:00 to 01:00:24:00\n"
                     "Marker “Band” · 01:00:30:00\n"
                     "Fixed section “Reading” · 01:00:40:00 to 01:00:45:00\n");
}

TEST(PreviewColumn, aSelectionIsKeptShuffledAndChangedByKeys) {
    Preview preview;
    ContentView& editor = preview.editor;
    const EditorFields& fields = preview.bench.fields();
    editor.edit([](EditSettings& settings) {
        settings.mainMinimum = settings.mainMaximum = 5;
        settings.otherMinimum = settings.otherMaximum = 3;
    });
    editor.generateEdit();
    const auto& selection = *preview.table.selectionModel();
    const auto press = [&](QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        widget.setFocus();
        QTest::keyClick(&widget, key, modifiers);
    };
    const auto kept = [&] {
        return preview.find<QLabel>("kept").isVisible()
                   ? preview.find<QLabel>("kept").text().toStdString()
                   : "";
    };
    EXPECT_EQ(kept(), "");
    EXPECT_FALSE(preview.find("shuffleSelection").isEnabled());
    press(preview.table, Qt::Key_K); // nothing is selected
    preview.table.selectRow(3);
    EXPECT_EQ(preview.find<QLabel>("cutReason").text().toStdString(), editor.cutReason(3));
    const QImage plain = preview.lanes.grab().toImage();
    press(preview.timeline, Qt::Key_K);
    EXPECT_EQ(kept(), "1 shot kept.");
    EXPECT_NE(preview.lanes.grab().toImage(), plain);
    const QModelIndex padlock = preview.table.model()->index(3, 3);
    EXPECT_FALSE(padlock.data(Qt::DecorationRole).isNull());
    EXPECT_TRUE(padlock.siblingAtRow(4).data(Qt::DecorationRole).isNull());
    EXPECT_EQ(preview.find<QLabel>("cutReason").text().toStdString().substr(0, 5), "Kept.");

    // Shift, a drag and Ctrl in the timeline.
    const auto rows = [&] {
        std::string text;
        for (std::size_t row = 0; row < fields.cuts().size(); ++row)
            if (selection.isRowSelected(static_cast<int>(row), {})) text += fmt::format("{} ", row);
        return text;
    };
    const auto placeOf = [&](std::size_t row) {
        return preview.timeline.rowRect(row).center().toPoint();
    };
    QTest::mouseClick(&preview.lanes, Qt::LeftButton, {}, placeOf(4));
    press(preview.timeline, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(rows(), "4 5 ");
    QTest::mouseClick(&preview.lanes, Qt::LeftButton, Qt::ControlModifier, placeOf(8));
    EXPECT_EQ(rows(), "4 5 8 ");
    QTest::mousePress(&preview.lanes, Qt::LeftButton, {}, placeOf(9));
    QTest::mouseMove(&preview.lanes, placeOf(7));
    QTest::mouseRelease(&preview.lanes, Qt::LeftButton, {}, placeOf(7));
    EXPECT_EQ(rows(), "7 8 9 ");
    const std::vector<Cut> before = fields.cuts();
    QTest::mouseClick(&preview.find<QPushButton>("shuffleSelection"), Qt::LeftButton);
    EXPECT_EQ(fields.history.items.size(), 2U);
    EXPECT_EQ(rows(), "");

    // Another camera and another start; the row stays selected.
    preview.table.selectRow(1);
    ASSERT_EQ(fields.cuts()[1].angle, "B");
    press(preview.table, Qt::Key_2);
    press(preview.table, Qt::Key_Right, Qt::AltModifier);
    press(preview.timeline, Qt::Key_Left, Qt::AltModifier | Qt::ShiftModifier);
    press(preview.table, Qt::Key_9); // no such camera
    EXPECT_EQ(fields.cuts()[1].angle, "P");
    EXPECT_EQ(fields.cuts()[1].start, before[1].start - 9);
    EXPECT_EQ(rows(), "1 ");
    EXPECT_EQ(kept(), "3 shots kept.");
    EXPECT_EQ(fields.history.items.size(), 3U);
    QTest::mouseClick(&preview.find<QPushButton>("letGo"), Qt::LeftButton);
    EXPECT_EQ(kept(), "");
}

/// The menu of the selected cut: its entries, what is disabled in brackets.
std::string menuOf(Preview& preview, int row) {
    preview.table.selectRow(row);
    CutActions actions(preview.editor, *preview.table.selectionModel(), nullptr);
    const std::unique_ptr<QMenu> menu(actions.makeMenu(&preview.table));
    std::string text;
    for (const QAction* const action : menu->actions())
        if (!action->isSeparator())
            text += fmt::format(fmt::runtime(action->isEnabled() ? "{}\n" : "[{}]\n"),
                                action->text().toStdString());
    return text;
}

TEST(CutActions, theMenuSaysWhatCannotBeDoneAndWhy) {
    Preview preview;
    preview.editor.edit([](EditSettings& settings) {
        settings.otherCameras = {"B"};
        settings.opening = {true, "W", 5};
    });
    preview.editor.generateEdit();
    const std::string fixed = menuOf(preview, 0);
    EXPECT_TRUE(fixed.starts_with("Keep\nKeep all of this camera\n[Wide – The opening shot is "
                                  "changed under “Opening and closing shots”.]\n"))
        << fixed;
    preview.editor.toggleKept({2});
    int row = 1;
    while (preview.bench.fields().cuts()[std::size_t(row)].start +
               preview.bench.fields().cuts()[std::size_t(row)].duration <=
           500)
        ++row;
    ASSERT_GT(row, 1);
    const std::string menu = menuOf(preview, row);
    EXPECT_NE(menu.find("\nWide\n[Pulpit – No footage from 01:00:20:00 to 01:00:2"),
              std::string::npos)
        << menu;
    EXPECT_NE(menu.find("]\nBand\nStart a frame earlier\n"), std::string::npos) << menu;
    EXPECT_EQ(menuOf(preview, 2).substr(0, 7), "Let go\n");

    preview.bench.host.chosen = preview.bench.folder.path();
    preview.editor.saveCutList();
    EXPECT_EQ(preview.bench.fields().status, "Saved the cut list as Concert Shotweaver.csv.");
    preview.editor.saveCutList();
    EXPECT_EQ(preview.bench.folder.read("Concert Shotweaver 2.csv").substr(0, 40),
              "Start,End,Camera,Seconds,Kept,Why\r\n01:00");
}

TEST(BarDrawing, aRangeIsAtLeastOnePointWide) {
    const BarAxis axis{{10, 0, 100, 8}, 1000, 1.5};
    EXPECT_EQ(barRect(axis, {500, 700}), QRectF(60, 0, 20, 8));
    EXPECT_EQ(barRect(axis, {500, 501}), QRectF(60, 0, 1.5, 8));
    const std::pair<double, std::optional<std::size_t>> places[] = {
        {9.9, {}}, {10, 0}, {20, {}}, {60, 1}, {60.6, 2}, {61.9, 2}, {62.1, {}}};
    for (const auto& [x, range] : places)
        EXPECT_EQ(rangeAt(axis, {{0, 100}, {500, 501}, {505, 506}}, x), range) << x;
}

} // namespace
} // namespace shotweaver::test
