#include "editor/views/settings/SectionRowView.h"

#include "widgets/PanelLayout.h"
#include "widgets/Picker.h"
#include "widgets/Style.h"
#include "widgets/TextField.h"

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

} // namespace

SectionRowView::SectionRowView(ContentView& editor, std::size_t row, QWidget* parent)
    : QWidget(parent), editor_(editor), row_(row),
      name_(
          new TextField(QStringLiteral("Section name"), QStringLiteral("Section name (optional)"))),
      camera_(new Picker(QStringLiteral("Camera"))),
      remove_(new QPushButton(QStringLiteral("Remove"))),
      start_(timecodeField(QStringLiteral("Start"))), end_(timecodeField(QStringLiteral("End"))) {
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
    column->addWidget(name_);
    column->addLayout(makeCamera());
    column->addLayout(makeTimes());
}

/// A screen reader tells the rows apart by their titles.
void SectionRowView::name(QWidget* control, const QString& prefix) {
    control->setObjectName(QStringLiteral("%1-%2").arg(prefix).arg(row_));
    control->setAccessibleDescription(toQt(sectionTitle(row_)));
}

QLayout* SectionRowView::makeCamera() {
    QHBoxLayout* const line = rowLayout();
    line->addWidget(titleLabel(camera_->accessibleName(), camera_));
    line->addWidget(camera_, 1);
    line->addWidget(remove_);
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
    connect(field, &TextField::typed, this, [this, text](const std::string& typed) {
        editor_.editSection(
            row_, [&](SectionDraft& section) { std::invoke(text, section) = typed; },
            ContentView::Saving::soon);
    });
}

void SectionRowView::show(const SectionDraft& section, const std::vector<PickerOption>& cameras) {
    name_->show(section.name);
    camera_->show(cameras, section.camera);
    start_->show(section.start);
    end_->show(section.end);
}

void SectionRowView::followInTabOrder(QWidget* previous) {
    for (QWidget* const control :
         std::initializer_list<QWidget*>{end_, start_, remove_, camera_, name_})
        setTabOrder(previous, control);
}

QWidget* SectionRowView::lastControl() const {
    return end_;
}

QWidget* SectionRowView::removeButton() const {
    return remove_;
}

} // namespace shotweaver
