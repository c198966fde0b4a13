#include "editor/views/EditorPanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/DropHighlight.h"
#include "editor/views/FindingsView.h"
#include "editor/views/SavePresetSheet.h"
#include "editor/views/StatusView.h"
#include "editor/views/WelcomeView.h"
#include "editor/views/preview/PreviewColumn.h"
#include "editor/views/settings/SettingsColumn.h"
#include "host/FinalCutIntegration.h"
#include "widgets/ButtonAction.h"
#include "widgets/IconLabel.h"
#include "widgets/PanelLayout.h"
#include "widgets/Sheet.h"
#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QApplication>
#include <QChildEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace shotweaver {

namespace {

std::vector<std::string> urlsOf(const QMimeData& data) {
    std::vector<std::string> urls;
    for (const QUrl& url : data.urls())
        urls.push_back(url.toString(QUrl::FullyEncoded).toStdString());
    return urls;
}

bool offersXML(const QMimeData& data) {
    const std::vector<std::string>& types = acceptedXMLTypes();
    return std::any_of(types.begin(), types.end(), [&](const std::string& type) {
        return data.hasFormat(QString::fromStdString(type));
    });
}

} // namespace

EditorPanel::EditorPanel(ContentView& editor, QWidget* parent) : QWidget(parent), editor_(editor) {
    setObjectName(QStringLiteral("editorPanel"));
    auto* const layout = new QVBoxLayout(this);
    const int margin = style::scaled(style::wide);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(style::scaled(style::normal));
    layout->addWidget(makeHeader());
    welcome_ = new WelcomeView(editor_, this);
    layout->addWidget(welcome_, 1);
    findings_ = new FindingsView(editor_, this);
    layout->addWidget(findings_);
    layout->addWidget(makeColumns(), 1);
    status_ = new StatusView(editor_, this);
    layout->addWidget(status_);

    readInLayoutOrder(*this);
    settingsArea_->lower(); // the splitter has them the other way round

    dropHighlight_ = new DropHighlight(this);
    savePreset_ = new SavePresetSheet(editor_, this);
    setAcceptDrops(true);
    watchDrops(this);
    subscription_ = editor_.observe([this] { refresh(); });
    refresh();
}

EditorPanel::~EditorPanel() = default;

QWidget* EditorPanel::makeHeader() {
    auto* const header = new QWidget;
    auto* const row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::scaled(style::normal));
    row->addWidget(new IconLabel(64));
    auto* const names = new QVBoxLayout;
    names->setSpacing(0);
    QLabel* const title = style::label(style::TextStyle::title);
    title->setText(QString::fromUtf8(panelTexts::productName));
    QLabel* const tagline = style::label(style::TextStyle::callout, style::secondary());
    tagline->setText(QString::fromUtf8(panelTexts::tagline));
    names->addStretch();
    names->addWidget(title);
    names->addWidget(tagline);
    names->addStretch();
    row->addLayout(names);
    row->addStretch();
    row->addWidget(makeToolbar());
    return header;
}

QWidget* EditorPanel::makeToolbar() {
    auto* const toolbar = new QWidget;
    auto* const row = new QHBoxLayout(toolbar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::scaled(style::close));
    const auto add = [&](const ButtonAction& action, std::function<void()> run) {
        row->addWidget(makeActionButton(action, this, std::move(run)));
    };
    add({QStringLiteral("help"), QStringLiteral("Help"), QString::fromUtf8(panelTexts::helpTip),
         QKeySequence(Qt::Key_F1)},
        [this] { editor_.setShowingHelp(true); });
    add({QStringLiteral("about"),
         QStringLiteral("About"),
         QString::fromUtf8(panelTexts::aboutTip),
         {}},
        [this] { editor_.setShowingAbout(true); });
    add({QStringLiteral("import"), QStringLiteral("Import Final Cut XML…"),
         QString::fromUtf8(panelTexts::importTip), QKeySequence(QKeySequence::Open)},
        [this] { editor_.chooseProjectFile(); });
    return toolbar;
}

/// Each part is made as a child of what holds it: the style sheet is worked out again for whatever
/// changes its parent.
QWidget* EditorPanel::makeColumns() {
    columns_ = new QSplitter(Qt::Horizontal, this);
    columns_->setObjectName(QStringLiteral("columns"));
    columns_->setChildrenCollapsible(false);
    columns_->setHandleWidth(style::scaled(style::wide));
    makeSettingsArea();
    preview_ = new PreviewColumn(editor_, columns_);
    // Wider windows give the room to the cut list.
    columns_->setStretchFactor(0, 0);
    columns_->setStretchFactor(1, 1);
    return columns_;
}

