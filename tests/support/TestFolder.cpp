#include "tests/support/TestFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <unistd.h> // mkdtemp on macOS

namespace shotweaver::test {

TestFolder::TestFolder() {
    // Without the links on the way, as programs tell where they are.
    const auto parent = std::filesystem::canonical(std::filesystem::temp_directory_path());
    std::string pattern = (parent / "shotweaver-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    path_ = pattern;
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
}

std::string TestFolder::write(std::string_view name, std::string_view bytes) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return file.string();
}

std::string TestFolder::read(std::string_view name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(path_ / name, std::ios::binary).rdbuf();
    return bytes.str();
}

std::vector<std::string> TestFolder::names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

bool FailingFileCalls::fails() {
    if (++calls_ != failingCall_) return false;
    errno = error_;
    return true;
}

int FailingFileCalls::openForReading(const std::string& path) {
    return fails() ? -1 : systemFileCalls().openForReading(path);
}

int FailingFileCalls::createNew(const std::string& path) {
    return fails() ? -1 : systemFileCalls().createNew(path);
}

std::ptrdiff_t FailingFileCalls::read(int file, char* bytes, std::size_t count) {
    return fails() ? -1 : systemFileCalls().read(file, bytes, count);
}

std::ptrdiff_t FailingFileCalls::size(int file) {
    // Nothing depends on it, so it is no call to fail at: only to do without.
    return failingCall_ > 0 ? -1 : systemFileCalls().size(file);
}

std::ptrdiff_t FailingFileCalls::write(int file, const char* bytes, std::size_t count) {
    if (fails()) return -1;
    return systemFileCalls().write(file, bytes,
                                   shortWrites > 0 ? std::min(count, shortWrites) : count);
}

int FailingFileCalls::sync(int file) {
    return fails() ? -1 : systemFileCalls().sync(file);
}

int FailingFileCalls::close(int file) {
    // The descriptor is gone even when a close reports an error.
    const int error = errno;
    systemFileCalls().close(file);
    errno = error;
    return fails() ? -1 : 0;
}

int FailingFileCalls::rename(const std::string& from, const std::string& to) {
    ++renames;
    return fails() ? -1 : systemFileCalls().rename(from, to);
}

int FailingFileCalls::renameToNew(const std::string& from, const std::string& to) {
    if (fails()) return -1;
    if (!lacksRenameToNew) return systemFileCalls().renameToNew(from, to);
    errno = EINVAL;
    return -1;
}

int FailingFileCalls::remove(const std::string& path) {
    return fails() ? -1 : systemFileCalls().remove(path);
}

int FailingFileCalls::createFolder(const std::string& path) {
    return fails() ? -1 : systemFileCalls().createFolder(path);
}

int FailingFileCalls::probe(const std::string& path) {
    return fails() ? -1 : systemFileCalls().probe(path);
}

} // namespace shotweaver::test
