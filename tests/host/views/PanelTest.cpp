#include "editor/views/EditorPanel.h"
#include "host/views/ExtensionDropContainer.h"
#include "host/views/ExtensionViewController.h"
#include "host/views/ItemDialog.h"
#include "host/views/OpenedFiles.h"
#include "platform/FileURL.h"
#include "tests/host/views/PanelWindow.h"
#include "widgets/IconLabel.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QFileOpenEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>

#include <filesystem>

namespace shotweaver::test {
namespace {

TEST(Panel, aJourneyFromADropToExportedFilesWithKeptAndChangedShots) {
    Window window;
    const auto cuts = [&]() -> const std::vector<Cut>& { return window.bench.fields().cuts(); };
    EXPECT_TRUE(window.find("noProject")->isVisible());
    QMimeData drag;
    drag.setUrls({window.writeProject("Concert.fcpxml")});
    EXPECT_TRUE(drop(window.find("editorPanel"), drag));
    EXPECT_FALSE(window.find("noProject")->isVisible());
    EXPECT_FALSE(window.bench.fields().dropTargeted);

    window.click("generate");
    EXPECT_EQ(window.find<QPushButton>("generate")->text(), QStringLiteral("Shuffle rough edit"));
    auto* const table = window.find<QTableView>("cutTable");
    window.root.activateWindow();
    table->setFocus();
    table->selectRow(2);
    QTest::keyClick(table, Qt::Key_K);
    const Cut kept = cuts().at(2);
    window.click("generate");
    EXPECT_EQ(std::count(cuts().begin(), cuts().end(), kept), 1);
    table->setFocus();
    table->selectRow(1);
    const bool isBand = cuts().at(1).angle == "B"; // else "Pulpit": an additional camera
    QTest::keyClick(table, isBand ? Qt::Key_2 : Qt::Key_3);
    EXPECT_EQ(cuts().at(1).angle, isBand ? "P" : "B");
    window.click("back");
    window.click("forward");
    EXPECT_EQ(window.find<QToolButton>("position")->text(), QStringLiteral("Edit 3 of 3"));
    EXPECT_EQ(table->model()->rowCount(), static_cast<int>(cuts().size()));

    window.bench.host.chosen = window.bench.folder.path();
    window.click("export");
    EXPECT_EQ(window.find<QLabel>("status")->text(),
              QStringLiteral("XML and settings saved. Sent the XML to Final Cut Pro for import."));
    const std::string record = window.bench.folder.read("Concert Shotweaver.settings.txt");
    const auto block = record.find("\nKept shots:\n");
    const std::string lines = record.substr(block, record.find("\nActual camera usage:") - block);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '|'), 2) << record;
    const std::string xml = window.bench.folder.read("Concert Shotweaver.fcpxml");
    std::string shown;
    std::string exported;
    for (const Cut& cut : cuts())
        shown += cut.angle;
    const std::string source = "<mc-source angleID=\"";
    for (auto at = xml.find(source); at != std::string::npos; at = xml.find(source, at + 1))
        if (xml.substr(at + source.size() + 1, 19) == "\" srcEnable=\"video\"")
            exported += xml[at + source.size()];
    EXPECT_EQ(exported, shown);
}

