#include "editor/views/WelcomeView.h"
#include "host/views/ExtensionDropContainer.h"
#include "host/views/ExtensionViewController.h"
#include "host/views/ItemDialog.h"
#include "host/views/PanelInstance.h"
#include "host/views/WindowMemory.h"
#include "tests/host/views/PanelWindow.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTableWidget>
#include <QThread>
#include <QTimer>
#include <QToolButton>

#include <memory>

namespace shotweaver::test {
namespace {

std::string projectNamed(const std::string& name) {
    std::string xml = concert().xml();
    const std::string mark = "name=\"Concert\"";
    xml.replace(xml.find(mark), mark.size(), "name=\"" + name + "\"");
    return xml;
}

TEST(Panel, beginsWhereAPersonDoes) {
    Window window;
    EXPECT_EQ(window.root.focusWidget()->objectName(), QStringLiteral("import"));
    EXPECT_FALSE(window.find("openExample")->isVisible()); // there is none here
    window.click("help");
    EXPECT_EQ(findAnywhere("helpSheet")->focusWidget()->objectName(), QStringLiteral("helpSearch"));
    auto* const search = findAnywhere<QLineEdit>("helpSearch");
    search->setText(QStringLiteral("gaps"));
    QApplication::processEvents();
    // The hits stand out, and the first of them is on show.
    const auto marked = [&] {
        for (QLabel* const label : findAnywhere("helpSheet")->findChildren<QLabel*>())
            if (label->text().contains(QStringLiteral("<span"))) return label;
        return static_cast<QLabel*>(nullptr);
    };
    ASSERT_TRUE(marked());
    EXPECT_TRUE(marked()->text().contains(QStringLiteral(">gaps</span>"), Qt::CaseInsensitive));
    EXPECT_FALSE(marked()->visibleRegion().isEmpty());
    QTest::keyClick(search, Qt::Key_Escape); // clears first
    EXPECT_EQ(search->text(), QString());
    EXPECT_FALSE(marked());
    findAnywhere<QPushButton>("closeHelp")->setFocus();
    QTest::keyClick(findAnywhere("helpSheet"), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(search->hasFocus());
    // A page ends with its text.
    auto* const area = findAnywhere("helpView")->findChild<QScrollArea*>();
    QWidget* const page = area->widget();
    EXPECT_EQ(page->height(),
              std::max(page->heightForWidth(page->width()), area->viewport()->height()));
    QTest::keyClick(search, Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_FALSE(window.bench.fields().showingHelp);
}

TEST(Panel, theOutlineMeansThatADropWillBeTaken) {
    EditorBench bench;
    XMLInbox inbox;
    ExtensionDropContainer container(inbox);
    QObject::connect(&container, &ExtensionDropContainer::targeted, &container,
                     [&](bool isTargeted) { bench.editor().setDropTargeted(isTargeted); });
    ExtensionRootView root(bench.editor(), &container);
    root.resize(960, 860);
    container.resize(960, 860);
    container.show();
    QApplication::processEvents();
    QWidget* const panel = root.findChild<QWidget*>(QStringLiteral("editorPanel"));
    const auto isOutlined = [&](const QMimeData& data) {
        QDragEnterEvent enter({300, 300}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(panel, &enter);
        const bool isShown = root.findChild<QWidget*>(QStringLiteral("dropHighlight"))->isVisible();
        QDragLeaveEvent leave;
        QApplication::sendEvent(panel, &leave);
        EXPECT_FALSE(bench.fields().dropTargeted);
        return isShown;
    };
    QMimeData data;
    data.setData(QStringLiteral("com.apple.finalcutpro.xml"), "x");
    EXPECT_TRUE(isOutlined(data));
    data.clear();
    data.setUrls({QUrl(QStringLiteral("file:///a/b.fcpxmld"))});
    EXPECT_TRUE(isOutlined(data));
    data.setUrls({QUrl(QStringLiteral("file:///a/b.txt"))});
    EXPECT_FALSE(isOutlined(data));
}

TEST(Panel, aReplacedSessionComesBackByItsButton) {
    Window window;
    ContentView& editor = window.bench.editor();
    editor.importProject(concert().xml());
    EXPECT_FALSE(window.find("replaced")->isVisible());
    window.click("generate");
    const std::vector<Cut> cuts = window.bench.fields().cuts();
    auto* const area = window.find<QScrollArea>("settingsArea");
    area->verticalScrollBar()->setValue(300);
    editor.importProject(projectNamed("Rehearsal"));
    QApplication::processEvents();
    EXPECT_EQ(area->verticalScrollBar()->value(), 0);
    EXPECT_EQ(window.find<QLabel>("replaced")->text(), QStringLiteral("Replaced Concert."));
    window.click("bringBack");
    EXPECT_EQ(window.bench.fields().cuts(), cuts);
    EXPECT_EQ(window.find<QLabel>("replaced")->text(), QStringLiteral("Replaced Rehearsal."));
    EXPECT_EQ(window.find<QLabel>("status")->text(), QStringLiteral("Brought back Concert."));
}

TEST(Panel, settingsAreTakenBackByKeys) {
    Window window;
    ContentView& editor = window.bench.editor();
    editor.importProject(concert().xml());
    editor.addSection();
    QApplication::processEvents();
    window.root.activateWindow();
    auto* const name = window.find<QLineEdit>("sectionName-0");
    name->setFocus();
    QTest::keyClicks(name, QStringLiteral("Prayer"));
    const auto sections = [&] {
        std::string names;
        for (const SectionDraft& section : window.bench.fields().settings.sections)
            names += "“" + section.name + "”";
        return names;
    };
    EXPECT_EQ(sections(), "“Prayer”");
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier); // in the field that was typed in
    EXPECT_EQ(sections(), "“”");
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(sections(), "“Prayer”");
    window.find<QPushButton>("removeSection-0")->click();
    EXPECT_EQ(sections(), "");
    QTest::keyClick(&window.root, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(sections(), "“Prayer”");
    EXPECT_TRUE(window.find("redo")->isEnabled());
    window.click("undo");
    window.click("undo");
    EXPECT_EQ(sections(), "");
    EXPECT_FALSE(window.find("undo")->isEnabled());
}

TEST(Panel, theListOfEditsShowsOneAndAnExportSaysWhereItIs) {
    Window window;
    ContentView& editor = window.bench.editor();
    editor.importProject(concert().xml());
    editor.generateEdit();
    set(editor, &EditSettings::doubleMain, true);
    editor.generateEdit();
    editor.generateEdit();
    QTest::mouseClick(window.find<QToolButton>("position"), Qt::LeftButton);
    auto* const list = findAnywhere<QTableWidget>("editList");
    ASSERT_TRUE(list);
    std::string text;
    for (int row = 0; row < list->rowCount(); ++row)
        for (const int column : {0, 2, 4})
            text += list->item(row, column)->text().toStdString() + (column == 4 ? "\n" : " ");
    const auto count = [&](std::size_t edit) {
        return std::to_string(window.bench.fields().history.items[edit].cuts.size());
    };
    EXPECT_EQ(text, "Edit 1 " + count(0) + " \nEdit 2 " + count(1) + " Settings changed\nEdit 3 " +
                        count(2) + " \n");
    EXPECT_EQ(list->currentRow(), 2);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0, 0)).center());
    EXPECT_EQ(window.bench.fields().history.index, 0);
    EXPECT_FALSE(findAnywhere("editList"));

    EXPECT_FALSE(window.find("exportedFile")->isVisible());
    window.bench.host.chosen = window.bench.folder.path();
    window.click("export");
    const std::string path = window.bench.folder.path("Concert Shotweaver.fcpxml");
    EXPECT_EQ(window.find<QLabel>("exportedFile")->text().toStdString(), path);
    window.click("copyPath");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), path);
    window.click("showInFolder");
    EXPECT_EQ(window.bench.host.events.back(), "show Concert Shotweaver.fcpxml");
    window.click("generate");
    EXPECT_FALSE(window.find("exportedFile")->isVisible());
}

