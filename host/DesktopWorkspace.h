#pragma once

#include "host/Workspace.h"
#include "platform/Environment.h"

namespace shotweaver {

/// The applications of a freedesktop.org desktop: the one with an identifier is the one whose
/// desktop entry is named after it ("com.apple.FinalCut.desktop"), and its URL is the entry's path.
class DesktopWorkspace final : public Workspace {
  public:
    explicit DesktopWorkspace(Environment environment);

    std::optional<std::string> urlForApplication(const std::string& bundleIdentifier) override;

    /// Starts the entry's command; success means that it could be started. Completes before it
    /// returns. Whether it comes to the front is the desktop's decision.
    void open(const std::string& file, const std::string& application,
              OpenCompletion completion) override;

  private:
    Environment environment_;
};

} // namespace shotweaver
