#pragma once

#include "help/HelpContent.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class QListWidget;
class QScrollArea;
class QStackedWidget;

namespace shotweaver {

/// The manual: a searchable list of topics and the page of the selected one, or why there is none.
class ShotweaverHelpView : public QWidget {
    Q_OBJECT

  public:
    /// `close` is what the button "Close" does.
    ShotweaverHelpView(HelpContent content, std::function<void()> close, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  private:
    QWidget* makeHeader(std::function<void()> close);
    QWidget* makeManual();
    QWidget* makeTopics();
    QWidget* makeNoMatches();
    QWidget* makeError() const;
    void refresh();
    void refreshList();
    void showPage();
    void showWhenLaidOut(QWidget* text);

    HelpContent content_;
    QLineEdit* search_ = nullptr;
    QLabel* count_ = nullptr;
    QListWidget* topics_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    QScrollArea* page_ = nullptr;
    std::optional<std::string> shownID_;
    std::string shownQuery_;
};

} // namespace shotweaver
