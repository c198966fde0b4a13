#include "editor/views/SettingsColumn.h"
#include "editor/views/Controls.h"
#include "editor/views/CoverageBarView.h"
#include "editor/views/SavePresetSheet.h"
#include "tests/support/EditorBench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QListView>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

namespace shotweaver::test {
namespace {

void press(QWidget* widget, int key, const char* text = "") {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString::fromUtf8(text));
    QApplication::sendEvent(widget, &event);
}

/// The column in a window like the panel's, on the concert.
struct Column {
    explicit Column(const ProjectBuilder& project = concert()) {
        bench.editor().importProject(project.xml());
        column = new SettingsColumn(bench.editor());
        subscription = bench.editor().observe([this] { column->refresh(); });
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
    std::string spoken(const std::string& name, QAccessible::Text which) const {
        return QAccessible::queryAccessibleInterface(find(name))->text(which).toStdString();
    }
    ContentView& editor() { return bench.editor(); }
    const EditorFields& fields() const { return bench.fields(); }

    EditorBench bench;
    QScrollArea area;
    SettingsColumn* column; // the area's
    Observers::Subscription subscription;
};

TEST(SettingsColumn, aControlChangesItsField) {
    using Field = std::string (*)(const EditorFields&);
    static const auto number = [](double value) { return fmt::format("{}", value); };
    struct {
        const char* control;
        int key;
        const char* value;
        Field field;
    } const table[] = {
        {"audio", Qt::Key_Up, "B", [](const EditorFields& f) { return f.audioAngle; }},
        {"mainWait", Qt::Key_Up, "10", [](auto& f) { return number(f.returnTimes.at("W")); }},
        {"include-P", Qt::Key_Space, "0",
         [](auto& f) { return number(f.otherCameras.count("P")); }},
        {"include-P", Qt::Key_Space, "1",
         [](auto& f) { return number(f.otherCameras.count("P")); }},
        {"frequency-P", Qt::Key_Right, "6", [](auto& f) { return number(f.frequencies.at("P")); }},
        {"wait-P", Qt::Key_PageUp, "50", [](auto& f) { return number(f.returnTimes.at("P")); }},
        {"share", Qt::Key_Left, "65", [](auto& f) { return number(f.aShare); }},
        {"mainMinimum", Qt::Key_Down, "9", [](auto& f) { return number(f.mainMinimum); }},
        {"mainMaximum", Qt::Key_Up, "26", [](auto& f) { return number(f.mainMaximum); }},
        {"otherMinimum", Qt::Key_Down, "3", [](auto& f) { return number(f.otherMinimum); }},
        {"otherMaximum", Qt::Key_Up, "9", [](auto& f) { return number(f.otherMaximum); }},
        {"doubleMain", Qt::Key_Space, "1", [](auto& f) { return number(f.doubleMain); }},
        {"openingEnabled", Qt::Key_Space, "1", [](auto& f) { return number(f.openingEnabled); }},
        {"openingCamera", Qt::Key_Down, "P", [](auto& f) { return f.openingCamera; }},
        {"openingSeconds", Qt::Key_Up, "16", [](auto& f) { return number(f.openingSeconds); }},
        {"closingEnabled", Qt::Key_Space, "1", [](auto& f) { return number(f.closingEnabled); }},
        {"closingCamera", Qt::Key_End, "B", [](auto& f) { return f.closingCamera; }},
        {"closingSeconds", Qt::Key_Down, "14", [](auto& f) { return number(f.closingSeconds); }},
        {"addSection", Qt::Key_Space, "1", [](auto& f) { return number(f.fixedSections.size()); }},
        {"sectionCamera-0", Qt::Key_Down, "P", [](auto& f) { return f.fixedSections[0].camera; }},
        {"mainCamera", Qt::Key_Down, "P", [](auto& f) { return f.cameraA; }},
        {"removeSection-0", Qt::Key_Space, "0",
         [](auto& f) { return number(f.fixedSections.size()); }},
    };
    Column test;
    for (const auto& row : table) {
        SCOPED_TRACE(row.control);
        auto* const control = test.find(row.control);
        EXPECT_FALSE(control->accessibleName().isEmpty());
        press(control, row.key);
        if (auto* const button = qobject_cast<QAbstractButton*>(control);
            button && button->isDown()) {
            QKeyEvent release(QEvent::KeyRelease, row.key, Qt::NoModifier);
            QApplication::sendEvent(button, &release);
        }
        EXPECT_EQ(row.field(test.fields()), row.value);
    }
}

TEST(SettingsColumn, aFieldShowsAndNothingIsWrittenBack) {
    Column test;
    EditSettings settings = test.editor().currentSettings();
    settings.mainShare = 72.5;
    settings.returnTimes["W"] = 125;
    settings.frequencies = {{"P", 5.5}, {"B", 10}};
    settings.mainMinimum = 1.5;
    test.editor().applySettings(settings);
    EXPECT_EQ(test.editor().currentSettings(), settings);
    const std::pair<const char*, const char*> labels[] = {
        {"projectLine", "Concert · 60 seconds · 25 fps"},
        {"balance", "Target screen time: Main 72% · Other cameras combined 28%"},
        {"axisStart", "01:00:00:00"},
        {"axisEnd", "01:01:00:00"},
    };
    for (const auto& [name, text] : labels)
        EXPECT_EQ(test.find<QLabel>(name)->text().toStdString(), text);
    const std::tuple<const char*, const char*, const char*> controls[] = {
        {"mainWait", "Wait before returning to main camera: 125 sec", "125"},
        {"frequency-B", "Frequency for Band", "10"},
        {"wait-B", "Wait before returning to this camera: 0 sec", "0"},
        {"include-P", "Pulpit", ""},
        {"share", "Main camera's share of screen time", "72.5"},
        {"mainMinimum", "Minimum: 1 sec", "1.5"},
        {"otherMaximum", "Maximum: 8 sec", "8"},
        {"closingSeconds", "15 sec", "15"},
        {"mainCamera", "Main camera", "Wide"},
        {"audio", "Continuous audio", "Recorder"},
    };
    for (const auto& [name, label, value] : controls) {
        EXPECT_EQ(test.spoken(name, QAccessible::Name), label);
        EXPECT_EQ(test.spoken(name, QAccessible::Value), value);
    }
    press(test.find("share"), Qt::Key_Right);
    press(test.find("mainWait"), Qt::Key_Up);
    EXPECT_EQ(test.fields().aShare, 80); // from the step that it showed
    EXPECT_EQ(test.fields().returnTimes.at("W"), 135);
}

TEST(SettingsColumn, controlsAreEnabledAsTheSettingsSay) {
    Column test;
    const auto enabled = [&](std::initializer_list<const char*> names) {
        std::string enabled;
        for (const char* const name : names)
            enabled += test.find(name)->isEnabled() ? 'y' : 'n';
        return enabled;
    };
    EXPECT_EQ(enabled({"frequency-P", "wait-P", "frequency-B", "wait-B"}), "yyyy");
    test.editor().setIncluded("B", false);
    EXPECT_EQ(enabled({"frequency-P", "wait-P", "frequency-B", "wait-B"}), "nynn");
    EXPECT_EQ(enabled({"openingCamera", "openingSeconds", "closingCamera"}), "nnn");
    test.editor().setOpeningEnabled(true);
    EXPECT_EQ(enabled({"openingCamera", "openingSeconds", "closingCamera"}), "yyn");
    EXPECT_EQ(enabled({"applyPreset", "updatePreset", "deletePreset", "savePreset"}), "nnny");
}

TEST(SettingsColumn, theWheelScrolls) {
    Column test;
    test.editor().addSection();
    QApplication::processEvents();
    const EditSettings settings = test.editor().currentSettings();
    QScrollBar* const bar = test.area.verticalScrollBar();
    for (const char* const name : {"mainCamera", "mainWait", "frequency-P", "share", "include-P",
                                   "openingCamera", "sectionStart-0", "preset", "coverage-1"}) {
        SCOPED_TRACE(name);
        test.find(name)->setFocus();
        bar->setValue(0);
        QWheelEvent event({3, 3}, {3, 3}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(test.find(name), &event);
        EXPECT_GT(bar->value(), 0);
    }
    EXPECT_EQ(test.editor().currentSettings(), settings);
}

TEST(SettingsColumn, rowsStayWhileTheirValuesChange) {
    Column test;
    QWidget* const pulpit = test.find("include-P");
    pulpit->setFocus();
    test.editor().chooseMainCamera("B");
    EXPECT_EQ(test.find("include-P"), pulpit);
    EXPECT_TRUE(pulpit->hasFocus());
    QWidget* const wide = test.find("include-W"); // comes after the wait and before Pulpit
    EXPECT_EQ(test.find("mainWait")->nextInFocusChain()->objectName(), wide->objectName());

    test.editor().addSection();
    test.editor().addSection();
    auto* const name = test.find<QLineEdit>("sectionName-0");
    name->setFocus();
    for (const char* const letter : {"S", "r", "m"})
        press(name, Qt::Key_unknown, letter);
    name->setCursorPosition(1);
    press(name, Qt::Key_unknown, "e");
    EXPECT_EQ(test.fields().fixedSections[0].name, "Serm");
    EXPECT_EQ(name->cursorPosition(), 2);
    press(test.find("sectionEnd-1"), Qt::Key_unknown, "x");
    EXPECT_EQ(test.fields().fixedSections[1].end, "01:01:00:00x");
    test.find("removeSection-1")->setFocus();
    test.editor().removeSection(0);
    EXPECT_TRUE(test.find("removeSection-0")->hasFocus());
    EXPECT_EQ(name->text().toStdString(), "");
}

TEST(SettingsColumn, presetsAreNamedInASheet) {
    Column test;
    SavePresetSheet sheet(test.editor(), &test.area);
    const auto subscription = test.editor().observe([&] { sheet.refresh(); });
    const auto open = [&] { test.find<QPushButton>("savePreset")->click(); };
    auto* const name = sheet.findChild<QLineEdit*>(QStringLiteral("presetName"));
    open();
    EXPECT_TRUE(sheet.isVisible() && sheet.isModal());
    press(&sheet, Qt::Key_Escape);
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_FALSE(test.fields().showSavePreset);
    open();
    press(name, Qt::Key_unknown, "A");
    press(name, Qt::Key_Return);
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_EQ(test.find<QLabel>("presetNotice")->text().toStdString(), "Saved A.");
    EXPECT_EQ(test.find<QComboBox>("preset")->currentText().toStdString(), "A");
    test.find<QPushButton>("deletePreset")->click();
    EXPECT_FALSE(test.find("applyPreset")->isEnabled());
    open();
    sheet.close();
    EXPECT_FALSE(test.fields().showSavePreset);
}

TEST(SettingsColumn, coverageIsTold) {
    Column test;
    const std::pair<const char*, const char*> bars[] = {
        {"coverage-1", "Pulpit: 01:00:00:00 to 01:00:20:00, 01:00:24:00 to 01:01:00:00"},
        {"audioCoverage", "Audio: Recorder: 01:00:00:00 to 01:01:00:00"},
        {"gapCoverage", "Selected video gaps: No sections"},
    };
    for (const auto& [name, text] : bars)
        EXPECT_EQ(test.spoken(name, QAccessible::Name) + ": " +
                      test.spoken(name, QAccessible::Value),
                  text);
    auto* const pulpit = test.find<CoverageBarView>("coverage-1");
    const int width = pulpit->width() - 1;
    const auto toolTipAt = [&](int x) {
        QHelpEvent event(QEvent::ToolTip, {x, 2}, pulpit->mapToGlobal(QPoint(x, 2)));
        QApplication::sendEvent(pulpit, &event);
        return pulpit->textAt(x) ? QToolTip::text().toStdString() : "";
    };
    EXPECT_EQ(toolTipAt(width / 4), "01:00:00:00 to 01:00:20:00");
    EXPECT_EQ(toolTipAt(width * 11 / 30), "");
    EXPECT_EQ(toolTipAt(width / 2), "01:00:24:00 to 01:01:00:00");

    test.editor().chooseMainCamera("P");
    for (const char* const other : {"W", "B"})
        test.editor().setIncluded(other, false);
    EXPECT_EQ(test.spoken("coverage-0", QAccessible::Name), "Wide (excluded)");
    auto* const heading = test.find<QToolButton>("uncoveredSections");
    auto* const list = test.find<QListView>("uncoveredSectionList");
    EXPECT_EQ(heading->text().toStdString(), "1 uncovered video section(s)");
    EXPECT_TRUE(list->isHidden());
    heading->click();
    EXPECT_EQ(list->model()->index(0, 0).data().toString().toStdString(),
              "01:00:20:00 to 01:00:24:00 · 4 seconds");
    test.editor().setIncluded("W", true);
    EXPECT_TRUE(list->isHidden() && heading->isHidden());
    test.editor().setIncluded("W", false);
    EXPECT_FALSE(list->isHidden());
}

TEST(SettingsColumn, anyNameFits) {
    ProjectBuilder project = concert();
    const std::string name(300, 'W');
    project.projectAttributes = "name=\"" + name + "\"";
    for (AngleSpec& angle : project.angles)
        angle.name = name + "&amp;" + angle.name;
    Column test(project);
    test.editor().addSection();
    test.editor().setPresetName(name);
    test.editor().savePreset();
    EXPECT_EQ(test.find("include-P")->accessibleName().toStdString(), name + "&Pulpit");
    EXPECT_LE(test.column->layout()->minimumSize().width(), test.column->minimumSizeHint().width());
}

} // namespace
} // namespace shotweaver::test
