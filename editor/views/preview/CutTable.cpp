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

namespace {

// Points.
constexpr int smallestColumn = 60;
constexpr int padlockWidth = 24;

} // namespace

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
    for (const int column : {CutTableModel::start, CutTableModel::duration}) {
        const QString title = model_->headerData(column, Qt::Horizontal).toString();
        header->resizeSection(column, columnWidthFor(*this, title));
    }
    header->setMinimumSectionSize(style::scaled(padlockWidth));
    header->setSectionResizeMode(CutTableModel::kept, QHeaderView::Fixed);
    header->resizeSection(CutTableModel::kept, style::scaled(padlockWidth));
    wantedDuration_ = fittedDuration_ = header->sectionSize(CutTableModel::duration);
}

void CutTable::addCopyAction() {
    auto* const copy = new QAction(QStringLiteral("Copy"), this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, [this] { copySelection(); });
    addAction(copy);
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
        for (const int column :
             {CutTableModel::camera, CutTableModel::start, CutTableModel::duration})
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
    const int room = viewport()->width() - header->sectionSize(CutTableModel::start) -
                     header->sectionSize(CutTableModel::kept);
    if (header->sectionSize(CutTableModel::duration) == fittedDuration_) {
        const int smallest = std::min(style::scaled(smallestColumn), wantedDuration_);
        fittedDuration_ = std::clamp(room - smallestCamera, smallest, wantedDuration_);
        header->resizeSection(CutTableModel::duration, fittedDuration_);
    }
    header->resizeSection(
        CutTableModel::camera,
        std::max(smallestCamera, room - header->sectionSize(CutTableModel::duration)));
}

} // namespace shotweaver