TEST(Panel, whatCannotBeReadIsToldInTheAlert) {
    Window window;
    QMimeData drag;
    drag.setUrls({window.writeProject("Concert.fcpxml")});
    drop(window.find("editorPanel"), drag);
    window.bench.editor().addSection();
    auto* const field = window.find<QLineEdit>("sectionName-0");
    EXPECT_FALSE(field->acceptDrops()); // of texts, which a project may come with

    const auto local = [&](const char* name) {
        return QUrl::fromLocalFile(QString::fromStdString(window.bench.folder.path(name)));
    };
    window.bench.folder.write("noise.fcpxml", std::string(1'000'000, '\7'));
    const std::tuple<QList<QUrl>, bool, std::string> rows[] = {
        {{local("a.fcpxml"), local("b.fcpxml")},
         false,
         "Drop one Final Cut XML file or bundle at a time."},
        {{local("noise.fcpxml")},
         true,
         "The XML could not be read: not well-formed (invalid token) at line 1, column 1."},
    };
    for (const auto& [urls, isAccepted, text] : rows) {
        QMimeData refused;
        refused.setUrls(urls);
        EXPECT_EQ(drop(field, refused), isAccepted) << text; // over a text field, too
        EXPECT_EQ(window.alertText(), text);
        window.find<QMessageBox>("alert")->accept();
        QApplication::processEvents();
        EXPECT_EQ(window.bench.fields().error, std::nullopt);
        EXPECT_EQ(window.bench.fields().project->summary.name, "Concert");
    }
    QMimeData text;
    text.setText(QStringLiteral("words"));
    drop(window.find("editorPanel"), text);
    EXPECT_EQ(window.alertText(), "");
    window.bench.editor().showError("first");
    window.bench.editor().showError("second");
    EXPECT_EQ(window.alertText(), "second");
    EXPECT_EQ(window.find<QMessageBox>("alert")->windowTitle(), QStringLiteral("Shotweaver"));
}

