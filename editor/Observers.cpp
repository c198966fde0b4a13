#include "editor/Observers.h"

namespace shotweaver {

Observers::Subscription Observers::add(std::function<void()> observer) {
    observers_.remove_if([](const auto& known) { return known.expired(); });
    auto added = std::make_shared<std::function<void()>>(std::move(observer));
    observers_.push_back(added);
    return Subscription(std::move(added));
}

void Observers::notify() {
    // Over a copy: an observer may add others, which learn of the next change, and may end its own
    // or another's subscription, which then is not called.
    const auto present = observers_;
    for (const auto& known : present)
        if (const auto observer = known.lock()) (*observer)();
}

} // namespace shotweaver
