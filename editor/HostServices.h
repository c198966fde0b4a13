#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace shotweaver {

/// What a host's file or folder dialog offers.
struct OpenPanel {
    std::string message;
    std::string prompt; // the confirm button's text; empty for the host's own
    bool canChooseFiles = false;
    bool canChooseDirectories = false;
    bool canCreateDirectories = false;

    bool operator==(const OpenPanel&) const = default;
};

/// An error of the host, shown by its description. Domain and code name it for a host's own use.
struct HostError {
    std::string domain;
    int code = 0;
    std::string description; // a sentence

    bool operator==(const HostError&) const = default;
};

/// Called with nothing after success.
using OpenCompletion = std::function<void(const std::optional<HostError>&)>;

/// Access to what the user chose, where the platform grants it for a time.
class ItemAccess {
  public:
    virtual ~ItemAccess() = default;

    /// Gives true when the access has to be stopped again. Where nothing has to be granted, false.
    virtual bool startAccess(const std::string& path) = 0;
    virtual void stopAccess(const std::string& path) = 0;

  protected:
    ItemAccess() = default;
    ItemAccess(const ItemAccess&) = default;
    ItemAccess& operator=(const ItemAccess&) = default;
};

/// The user is shown that work is under way for as long as this lives. Null where nothing is shown.
using BusySign = std::shared_ptr<const void>;

/// What the editor asks of the panel that shows it. Everything is called on the main thread. A
/// dialog may run an event loop of its own, in which the editor is used further.
class HostServices : public ItemAccess {
  public:
    /// One item's path, or nothing when the user cancels. Bundles count as items, not as folders to
    /// look into.
    virtual std::optional<std::string> chooseItem(const OpenPanel& panel) = 0;

    /// Asked for around work that takes a moment. Signs may nest.
    virtual BusySign showBusy() { return {}; }

    /// Hands an exported file to Final Cut Pro. `completion` is called exactly once, on the main
    /// thread, perhaps before this returns.
    virtual void openInFinalCut(const std::string& path, OpenCompletion completion) = 0;

    /// Opens the folder of a file, by the desktop's own means. `completion` is called like that of
    /// `openInFinalCut`.
    virtual void showInFolder(const std::string& path, OpenCompletion completion) = 0;

    /// Runs a function on the main thread after the current event.
    virtual void later(std::function<void()> function) = 0;
};

} // namespace shotweaver
