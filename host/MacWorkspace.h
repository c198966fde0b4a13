#pragma once

#include "host/Workspace.h"
#include "platform/Environment.h"

#include <future>
#include <map>
#include <string>
#include <vector>

namespace shotweaver {

/// The applications of macOS, by way of two of its programs: the one that searches Spotlight's
/// index and the one that opens files.
class MacWorkspace final : public Workspace {
  public:
    /// Programs are named as `findProgram` takes them.
    explicit MacWorkspace(Environment environment, std::string finder = "mdfind",
                          std::string opener = "/usr/bin/open");

    /// The first place in the index. Where the index has none, as when it is switched off, the
    /// identifier itself: the program that opens files asks the system in its own way. Throws
    /// `PlatformError` when the program is there but cannot be started.
    std::optional<std::string> urlForApplication(const std::string& bundleIdentifier) override;

    /// Reports on a thread of its own, which the destructor waits for. An error has the program's
    /// exit status as its code and what it wrote as its description.
    void open(const std::string& file, const std::string& application,
              OpenCompletion completion) override;

  private:
    Environment environment_;
    std::string finder_;
    std::string opener_;
    std::map<std::string, std::string> identifiers_; // of applications, by what was given for them
    std::vector<std::future<void>> running_;         // each waits for its thread when it goes
};

} // namespace shotweaver
