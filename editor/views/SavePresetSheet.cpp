#include "editor/views/SavePresetSheet.h"

#include "widgets/PanelLayout.h"
#include "widgets/Sheet.h"
#include "widgets/Style.h"
#include "widgets/TextField.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace shotweaver {

SavePresetSheet::SavePresetSheet(ContentView& editor, QWidget* parent)
    : QDialog(parent), editor_(editor),
      name_(new TextField(QStringLiteral("Preset name"),
                          QStringLiteral("Name, such as Sunday sermon"))) {
    setObjectName(QStringLiteral("savePresetSheet"));
    setWindowTitle(QStringLiteral("Save preset"));
    makeSheet(*this);
    name_->setObjectName(QStringLiteral("presetName"));
    name_->setMinimumWidth(style::scaled(300));
    connect(name_, &TextField::typed, this,
            [this](const std::string& name) { editor_.setPresetName(name); });

    QLabel* const heading = style::label(style::TextStyle::headline);
    heading->setText(windowTitle());
    auto* const layout = new QVBoxLayout(this);
    const int margin = style::scaled(style::wide);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(style::scaled(style::normal));
    layout->addWidget(heading);
    layout->addWidget(name_);
    layout->addLayout(makeButtons());
}

QLayout* SavePresetSheet::makeButtons() {
    auto* const cancel = new QPushButton(QStringLiteral("Cancel"));
    cancel->setObjectName(QStringLiteral("cancelSavePreset"));
    cancel->setAutoDefault(false);
    save_ = new QPushButton(QStringLiteral("Save"));
    QPushButton* const save = save_;
    save->setObjectName(QStringLiteral("confirmSavePreset"));
    save->setProperty("prominent", true);
    save->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &SavePresetSheet::reject);
    connect(save, &QPushButton::clicked, this, [this] { editor_.savePreset(); });
    QHBoxLayout* const row = rowLayout();
    row->addStretch();
    for (QPushButton* const button : {cancel, save}) {
        button->setAccessibleName(button->text());
        row->addWidget(button);
    }
    return row;
}

void SavePresetSheet::refresh() {
    const EditorFields& fields = editor_.fields();
    name_->show(fields.presetName);
    save_->setEnabled(name_->text().trimmed().size() > 0);
    if (fields.showSavePreset == isVisible()) return;
    if (!fields.showSavePreset) return hide();
    name_->selectAll();
    name_->setFocus();
    open();
}

/// The editor decides, and `refresh` follows it.
void SavePresetSheet::reject() {
    editor_.cancelSavePreset();
}

} // namespace shotweaver
