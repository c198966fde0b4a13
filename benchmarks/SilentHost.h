#pragma once

#include "editor/HostServices.h"

namespace shotweaver {

/// A host for programs without a user: every dialog is cancelled, every hand-off succeeds, and what
/// is put off runs at once.
class SilentHost final : public HostServices {
  public:
    std::optional<std::string> chooseItem(const OpenPanel&) override { return std::nullopt; }
    bool startAccess(const std::string&) override { return false; }
    void stopAccess(const std::string&) override {}
    void openInFinalCut(const std::string&, OpenCompletion completion) override { completion({}); }
    void showInFolder(const std::string&, OpenCompletion completion) override { completion({}); }
    void later(std::function<void()> function) override { function(); }
};

} // namespace shotweaver
