// Makes the pictures of the windows from the example, without a display: every state in every size.

#include "benchmarks/SilentHost.h"
#include "editor/ContentView.h"
#include "editor/views/preview/CutTable.h"
#include "help/AboutTexts.h"
#include "help/HelpContent.h"
#include "host/views/ExtensionRootView.h"
#include "host/views/PanelSheets.h"
#include "platform/Files.h"
#include "widgets/Style.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QToolButton>

#include <functional>
#include <iostream>
#include <stdexcept>

namespace shotweaver {
namespace {

/// A panel on a state of its own: nothing of the user's is read or written.
class Studio {
  public:
    Studio(QSize size, std::string manual)
        : editor({host_,
                  systemFileCalls(),
                  random_,
                  secureUUIDs(),
                  [] { return 0.0; },
                  {state_.path().toStdString() + "/data", state_.path().toStdString() + "/config"},
                  "en"}),
          root_(editor), sheets_(
                             editor, &root_,
                             [manual = std::move(manual)] {
                                 return HelpContent(loadManual(systemFileCalls(), manual), "en");
                             },
                             versionText("0.1.0", "1")) {
        root_.resize(size);
        root_.show();
        settle();
    }

    /// The window with the dialogs over it, as they stand on a screen.
    QPixmap picture() {
        settle();
        QPixmap picture = root_.grab();
        QPainter painter(&picture);
        for (QDialog* const dialog : root_.findChildren<QDialog*>()) {
            if (!dialog->isVisible()) continue;
            painter.fillRect(picture.rect(), QColor(0, 0, 0, 110));
            const QPixmap front = dialog->grab();
            const QPoint corner = root_.rect().center() - front.rect().center();
            painter.drawPixmap(corner, front);
            painter.setPen(style::line());
            painter.drawRect(QRect(corner, front.size()));
        }
        return picture;
    }

    /// Layouts inside of layouts take a turn each.
    static void settle() {
        constexpr int turns = 20;
        for (int turn = 0; turn < turns; ++turn)
            QApplication::processEvents();
    }

    template <class Widget>
    Widget& find(const char* name) {
        for (QWidget* const widget : QApplication::allWidgets()) {
            auto* const found = qobject_cast<Widget*>(widget);
            if (found && found->objectName() == QLatin1String(name)) return *found;
        }
        throw std::runtime_error(std::string("no widget named ") + name);
    }

  private:
    QTemporaryDir state_;
    SilentHost host_;
    SeededRandom random_{7};

  public:
    ContentView editor;

  private:
    ExtensionRootView root_;
    PanelSheets sheets_;
};

struct Scene {
    const char* name;
    std::function<void(Studio&)> arrange;
};

std::vector<Scene> scenes(const std::string& example) {
    const auto load = [example](Studio& studio) {
        studio.editor.importProject(readFile(systemFileCalls(), example));
    };
    const auto generate = [load](Studio& studio) {
        load(studio);
        studio.editor.generateEdit();
        studio.editor.generateEdit();
    };
    return {
        {"no-project", [](Studio&) {}},
        {"loaded", load},
        {"findings",
         [load](Studio& studio) {
             load(studio);
             studio.find<QToolButton>("importWarning").click();
         }},
        {"generated", generate},
        {"refining",
         [generate](Studio& studio) {
             generate(studio);
             studio.editor.toggleKept({1, 2, 5, 8, 60, 61});
             studio.find<CutTable>("cutTable").selectRow(3);
         }},
        {"markers",
         [load](Studio& studio) {
             load(studio);
             studio.editor.edit([](EditSettings& settings) {
                 settings.cutAtMarkers = settings.followMarkers = true;
                 for (int bar = 0; bar < 40; ++bar)
                     settings.cutTimes.push_back(1500 + 2.5 * bar);
             });
             studio.editor.generateEdit();
             Studio::settle();
             auto& remove = studio.find<QPushButton>("removeCutTimes");
             for (QWidget* above = &remove; above; above = above->parentWidget())
                 if (auto* const area = qobject_cast<QScrollArea*>(above))
                     area->ensureWidgetVisible(&remove);
         }},
        {"sections",
         [load](Studio& studio) {
             load(studio);
             load(studio); // replaces a session
             studio.editor.addChapterSection(2);
             studio.editor.editSection(0,
                                       [](SectionDraft& section) { section.end = "01:02:00;01"; });
             Studio::settle();
             studio.find<QPushButton>("addSection").click();
         }},
        {"warning-and-error",
         [load](Studio& studio) {
             load(studio);
             const std::vector<ImportedAngle>& cameras = studio.editor.project()->videoAngles;
             studio.editor.edit([&](EditSettings& settings) {
                 settings.mainCamera = cameras[1].id;
                 settings.otherCameras = {cameras[2].id};
             });
             studio.editor.addSection();
             studio.editor.editSection(0, [](SectionDraft& section) { section.start = "1:2:3"; });
             studio.editor.generateEdit();
         }},
        {"save-preset",
         [load](Studio& studio) {
             load(studio);
             studio.editor.openSavePreset();
             studio.editor.setPresetName("Sunday sermon");
         }},
        {"help",
         [](Studio& studio) {
             studio.editor.setShowingHelp(true);
             studio.find<QLineEdit>("helpSearch").setText(QStringLiteral("timecode"));
         }},
        {"about", [](Studio& studio) { studio.editor.setShowingAbout(true); }},
    };
}

/// As a person would who sets a larger text in the system; 0 for the standard size.
void enlargeText(double points) {
    if (points <= 0) return;
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    QApplication::setFont(font);
}

void run(const QStringList& arguments) {
    if (arguments.size() < 4)
        throw std::runtime_error("Usage: screenshots EXAMPLE MANUAL WIDTHxHEIGHT FOLDER [POINTS]");
    const QStringList sides = arguments[2].split(QLatin1Char('x'));
    const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
    QDir().mkpath(arguments[3]);
    for (const Scene& scene : scenes(arguments[0].toStdString())) {
        Studio studio(size, arguments[1].toStdString());
        scene.arrange(studio);
        const QString path =
            QDir(arguments[3]).filePath(QString::fromUtf8(scene.name) + QStringLiteral(".png"));
        if (!studio.picture().save(path))
            throw std::runtime_error("cannot write " + path.toStdString());
    }
}

} // namespace
} // namespace shotweaver

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    shotweaver::enlargeText(QApplication::arguments().value(5).toDouble());
    shotweaver::style::apply(application);
    try {
        shotweaver::run(QApplication::arguments().mid(1));
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
