#include "editor/views/settings/PresetsPanel.h"

#include "editor/PanelTexts.h"
#include "widgets/ButtonAction.h"
#include "widgets/PanelLayout.h"
#include "widgets/Picker.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace shotweaver {

PresetsPanel::PresetsPanel(ContentView& editor, QWidget* parent)
    : QGroupBox(QStringLiteral("Saved presets"), parent), editor_(editor),
      preset_(new Picker(QStringLiteral("Preset"), this)),
      apply_(makeButton(QStringLiteral("Apply"), QStringLiteral("applyPreset"),
                        &ContentView::applyPreset)),
      update_(makeButton(QStringLiteral("Update"), QStringLiteral("updatePreset"),
                         &ContentView::updatePreset)),
      delete_(makeButton(QStringLiteral("Delete"), QStringLiteral("deletePreset"),
                         &ContentView::deletePreset)),
      save_(makeButton(QStringLiteral("Save…"), QStringLiteral("savePreset"),
                       &ContentView::openSavePreset)),
      notice_(new WrappedLabel(style::TextStyle::callout)) {
    preset_->setObjectName(QStringLiteral("preset"));
    connect(preset_, &Picker::chosen, this,
            [this](const std::string& id) { editor_.choosePreset(id); });
    notice_->setObjectName(QStringLiteral("presetNotice"));

    QHBoxLayout* const picker = rowLayout();
    picker->addWidget(titleLabel(preset_->accessibleName(), preset_));
    picker->addWidget(preset_, 1);
    QVBoxLayout* const layout = panelLayout(this);
    layout->addLayout(picker);
    layout->addLayout(makeButtons());
    layout->addWidget(notice_);
    layout->addWidget(helpLabel(panelTexts::presetsHelp));
    refresh();
}

QPushButton* PresetsPanel::makeButton(const QString& title, const QString& name,
                                      void (ContentView::*operation)()) {
    return makeActionButton({name, title, {}, {}}, this,
                            [this, operation] { std::invoke(operation, editor_); });
}

QLayout* PresetsPanel::makeButtons() {
    QHBoxLayout* const row = rowLayout();
    for (QPushButton* const button : {apply_, update_, delete_})
        row->addWidget(button);
    row->addStretch();
    row->addWidget(save_);
    return row;
}

void PresetsPanel::refresh() {
    const EditorFields& fields = editor_.fields();
    preset_->show(editor_.presetOptions(), fields.chosenPreset);
    const bool isChosen = editor_.selectedPreset().has_value();
    for (QPushButton* const button : {apply_, update_, delete_})
        button->setEnabled(isChosen);
    showText(*notice_, fields.presetNotice);
    notice_->setVisible(!fields.presetNotice.empty());
}

} // namespace shotweaver
