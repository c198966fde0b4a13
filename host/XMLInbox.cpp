#include "host/XMLInbox.h"

namespace shotweaver {

XMLInbox& XMLInbox::shared() {
    static XMLInbox inbox;
    return inbox;
}

void XMLInbox::setURL(std::optional<std::string> url) {
    url_ = std::move(url);
    observers_.notify();
}

void XMLInbox::setXMLData(std::optional<std::string> bytes) {
    xmlData_ = std::move(bytes);
    observers_.notify();
}

void XMLInbox::setImportError(std::optional<std::string> sentence) {
    importError_ = std::move(sentence);
    observers_.notify();
}

Observers::Subscription XMLInbox::observe(std::function<void()> observer) {
    return observers_.add(std::move(observer));
}

} // namespace shotweaver
