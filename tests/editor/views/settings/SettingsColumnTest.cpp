#include "editor/views/settings/SettingsColumn.h"
#include "editor/views/BarDrawing.h"
#include "editor/views/SavePresetSheet.h"
#include "editor/views/settings/CoverageBarView.h"
#include "tests/support/EditorBench.h"
#include "widgets/WrappedText.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

namespace shotweaver::test {
namespace {

using QTest::keyClick;
using QTest::keyClicks;

/// The column in a window, on the concert.
struct Column {
    explicit Column(const ProjectBuilder& project = concert()) {
        editor.importProject(project.xml());
        column = new SettingsColumn(editor);
        subscription = editor.observe([this] { column->refresh(); });
        area.setWidget(column);
        area.setWidgetResizable(true);
        area.resize(600, 400);
        area.show();
        area.activateWindow();
        QApplication::processEvents();
    }

    template <class Widget = QWidget>
    Widget* find(const std::string& name) const {
        auto* const found = column->findChild<Widget*>(QString::fromStdString(name));
        if (!found) throw std::runtime_error("no " + name);
        return found;
    }
    /// "label: value", as a screen reader has it.
    std::string spoken(const std::string& name) const {
        auto* const interface = QAccessible::queryAccessibleInterface(find(name));
        return (interface->text(QAccessible::Name) + QStringLiteral(": ") +
                interface->text(QAccessible::Value))
            .toStdString();
    }
    EditSettings settings() { return editor.fields().settings; }

