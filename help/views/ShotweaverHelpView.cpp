#include "help/views/ShotweaverHelpView.h"

#include "help/AboutTexts.h"
#include "help/HelpTexts.h"
#include "help/views/LinkLabel.h"
#include "help/views/ManualPage.h"
#include "widgets/IconLabel.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

constexpr QSize smallest(700, 500);
constexpr QSize ideal(900, 660);
constexpr int topicsWidth = 230;

QFrame* divider() {
    auto* const line = new QFrame;
    line->setFrameShape(QFrame::VLine);
    QPalette palette = line->palette();
    palette.setColor(QPalette::WindowText, style::line());
    line->setPalette(palette);
    return line;
}

QSize scaledSize(QSize size) {
    return {style::scaled(size.width()), style::scaled(size.height())};
}

} // namespace

ShotweaverHelpView::ShotweaverHelpView(HelpContent content, std::function<void()> close,
                                       QWidget* parent)
    : QWidget(parent), content_(std::move(content)) {
    setObjectName(QStringLiteral("helpView"));
    setMinimumSize(scaledSize(smallest));
    auto* const layout = new QVBoxLayout(this);
    const int margin = style::scaled(style::wide);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(style::scaled(style::normal));
    layout->addWidget(makeHeader(close));
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this, nullptr, nullptr,
                          Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, this, [this, close = std::move(close)] {
                if (search_ && !search_->text().isEmpty()) return search_->clear();
                close();
            });
    if (content_.error()) {
        layout->addWidget(makeError(), 1);
        return;
    }
    layout->addWidget(makeManual(), 1);
    connect(new QShortcut(QKeySequence(QKeySequence::Find), this), &QShortcut::activated, this,
            [this] {
                search_->setFocus();
                search_->selectAll();
            });
    setFocusProxy(search_);
    refresh();
}

QSize ShotweaverHelpView::sizeHint() const {
    return scaledSize(ideal);
}

QWidget* ShotweaverHelpView::makeHeader(std::function<void()> close) {
    auto* const header = new QWidget;
    auto* const row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::scaled(style::normal));
    row->addWidget(new IconLabel(48));
    auto* const names = new QVBoxLayout;
    names->setSpacing(0);
    QLabel* const title = style::label(style::TextStyle::title);
    title->setText(QString::fromUtf8(helpTexts::title));
    QLabel* const tagline = style::label(style::TextStyle::caption, style::secondary());
    tagline->setText(QString::fromUtf8(helpTexts::tagline));
    names->addWidget(title);
    names->addWidget(tagline);
    row->addLayout(names, 1);
    auto* const button = new QPushButton(QString::fromUtf8(helpTexts::close));
    button->setObjectName(QStringLiteral("closeHelp"));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [close = std::move(close)] { close(); });
    row->addWidget(button);
    return header;
}

QWidget* ShotweaverHelpView::makeManual() {
    auto* const manual = new QWidget;
    auto* const row = new QHBoxLayout(manual);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::scaled(style::normal));
    row->addWidget(makeTopics());
    row->addWidget(divider());
    pages_ = new QStackedWidget;
    page_ = new QScrollArea;
    page_->setWidgetResizable(true);
    page_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    page_->setAccessibleName(QString::fromUtf8(helpTexts::title));
    pages_->addWidget(page_);
    pages_->addWidget(makeNoMatches());
    row->addWidget(pages_, 1);
    return manual;
}

