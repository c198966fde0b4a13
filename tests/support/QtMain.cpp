#include "widgets/Style.h"

#include <gtest/gtest.h>

#include <QApplication>

/// The tests of views run without a display, in the look of the application.
/// Fontconfig keeps what it looked up for characters that the main font lacks.
extern "C" const char* __lsan_default_suppressions() { // NOLINT: the leak checker's name
    return "leak:libfontconfig";
}

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    shotweaver::style::apply(application);
    return RUN_ALL_TESTS();
}