/// The settings column, which scrolls up and down only.
void EditorPanel::makeSettingsArea() {
    settingsArea_ = new QScrollArea(columns_);
    settingsArea_->setObjectName(QStringLiteral("settingsArea"));
    QScrollArea* const area = settingsArea_;
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    settings_ = new SettingsColumn(editor_, area->viewport());
    area->setWidget(settings_);
    area->setMinimumWidth(settings_->minimumSizeHint().width() +
                          area->verticalScrollBar()->sizeHint().width());
}

void EditorPanel::refresh() {
    const EditorFields& fields = editor_.fields();
    const bool hasProject = fields.project != nullptr;
    welcome_->setVisible(!hasProject);
    // Before the columns appear: rows that come to a visible panel are laid out more often.
    if (hasProject) {
        settings_->refresh();
        preview_->refresh();
    }
    columns_->setVisible(hasProject);
    if (project_ != fields.project) settingsArea_->verticalScrollBar()->setValue(0);
    project_ = fields.project;
    findings_->refresh();
    status_->refresh();
    dropHighlight_->setVisible(fields.dropTargeted);
    dropHighlight_->raise();
    savePreset_->refresh();
    refreshAlert();
}

/// One alert at a time: a new error takes the place of the one on show.
void EditorPanel::refreshAlert() {
    const std::optional<std::string>& error = editor_.fields().error;
    if (!error) {
        if (alert_) alert_->close();
        return;
    }
    if (!alert_) {
        alert_ = new QMessageBox(QMessageBox::NoIcon, QString::fromUtf8(panelTexts::productName),
                                 QString(), QMessageBox::Ok, this);
        alert_->setObjectName(QStringLiteral("alert"));
        alert_->setAttribute(Qt::WA_DeleteOnClose);
        alert_->setTextFormat(Qt::PlainText);
        makeSheet(*alert_);
        connect(alert_, &QDialog::finished, this, [this] {
            alert_ = nullptr;
            editor_.dismissError();
        });
    }
    alert_->setText(shortened(toQt(*error)));
    if (isVisible() && !alert_->isVisible()) alert_->open();
}

void EditorPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Where a person who has never been here begins.
    if (!wasShown_) findChild<QPushButton*>(QStringLiteral("import"))->setFocus();
    wasShown_ = true;
    refreshAlert();
}

void EditorPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    dropHighlight_->setGeometry(rect());
}

/// Follows the panel's children, so that a drop is the panel's wherever it falls.
void EditorPanel::watchDrops(QObject* object) {
    object->installEventFilter(this);
    for (QObject* const child : object->children())
        if (child->isWidgetType()) watchDrops(child);
}

bool EditorPanel::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ChildPolished:
        if (QObject* const child = static_cast<QChildEvent*>(event)->child(); child->isWidgetType())
            watchDrops(child);
        return false;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
        return handleDragEvent(event);
    default:
        return QWidget::eventFilter(watched, event);
    }
}

/// True for the events of file drags, which nothing else gets to see.
bool EditorPanel::handleDragEvent(QEvent* event) {
    if (event->type() == QEvent::DragLeave) {
        editor_.setDropTargeted(false);
        return false;
    }
    auto* const drag = static_cast<QDropEvent*>(event);
    // What Final Cut Pro drags is for the host to read, also where files come with it.
    if (!drag->mimeData()->hasUrls() || offersXML(*drag->mimeData())) return false;
    if (event->type() == QEvent::Drop) {
        editor_.setDropTargeted(false);
        const std::vector<std::string> urls = urlsOf(*drag->mimeData());
        drag->setDropAction(Qt::CopyAction);
        drag->setAccepted(editor_.handleDroppedURLs(urls));
        return true;
    }
    // The outline means that a drop will be taken; what will not be is told when it is dropped.
    const bool isTaken = ContentView::takesURLs(urlsOf(*drag->mimeData()));
    if (editor_.fields().dropTargeted != isTaken) editor_.setDropTargeted(isTaken);
    drag->setDropAction(Qt::CopyAction);
    drag->accept();
    return true;
}

} // namespace shotweaver
