#include "editor/views/preview/CutTable.h"

#include "editor/views/preview/CutTableModel.h"
#include "widgets/Style.h"
#include "widgets/TableLook.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QResizeEvent>

#include <algorithm>

namespace shotweaver {

CutTable::CutTable(ContentView& editor, QWidget* parent)
    : QTableView(parent), model_(new CutTableModel(editor, this)) {
    setObjectName(QStringLiteral("cutTable"));
    setAccessibleName(QStringLiteral("Cut list"));
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    applyTableLook(*this);
    setUpColumns();
    addCopyAction();
    refresh();
}

void CutTable::setUpColumns() {
    QHeaderView* const header = horizontalHeader();
    header->setMinimumSectionSize(style::scaled(60));
    for (const int column : {CutTableModel::start, CutTableModel::duration}) {
        const QString title = model_->headerData(column, Qt::Horizontal).toString();
        header->resizeSection(column, columnWidthFor(*this, title));
    }
    wantedDuration_ = fittedDuration_ = header->sectionSize(CutTableModel::duration);
}

void CutTable::addCopyAction() {
    auto* const copy = new QAction(QStringLiteral("Copy"), this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, [this] { copySelection(); });
    addAction(copy);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void CutTable::refresh() {
    model_->refresh();
}

void CutTable::copySelection() const {
    QModelIndexList rows = selectionModel()->selectedRows();
    if (rows.isEmpty()) return;
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : rows) {
        QStringList cells;
        for (int column = 0; column < CutTableModel::columns; ++column)
            cells.append(row.siblingAtColumn(column).data().toString());
        lines.append(cells.join(QLatin1Char('\t')));
    }
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

/// The cameras take what the table gains or loses in width. Where there is little, their names
/// matter more than a whole title; a width that the user has given stays.
void CutTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    QHeaderView* const header = horizontalHeader();
    const int smallestCamera = style::scaled(80);
    const int room = viewport()->width() - header->sectionSize(CutTableModel::start);
    if (header->sectionSize(CutTableModel::duration) == fittedDuration_) {
        const int smallest = std::min(header->minimumSectionSize(), wantedDuration_);
        fittedDuration_ = std::clamp(room - smallestCamera, smallest, wantedDuration_);
        header->resizeSection(CutTableModel::duration, fittedDuration_);
    }
    header->resizeSection(
        CutTableModel::camera,
        std::max(smallestCamera, room - header->sectionSize(CutTableModel::duration)));
}

} // namespace shotweaver
