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

  Q_SIGNALS:
    void typed(const std::string& text);
};

} // namespace shotweaver
