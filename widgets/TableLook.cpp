#include "widgets/TableLook.h"

#include "widgets/Style.h"

#include <QHeaderView>
#include <QTableView>

namespace shotweaver {

namespace {

// Points beside a header's title. An item has some of its own.
constexpr int headerInset = 6;
constexpr int itemInset = 4;

int insetsOfTitle() {
    return 2 * style::scaled(headerInset + 2);
}

/// The style sheet's header would cut a title off.
class ElidingHeader : public QHeaderView {
  public:
    explicit ElidingHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

  protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        if (option->text.contains(QLatin1Char('\n'))) return; // which fits
        option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight,
                                                      sectionSize(section) - insetsOfTitle() + 2);
    }
};

} // namespace

void applyTableLook(QTableView& table) {
    const int height = style::scaled(tableRowHeight);
    table.setTabKeyNavigation(false);
    table.setShowGrid(false);
    table.setWordWrap(false);
    table.setTextElideMode(Qt::ElideMiddle); // the ends of a name say which it is
    const int side = style::scaled(10);
    table.setIconSize({side, side});
    table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.setStyleSheet(QStringLiteral("QTableView:focus { border: 1px solid %3; }"
                                       "QTableView::item { padding: 0 %1px; border: none; }"
                                       "QHeaderView::section { padding: 0 %2px; }")
                            .arg(style::scaled(itemInset))
                            .arg(style::scaled(headerInset))
                            .arg(style::accent().name()));
    table.setHorizontalHeader(new ElidingHeader(&table));
    table.horizontalHeader()->setFixedHeight(height);
    table.verticalHeader()->hide();
    // Fixed, so that thousands of rows need not be asked for their heights.
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(height);
}

int columnWidthFor(const QTableView& table, const QString& title) {
    return table.horizontalHeader()->fontMetrics().horizontalAdvance(title) + insetsOfTitle();
}

} // namespace shotweaver
