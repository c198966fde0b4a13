#include "editor/views/StatusView.h"

#include "editor/PanelTexts.h"
#include "widgets/ButtonAction.h"
#include "widgets/ElidedLabel.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <initializer_list>

namespace shotweaver {

StatusView::StatusView(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), status_(new WrappedLabel(style::TextStyle::body)),
      export_(makeExport()), replacedRow_(makeReplaced()),
      saveError_(new WrappedLabel(style::TextStyle::caption, style::accent())) {
    status_->setObjectName(QStringLiteral("status"));
    saveError_->setObjectName(QStringLiteral("sessionSaveError"));
    QLabel* const hint = new WrappedLabel(style::TextStyle::caption, style::secondary());
    hint->setText(QString::fromUtf8(panelTexts::footerHint));
    QVBoxLayout* const lines = columnLayout(this);
    for (QWidget* const line :
         std::initializer_list<QWidget*>{status_, export_, replacedRow_, saveError_, hint})
        lines->addWidget(line);
    refresh();
}

QWidget* StatusView::makeExport() {
    auto* const place = new QWidget(this);
    exportedFile_ = new ElidedLabel(style::TextStyle::callout, style::secondary());
    exportedFile_->setObjectName(QStringLiteral("exportedFile"));
    QHBoxLayout* const row = rowLayout(place);
    row->addWidget(exportedFile_, 1);
    row->addWidget(makeActionButton(
        {QStringLiteral("copyPath"), QStringLiteral("Copy path"), {}, {}}, this,
        [this] { QGuiApplication::clipboard()->setText(toQt(editor_.fields().exportedFile)); }));
    row->addWidget(
        makeActionButton({QStringLiteral("showInFolder"), QStringLiteral("Show in folder"), {}, {}},
                         this, [this] { editor_.showExport(); }));
    return place;
}

QWidget* StatusView::makeReplaced() {
    auto* const place = new QWidget(this);
    replaced_ = new WrappedLabel(style::TextStyle::body);
    replaced_->setObjectName(QStringLiteral("replaced"));
    bringBack_ = makeActionButton({QStringLiteral("bringBack"),
                                   QStringLiteral("Bring it back"),
                                   QString::fromUtf8(panelTexts::bringBackHelp),
                                   {}},
                                  this, [this] { editor_.bringBackSession(); });
    QHBoxLayout* const row = rowLayout(place);
    row->addWidget(replaced_, 1);
    row->addWidget(bringBack_);
    return place;
}

void StatusView::refresh() {
    const EditorFields& fields = editor_.fields();
    showText(*status_, editor_.statusLine());
    // An empty line keeps its place, so that typing moves nothing.
    status_->setVisible(editor_.project() != nullptr || !fields.status.empty());
    exportedFile_->show(fields.exportedFile);
    export_->setVisible(!fields.exportedFile.empty());
    showText(*replaced_, fields.replaced ? fields.replaced->line : "");
    replacedRow_->setVisible(fields.replaced.has_value());
    bringBack_->setVisible(fields.replaced && fields.replaced->isKept);
    showText(*saveError_, fields.sessionSaveError.value_or(""));
    saveError_->setVisible(fields.sessionSaveError.has_value());
}

} // namespace shotweaver