TEST(Host, aWindowAndItsDividerAreAsTheyWere) {
    const TestFolder folder;
    const auto open = [&](auto use) {
        QWidget window;
        auto* const divider = new QSplitter(&window);
        divider->addWidget(new QWidget);
        divider->addWidget(new QWidget);
        divider->resize(400, 100);
        new WindowMemory(UserDefaults(systemFileCalls(), folder.path("config")), &window, divider);
        window.show();
        use(window, *divider);
        window.close();
    };
    open([](QWidget& window, QSplitter& divider) {
        window.resize(1000, 700);
        divider.setSizes({300, 90});
    });
    open([](QWidget& window, QSplitter& divider) {
        EXPECT_EQ(window.size(), QSize(1000, 700));
        EXPECT_GT(divider.sizes().at(0), 2 * divider.sizes().at(1));
    });
    folder.write("config/Shotweaver.window.v1", "noise");
    open([](QWidget& window, QSplitter&) { EXPECT_NE(window.size(), QSize(1000, 700)); });
}

TEST(ItemDialog, tellsWhatItIsForAndStartsWhereItIsTold) {
    const TestFolder folder;
    folder.write("exports/x", "");
    ItemDialog dialog({"Choose a folder for the XML.", "Export", false, true, true});
    const QString exports = QString::fromStdString(folder.path("exports"));
    dialog.startIn(exports);
    EXPECT_EQ(dialog.directory().path(), exports);
    dialog.startIn(exports + QStringLiteral("/gone"));
    EXPECT_EQ(dialog.directory().path(), exports);
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("itemMessage"))->text(),
              QStringLiteral("Choose a folder for the XML."));
    EXPECT_FALSE(dialog.windowFlags() & Qt::WindowMinMaxButtonsHint);
}

