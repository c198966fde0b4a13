#pragma once

#include "help/ShotweaverManual.h"

class QWidget;

namespace shotweaver {

/// A topic as a page: heading, summary and blocks.
QWidget* makeManualPage(const ShotweaverManual::Section& section);

} // namespace shotweaver
