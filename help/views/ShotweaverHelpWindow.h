#pragma once

#include <functional>

namespace shotweaver {

class HelpContent;

/// The help window that all views share. Made on the first call and kept with its query and
/// selection; closing hides it.
class ShotweaverHelpWindow {
  public:
    /// Shows the window in front. `load` gives its content when it is first made.
    static void show(const std::function<HelpContent()>& load);
};

} // namespace shotweaver
