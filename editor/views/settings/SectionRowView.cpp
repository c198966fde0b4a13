#include "editor/views/settings/SectionRowView.h"

#include "widgets/PanelLayout.h"
#include "widgets/Picker.h"
#include "widgets/Style.h"
#include "widgets/TextField.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>
#include <initializer_list>

namespace shotweaver {

namespace {

TextField* timecodeField(const QString& title) {
    auto* const field = new TextField(title, QStringLiteral("HH:MM:SS:FF"));
    field->setFont(style::withEqualDigits(style::font(style::TextStyle::body)));
    return field;
}

QLabel* faultLabel() {
    QLabel* const label = new WrappedLabel(style::TextStyle::caption, style::gap());
    label->hide();
    return label;
}

} // namespace

SectionRowView::SectionRowView(ContentView& editor, std::size_t row, QWidget* parent)
    : QWidget(parent), editor_(editor), row_(row),
      name_(
          new TextField(QStringLiteral("Section name"), QStringLiteral("Section name (optional)"))),
      camera_(new Picker(QStringLiteral("Camera"))),
      remove_(new QPushButton(QStringLiteral("Remove"))),
      start_(timecodeField(QStringLiteral("Start"))), end_(timecodeField(QStringLiteral("End"))),
      startFault_(faultLabel()), endFault_(faultLabel()) {
    startFault_->setObjectName(QStringLiteral("startFault-%1").arg(row));
    endFault_->setObjectName(QStringLiteral("endFault-%1").arg(row));
    name(name_, QStringLiteral("sectionName"));
    name(camera_, QStringLiteral("sectionCamera"));
    name(remove_, QStringLiteral("removeSection"));
    name(start_, QStringLiteral("sectionStart"));
    name(end_, QStringLiteral("sectionEnd"));
    remove_->setAccessibleName(remove_->text());
    remove_->setAutoDefault(false);
    bind();
    QVBoxLayout* const column = columnLayout(this);
    column->setSpacing(style::scaled(style::close));
    column->addWidget(divider());
    column->addLayout(makeHeading());
    column->addWidget(name_);
    column->addLayout(makeCamera());
    column->addLayout(makeTimes());
    column->addWidget(startFault_);
    column->addWidget(endFault_);
}

/// A screen reader tells the rows apart by their titles.
void SectionRowView::name(QWidget* control, const QString& prefix) {
    control->setObjectName(QStringLiteral("%1-%2").arg(prefix).arg(row_));
    control->setAccessibleDescription(toQt(sectionTitle(row_)));
}

QLayout* SectionRowView::makeHeading() {
    QHBoxLayout* const line = rowLayout();
    QLabel* const title = style::label(style::TextStyle::headline);
    title->setText(toQt(sectionTitle(row_)));
    line->addWidget(title, 1);
    line->addWidget(remove_);
    return line;
}

QLayout* SectionRowView::makeCamera() {
    QHBoxLayout* const line = rowLayout();
    line->addWidget(titleLabel(camera_->accessibleName(), camera_));
    line->addWidget(camera_, 1);
    return line;
}

QLayout* SectionRowView::makeTimes() {
    QHBoxLayout* const line = rowLayout();
    for (TextField* const field : {start_, end_}) {
        line->addWidget(titleLabel(field->accessibleName(), field));
        line->addWidget(field, 1);
    }
    return line;
}

void SectionRowView::bind() {
    bindText(name_, &SectionDraft::name);
    bindText(start_, &SectionDraft::start);
    bindText(end_, &SectionDraft::end);
    connect(camera_, &Picker::chosen, this, [this](const std::string& id) {
        editor_.editSection(row_, [&](SectionDraft& section) { section.camera = id; });
    });
    connect(remove_, &QPushButton::clicked, this, [this] { editor_.removeSection(row_); });
}

void SectionRowView::bindText(TextField* field, std::string SectionDraft::*text) {
    field->leaveUndo();
    connect(field, &TextField::typed, this, [this, field, text](const std::string& typed) {
        editor_.editSection(
            row_, [&](SectionDraft& section) { std::invoke(text, section) = typed; },
            ContentView::Saving::soon, field->objectName().toStdString());
    });
    connect(field, &QLineEdit::editingFinished, this, &SectionRowView::showFaults);
}

void SectionRowView::show(const SectionDraft& section, const std::vector<PickerOption>& cameras,
                          SectionFaults faults) {
    name_->show(section.name);
    camera_->show(cameras, section.camera);
    start_->show(section.start);
    end_->show(section.end);
    faults_ = std::move(faults);
    showFaults();
}

void SectionRowView::showFaults() {
    showFault(*start_, *startFault_, faults_.start.value_or(""));
    showFault(*end_, *endFault_, faults_.end.value_or(""));
}

/// Nothing is said of what is only half typed, and a line that is there keeps its place until the
/// field is left.
void SectionRowView::showFault(TextField& field, QLabel& label, const std::string& fault) {
    const bool isTyped = field.hasFocus();
    if (!isTyped) label.setVisible(!fault.empty());
    showText(label, fault);
    field.showFault(label.isHidden() ? "" : fault);
    field.setAccessibleDescription(
        toQt(sectionTitle(row_) + (label.isHidden() || fault.empty() ? "" : ". " + fault)));
}

void SectionRowView::beginWithStart() {
    start_->setFocus();
    start_->selectAll();
}

void SectionRowView::followInTabOrder(QWidget* previous) {
    for (QWidget* const control :
         std::initializer_list<QWidget*>{end_, start_, camera_, name_, remove_})
        setTabOrder(previous, control);
}

QWidget* SectionRowView::lastControl() const {
    return end_;
}

QWidget* SectionRowView::removeButton() const {
    return remove_;
}

} // namespace shotweaver