    EditorBench bench;
    ContentView& editor = bench.editor();
    QScrollArea area;
    SettingsColumn* column; // the area's
    Observers::Subscription subscription;
};

/// Two markers, and one that is named like a camera.
ProjectBuilder markedConcert() {
    ProjectBuilder project = concert();
    project.clipContent += R"(<marker start="4s"/><marker start="9s"/><marker value="Band"/>)";
    return project;
}

TEST(SettingsColumn, aControlChangesItsFieldAndNoOther) {
    const struct {
        const char* control;
        Qt::Key key;
        void (*change)(EditSettings&);
    } table[] = {
        {"audio", Qt::Key_Up, [](auto& s) { s.audio = "B"; }},
        {"mainWait", Qt::Key_Up, [](auto& s) { s.returnTimes["W"] = 10; }},
        {"include-P", Qt::Key_Space, [](auto& s) { s.otherCameras.erase("P"); }},
        {"include-P", Qt::Key_Space, [](auto& s) { s.otherCameras.insert("P"); }},
        {"frequency-P", Qt::Key_Right, [](auto& s) { s.frequencies["P"] = 6; }},
        {"wait-P", Qt::Key_PageUp, [](auto& s) { s.returnTimes["P"] = 50; }},
        {"varyOthers", Qt::Key_Space, [](auto& s) { s.varyOthers = true; }},
        {"share", Qt::Key_Left, [](auto& s) { s.mainShare = 65; }},
        {"mainMinimum", Qt::Key_Down, [](auto& s) { s.mainMinimum = 9; }},
        {"mainMaximum", Qt::Key_Up, [](auto& s) { s.mainMaximum = 26; }},
        {"otherMinimum", Qt::Key_Down, [](auto& s) { s.otherMinimum = 3; }},
        {"otherMaximum", Qt::Key_Up, [](auto& s) { s.otherMaximum = 9; }},
        {"doubleMain", Qt::Key_Space, [](auto& s) { s.doubleMain = true; }},
        {"cutAtMarkers", Qt::Key_Space, [](auto& s) { s.cutAtMarkers = true; }},
        {"followMarkers", Qt::Key_Space, [](auto& s) { s.followMarkers = true; }},
        {"openingEnabled", Qt::Key_Space, [](auto& s) { s.opening.isEnabled = true; }},
        {"openingCamera", Qt::Key_Down, [](auto& s) { s.opening.camera = "P"; }},
        {"openingSeconds", Qt::Key_Up, [](auto& s) { s.opening.seconds = 16; }},
        {"closingEnabled", Qt::Key_Space, [](auto& s) { s.closing.isEnabled = true; }},
        {"closingCamera", Qt::Key_End, [](auto& s) { s.closing.camera = "B"; }},
        {"closingSeconds", Qt::Key_Down, [](auto& s) { s.closing.seconds = 14; }},
        {"sectionCamera-0", Qt::Key_Down, [](auto& s) { s.sections[0].camera = "P"; }},
        {"removeSection-0", Qt::Key_Space, [](auto& s) { s.sections.clear(); }},
    };
    Column test(markedConcert());
    keyClick(test.find("addSection"), Qt::Key_Space);
    for (const auto& row : table) {
        EditSettings expected = test.settings();
        row.change(expected);
        keyClick(test.find(row.control), row.key);
        EXPECT_EQ(test.settings(), expected) << row.control;
    }
    keyClick(test.find("mainCamera"), Qt::Key_Down);
    EXPECT_EQ(test.settings().mainCamera, "P");
}

TEST(SettingsColumn, aFieldShowsAndNothingIsWrittenBack) {
    Column test;
    EditSettings settings = test.settings();
    settings.mainShare = 72.5;
    settings.returnTimes["W"] = 125;
    settings.frequencies["B"] = 10;
    settings.mainMinimum = 1.5;
    apply(test.editor, settings);
    const std::pair<const char*, const char*> table[] = {
        {"projectLine", "Concert · 60 seconds · 25 fps: "},
        {"mainCamera", "Wide: Wide"},
        {"mainWait", "Wait before returning to main camera: 125 sec: 125"},
        {"include-P", "Pulpit: "},
        {"frequency-B", "Frequency for Band: 10"},
        {"wait-B", "Wait before returning to this camera: 0 sec: 0"},
        {"share", "Main camera's share of screen time: 72.5"},
        {"mainMinimum", "Minimum: 1 sec: 1.5"},
        {"coverage-1", "Pulpit: 01:00:00:00 to 01:00:20:00, 01:00:24:00 to 01:01:00:00"},
        {"audioCoverage", "Audio: Recorder: 01:00:00:00 to 01:01:00:00"},
        {"gapCoverage", "Selected video gaps: No sections"},
    };
    for (const auto& [name, text] : table) {
        EXPECT_EQ(test.spoken(name), text);
        // The wheel is left to the scroll area.
        QWheelEvent wheel({3, 3}, {3, 3}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(test.find(name), &wheel);
        EXPECT_FALSE(wheel.isAccepted()) << name;
        EXPECT_NE(test.find(name)->focusPolicy(), Qt::WheelFocus) << name;
    }
    EXPECT_EQ(test.settings(), settings);
    keyClick(test.find("share"), Qt::Key_Right);
    keyClick(test.find("mainWait"), Qt::Key_Up);
    EXPECT_EQ(test.settings().mainShare, 80); // from the step that it showed
    EXPECT_EQ(test.settings().returnTimes["W"], 135);
}

TEST(SettingsColumn, controlsAreEnabledAsTheSettingsSay) {
    Column test;
    const auto enabled = [&](std::initializer_list<const char*> names) {
        std::string letters;
        for (const char* const name : names)
            letters += test.find(name)->isEnabled() ? 'y' : 'n';
        return letters;
    };
    EXPECT_EQ(enabled({"frequency-P", "wait-P", "frequency-B", "wait-B"}), "yyyy");
    include(test.editor, "B", false);
    EXPECT_EQ(enabled({"frequency-P", "wait-P", "frequency-B", "wait-B"}), "nynn");
    EXPECT_EQ(enabled({"openingCamera", "openingSeconds", "closingCamera"}), "nnn");
    test.editor.edit([](EditSettings& settings) { settings.opening.isEnabled = true; });
    EXPECT_EQ(enabled({"openingCamera", "openingSeconds", "closingCamera"}), "yyn");
    EXPECT_EQ(enabled({"applyPreset", "updatePreset", "deletePreset", "savePreset"}), "nnny");
    EXPECT_EQ(enabled({"cutAtMarkers", "followMarkers"}), "nn");
    EXPECT_EQ(test.spoken("cutAtMarkers"), "Cut at markers where shot lengths allow (0): ");
    test.editor.importProject(markedConcert().xml());
    EXPECT_EQ(enabled({"cutAtMarkers", "followMarkers"}), "yy");
    EXPECT_EQ(test.spoken("cutAtMarkers"), "Cut at markers where shot lengths allow (2): ");
    EXPECT_EQ(test.spoken("followMarkers"), "Follow markers named like a camera (1): ");
}

TEST(SettingsColumn, timesComeFromAFileAndGo) {
    Column test;
    const auto seen = [&] {
        return test.find("cutTimes")->isVisible() && test.find("removeCutTimes")->isVisible()
                   ? test.find<QLabel>("cutTimes")->text().toStdString()
                   : "";
    };
    EXPECT_EQ(seen(), "");
    test.bench.host.chosen = test.bench.folder.write("beats.txt", "4\n01:00:05:00\n");
    keyClick(test.find("chooseCutTimes"), Qt::Key_Space);
    EXPECT_EQ(seen(), "beats.txt · 2 times");
    test.find("removeCutTimes")->setFocus();
    keyClick(test.find("removeCutTimes"), Qt::Key_Space);
    EXPECT_EQ(seen(), "");
    EXPECT_TRUE(test.find("chooseCutTimes")->hasFocus());
}

TEST(SettingsColumn, rowsKeepFocusAndCursor) {
    Column test;
    test.find("include-P")->setFocus();
    chooseMain(test.editor, "B");
    EXPECT_TRUE(test.find("include-P")->hasFocus());
    QApplication::processEvents(); // the new row before it appears
    keyClick(test.find("include-P"), Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "wait-W");

    test.editor.addSection();
    test.editor.addSection();
    auto* const name = test.find<QLineEdit>("sectionName-0");
    keyClicks(name, QStringLiteral("Sng"));
    name->setCursorPosition(1);
    keyClicks(name, QStringLiteral("o"));
    EXPECT_EQ(test.settings().sections[0].name, "Song");
    EXPECT_EQ(name->cursorPosition(), 2);
    keyClicks(test.find("sectionEnd-1"), QStringLiteral("x"));
    EXPECT_EQ(test.settings().sections[1].end, "01:01:00:00x");
    test.find("removeSection-1")->setFocus();
    keyClick(test.find("removeSection-1"), Qt::Key_Space);
    EXPECT_TRUE(test.find("removeSection-0")->hasFocus());
}

TEST(SettingsColumn, rowsThatComeTogetherStandAndAreReachedInOrder) {
    Column test;
    ProjectBuilder larger = concert();
    for (const char* const id : {"X", "Y"})
        larger.angles.insert(larger.angles.begin() + 2, {id, id, {{0, 1500}}});
    test.editor.importProject(larger.xml());
    EditSettings settings = test.settings();
    settings.sections = {{secureUUIDs()(), "a", "W", "1", "2"},
                         {secureUUIDs()(), "b", "W", "", ""}};
    apply(test.editor, settings);
    QApplication::processEvents();
    const auto reached = [&](const char* first, int count) {
        test.find(first)->setFocus();
        std::string names;
        int above = 0;
        for (; count > 0; --count) {
            QWidget* const control = QApplication::focusWidget();
            const int bottom = control->mapTo(test.column, QPoint(0, control->height())).y();
            names += control->objectName().toStdString() + (bottom < above ? " (above)\n" : "\n");
            above = bottom - control->height();
            keyClick(control, Qt::Key_Tab);
        }
        return names;
    };
    EXPECT_EQ(reached("mainWait", 13),
              "mainWait\ninclude-P\nfrequency-P\nwait-P\ninclude-Y\nfrequency-Y\nwait-Y\n"
              "include-X\nfrequency-X\nwait-X\ninclude-B\nfrequency-B\nwait-B\n");
    EXPECT_EQ(reached("addSection", 11),
              "addSection\nremoveSection-0\nsectionName-0\nsectionCamera-0\nsectionStart-0\n"
              "sectionEnd-0\nremoveSection-1\nsectionName-1\nsectionCamera-1\nsectionStart-1\n"
              "sectionEnd-1\n");
}

TEST(SettingsColumn, presetsAreNamedInASheet) {
    Column test;
    SavePresetSheet sheet(test.editor, &test.area);
    const auto subscription = test.editor.observe([&] { sheet.refresh(); });
    const auto open = [&] { keyClick(test.find("savePreset"), Qt::Key_Space); };
    open();
    EXPECT_TRUE(sheet.isVisible() && sheet.isModal());
    keyClick(&sheet, Qt::Key_Escape);
    EXPECT_FALSE(sheet.isVisible());
    open();
    auto* const name = sheet.findChild<QLineEdit*>(QStringLiteral("presetName"));
    keyClicks(name, QStringLiteral("A"));
    keyClick(name, Qt::Key_Return);
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_EQ(test.spoken("presetNotice"), "Saved A.: ");
    EXPECT_EQ(test.spoken("preset"), "A: A");
    keyClick(test.find("deletePreset"), Qt::Key_Space);
    EXPECT_EQ(test.spoken("preset"), "Choose a preset: Choose a preset");
    open();
    EXPECT_FALSE(sheet.findChild<QPushButton*>(QStringLiteral("confirmSavePreset"))->isEnabled());
    keyClick(name, Qt::Key_Return); // without a name
    EXPECT_TRUE(sheet.isVisible());
    sheet.close();
    EXPECT_FALSE(test.bench.fields().showSavePreset);
    test.bench.folder.write("config/Shotweaver.savedPresets.v1", "noise");
    open();
    keyClicks(name, QStringLiteral("Refused"));
    keyClick(name, Qt::Key_Return);
    EXPECT_FALSE(sheet.isVisible());
    open();
    EXPECT_EQ(name->text(), QStringLiteral("Refused"));
}

TEST(SettingsColumn, steppersTakeTypedValuesAndGoToTheirLimits) {
    Column test;
    auto* const stepper = test.find("mainMaximum");
    const auto typeInto = [&](const char* keys, Qt::Key last) {
        auto* const field = stepper->findChild<QLineEdit*>(QStringLiteral("typedValue"));
        ASSERT_TRUE(field);
        keyClicks(field, QString::fromUtf8(keys));
        keyClick(field, last);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    QTest::mouseClick(stepper->findChild<QLabel*>(), Qt::LeftButton);
    typeInto("4x2", Qt::Key_Return);
    EXPECT_EQ(test.settings().mainMaximum, 42);
    EXPECT_TRUE(stepper->hasFocus());
    keyClick(stepper, Qt::Key_9); // begins, and stands for itself
    typeInto("99", Qt::Key_Enter);
    EXPECT_EQ(test.settings().mainMaximum, 120);
    keyClick(stepper, Qt::Key_Return);
    typeInto("7", Qt::Key_Escape);
    EXPECT_EQ(test.settings().mainMaximum, 120);
    keyClick(stepper, Qt::Key_5);
    test.find("share")->setFocus(); // takes it as well
    EXPECT_EQ(test.settings().mainMaximum, 5);
    keyClick(stepper, Qt::Key_Home);
    EXPECT_EQ(test.settings().mainMaximum, 1);
    keyClick(stepper, Qt::Key_End);
    EXPECT_EQ(test.settings().mainMaximum, 120);
    QTest::mouseClick(test.find("openingSeconds")->findChild<QLabel*>(), Qt::LeftButton);
    EXPECT_FALSE(test.find("openingSeconds")->findChild<QLineEdit*>()); // disabled
}

TEST(SettingsColumn, aNewSectionShowsItselfAndWhatIsWrongWithIt) {
    ProjectBuilder project = concert();
    project.clipContent += R"(<chapter-marker start="10s" value="Talk &amp; more"/>)";
    Column test(project);
    keyClick(test.find("addSection"), Qt::Key_Space);
    for (int turn = 0; turn < 20; ++turn) // layouts inside of layouts take a turn each
        QApplication::processEvents();
    auto* const start = test.find<QLineEdit>("sectionStart-0");
    EXPECT_TRUE(start->hasFocus());
    EXPECT_EQ(start->selectedText(), start->text());
    EXPECT_FALSE(start->visibleRegion().isEmpty());

    auto* const fault = test.find<QLabel>("startFault-0");
    const auto isOutlined = [&] { return start->property("faulty").toBool(); };
    keyClicks(start, QStringLiteral("01:0"));
    EXPECT_TRUE(fault->isHidden()); // it is half typed
    test.find("addSection")->setFocus();
    EXPECT_FALSE(fault->isHidden());
    EXPECT_TRUE(isOutlined());
    EXPECT_EQ(fault->text(),
              QStringLiteral("Enter timecode as HH:MM:SS:FF, for example 00:05:30:00."));
    start->setFocus();
    start->selectAll();
    keyClicks(start, QStringLiteral("01:00:05:00"));
    EXPECT_FALSE(isOutlined());
    EXPECT_FALSE(fault->isHidden()); // nothing moves while typing
    EXPECT_EQ(fault->text(), QString());
    test.find("addSection")->setFocus();
    EXPECT_TRUE(fault->isHidden());

    auto* const chapters = test.find<QToolButton>("addChapterSection");
    Q_EMIT chapters->menu()->aboutToShow();
    ASSERT_EQ(chapters->menu()->actions().size(), 1);
    EXPECT_EQ(chapters->menu()->actions()[0]->text(),
              QStringLiteral("Talk && more · 01:00:10:00 to 01:01:00:00"));
    set(test.editor, &EditSettings::closing, Bookend{true, "W", 5});
    chapters->menu()->actions()[0]->trigger();
    const SectionDraft section = test.settings().sections.at(1);
    EXPECT_EQ(section.name + " " + section.start + " " + section.end,
              "Talk & more 01:00:10:00 01:00:55:00");
    set(test.editor, &EditSettings::opening, Bookend{true, "W", 60});
    test.editor.addChapterSection(0);
    EXPECT_EQ(test.settings().sections.size(), 2U);
    EXPECT_TRUE(test.bench.fields().error.value().starts_with("There is no room"));
}

TEST(SettingsColumn, whatAScreenReaderSetsIsTaken) {
    Column test;
    test.editor.addSection();
    const auto control = [&](const char* name) {
        return QAccessible::queryAccessibleInterface(test.find(name));
    };
    control("doubleMain")->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    control("sectionName-0")->editableTextInterface()->insertText(0, QStringLiteral("Prayer"));
    control("share")->valueInterface()->setCurrentValue(60);
    EXPECT_TRUE(test.settings().doubleMain);
    EXPECT_EQ(test.settings().sections.at(0).name, "Prayer");
    EXPECT_EQ(test.settings().mainShare, 60);
}

TEST(SettingsColumn, coverageIsTold) {
    Column test;
    auto* const pulpit = test.find<CoverageBarView>("coverage-1");
    const auto toolTipAt = [&](double share) {
        const QPoint at(static_cast<int>(share * pulpit->width()), 2);
        QHelpEvent event(QEvent::ToolTip, at, pulpit->mapToGlobal(at));
        QApplication::sendEvent(pulpit, &event);
        return QToolTip::text().toStdString();
    };
    EXPECT_EQ(toolTipAt(0.2), "01:00:00:00 to 01:00:20:00");
    EXPECT_EQ(toolTipAt(0.9), "01:00:24:00 to 01:01:00:00");
    EXPECT_EQ(pulpit->textAt(0.37 * pulpit->width()), std::nullopt);

    chooseMain(test.editor, "P");
    for (const char* const other : {"W", "B"})
        include(test.editor, other, false);
    EXPECT_EQ(test.find<CoverageBarView>("coverage-0")->bar().label, "Wide (excluded)");
    auto* const list = test.find<QListView>("uncoveredSectionList");
    EXPECT_EQ(test.find<CoverageBarView>("gapCoverage")->textAt(0.37 * pulpit->width()),
              "01:00:20:00 to 01:00:24:00\nRecorded here: Wide, Band");
    const auto told = [&](const char* name) {
        return QAccessible::queryAccessibleInterface(test.find(name))
            ->text(QAccessible::Description)
            .toStdString();
    };
    EXPECT_EQ(told("gapCoverage"), "01:00:20:00 to 01:00:24:00");
    EXPECT_EQ(told("coverage-1"), "01:00:00:00 to 01:00:20:00, 01:00:24:00 to 01:01:00:00");
    EXPECT_EQ(test.spoken("uncoveredSections"), "1 uncovered video section(s): ");
    EXPECT_TRUE(list->isHidden());
    keyClick(test.find("uncoveredSections"), Qt::Key_Space);
    EXPECT_EQ(list->model()->index(0, 0).data().toString().toStdString(),
              "01:00:20:00 to 01:00:24:00 · 4 seconds");
    include(test.editor, "W", true);
    EXPECT_TRUE(list->isHidden());
    include(test.editor, "W", false);
    EXPECT_FALSE(list->isHidden());
}

TEST(SettingsColumn, anyNameFits) {
    ProjectBuilder project = concert();
    const std::string name(300, 'W');
    project.projectAttributes = "name=\"" + name + "\"";
    for (AngleSpec& angle : project.angles)
        angle.name = name + "&amp;" + angle.name;
    Column test(project);
    test.editor.addSection();
    test.editor.setPresetName(name);
    test.editor.savePreset();
    EXPECT_EQ(test.spoken("include-P"), name + "&Pulpit: ");
    EXPECT_LE(test.column->layout()->minimumSize().width(), test.column->minimumSizeHint().width());
}

TEST(SettingsColumn, aVeryLongNameIsShownByItsBeginning) {
    const QString clef = QString::fromUtf8("\U0001D11E"); // two code units
    const QString letters(1999, QLatin1Char('W'));
    EXPECT_EQ(shortened(letters + clef), letters + QChar(0x2026));
    EXPECT_EQ(shortened(letters.chopped(1) + clef), letters.chopped(1) + clef);
}

} // namespace
} // namespace shotweaver::test
