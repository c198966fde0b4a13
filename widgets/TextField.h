#pragma once

#include <QLineEdit>

#include <string>

namespace shotweaver {

/// A line of text. Showing what is in it already leaves the cursor where it is.
class TextField : public QLineEdit {
    Q_OBJECT

  public:
    TextField(const QString& accessibleName, const QString& placeholder, QWidget* parent = nullptr);

    void show(const std::string& text);
    /// Outlines the field, and tells a screen reader why; empty for no fault.
    void showFault(const std::string& fault);
    /// Leaves the keys that undo to the window, which takes back what was typed with the rest.
    void leaveUndo() { leavesUndo_ = true; }

  Q_SIGNALS:
    void typed(const std::string& text);

  protected:
    bool event(QEvent* event) override;

  private:
    bool leavesUndo_ = false;
};

} // namespace shotweaver
