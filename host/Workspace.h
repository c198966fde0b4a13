#pragma once

#include "editor/HostServices.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// How an application is asked to open files.
struct OpenConfiguration {
    bool activates = false; // comes to the front
};

/// The part of the operating system that knows applications.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Where the application with a bundle identifier is; nothing when there is none.
    virtual std::optional<std::string> urlForApplication(const std::string& bundleIdentifier) = 0;

    /// Opens files with an application that was found. `completion` is called exactly once, on any
    /// thread, perhaps before this returns.
    virtual void open(const std::vector<std::string>& files, const std::string& application,
                      const OpenConfiguration& configuration, OpenCompletion completion) = 0;

  protected:
    Workspace() = default;
    Workspace(const Workspace&) = default;
    Workspace& operator=(const Workspace&) = default;
};

} // namespace shotweaver
