#include "host/InboxSubscription.h"

#include "planning/ProjectFile.h"
#include "platform/FileURL.h"

namespace shotweaver {

InboxSubscription::InboxSubscription(XMLInbox& inbox, ContentView& editor)
    : inbox_(inbox), editor_(editor), subscription_(inbox.observe([this] { deliver(); })) {
    deliver();
}

/// In the order of the fields, although each clearing is announced as well.
void InboxSubscription::deliver() {
    if (isDelivering_) return;
    isDelivering_ = true;
    const struct End {
        bool& isDelivering;
        ~End() { isDelivering = false; }
    } end{isDelivering_};
    while (deliverNext()) {
    }
}

/// Takes a value out before it is used: using it may bring the next one. False when there was none.
bool InboxSubscription::deliverNext() {
    if (const auto data = inbox_.xmlData()) {
        inbox_.setXMLData(std::nullopt);
        if (!data->empty()) {
            editor_.preemptRestore();
            editor_.importProject(*data);
        }
    } else if (const auto url = inbox_.url()) {
        inbox_.setURL(std::nullopt);
        if (!url->empty()) deliverURL(*url);
    } else if (const auto error = inbox_.importError()) {
        inbox_.setImportError(std::nullopt);
        if (!error->empty()) editor_.showError(*error);
    } else {
        return false;
    }
    return true;
}

void InboxSubscription::deliverURL(const std::string& url) {
    editor_.preemptRestore();
    if (const auto path = pathOfFileURL(url))
        editor_.readProjectFile(*path);
    else
        editor_.showError(chooseProjectText);
}

} // namespace shotweaver
