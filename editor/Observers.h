#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace shotweaver {

/// Functions that are called after changes.
class Observers {
  public:
    /// Ends the observation when it goes; it may outlive the observed.
    class Subscription {
      public:
        Subscription() = default;

      private:
        friend class Observers;
        explicit Subscription(std::shared_ptr<std::function<void()>> observer)
            : observer_(std::move(observer)) {}

        std::shared_ptr<std::function<void()>> observer_;
    };

    [[nodiscard]] Subscription add(std::function<void()> observer);

    /// Tells everyone, in the order in which they came. Observers may come and go meanwhile.
    void notify();

  private:
    std::list<std::weak_ptr<std::function<void()>>> observers_;
};

} // namespace shotweaver
