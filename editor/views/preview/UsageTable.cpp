#include "editor/views/preview/UsageTable.h"

#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"
#include "widgets/Swatch.h"
#include "widgets/TableLook.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

enum Column { camera, screenTime, share, shots, columns };

Qt::Alignment alignmentOf(int column) {
    return Qt::AlignVCenter | (column == camera ? Qt::AlignLeft : Qt::AlignRight);
}

} // namespace

UsageTable::UsageTable(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), table_(new QTableWidget(0, columns)) {
    const QString name = QStringLiteral("Actual camera usage");
    QLabel* const title = style::label(style::TextStyle::headline);
    title->setText(name);
    table_->setObjectName(QStringLiteral("usageTable"));
    table_->setAccessibleName(name);
    setUpTable();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(style::scaled(style::tight));
    layout->addWidget(title);
    layout->addWidget(table_);
    refresh();
}

void UsageTable::setUpTable() {
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionMode(QAbstractItemView::NoSelection);
    applyTableLook(*table_);
    table_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table_->setHorizontalHeaderLabels({QStringLiteral("Camera"), QStringLiteral("Screen time"),
                                       QStringLiteral("Share"), QStringLiteral("Shots")});
    for (int column = 0; column < columns; ++column)
        table_->horizontalHeaderItem(column)->setTextAlignment(alignmentOf(column));
    QHeaderView* const header = table_->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionResizeMode(camera, QHeaderView::Stretch);
    header->resizeSection(screenTime, style::scaled(110));
    header->resizeSection(share, style::scaled(65));
    header->resizeSection(shots, style::scaled(60));
}

void UsageTable::refresh() {
    const EditRevision* const edit = editor_.fields().shownEdit();
    std::vector<UsageRow> rows;
    if (edit) rows = usageRows(edit->cuts, *editor_.project());
    if (rows == rows_) return;
    rows_ = std::move(rows);
    table_->setFixedHeight(style::scaled(usageTableHeight(rows_.size())));
    table_->setRowCount(static_cast<int>(rows_.size()));
    for (std::size_t row = 0; row < rows_.size(); ++row)
        showRow(static_cast<int>(row), rows_[row]);
}

void UsageTable::showRow(int row, const UsageRow& usage) {
    const std::string* const texts[columns] = {&usage.camera, &usage.screenTime, &usage.share,
                                               &usage.shots};
    for (int column = 0; column < columns; ++column) {
        auto* const item = new QTableWidgetItem(toQt(*texts[column]));
        item->setTextAlignment(alignmentOf(column));
        if (column == camera) {
            item->setIcon(swatch(static_cast<std::size_t>(row)));
            item->setToolTip(plainToolTip(usage.camera));
        } else
            item->setFont(style::withEqualDigits(table_->font()));
        table_->setItem(row, column, item);
    }
}

} // namespace shotweaver
