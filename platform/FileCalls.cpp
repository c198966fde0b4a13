#include "platform/FileCalls.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace shotweaver {

namespace {

class SystemFileCalls final : public FileCalls {
  public:
    int openForReading(const std::string& path) override {
        return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    }

    int createNew(const std::string& path) override {
        return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    }

    std::ptrdiff_t read(int file, char* bytes, std::size_t count) override {
        return ::read(file, bytes, count);
    }

    std::ptrdiff_t size(int file) override {
        struct stat status {};
        return ::fstat(file, &status) == 0 ? static_cast<std::ptrdiff_t>(status.st_size) : -1;
    }

    std::ptrdiff_t write(int file, const char* bytes, std::size_t count) override {
        return ::write(file, bytes, count);
    }

    int sync(int file) override {
#if defined(F_FULLFSYNC)
        // There fsync leaves the bytes in the drive's own memory. Not every file system knows this.
        if (::fcntl(file, F_FULLFSYNC) == 0) return 0;
#endif
        return ::fsync(file);
    }

    int close(int file) override {
        return ::close(file);
    }

    int rename(const std::string& from, const std::string& to) override {
        return ::rename(from.c_str(), to.c_str());
    }

    int renameToNew(const std::string& from, const std::string& to) override {
#if defined(__APPLE__)
        return ::renamex_np(from.c_str(), to.c_str(), RENAME_EXCL);
#else
        return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
#endif
    }

    int link(const std::string& from, const std::string& to) override {
        return ::link(from.c_str(), to.c_str());
    }

    int remove(const std::string& path) override {
        return ::unlink(path.c_str());
    }

    int createFolder(const std::string& path) override {
        return ::mkdir(path.c_str(), 0777);
    }

    int probe(const std::string& path) override {
        struct stat status {};
        return ::lstat(path.c_str(), &status);
    }
};

} // namespace

FileCalls& systemFileCalls() {
    static SystemFileCalls calls;
    return calls;
}

} // namespace shotweaver
