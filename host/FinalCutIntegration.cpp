#include "host/FinalCutIntegration.h"

#include "host/OpenError.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <memory>
#include <utility>

namespace shotweaver {

namespace {

std::vector<std::string> makeAcceptedXMLTypes() {
    const std::string unversioned = "com.apple.finalcutpro.xml";
    std::vector<std::string> types;
    for (int version = 14; version >= 9; --version)
        types.push_back(unversioned + ".v1-" + std::to_string(version));
    types.push_back(unversioned);
    return types;
}

bool contains(const std::vector<std::string>& types, const std::string& type) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

/// One request to open a file, from the access to it until its completion.
class OpenRequest : public std::enable_shared_from_this<OpenRequest> {
  public:
    OpenRequest(std::string path, ItemAccess& access, MainThread later, OpenCompletion completion)
        : path_(std::move(path)), access_(access), later_(std::move(later)),
          completion_(std::move(completion)) {}

    void start(Workspace& workspace, const std::string& application) {
        accessStarted_ = access_.startAccess(path_);
        workspace.open(path_, application,
                       [self = shared_from_this()](const auto& error) { self->report(error); });
    }

    /// On any thread. Only the first report counts.
    void report(const std::optional<HostError>& error) {
        if (reported_.exchange(true)) return;
        later_([self = shared_from_this(), error] { self->finish(error); });
    }

    /// On the main thread.
    void finish(const std::optional<HostError>& error) {
        if (accessStarted_) access_.stopAccess(path_);
        completion_(error);
    }

  private:
    std::string path_;
    ItemAccess& access_;
    MainThread later_;
    OpenCompletion completion_;
    bool accessStarted_ = false;
    std::atomic<bool> reported_ = false;
};

} // namespace

const std::vector<std::string>& acceptedXMLTypes() {
    static const std::vector<std::string> types = makeAcceptedXMLTypes();
    return types;
}

bool offersXML(const Pasteboard& pasteboard) {
    const std::vector<std::string> offered = pasteboard.types();
    return std::any_of(acceptedXMLTypes().begin(), acceptedXMLTypes().end(),
                       [&](const std::string& type) { return contains(offered, type); });
}

std::optional<std::string> readXMLData(const Pasteboard& pasteboard) {
    const std::vector<std::string> offered = pasteboard.types();
    for (const std::string& type : acceptedXMLTypes()) {
        if (!contains(offered, type)) continue;
        std::optional<std::string> bytes = pasteboard.data(type);
        if (bytes && !bytes->empty()) return bytes;
    }
    return std::nullopt;
}

bool receiveDrop(const Pasteboard& pasteboard, XMLInbox& inbox) {
    std::optional<std::string> bytes = readXMLData(pasteboard);
    if (!bytes) {
        inbox.setImportError("Final Cut could not provide the project XML. Drag one project from "
                             "its browser.");
        return false;
    }
    inbox.setXMLData(std::move(bytes));
    return true;
}

void openInFinalCut(const std::string& path, Workspace& workspace, ItemAccess& access,
                    const MainThread& later, OpenCompletion completion) {
    const auto request = std::make_shared<OpenRequest>(path, access, later, std::move(completion));
    try {
        if (const auto application = workspace.urlForApplication("com.apple.FinalCut")) {
            request->start(workspace, *application);
            return;
        }
    } catch (const std::exception& failure) {
        request->report(openError(failure.what()));
        return;
    }
    request->finish(notFoundError());
}

} // namespace shotweaver
