#pragma once

#include "help/HelpContent.h"

class QWidget;

namespace shotweaver {

/// A topic as a page: heading, summary and blocks.
struct ManualPage {
    QWidget* page;
    QWidget* firstHit; // the first text in which the query stands out; null without one
};

ManualPage makeManualPage(const ShotweaverManual::Section& section, const HelpContent& content);

} // namespace shotweaver
