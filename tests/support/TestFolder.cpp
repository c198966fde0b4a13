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

int WatchedFileCalls::close(int file) {
    // The descriptor is gone even when a close reports an error.
    const int before = errno;
    next().close(file);
    errno = before;
    return made([] { return 0; });
}

int WatchedFileCalls::renameToNew(const std::string& from, const std::string& to) {
    return made([&] {
        if (!lacksRenameToNew) return next().renameToNew(from, to);
        errno = EINVAL;
        return -1;
    });
}

} // namespace shotweaver::test
