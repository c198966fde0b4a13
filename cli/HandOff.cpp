#include "cli/HandOff.h"

#include "host/FinalCutIntegration.h"

#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <queue>
#include <utility>

namespace shotweaver {

namespace {

/// A program has access to whatever its user has.
class UserAccess final : public ItemAccess {
  public:
    bool startAccess(const std::string&) override { return false; }
    void stopAccess(const std::string&) override {}
};

/// What other threads want to have run on this one.
class CallQueue {
  public:
    void add(std::function<void()> call) {
        const std::lock_guard lock(mutex_);
        calls_.push(std::move(call));
        arrived_.notify_one();
    }

    void runNext() {
        std::unique_lock lock(mutex_);
        arrived_.wait(lock, [&] { return !calls_.empty(); });
        const std::function<void()> call = std::move(calls_.front());
        calls_.pop();
        lock.unlock();
        call();
    }

  private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::queue<std::function<void()>> calls_;
};

} // namespace

std::optional<std::string> handOff(const std::string& xmlPath, Workspace& workspace) {
    // Shared: the thread that has reported may not be out of it when this returns.
    const auto calls = std::make_shared<CallQueue>();
    UserAccess access;
    bool isDone = false;
    std::optional<HostError> failure;
    openInFinalCut(
        std::filesystem::absolute(xmlPath).string(), workspace, access,
        [calls](std::function<void()> call) { calls->add(std::move(call)); },
        [&](const std::optional<HostError>& error) {
            isDone = true;
            failure = error;
        });
    while (!isDone)
        calls->runNext();
    return failure ? std::optional(failure->description) : std::nullopt;
}

} // namespace shotweaver
