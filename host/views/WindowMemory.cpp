#include "host/views/WindowMemory.h"

#include "platform/PlatformError.h"

#include <QEvent>
#include <QSplitter>
#include <QWidget>

namespace shotweaver {

namespace {

// Entries of the defaults, in Qt's own form.
constexpr const char* windowEntry = "Shotweaver.window.v1";
constexpr const char* dividerEntry = "Shotweaver.divider.v1";

QByteArray bytesOf(const UserDefaults& defaults, const char* entry) {
    try {
        return QByteArray::fromStdString(defaults.data(entry));
    } catch (const PlatformError&) {
        return {}; // no reason not to open the window
    }
}

} // namespace

WindowMemory::WindowMemory(UserDefaults defaults, QWidget* window, QSplitter* divider)
    : QObject(window), defaults_(std::move(defaults)), window_(window), divider_(divider) {
    window_->restoreGeometry(bytesOf(defaults_, windowEntry));
    divider_->restoreState(bytesOf(defaults_, dividerEntry));
    window_->installEventFilter(this);
}

bool WindowMemory::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) store();
    return QObject::eventFilter(watched, event);
}

void WindowMemory::store() {
    try {
        defaults_.setData(windowEntry, window_->saveGeometry().toStdString());
        // Before the first project there is no divider to be seen.
        if (divider_->isVisible())
            defaults_.setData(dividerEntry, divider_->saveState().toStdString());
    } catch (const PlatformError&) {
        return; // the window opens in its usual size next time
    }
}

} // namespace shotweaver
