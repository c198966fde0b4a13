#include "editor/views/preview/CutTableModel.h"

#include "widgets/Padlock.h"
#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"
#include "widgets/Swatch.h"

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
      equalDigits_(style::withEqualDigits(style::font(style::TextStyle::body))),
      padlock_(padlockIcon()) {}

void CutTableModel::refresh() {
    const EditorFields& fields = editor_.fields();
    const EditRevision* const edit = fields.shownEdit();
    const std::int64_t position = edit ? fields.history.index : -1;
    const UUID id = edit ? edit->id : UUID();
    if (project_ == fields.project && position_ == position && edit_ == id) return refreshKept();
    beginResetModel();
    if (project_ != fields.project) {
        project_ = fields.project;
        makeSwatches();
    }
    position_ = position;
    edit_ = id;
    rows_ = static_cast<int>(fields.cuts().size());
    kept_ = fields.kept;
    endResetModel();
}

/// In the colours of the timeline's lanes.
void CutTableModel::makeSwatches() {
    swatches_.clear();
    for (const ImportedAngle& angle : project_->videoAngles)
        swatches_.emplace(angle.id, swatch(swatches_.size()));
}

QVariant CutTableModel::decoration(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (index.column() == kept && editor_.isKept(row)) return padlock_;
    if (index.column() != camera) return {};
    const auto found = swatches_.find(editor_.fields().cuts().at(row).angle);
    return found == swatches_.end() ? QVariant() : found->second;
}

/// What is kept changes what is said of the cuts after it.
void CutTableModel::refreshKept() {
    if (kept_ == editor_.fields().kept) return;
    kept_ = editor_.fields().kept;
    if (rows_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columns - 1));
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
        return index.column() == kept ? QVariant()
                                      : toQt(textOf(editor_.cutRow(row), index.column()));
    case Qt::DecorationRole:
        return decoration(index);
    case Qt::AccessibleTextRole:
        return index.column() == kept ? toQt(editor_.isKept(row) ? "Kept" : "Not kept")
                                      : QVariant();
    case Qt::ToolTipRole:
        return plainToolTip(editor_.cutRow(row).camera + "\n" + editor_.cutReason(row));
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
    return role == Qt::DisplayRole ? title(section, titles_) : QVariant();
}

QString CutTableModel::title(int column, Titles titles) {
    const bool isWhole = titles == Titles::whole;
    switch (column) {
    case camera:
        return QStringLiteral("Camera");
    case start:
        return isWhole ? QStringLiteral("Start (Timecode)") : QStringLiteral("Start\n(Timecode)");
    case duration:
        return isWhole ? QStringLiteral("Duration (seconds)")
                       : QStringLiteral("Duration\n(seconds)");
    default:
        return {};
    }
}

void CutTableModel::setTitles(Titles titles) {
    if (titles == titles_) return;
    titles_ = titles;
    Q_EMIT headerDataChanged(Qt::Horizontal, start, duration);
}

} // namespace shotweaver
