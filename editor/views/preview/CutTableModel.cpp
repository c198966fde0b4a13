#include "editor/views/preview/CutTableModel.h"

#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"

namespace shotweaver {

namespace {

QVariant alignmentOf(int column) {
    const bool isNumber = column == CutTableModel::duration;
    return QVariant::fromValue(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
}

std::string textOf(CutRow row, int column) {
    switch (column) {
    case CutTableModel::camera:
        return std::move(row.camera);
    case CutTableModel::start:
        return std::move(row.start);
    default:
        return std::move(row.duration);
    }
}

} // namespace

CutTableModel::CutTableModel(const ContentView& editor, QObject* parent)
    : QAbstractTableModel(parent), editor_(editor),
      equalDigits_(style::withEqualDigits(style::font(style::TextStyle::body))) {}

void CutTableModel::refresh() {
    const EditorFields& fields = editor_.fields();
    const EditRevision* const edit = fields.shownEdit();
    const std::int64_t position = edit ? fields.history.index : -1;
    const UUID id = edit ? edit->id : UUID();
    if (project_ == fields.project && position_ == position && edit_ == id) return;
    beginResetModel();
    project_ = fields.project;
    position_ = position;
    edit_ = id;
    rows_ = static_cast<int>(fields.cuts().size());
    endResetModel();
}

int CutTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int CutTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns;
}

QVariant CutTableModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return toQt(textOf(editor_.cutRow(row), index.column()));
    case Qt::ToolTipRole: // for names that do not fit
        return index.column() == camera ? plainToolTip(editor_.cutRow(row).camera) : QVariant();
    case Qt::FontRole:
        return index.column() == camera ? QVariant() : equalDigits_;
    case Qt::TextAlignmentRole:
        return alignmentOf(index.column());
    default:
        return {};
    }
}

QVariant CutTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return alignmentOf(section);
    if (role != Qt::DisplayRole) return {};
    switch (section) {
    case camera:
        return QStringLiteral("Camera");
    case start:
        return QStringLiteral("Start (Timecode)");
    default:
        return QStringLiteral("Duration (seconds)");
    }
}

} // namespace shotweaver
