#include "editor/views/FindingsView.h"

#include "editor/FindingsContent.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QPlainTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace shotweaver {

FindingsView::FindingsView(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), heading_(new QToolButton) {
    heading_->setObjectName(QStringLiteral("importWarning"));
    heading_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    heading_->setFocusPolicy(Qt::StrongFocus);
    heading_->setCheckable(true);
    connect(heading_, &QToolButton::toggled, this, &FindingsView::refresh);
    columnLayout(this)->addWidget(heading_, 0, Qt::AlignLeft);
    refresh();
}

/// Made when it is first opened: most projects have nothing to tell.
void FindingsView::makeList() {
    list_ = new QPlainTextEdit(this);
    list_->setObjectName(QStringLiteral("importWarnings"));
    list_->setAccessibleName(QStringLiteral("What Final Cut would refuse or change"));
    list_->setReadOnly(true);
    list_->setTabChangesFocus(true);
    list_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    list_->setFont(style::font(style::TextStyle::callout));
    layout()->addWidget(list_);
}

void FindingsView::refresh() {
    const std::vector<Finding>& findings = editor_.findings();
    setVisible(!findings.empty());
    const QString line = toQt(findingsLine(findings));
    if (line != heading_->text()) heading_->setText(line);
    const bool isOpen = heading_->isChecked();
    heading_->setArrowType(isOpen ? Qt::DownArrow : Qt::RightArrow);
    if (isOpen && !list_) makeList();
    if (!list_) return;
    list_->setVisible(isOpen);
    const QString text = toQt(findingsText(findings));
    if (!isOpen || text == list_->toPlainText()) return;
    list_->setPlainText(text);
    // Two lines for each, up to a few.
    const int lines = 2 * std::min(static_cast<int>(findings.size()), 4);
    list_->setFixedHeight(lines * list_->fontMetrics().lineSpacing() + style::scaled(12));
}

} // namespace shotweaver
