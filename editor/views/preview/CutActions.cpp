#include "editor/views/preview/CutActions.h"

#include "planning/HandChanges.h"
#include "widgets/Style.h"

#include <QAction>
#include <QItemSelectionModel>
#include <QMenu>
#include <QWidget>

#include <algorithm>

namespace shotweaver {

namespace {

constexpr std::int64_t fewFrames = 1;
constexpr std::int64_t manyFrames = 10;

} // namespace

CutActions::CutActions(ContentView& editor, QItemSelectionModel& selection, QObject* parent)
    : QObject(parent), editor_(editor), selection_(selection) {
    addKey(QStringLiteral("Keep"), Qt::Key_K, [this] { toggleKept(); });
    for (int number = 1; number <= 9; ++number)
        addKey(QStringLiteral("Camera %1").arg(number), Qt::Key(Qt::Key_0 + number),
               [this, number] { chooseCamera(static_cast<std::size_t>(number - 1)); });
    for (const int sign : {-1, 1}) {
        const QKeyCombination key = Qt::ALT | (sign < 0 ? Qt::Key_Left : Qt::Key_Right);
        addKey(QStringLiteral("Move start"), key, [this, sign] { roll(sign * fewFrames); });
        addKey(QStringLiteral("Move start far"),
               QKeyCombination(key.keyboardModifiers() | Qt::ShiftModifier, key.key()),
               [this, sign] { roll(sign * manyFrames); });
    }
}

void CutActions::addKey(const QString& name, QKeyCombination key, std::function<void()> run) {
    auto* const action = new QAction(name, this);
    action->setShortcut(QKeySequence(key));
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, std::move(run));
    keys_.push_back(action);
}

void CutActions::addTo(QWidget& view) {
    for (QAction* const key : keys_)
        view.addAction(key);
    view.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&view, &QWidget::customContextMenuRequested, this, [this, &view](const QPoint& at) {
        QMenu* const menu = makeMenu(&view);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(view.mapToGlobal(at));
    });
}

std::vector<std::size_t> CutActions::selectedRows() const {
    std::vector<std::size_t> rows;
    for (const QItemSelectionRange& range : selection_.selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(static_cast<std::size_t>(row));
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

std::optional<std::size_t> CutActions::currentRow() const {
    const QModelIndex current = selection_.currentIndex();
    if (!current.isValid() || !selection_.hasSelection()) return std::nullopt;
    return static_cast<std::size_t>(current.row());
}

void CutActions::toggleKept() {
    editor_.toggleKept(selectedRows());
}

void CutActions::shuffleSelection() {
    editor_.shuffleRows(selectedRows());
}

/// In the order of the cameras.
void CutActions::chooseCamera(std::size_t number) {
    const Project* const project = editor_.project();
    if (project && number < project->videoAngles.size()) setCamera(project->videoAngles[number].id);
}

void CutActions::setCamera(const std::string& camera) {
    const auto row = currentRow();
    if (!row) return;
    editor_.setCutCamera(*row, camera);
    selectRow(*row);
}

void CutActions::roll(std::int64_t frames) {
    const auto row = currentRow();
    if (!row) return;
    editor_.rollCut(*row, frames);
    selectRow(*row);
}

/// The row stays selected when its change has made a new edit, whose rows are new.
void CutActions::selectRow(std::size_t row) {
    selection_.setCurrentIndex(selection_.model()->index(static_cast<int>(row), 0),
                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

QMenu* CutActions::makeMenu(QWidget* parent) {
    auto* const menu = new QMenu(parent);
    const std::vector<std::size_t> rows = selectedRows();
    const auto row = currentRow();
    const auto add = [&](const QString& text, const QKeySequence& key, bool isEnabled, auto run) {
        QAction* const action = menu->addAction(text, this, run);
        action->setShortcut(key);
        action->setEnabled(isEnabled);
        return action;
    };
    const bool areKept =
        !rows.empty() && std::all_of(rows.begin(), rows.end(),
                                     [&](std::size_t each) { return editor_.isKept(each); });
    add(areKept ? QStringLiteral("Let go") : QStringLiteral("Keep"), Qt::Key_K, !rows.empty(),
        [this] { toggleKept(); });
    if (row) {
        const std::string camera = editor_.fields().cuts()[*row].angle;
        add(QStringLiteral("Keep all of this camera"), {}, true,
            [this, camera] { editor_.keepCamera(camera); });
        menu->addSeparator();
        addCameras(*menu, *row);
        menu->addSeparator();
        addRolls(*menu, *row);
    }
    menu->addSeparator();
    add(QStringLiteral("Shuffle selection"), {}, !rows.empty(), [this] { shuffleSelection(); });
    add(QStringLiteral("Save cut list…"), {}, true, [this] { editor_.saveCutList(); });
    return menu;
}

/// Those that cannot be shown are disabled and say why.
void CutActions::addCameras(QMenu& menu, std::size_t row) {
    const Project& project = *editor_.project();
    const Cut& cut = editor_.fields().cuts()[row];
    const auto fixed = editor_.cameraIsFixed(row);
    int number = 0;
    for (const ImportedAngle& angle : project.videoAngles) {
        ++number;
        const auto reason = fixed ? fixed : missingFootage(cut, angle.id, project);
        QString text = toQt(project.label(angle.id));
        if (reason) text += QStringLiteral(" – ") + toQt(*reason);
        text.replace(QLatin1Char('&'), QLatin1String("&&")); // which are no mnemonics
        QAction* const action =
            menu.addAction(text, this, [this, id = angle.id] { setCamera(id); });
        if (number <= 9) action->setShortcut(QKeySequence(Qt::Key_0 + number));
        action->setEnabled(!reason);
        action->setCheckable(true);
        action->setChecked(angle.id == cut.angle);
    }
}

void CutActions::addRolls(QMenu& menu, std::size_t row) {
    const auto fixed = editor_.startIsFixed(row);
    const std::tuple<const char*, std::int64_t, QKeyCombination> moves[] = {
        {"Start a frame earlier", -fewFrames, Qt::ALT | Qt::Key_Left},
        {"Start a frame later", fewFrames, Qt::ALT | Qt::Key_Right},
        {"Start ten frames earlier", -manyFrames, Qt::ALT | Qt::SHIFT | Qt::Key_Left},
        {"Start ten frames later", manyFrames, Qt::ALT | Qt::SHIFT | Qt::Key_Right}};
    for (const auto& [text, frames, key] : moves) {
        QAction* const action = menu.addAction(QString::fromUtf8(text), this,
                                               [this, frames = frames] { roll(frames); });
        action->setShortcut(QKeySequence(key));
        action->setEnabled(!fixed);
    }
    if (fixed) menu.addAction(toQt(*fixed))->setEnabled(false);
}

} // namespace shotweaver
