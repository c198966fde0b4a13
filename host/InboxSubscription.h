#pragma once

#include "editor/ContentView.h"
#include "host/XMLInbox.h"

namespace shotweaver {

/// Carries what arrives in an inbox to an editor, each value once; also what was there before.
/// Inbox and editor must outlive it.
class InboxSubscription {
  public:
    InboxSubscription(XMLInbox& inbox, ContentView& editor);
    InboxSubscription(const InboxSubscription&) = delete;
    InboxSubscription& operator=(const InboxSubscription&) = delete;
    ~InboxSubscription() = default;

  private:
    void deliver();
    bool deliverNext();
    void deliverURL(const std::string& url);

    XMLInbox& inbox_;
    ContentView& editor_;
    bool isDelivering_ = false;
    Observers::Subscription subscription_;
};

} // namespace shotweaver
