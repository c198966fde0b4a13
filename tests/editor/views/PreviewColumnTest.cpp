#include "editor/views/PreviewColumn.h"

#include "editor/PanelTexts.h"
#include "editor/views/BarDrawing.h"
#include "editor/views/CutTable.h"
#include "editor/views/EditOverview.h"
#include "tests/support/EditorBench.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QToolTip>

namespace shotweaver::test {
namespace {

/// The column in a window of its own, following its editor.
struct Preview {
    explicit Preview(const ProjectBuilder& project = concert()) : column(bench.editor()) {
        subscription = editor().observe([this] { column.refresh(); });
        editor().importProject(project.xml());
        column.resize(700, 800);
        column.show();
        column.activateWindow();
        QCoreApplication::processEvents();
    }

    ContentView& editor() { return bench.editor(); }
    template <class Widget = QWidget>
    Widget& find(const char* name) {
        return *column.findChild<Widget*>(QString::fromUtf8(name));
    }
    CutTable& table() { return find<CutTable>("cutTable"); }
    EditOverview& overview() { return find<EditOverview>("overview"); }
    std::string value() {
        return QAccessible::queryAccessibleInterface(&overview())
            ->text(QAccessible::Value)
            .toStdString();
    }

    /// What is on show, from top to bottom; buttons that are disabled stand in brackets.
    std::string seen() {
        std::string all;
        for (const char* const name :
             {"coverageWarning", "generate", "back", "forward", "position", "hint", "export",
              "summary", "overview", "cutTable", "noCuts", "usageTable"}) {
            QWidget& widget = find(name);
            if (!widget.isVisible()) continue;
            const QString text = widget.property("text").toString();
            const QString shown = text.isEmpty() ? QString::fromUtf8(name) : text;
            all += (all.empty() ? "" : ", ") +
                   (widget.isEnabled() ? shown : QStringLiteral("[%1]").arg(shown)).toStdString();
        }
        return all;
    }

