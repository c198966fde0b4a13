#pragma once

#include <QColor>
#include <QFont>
#include <QString>

#include <string>

class QApplication;
class QLabel;

namespace shotweaver {

inline QString toQt(const std::string& text) {
    return QString::fromStdString(text);
}

/// The look of all windows: dark and calm, one spacing scale, colour only where it means something.
namespace style {

/// The one scale of distances, in points at the standard text size (see `scaled`).
inline constexpr int tight = 4;
inline constexpr int close = 8;
inline constexpr int normal = 12;
inline constexpr int wide = 16;

// Text stands at 4.5 : 1 or more on all of the backgrounds.
QColor background();
QColor box();   // of a group
QColor field(); // of text fields, lists and buttons
QColor line();  // borders and dividers
QColor text();
QColor secondary(); // less important text
QColor help();      // explanations under controls: sRGB 0.75, 0.71, 0.65
QColor accent();    // sRGB 1.0, 0.5, 0.17
QColor audio();     // of the audio bar: sRGB 1.0, 0.95, 0.86
QColor gap();       // red
QColor unused();    // gray
QColor barBackground();
QColor hit(); // behind found text

/// Points at the standard text size as pixels at the user's.
int scaled(double points);

enum class TextStyle { largeTitle, title, headline, body, callout, caption };
QFont font(TextStyle style);

/// `font`, or, where its digits differ in width, one of the same size in which they do not.
QFont withEqualDigits(const QFont& font);

/// Gives a label its look. Its text is never taken for markup.
void prepare(QLabel& label, TextStyle style, const QColor& colour);

/// A label of one line.
QLabel* label(TextStyle style, const QColor& colour = text());

/// Gives the application font, palette and style sheet.
void apply(QApplication& application);

} // namespace style

} // namespace shotweaver