QWidget* ShotweaverHelpView::makeTopics() {
    auto* const column = new QWidget;
    column->setFixedWidth(style::scaled(topicsWidth));
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(style::scaled(style::close));
    search_ = new QLineEdit;
    search_->setObjectName(QStringLiteral("helpSearch"));
    search_->setPlaceholderText(QString::fromUtf8(helpTexts::searchPlaceholder));
    search_->setAccessibleName(QString::fromUtf8(helpTexts::searchAccessibleName));
    search_->setClearButtonEnabled(true);
    count_ = style::label(style::TextStyle::caption, style::secondary());
    count_->setObjectName(QStringLiteral("helpCount"));
    topics_ = new QListWidget;
    topics_->setObjectName(QStringLiteral("helpTopics"));
    topics_->setAccessibleName(QStringLiteral("Help topics"));
    topics_->setWordWrap(true);
    topics_->setStyleSheet(QStringLiteral("QListWidget::item { padding: %1px %2px; }")
                               .arg(style::scaled(style::tight))
                               .arg(style::scaled(style::close)));
    topics_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(search_);
    layout->addWidget(count_);
    layout->addWidget(topics_, 1);
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
        content_.setQuery(text.toStdString());
        refresh();
    });
    connect(topics_, &QListWidget::currentRowChanged, this, [this](int row) {
        const auto sections = content_.sections();
        if (row < 0 || static_cast<std::size_t>(row) >= sections.size()) return;
        content_.select(sections[static_cast<std::size_t>(row)]->id);
        showPage();
    });
    return column;
}

QWidget* ShotweaverHelpView::makeNoMatches() {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    QLabel* const title = new WrappedLabel(style::TextStyle::headline);
    title->setText(QString::fromUtf8(helpTexts::noMatches));
    QLabel* const hint = new WrappedLabel(style::TextStyle::body, style::secondary());
    hint->setText(QString::fromUtf8(helpTexts::noMatchesHint));
    auto* const button = new QPushButton(QString::fromUtf8(helpTexts::showAll));
    button->setObjectName(QStringLiteral("showAllTopics"));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, search_, &QLineEdit::clear);
    layout->addStretch();
    for (QWidget* const widget : {static_cast<QWidget*>(title), static_cast<QWidget*>(hint)})
        layout->addWidget(widget);
    layout->addWidget(button, 0, Qt::AlignLeft);
    layout->addStretch();
    return page;
}

QWidget* ShotweaverHelpView::makeError() const {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    QLabel* const title = new WrappedLabel(style::TextStyle::headline);
    title->setText(QString::fromUtf8(helpTexts::failed));
    QLabel* const description = new WrappedLabel(style::TextStyle::body);
    description->setObjectName(QStringLiteral("helpError"));
    description->setText(toQt(content_.error()->description));
    layout->addStretch();
    layout->addWidget(title);
    layout->addWidget(description);
    layout->addWidget(makeLink(helpTexts::visitWebsite, productPage, style::TextStyle::body));
    layout->addStretch();
    return page;
}

void ShotweaverHelpView::refresh() {
    count_->setText(toQt(content_.countLine()));
    refreshList();
    showPage();
}

void ShotweaverHelpView::refreshList() {
    const QSignalBlocker blocker(topics_);
    topics_->clear();
    const ShotweaverManual::Section* const shown = content_.shownSection();
    for (const ShotweaverManual::Section* const section : content_.sections()) {
        topics_->addItem(toQt(section->title));
        if (section == shown) topics_->setCurrentRow(topics_->count() - 1);
    }
}

void ShotweaverHelpView::showPage() {
    const ShotweaverManual::Section* const section = content_.shownSection();
    pages_->setCurrentIndex(section ? 0 : 1);
    if (!section || (section->id == shownID_ && shownQuery_ == content_.query())) return;
    shownID_ = section->id;
    shownQuery_ = content_.query();
    const auto [page, firstHit] = makeManualPage(*section, content_);
    page_->setWidget(page); // deletes the former page
    page_->verticalScrollBar()->setValue(0);
    if (firstHit) showWhenLaidOut(firstHit);
}

void ShotweaverHelpView::showWhenLaidOut(QWidget* text) {
    QTimer::singleShot(
        0, text, [this, text] { page_->ensureWidgetVisible(text, 0, style::scaled(style::wide)); });
}

} // namespace shotweaver