    EditorBench bench;
    PreviewColumn column;
    Observers::Subscription subscription;
};

TEST(PreviewColumn, showsWhatCanBeDoneAndWhatThereIs) {
    Preview preview;
    ContentView& editor = preview.editor();
    const std::string none = "Generate an edit to preview the cuts here.";
    EXPECT_EQ(preview.seen(),
              "Generate rough edit, [Back], [Forward], [Export to Final Cut…], " + none);
    editor.setIncluded("P", false);
    editor.setIncluded("B", false);
    EXPECT_EQ(preview.seen(), "[Generate rough edit], [Back], [Forward], Include another camera., "
                              "[Export to Final Cut…], " +
                                  none);
    editor.setIncluded("B", true);
    editor.generateEdit();
    editor.generateEdit();
    const auto tables = [&] { return *editor.summaryLine() + ", overview, cutTable, usageTable"; };
    EXPECT_EQ(preview.seen(), "Shuffle rough edit, Back, [Forward], Edit 2 of 2, "
                              "Export to Final Cut…, " +
                                  tables());
    editor.goBack();
    EXPECT_EQ(preview.seen(), "Shuffle rough edit, [Back], Forward, Edit 1 of 2, "
                              "Export to Final Cut…, " +
                                  tables());
    editor.addSection();
    editor.setSectionStart(0, "later");
    ASSERT_TRUE(editor.coverageWarning());
    EXPECT_EQ(preview.seen(), *editor.coverageWarning() +
                                  ", Generate rough edit, Back, Forward, [Export to Final Cut…], " +
                                  none);
}

TEST(PreviewColumn, buttonsAndShortcutsRunTheOperations) {
    Preview preview;
    const EditHistory& history = preview.bench.fields().history;
    const auto state = [&] {
        return std::to_string(history.index) + " of " + std::to_string(history.items.size()) +
               ", " + std::to_string(preview.bench.host.panels.size()) + " dialogs";
    };
    struct Case {
        const char* button;
        Qt::Key key;
        const char* clicked;
        const char* pressed;
    };
    const Case cases[] = {
        {"generate", Qt::Key_G, "0 of 1, 0 dialogs", "1 of 2, 0 dialogs"},
        {"generate", Qt::Key_G, "2 of 3, 0 dialogs", "3 of 4, 0 dialogs"},
        {"back", Qt::Key_BracketLeft, "2 of 4, 0 dialogs", "1 of 4, 0 dialogs"},
        {"forward", Qt::Key_BracketRight, "2 of 4, 0 dialogs", "3 of 4, 0 dialogs"},
        {"forward", Qt::Key_BracketRight, "3 of 4, 0 dialogs", "3 of 4, 0 dialogs"},
        {"export", Qt::Key_E, "3 of 4, 1 dialogs", "3 of 4, 2 dialogs"},
    };
    for (const auto& [name, key, clicked, pressed] : cases) {
        QPushButton& button = preview.find<QPushButton>(name);
        QTest::mouseClick(&button, Qt::LeftButton);
        EXPECT_EQ(state(), clicked) << name;
        QTest::keyClick(&preview.column, key, Qt::ControlModifier);
        EXPECT_EQ(state(), pressed) << name;
        const QString told = QKeySequence(Qt::CTRL | key).toString(QKeySequence::NativeText);
        EXPECT_TRUE(button.toolTip().endsWith(QStringLiteral(" (%1)").arg(told))) << name;
    }
}

TEST(PreviewColumn, listsTheCutsAndCopiesThem) {
    ProjectBuilder project = concert();
    project.angles[0].name = "&lt;b>Wide&lt;/b>";
    Preview preview(project);
    ContentView& editor = preview.editor();
    editor.generateEdit();
    CutTable& table = preview.table();
    const int last = static_cast<int>(preview.bench.fields().cuts.size()) - 1;
    ASSERT_EQ(table.model()->rowCount(), last + 1);
    const auto line = [&](int row) {
        const auto [camera, start, duration] = editor.cutRow(static_cast<std::size_t>(row));
        return camera + '\t' + start + '\t' + duration;
    };
    EXPECT_EQ(line(0).substr(0, 25), "<b>Wide</b>\t01:00:00:00\t1");

    table.selectRow(last);
    for (const int row : {2, 0})
        table.selectionModel()->select(table.model()->index(row, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(),
              line(0) + '\n' + line(2) + '\n' + line(last));

    const auto& usage = preview.find<QTableWidget>("usageTable");
    const std::vector<UsageRow> rows = editor.usageRows();
    ASSERT_EQ(usage.rowCount(), 3);
    EXPECT_EQ(usage.item(0, 0)->text().toStdString(), "<b>Wide</b>");
    EXPECT_EQ(usage.item(2, 1)->text().toStdString(), rows[2].screenTime);
    EXPECT_EQ(usage.item(2, 3)->text().toStdString(), rows[2].shots);
}

TEST(PreviewColumn, overviewAndListShareTheSelection) {
    ProjectBuilder project;
    project.length = 25 * 3600;
    project.angles.clear();
    for (int i = 0; i < 20; ++i)
        project.angles.push_back(
            {std::string(1, static_cast<char>('A' + i)), "Camera", {{0, project.length}}});
    Preview preview(project);
    ContentView& editor = preview.editor();
    editor.generateEdit();
    EditOverview& overview = preview.overview();
    const std::vector<Cut>& cuts = preview.bench.fields().cuts;
    EXPECT_LE(overview.height(), 200);
    // Narrow cuts may share a point, but only with their own camera's.
    for (std::size_t row = 0; row < cuts.size(); ++row) {
        const auto found = overview.rowAt(overview.rowRect(row).center());
        ASSERT_TRUE(found) << row;
        EXPECT_EQ(cuts[*found].angle, cuts[row].angle) << row;
    }

    const auto selected = [&] { return preview.table().currentIndex().row(); };
    EXPECT_EQ(preview.value(), "");
    const QImage before = overview.grab().toImage();
    QTest::mouseClick(&overview, Qt::LeftButton, {}, overview.rowRect(5).center().toPoint());
    EXPECT_EQ(selected(), 5);
    EXPECT_NE(overview.grab().toImage(), before);
    preview.table().selectRow(8);
    EXPECT_EQ(preview.value(), editor.cutLine(8));
    const std::pair<Qt::Key, int> keys[] = {{Qt::Key_Right, 9},
                                            {Qt::Key_Left, 8},
                                            {Qt::Key_Home, 0},
                                            {Qt::Key_Left, 0},
                                            {Qt::Key_End, static_cast<int>(cuts.size()) - 1}};
    for (const auto& [key, row] : keys) {
        QTest::keyClick(&overview, key);
        EXPECT_EQ(selected(), row) << key;
    }
    const QPoint spot = overview.rowRect(5).center().toPoint();
    QHelpEvent pointing(QEvent::ToolTip, spot, overview.mapToGlobal(spot));
    QCoreApplication::sendEvent(&overview, &pointing);
    EXPECT_EQ(QToolTip::text().toStdString(), editor.cutLine(5));
}

TEST(PreviewColumn, keepsItsPlaceWhileTheCutsStay) {
    Preview preview;
    ContentView& editor = preview.editor();
    editor.generateEdit();
    int resets = 0;
    QObject::connect(preview.table().model(), &QAbstractItemModel::modelReset, &preview.column,
                     [&] { ++resets; });
    preview.table().selectRow(3);
    editor.setDropTargeted(true);
    editor.openSavePreset();
    editor.showError("Something went wrong.");
    EXPECT_EQ(resets, 0);
    EXPECT_EQ(preview.value(), editor.cutLine(3));
    editor.generateEdit();
    EXPECT_EQ(resets, 1);
    EXPECT_EQ(preview.value(), "");
}

TEST(BarDrawing, aRangeIsAtLeastOnePointWide) {
    const BarAxis axis{{10, 0, 100, 8}, 1000, 1.5};
    EXPECT_EQ(barRect(axis, {500, 700}), QRectF(60, 0, 20, 8));
    EXPECT_EQ(barRect(axis, {500, 501}), QRectF(60, 0, 1.5, 8));
    const std::vector<FrameRange> ranges{{0, 100}, {500, 501}, {505, 506}};
    const std::pair<double, std::optional<std::size_t>> places[] = {
        {9.9, {}}, {10, 0}, {19.9, 0}, {20, {}}, {60, 1}, {60.6, 2}, {61.9, 2}, {62.1, {}}};
    for (const auto& [x, range] : places)
        EXPECT_EQ(rangeAt(axis, ranges, x), range) << x;
}

} // namespace
} // namespace shotweaver::test