TEST(Panel, sheetsFollowTheFlags) {
    Window window;
    window.click("help");
    ASSERT_TRUE(findAnywhere("helpSheet"));
    auto* const search = findAnywhere<QLineEdit>("helpSearch");
    auto* const topics = findAnywhere<QListWidget>("helpTopics");
    EXPECT_EQ(topics->currentRow(), 0);
    search->setText(QStringLiteral("zzzz"));
    EXPECT_EQ(topics->count(), 0);
    EXPECT_EQ(findAnywhere<QLabel>("helpCount")->text(), QStringLiteral("0 matching topics"));
    QTest::mouseClick(findAnywhere<QPushButton>("showAllTopics"), Qt::LeftButton);
    EXPECT_GE(topics->count(), 12);
    topics->setCurrentRow(3);
    EXPECT_EQ(findAnywhere<QLabel>("pageTitle")->text(), topics->item(3)->text());
    QTest::keyClick(findAnywhere("helpSheet"), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_FALSE(window.bench.fields().showingHelp);

    for (const bool opensManual : {false, true}) {
        window.click("about");
        auto* const about = findAnywhere("aboutSheet");
        ASSERT_TRUE(about);
        auto* const icon = about->findChild<IconLabel*>();
        EXPECT_FALSE(icon->pixmap().isNull());
        EXPECT_TRUE(QAccessible::queryAccessibleInterface(icon)->state().invisible);
        if (opensManual)
            QTest::mouseClick(findAnywhere<QPushButton>("openManual"), Qt::LeftButton);
        else
            QTest::keyClick(about, Qt::Key_Escape);
        EXPECT_FALSE(findAnywhere("helpWindow")); // not in the button's own action
        QApplication::processEvents();
        EXPECT_FALSE(window.bench.fields().showingAbout);
        EXPECT_EQ(findAnywhere("helpWindow") != nullptr, opensManual);
    }
    QWidget* const manual = findAnywhere("helpWindow");
    manual->showMinimized();
    window.click("about");
    QTest::mouseClick(findAnywhere<QPushButton>("openManual"), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_FALSE(manual->isMinimized());
    manual->close();
}

TEST(Panel, aMissingManualLeavesTheRestWorking) {
    Window window("/nowhere/ShotweaverHelp.json");
    window.click("help");
    EXPECT_EQ(findAnywhere<QLabel>("helpError")->text(),
              QStringLiteral("The included manual could not be found. Reinstall Shotweaver to "
                             "restore the help files."));
    QTest::mouseClick(findAnywhere<QPushButton>("closeHelp"), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_FALSE(window.bench.fields().showingHelp);
}

TEST(ItemDialog, bundlesAreTakenLikeFiles) {
    const TestFolder folder;
    folder.write("Song.fcpxmld/Info.fcpxml", "x");
    folder.write("Song.fcpxml", "x");
    folder.write("plain/Other.fcpxml", "x");
    const OpenPanel either{"Choose.", "", true, true, false};
    const auto path = [&](const char* name) { return QString::fromStdString(folder.path(name)); };
    const std::pair<const char*, bool> rows[] = {
        {"Song.fcpxml", true}, {"Song.fcpxmld", true}, {"plain", false}};
    for (const auto& [name, isTaken] : rows) {
        ItemDialog typed(either);
        typed.setDirectory(path(""));
        typed.selectFile(path(name));
        typed.accept();
        EXPECT_EQ(typed.result() == QDialog::Accepted, isTaken) << name;
        if (isTaken) {
            EXPECT_EQ(typed.chosen(), path(name));
        }
        ItemDialog marked(either);
        marked.setDirectory(path(""));
        Q_EMIT marked.directoryEntered(path(name)); // a double click on a folder
        EXPECT_EQ(marked.result() == QDialog::Accepted, isTaken && name != rows[0].first) << name;
    }
    ItemDialog folders({"Choose.", "Export", false, true, true});
    folders.selectFile(path("plain"));
    folders.accept();
    EXPECT_EQ(folders.chosen(), path("plain"));
}

TEST(Host, theControllerShowsThePanelAndTakesFinalCutsXml) {
    const TestFolder home;
    for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
        qputenv(variable, QByteArray::fromStdString(home.path()));
    ExtensionViewController controller;
    QWidget* const view = controller.view();
    EXPECT_EQ(view->size(), QSize(960, 860));
    view->show();
    QApplication::processEvents();
    EXPECT_EQ(view->findChild<EditorPanel*>()->minimumSize(), QSize(800, 860));

    QMimeData drag;
    drag.setData(QStringLiteral("com.apple.finalcutpro.xml.v1-15"), "new");
    EXPECT_FALSE(drop(view, drag));
    drag.setData(QStringLiteral("com.apple.finalcutpro.xml.v1-10"),
                 QByteArray::fromStdString(concert().xml()));
    EXPECT_TRUE(drop(view, drag));
    EXPECT_EQ(controller.editor().fields().project->summary.name, "Concert");
    EXPECT_EQ(view->windowTitle(), QStringLiteral("Concert"));
    // The XML comes first, also where files come with it.
    controller.editor().generateEdit();
    drag.setUrls({QUrl(QStringLiteral("file:///nowhere.fcpxml"))});
    EXPECT_TRUE(drop(view, drag));
    EXPECT_TRUE(controller.editor().fields().cuts().empty());
    EXPECT_EQ(controller.editor().fields().error, std::nullopt);

    QMimeData empty;
    empty.setData(QStringLiteral("com.apple.finalcutpro.xml"), "");
    EXPECT_FALSE(drop(view, empty));
    view->activateWindow();
    controller.editor().dismissError();
    QTest::keyClick(view, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(view->isVisible());
    const StateFolders folders = stateFolders(systemEnvironment());
    EXPECT_TRUE(folders.session.starts_with(home.path())) << folders.session;
    EXPECT_TRUE(std::filesystem::exists(folders.session + "/session-v1.json"));
}

TEST(Host, whatTheSystemOpensArrivesLikeADroppedFile) {
    EditorBench bench;
    XMLInbox inbox;
    const InboxSubscription subscription(inbox, bench.editor());
    const OpenedFiles opened(*qApp, inbox);
    QFileOpenEvent event(
        QString::fromStdString(bench.folder.write("Concert.fcpxml", concert().xml())));
    QApplication::sendEvent(qApp, &event);
    ASSERT_TRUE(bench.fields().project);
    EXPECT_EQ(bench.fields().project->summary.name, "Concert");
}

TEST(Host, workIsShownByTheCursor) {
    const TestFolder folder;
    QtHostServices host(nullptr, UserDefaults(systemFileCalls(), folder.path()));
    BusySign busy = host.showBusy();
    ASSERT_TRUE(QApplication::overrideCursor());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    busy.reset();
    EXPECT_FALSE(QApplication::overrideCursor());
}

} // namespace
} // namespace shotweaver::test
