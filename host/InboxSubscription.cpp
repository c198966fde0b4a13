#include "host/InboxSubscription.h"

#include "editor/ProjectFile.h"
#include "platform/FileURL.h"

namespace shotweaver {

InboxSubscription::InboxSubscription(XMLInbox& inbox, ContentView& editor)
    : inbox_(inbox), editor_(editor), subscription_(inbox.observe([this] { deliver(); })) {
    deliver();
}

/// Takes each value out before it is used: using it may bring the next one.
void InboxSubscription::deliver() {
    if (const auto data = inbox_.xmlData()) {
        inbox_.setXMLData(std::nullopt);
        if (!data->empty()) {
            editor_.preemptRestore();
            editor_.importProject(*data);
        }
    }
    if (const auto url = inbox_.url()) {
        inbox_.setURL(std::nullopt);
        if (!url->empty()) deliverURL(*url);
    }
    if (const auto error = inbox_.importError()) {
        inbox_.setImportError(std::nullopt);
        if (!error->empty()) editor_.showError(*error);
    }
}

void InboxSubscription::deliverURL(const std::string& url) {
    editor_.preemptRestore();
    if (const auto path = pathOfFileURL(url))
        editor_.readProjectFile(*path);
    else
        editor_.showError(chooseProjectText);
}

} // namespace shotweaver
