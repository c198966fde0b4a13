#pragma once

#include <cerrno>
#include <cstddef>
#include <string>

namespace shotweaver {

/// The calls through which every file is read and written: POSIX calls, one each, with POSIX
/// results (-1 and errno on failure). Everything else about files is built above this interface, so
/// that a test can make any single call fail.
class FileCalls {
  public:
    virtual ~FileCalls() = default;

    virtual int openForReading(const std::string& path) = 0;
    /// Creates the file; fails with EEXIST when anything has that name already.
    virtual int createNew(const std::string& path) = 0;
    virtual std::ptrdiff_t read(int file, char* bytes, std::size_t count) = 0;
    /// The size of an open file in bytes; 0 for what has none, such as a pipe.
    virtual std::ptrdiff_t size(int file) = 0;
    virtual std::ptrdiff_t write(int file, const char* bytes, std::size_t count) = 0;
    virtual int sync(int file) = 0;
    virtual int close(int file) = 0;
    /// Gives the file a new name; replaces what has that name.
    virtual int rename(const std::string& from, const std::string& to) = 0;
    /// The same, but fails with EEXIST when anything has that name, and with EINVAL or ENOTSUP on
    /// file systems that cannot promise this.
    virtual int renameToNew(const std::string& from, const std::string& to) = 0;
    /// Gives the file a second name; fails with EEXIST when anything has that name, and with an
    /// error of its own on file systems that know no second names.
    virtual int link([[maybe_unused]] const std::string& from,
                     [[maybe_unused]] const std::string& to) {
        errno = ENOTSUP;
        return -1;
    }
    virtual int remove(const std::string& path) = 0;
    /// Creates a folder in one that exists; fails with EEXIST when anything has that name already.
    virtual int createFolder(const std::string& path) = 0;
    /// 0 when anything, even a broken link, has that name; ENOENT when nothing has. With a slash at
    /// its end the name is a folder's or a link's to one, or else the call fails.
    virtual int probe(const std::string& path) = 0;

  protected:
    FileCalls() = default;
    FileCalls(const FileCalls&) = default;
    FileCalls& operator=(const FileCalls&) = default;
};

/// The operating system's own calls.
FileCalls& systemFileCalls();

} // namespace shotweaver
