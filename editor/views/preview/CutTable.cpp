#include "editor/views/preview/CutTable.h"

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
constexpr int smallestCamera = 80;
constexpr int roomyCamera = 190; // with which titles stand in one line
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
    header->setMinimumSectionSize(style::scaled(padlockWidth));
    header->setSectionResizeMode(CutTableModel::kept, QHeaderView::Fixed);
    header->resizeSection(CutTableModel::kept, style::scaled(padlockWidth));
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

QSize CutTable::sizeHint() const {
    constexpr int fewRows = 4;
    return {QTableView::sizeHint().width(), style::scaled(tableRowHeight) * fewRows};
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

/// The cameras take what the table gains or loses in width. Where there is little, titles stand in
/// two lines; widths that the user has given stay.
void CutTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    QHeaderView* const header = horizontalHeader();
    const int lock = header->sectionSize(CutTableModel::kept);
    const bool isNarrow = viewport()->width() < lock + style::scaled(roomyCamera) +
                                                    widthOfTitles(CutTableModel::Titles::whole);
    const auto titles = isNarrow ? CutTableModel::Titles::twoLines : CutTableModel::Titles::whole;
    model_->setTitles(titles);
    header->setFixedHeight(style::scaled(tableRowHeight) * (isNarrow ? 2 : 1) -
                           (isNarrow ? style::scaled(style::close) : 0));
    int room = viewport()->width() - lock;
    for (const int column : {CutTableModel::start, CutTableModel::duration}) {
        int& fitted = fitted_[column];
        if (fitted == 0 || header->sectionSize(column) == fitted) {
            fitted = titleWidth(column, titles);
            header->resizeSection(column, fitted);
        }
        room -= header->sectionSize(column);
    }
    header->resizeSection(CutTableModel::camera, std::max(style::scaled(smallestCamera), room));
}

/// Also for the timecodes and seconds under it.
int CutTable::titleWidth(int column, CutTableModel::Titles titles) const {
    const QStringList lines = CutTableModel::title(column, titles).split(QLatin1Char('\n'));
    int width =
        column == CutTableModel::start ? columnWidthFor(*this, QStringLiteral("00:00:00:00")) : 0;
    for (const QString& line : lines)
        width = std::max(width, columnWidthFor(*this, line));
    return width;
}

int CutTable::widthOfTitles(CutTableModel::Titles titles) const {
    return titleWidth(CutTableModel::start, titles) + titleWidth(CutTableModel::duration, titles);
}

} // namespace shotweaver
