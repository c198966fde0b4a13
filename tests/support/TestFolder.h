#pragma once

#include "platform/FileCalls.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver::test {

/// A new folder of a test's own, removed with everything in it at the end.
class TestFolder {
  public:
    TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();

    std::string path() const { return path_.string(); }
    std::string path(std::string_view name) const { return (path_ / name).string(); }
    /// Puts a file there, in folders as needed, and gives its path.
    std::string write(std::string_view name, std::string_view bytes) const;
    std::string read(std::string_view name) const;
    /// Names of everything in the folder, hidden files too, sorted.
    std::vector<std::string> names() const;

  private:
    std::filesystem::path path_;
};

/// The system's calls, which a test may watch, or make fail.
class WatchedFileCalls : public FileCalls {
  public:
    /// Runs before each call; an error number makes the call fail.
    std::function<int()> beforeEach = [] { return 0; };
    bool isQuick = false;          // without waits for the device
    bool knowsSizes = true;        // or files are read without them
    bool lacksRenameToNew = false; // as on some file systems
    std::size_t shortWrites = 0;   // at most so many bytes a call; 0 for no limit
    int renames = 0;               // files replaced so far

    int openForReading(const std::string& path) override {
        return made([&] { return next().openForReading(path); });
    }
    int createNew(const std::string& path) override {
        return made([&] { return next().createNew(path); });
    }
    std::ptrdiff_t read(int file, char* bytes, std::size_t count) override {
        return made([&] { return next().read(file, bytes, count); });
    }
    std::ptrdiff_t size(int file) override { return knowsSizes ? next().size(file) : -1; }
    std::ptrdiff_t write(int file, const char* bytes, std::size_t count) override {
        const std::size_t most = shortWrites > 0 ? shortWrites : count;
        return made([&] { return next().write(file, bytes, std::min(count, most)); });
    }
    int sync(int file) override {
        return made([&] { return isQuick ? 0 : next().sync(file); });
    }
    int close(int file) override;
    int rename(const std::string& from, const std::string& to) override {
        ++renames;
        return made([&] { return next().rename(from, to); });
    }
    int renameToNew(const std::string& from, const std::string& to) override;
    int link(const std::string& from, const std::string& to) override {
        return made([&] { return next().link(from, to); });
    }
    int remove(const std::string& path) override {
        return made([&] { return next().remove(path); });
    }
    int createFolder(const std::string& path) override {
        return made([&] { return next().createFolder(path); });
    }
    int probe(const std::string& path) override {
        return made([&] { return next().probe(path); });
    }

  private:
    static FileCalls& next() { return systemFileCalls(); }

    template <class Call>
    auto made(Call call) -> decltype(call()) {
        const int error = beforeEach();
        if (error == 0) return call();
        errno = error;
        return -1;
    }
};

/// Calls of which the k-th (from 1) fails with an error of the test's choice. The calls that only
/// let go of something (close, and a removal) are counted too.
class FailingFileCalls final : public WatchedFileCalls {
  public:
    explicit FailingFileCalls(int failingCall, int error) {
        knowsSizes = failingCall == 0;
        beforeEach = [this, failingCall, error] { return ++calls_ == failingCall ? error : 0; };
    }

    /// Calls made so far.
    int calls() const { return calls_; }

  private:
    int calls_ = 0;
};

} // namespace shotweaver::test
