#pragma once

#include "platform/FileCalls.h"

#include <filesystem>
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

/// Calls that are passed on, for a test to change some of them.
class ForwardingFileCalls : public FileCalls {
  public:
    int openForReading(const std::string& path) override { return next().openForReading(path); }
    int createNew(const std::string& path) override { return next().createNew(path); }
    std::ptrdiff_t read(int file, char* bytes, std::size_t count) override {
        return next().read(file, bytes, count);
    }
    std::ptrdiff_t size(int file) override { return next().size(file); }
    std::ptrdiff_t write(int file, const char* bytes, std::size_t count) override {
        return next().write(file, bytes, count);
    }
    int sync(int file) override { return next().sync(file); }
    int close(int file) override { return next().close(file); }
    int rename(const std::string& from, const std::string& to) override {
        return next().rename(from, to);
    }
    int renameToNew(const std::string& from, const std::string& to) override {
        return next().renameToNew(from, to);
    }
    int remove(const std::string& path) override { return next().remove(path); }
    int createFolder(const std::string& path) override { return next().createFolder(path); }
    int probe(const std::string& path) override { return next().probe(path); }

  protected:
    /// What takes the call that is being made.
    virtual FileCalls& next() { return systemFileCalls(); }
};

/// The system's calls, of which the k-th (from 1) fails with an error of the test's choice. The
/// calls that only let go of something (close, and a removal) are counted too.
class FailingFileCalls final : public FileCalls {
  public:
    explicit FailingFileCalls(int failingCall, int error)
        : failingCall_(failingCall), error_(error) {}

    /// Calls made so far.
    int calls() const { return calls_; }

    int openForReading(const std::string& path) override;
    int createNew(const std::string& path) override;
    std::ptrdiff_t read(int file, char* bytes, std::size_t count) override;
    std::ptrdiff_t size(int file) override;
    std::ptrdiff_t write(int file, const char* bytes, std::size_t count) override;
    int sync(int file) override;
    int close(int file) override;
    int rename(const std::string& from, const std::string& to) override;
    int renameToNew(const std::string& from, const std::string& to) override;
    int remove(const std::string& path) override;
    int createFolder(const std::string& path) override;
    int probe(const std::string& path) override;

    /// Makes `renameToNew` unknown, as on file systems that lack it.
    bool lacksRenameToNew = false;
    /// Writes at most so many bytes a call; 0 for no limit.
    std::size_t shortWrites = 0;
    /// Files replaced so far.
    int renames = 0;

  private:
    bool fails();

    int failingCall_;
    int error_;
    int calls_ = 0;
};

} // namespace shotweaver::test
