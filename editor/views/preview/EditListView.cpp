#include "editor/views/preview/EditListView.h"

#include "editor/EditListContent.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"
#include "widgets/TableLook.h"

#include <QDateTime>
#include <QHeaderView>
#include <QLocale>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace shotweaver {

namespace {

/// In the user's time zone and form.
QString timeText(double secondsSince2001) {
    const QDateTime begin(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    const QDateTime time = begin.addSecs(static_cast<qint64>(secondsSince2001)).toLocalTime();
    return QLocale().toString(time, QLocale::ShortFormat);
}

} // namespace

EditListView::EditListView(ContentView& editor, QWidget* parent)
    : QFrame(parent, Qt::Popup), editor_(editor), table_(new QTableWidget) {
    setObjectName(QStringLiteral("editListPopup"));
    table_->setObjectName(QStringLiteral("editList"));
    table_->setAccessibleName(QStringLiteral("Edits"));
    const QStringList titles{QStringLiteral("Edit"), QStringLiteral("Made"), QStringLiteral("Cuts"),
                             QStringLiteral("Main camera"), QStringLiteral("Settings")};
    table_->setColumnCount(static_cast<int>(titles.size()));
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    applyTableLook(*table_);
    table_->setHorizontalHeaderLabels(titles);
    table_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    columnLayout(this)->addWidget(table_);
    connect(table_, &QTableWidget::cellClicked, this, [this](int row) { choose(row); });
    connect(table_, &QTableWidget::cellActivated, this, [this](int row) { choose(row); });
}

void EditListView::fill() {
    const std::vector<EditRow> rows = editRows(editor_.fields().history, *editor_.project());
    table_->setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < table_->rowCount(); ++row) {
        const EditRow& edit = rows[static_cast<std::size_t>(row)];
        const QString texts[] = {toQt(edit.name), timeText(edit.created), toQt(edit.cuts),
                                 toQt(edit.share), toQt(edit.settings)};
        for (int column = 0; column < table_->columnCount(); ++column)
            table_->setItem(row, column, new QTableWidgetItem(texts[column]));
    }
}

/// As large as its rows, up to some.
void EditListView::openUnder(const QWidget& button) {
    constexpr int mostRows = 12;
    fill();
    int width = table_->verticalScrollBar()->sizeHint().width() + style::scaled(style::tight);
    table_->resizeColumnsToContents();
    for (int column = 0; column < table_->columnCount(); ++column) {
        const int whole =
            std::max(columnWidthFor(*table_, table_->horizontalHeaderItem(column)->text()),
                     table_->columnWidth(column) + style::scaled(style::close));
        table_->setColumnWidth(column, whole);
        width += whole;
    }
    const int lines = std::min(table_->rowCount(), mostRows) + 1;
    setFixedSize(width, lines * style::scaled(tableRowHeight) + style::scaled(style::tight));
    table_->selectRow(static_cast<int>(editor_.fields().history.index));
    move(button.mapToGlobal(QPoint(0, button.height())));
    show();
    table_->setFocus();
}

/// A click with which it is opened by the keyboard's Return may come twice: only the first counts.
void EditListView::choose(int row) {
    if (!isVisible()) return;
    close();
    editor_.showRevision(row);
}

} // namespace shotweaver
