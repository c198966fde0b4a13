#pragma once

#include "widgets/Style.h"

#include <string>

class QLabel;

namespace shotweaver {

/// A link that opens in the default browser, by mouse or keyboard.
QLabel* makeLink(const std::string& title, const std::string& url, style::TextStyle textStyle);

} // namespace shotweaver
