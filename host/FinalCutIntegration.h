#pragma once

#include "editor/HostServices.h"
#include "host/Workspace.h"
#include "host/XMLInbox.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// The pasteboard types that carry Final Cut Pro XML, the newest first, the unversioned one last.
const std::vector<std::string>& acceptedXMLTypes();

/// What a drag carries.
class Pasteboard {
  public:
    virtual ~Pasteboard() = default;

    virtual std::vector<std::string> types() const = 0;
    /// The bytes under a type; nothing when there are none.
    virtual std::optional<std::string> data(const std::string& type) const = 0;

  protected:
    Pasteboard() = default;
    Pasteboard(const Pasteboard&) = default;
    Pasteboard& operator=(const Pasteboard&) = default;
};

/// True when a drag may be dropped as a copy, by its types alone.
bool offersXML(const Pasteboard& pasteboard);

/// The bytes of the first accepted type that the pasteboard lists and has bytes for; never empty.
std::optional<std::string> readXMLData(const Pasteboard& pasteboard);

/// A drop: its bytes go to the inbox. When it has none, the inbox gets an error and this gives
/// false.
bool receiveDrop(const Pasteboard& pasteboard, XMLInbox& inbox);

/// Runs a function on the main thread, not before the event that is being handled has been. May be
/// called on any thread.
using MainThread = std::function<void(std::function<void()>)>;

/// Has Final Cut Pro open an exported file and come to the front. Called on the main thread, where
/// `completion` is called exactly once: before this returns when Final Cut Pro is not installed, in
/// all other cases by way of `later`, with the workspace's error unchanged and after the access to
/// the file was given back. `access` must live until then.
void openInFinalCut(const std::string& path, Workspace& workspace, ItemAccess& access,
                    const MainThread& later, OpenCompletion completion);

} // namespace shotweaver