TEST(Host, dialogsStartInTheFolderOfTheLastOne) {
    const TestFolder folder;
    folder.write("exports/Song.fcpxml", "x");
    folder.write("other/x", "x");
    const UserDefaults defaults(systemFileCalls(), folder.path("config"));
    QtHostServices host(nullptr, defaults);
    const auto choose = [&](const OpenPanel& panel, const char* chosen) {
        QString start;
        QTimer::singleShot(0, &host, [&] {
            auto* const dialog = findAnywhere<ItemDialog>("itemDialog");
            start = dialog->directory().dirName();
            dialog->selectFile(QString::fromStdString(folder.path(chosen)));
            dialog->accept();
        });
        EXPECT_EQ(host.chooseItem(panel), folder.path(chosen));
        return start.toStdString();
    };
    const OpenPanel open{"Choose a file.", "", true, true, false};
    const OpenPanel save{"Choose a folder.", "Export", false, true, true};
    choose(open, "exports/Song.fcpxml");
    choose(save, "other"); // which has a place of its own
    EXPECT_EQ(choose(open, "exports/Song.fcpxml"), "exports");
    EXPECT_EQ(choose(save, "other"), "other");
}

TEST(Panel, theEmptyPanelOffersTheExample) {
    EditorBench bench;
    ContentView editor({bench.host, systemFileCalls(), bench.random,
                        [&] { return UUID::random(bench.random); }, [] { return 0.0; },
                        bench.folders(), "und",
                        std::string(SHOTWEAVER_SOURCE_DIR) + "/examples/Sunday Service.fcpxml"});
    WelcomeView view(editor);
    view.show();
    auto* const example = view.findChild<QPushButton*>(QStringLiteral("openExample"));
    ASSERT_TRUE(example->isVisible());
    QTest::mouseClick(example, Qt::LeftButton);
    EXPECT_EQ(editor.project()->summary.name, "Sunday Service");
}

TEST(PanelInstance, aSecondStartHandsItsFileToTheFirst) {
    const TestFolder folder;
    const QString state = QString::fromStdString(folder.path("data"));
    PanelInstance first(state);
    EXPECT_FALSE(first.handOver(QStringLiteral("/mine.fcpxml")));
    QStringList files;
    QObject::connect(&first, &PanelInstance::handedOver, qApp,
                     [&](const QString& file) { files.append(file); });
    const auto startSecond = [&](const QString& file) {
        bool isTaken = false;
        const std::unique_ptr<QThread> program(QThread::create([&] {
            PanelInstance second(state);
            isTaken = second.handOver(file);
        }));
        program->start();
        while (!program->isFinished())
            QApplication::processEvents(QEventLoop::AllEvents, 20);
        return isTaken;
    };
    const QString odd = QStringLiteral("/two\nlines é.fcpxml");
    EXPECT_TRUE(startSecond(odd));
    EXPECT_TRUE(startSecond({}));
    EXPECT_EQ(files, QStringList({odd, QString()}));
}

} // namespace
} // namespace shotweaver::test
