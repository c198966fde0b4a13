#pragma once

#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QTextDocument>

#include <string>

namespace shotweaver {

/// A text, shortened, as a tooltip that shows it as it is: tooltips take what looks like markup for
/// markup.
inline QString plainToolTip(const std::string& text) {
    const QString shown = shortened(toQt(text));
    return Qt::mightBeRichText(shown) ? Qt::convertFromPlainText(shown) : shown;
}

} // namespace shotweaver
