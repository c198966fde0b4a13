#pragma once

#include "editor/ContentView.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QIcon>

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

namespace shotweaver {

/// The cuts on show, one a row. Texts are made for the rows that a view asks for.
class CutTableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { camera, start, duration, kept, columns };
    enum class Titles { whole, twoLines };
    static QString title(int column, Titles titles);

    void setTitles(Titles titles);

    /// `editor` must outlive the model.
    explicit CutTableModel(const ContentView& editor, QObject* parent = nullptr);

    /// Shows the editor's cuts, and which are kept; nothing happens when they are the ones on show.
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

  private:
    void refreshKept();
    void makeSwatches();
    QVariant decoration(const QModelIndex& index) const;

    const ContentView& editor_;
    QFont equalDigits_;
    QIcon padlock_;
    // What the rows stand for. A revision never changes, so its place and identifier tell it.
    std::shared_ptr<const Project> project_;
    std::int64_t position_ = -1; // in the history; -1 for no cuts
    UUID edit_;
    int rows_ = 0;
    KeptShots kept_;
    Titles titles_ = Titles::whole;
    std::unordered_map<std::string, QIcon> swatches_; // of the project's cameras
};

} // namespace shotweaver
