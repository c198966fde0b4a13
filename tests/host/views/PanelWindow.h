#pragma once

#include "help/HelpContent.h"
#include "host/views/ExtensionRootView.h"
#include "host/views/PanelSheets.h"
#include "tests/support/EditorBench.h"

#include <QApplication>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include <stdexcept>
#include <string>

namespace shotweaver::test {

template <class Widget = QWidget>
Widget* findAnywhere(const char* name) {
    for (QWidget* const widget : QApplication::allWidgets()) {
        auto* const found = qobject_cast<Widget*>(widget);
        if (found && found->isVisible() && found->objectName() == QLatin1String(name)) return found;
    }
    return nullptr;
}

/// A drag over a widget and its drop. Gives whether the drop was accepted.
inline bool drop(QWidget* widget, const QMimeData& data) {
    const QPoint at = widget->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &enter);
    QDropEvent dropped(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    dropped.setAccepted(false);
    QApplication::sendEvent(widget, &dropped);
    return dropped.isAccepted();
}

/// The whole window on a bench, with the shipped manual.
struct Window {
    explicit Window(const std::string& manual = std::string(SHOTWEAVER_SOURCE_DIR) +
                                                "/resources/ShotweaverHelp.json")
        : root(bench.editor()),
          sheets(
              bench.editor(), &root,
              [manual] { return HelpContent(loadManual(systemFileCalls(), manual), "und"); },
              "Version 0.1 (Beta) (Build 1)") {
        root.resize(960, 860);
        root.show();
        QApplication::processEvents();
    }

    template <class Widget = QWidget>
    Widget* find(const char* name) {
        auto* const found = root.findChild<Widget*>(QString::fromUtf8(name));
        if (!found) throw std::runtime_error(std::string("no ") + name);
        return found;
    }
    void click(const char* name) {
        QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton);
        QApplication::processEvents();
    }
    std::string alertText() {
        auto* const alert = root.findChild<QMessageBox*>(QStringLiteral("alert"));
        return alert && alert->isVisible() ? alert->text().toStdString() : "";
    }
    QUrl writeProject(const std::string& name) {
        return QUrl::fromLocalFile(
            QString::fromStdString(bench.folder.write(name, concert().xml())));
    }

    EditorBench bench;
    ExtensionRootView root;
    PanelSheets sheets;
};

} // namespace shotweaver::test
