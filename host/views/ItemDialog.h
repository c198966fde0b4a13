#pragma once

#include "editor/HostServices.h"

#include <QFileDialog>

namespace shotweaver {

/// Chooses one item as an `OpenPanel` offers it. Where files can be chosen, so can folders that are
/// bundles (".fcpxmld"): they are taken, not entered.
class ItemDialog : public QFileDialog {
    Q_OBJECT

  public:
    explicit ItemDialog(const OpenPanel& panel, QWidget* parent = nullptr);

    /// Shows a folder first, if it is there.
    void startIn(const QString& folder);

    /// The item's path, once the dialog was accepted.
    QString chosen() const;

  public Q_SLOTS:
    void accept() override;

  private:
    void showMessage(const QString& message);
    void take(const QString& bundle);

    bool takesBundles_;
    QString current_; // marked in the list
    QString bundle_;  // chosen
};

} // namespace shotweaver
