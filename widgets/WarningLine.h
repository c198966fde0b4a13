#pragma once

#include <QWidget>

#include <string>

class QLabel;

namespace shotweaver {

/// A warning behind its sign. Without a text it keeps its place of two lines, so that nothing moves
/// when a warning comes and goes.
class WarningLine : public QWidget {
    Q_OBJECT

  public:
    /// The label has the object name.
    explicit WarningLine(const QString& name, QWidget* parent = nullptr);

    /// Empty for none.
    void show(const std::string& text);

  private:
    QWidget* sign_;
    QLabel* text_;
};

} // namespace shotweaver
