#pragma once

#include "editor/HostServices.h"

#include <optional>
#include <string>

namespace shotweaver {

/// The part of the operating system that knows applications.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Where the application with a bundle identifier is; nothing when there is none.
    virtual std::optional<std::string> urlForApplication(const std::string& bundleIdentifier) = 0;

    /// Opens a file with an application that `urlForApplication` gave, which comes to the front.
    /// `completion` is called exactly once, on any thread, perhaps before this returns.
    virtual void open(const std::string& file, const std::string& application,
                      OpenCompletion completion) = 0;

  protected:
    Workspace() = default;
    Workspace(const Workspace&) = default;
    Workspace& operator=(const Workspace&) = default;
};

} // namespace shotweaver
