#pragma once

#include <QDialog>

#include <functional>
#include <string>

namespace shotweaver {

/// What the product is. Closing it in any way finishes the dialog.
class ShotweaverAboutView : public QDialog {
    Q_OBJECT

  public:
    /// `openManual` runs after the sheet has closed, in a later turn of the event loop.
    ShotweaverAboutView(const std::string& versionText, std::function<void()> openManual,
                        QWidget* parent);
};

} // namespace shotweaver
