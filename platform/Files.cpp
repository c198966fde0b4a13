#include "platform/Files.h"

#include "platform/PlatformError.h"
#include "platform/Uuid.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace shotweaver {

namespace {

// One write call takes at most about 2 GB on some systems.
constexpr std::size_t writeBlock = std::size_t{1} << 30U;

[[noreturn]] void fail(std::string_view what, const std::string& path, int reason) {
    throw PlatformError(fmt::format("“{}” could not be {}: {}.", path, what,
                                    std::generic_category().message(reason)));
}

/// An open file, closed on every way out.
class OpenFile {
  public:
    OpenFile(FileCalls& calls, int file) : calls_(calls), file_(file) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (file_ >= 0) calls_.close(file_);
    }

    int descriptor() const { return file_; }

    /// Closes and reports what the close says, which can be the last word on a full disk.
    int close() {
        const int file = file_;
        file_ = -1;
        return calls_.close(file);
    }

  private:
    FileCalls& calls_;
    int file_;
};

/// A file that is removed on every way out but the one that keeps it.
class TemporaryFile {
  public:
    TemporaryFile(FileCalls& calls, std::string path) : calls_(calls), path_(std::move(path)) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        // A single interrupted or failing call must not leave the file behind.
        if (!kept_ && calls_.remove(path_) != 0 && errno != ENOENT) calls_.remove(path_);
    }

    const std::string& path() const { return path_; }
    void keep() { kept_ = true; }

  private:
    FileCalls& calls_;
    std::string path_;
    bool kept_ = false;
};

/// Repeats a call while a signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// Gives 0 or the error number.
int writeAll(FileCalls& calls, const OpenFile& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), writeBlock);
        const auto written =
            uninterrupted([&] { return calls.write(file.descriptor(), bytes.data(), count); });
        if (written < 0) return errno;
        if (written == 0) return EIO; // or it would go on forever
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

/// What goes into an open file. Throws the failure to write `path`.
class FileSink final : public ByteSink {
  public:
    FileSink(FileCalls& calls, const OpenFile& file, const std::string& path)
        : calls_(calls), file_(file), path_(path) {}

    void write(std::string_view bytes) override {
        if (const int reason = writeAll(calls_, file_, bytes); reason != 0)
            fail("written", path_, reason);
    }

  private:
    FileCalls& calls_;
    const OpenFile& file_;
    const std::string& path_;
};

/// Stores and closes. Gives 0 or the error number.
int store(FileCalls& calls, OpenFile& file) {
    if (uninterrupted([&] { return calls.sync(file.descriptor()); }) != 0) return errno;
    // After an interrupted close the descriptor is gone, and the bytes are stored already.
    if (file.close() != 0 && errno != EINTR) return errno;
    return 0;
}

/// Gives `temporary` its final name if nothing has it. Gives 0 or the error number.
int placeAtNewName(FileCalls& calls, TemporaryFile& temporary, const std::string& path) {
    if (uninterrupted([&] { return calls.renameToNew(temporary.path(), path); }) == 0) {
        temporary.keep();
        return 0;
    }
    if (errno != EINVAL && errno != ENOTSUP && errno != ENOSYS) return errno;

    // A file system without that call: reserve the name with an empty file of our own, which the
    // rename then replaces.
    const int reserved = uninterrupted([&] { return calls.createNew(path); });
    if (reserved < 0) return errno;
    TemporaryFile placeholder(calls, path);
    calls.close(reserved);
    if (uninterrupted([&] { return calls.rename(temporary.path(), path); }) != 0) return errno;
    placeholder.keep();
    temporary.keep();
    return 0;
}

/// Gives `temporary` its final name, whatever file has it. Gives 0 or the error number.
int placeOver(FileCalls& calls, TemporaryFile& temporary, const std::string& path) {
    if (uninterrupted([&] { return calls.rename(temporary.path(), path); }) != 0) return errno;
    temporary.keep();
    return 0;
}

/// Stores the folder's new entry on the device. Not every file system can, and the file is complete
/// either way, so a failure is not reported.
void syncFolder(FileCalls& calls, const std::string& folder) {
    const OpenFile opened(calls, calls.openForReading(folder));
    if (opened.descriptor() >= 0) calls.sync(opened.descriptor());
}

/// A name of its own, short enough for every file system, so that the final name alone decides
/// whether a name is too long.
std::string temporaryPathBeside(const std::string& path) {
    SecureRandom random;
    return pathInFolder(parentFolder(path), ".shotweaver-" + UUID::random(random).compactText());
}

bool isFolder(FileCalls& calls, const std::string& path) {
    return uninterrupted([&] { return calls.probe(pathInFolder(path, "")); }) == 0;
}

} // namespace

FileSource::FileSource(FileCalls& calls, std::string path)
    : calls_(calls), path_(std::move(path)),
      file_(uninterrupted([&] { return calls_.openForReading(path_); })) {
    if (file_ < 0) fail("opened", path_, errno);
}

FileSource::FileSource(FileCalls& calls, int descriptor, std::string name)
    : calls_(calls), path_(std::move(name)), file_(descriptor) {}

FileSource::~FileSource() {
    calls_.close(file_);
}

std::size_t FileSource::read(char* into, std::size_t count) {
    const auto result = uninterrupted([&] { return calls_.read(file_, into, count); });
    if (result < 0) fail("read", path_, errno);
    return static_cast<std::size_t>(result);
}

std::size_t FileSource::expectedSize() const {
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(calls_.size(file_), 0));
}

std::string readFile(FileCalls& calls, const std::string& path) {
    FileSource source(calls, path);
    return readAll(source);
}

std::optional<std::string> readFileIfThere(FileCalls& calls, const std::string& path) {
    if (!fileExists(calls, path)) return std::nullopt;
    const int file = uninterrupted([&] { return calls.openForReading(path); });
    if (file < 0 && errno == ENOENT) return std::nullopt; // a link to nothing
    if (file < 0) fail("opened", path, errno);
    FileSource source(calls, file, path);
    return readAll(source);
}

bool fileExists(FileCalls& calls, const std::string& path) {
    if (uninterrupted([&] { return calls.probe(path); }) == 0) return true;
    if (errno != ENOENT) fail("looked for", path, errno);
    return false;
}

bool fileIsThere(FileCalls& calls, const std::string& path) {
    if (!fileExists(calls, path)) return false;
    const OpenFile file(calls, uninterrupted([&] { return calls.openForReading(path); }));
    return file.descriptor() >= 0 || errno != ENOENT;
}

void writeNewFile(FileCalls& calls, const std::string& path,
                  const std::function<void(ByteSink&)>& write) {
    const std::string temporaryPath = temporaryPathBeside(path);
    OpenFile file(calls, uninterrupted([&] { return calls.createNew(temporaryPath); }));
    if (file.descriptor() < 0) fail("created", path, errno);
    TemporaryFile temporary(calls, temporaryPath);
    FileSink sink(calls, file, path);
    write(sink);
    if (const int reason = store(calls, file); reason != 0) fail("written", path, reason);
    if (const int reason = placeAtNewName(calls, temporary, path); reason != 0)
        fail("created", path, reason);
    syncFolder(calls, parentFolder(path));
}

void writeNewFile(FileCalls& calls, const std::string& path, std::string_view bytes) {
    writeNewFile(calls, path, [bytes](ByteSink& sink) { sink.write(bytes); });
}

void replaceFile(FileCalls& calls, const std::string& path,
                 const std::function<void(ByteSink&)>& write) {
    const std::string temporaryPath = temporaryPathBeside(path);
    OpenFile file(calls, uninterrupted([&] { return calls.createNew(temporaryPath); }));
    if (file.descriptor() < 0) fail("written", path, errno);
    TemporaryFile temporary(calls, temporaryPath);
    FileSink sink(calls, file, path);
    write(sink);
    int reason = store(calls, file);
    if (reason == 0) reason = placeOver(calls, temporary, path);
    if (reason != 0) fail("written", path, reason);
    syncFolder(calls, parentFolder(path));
}

void replaceFile(FileCalls& calls, const std::string& path, std::string_view bytes) {
    replaceFile(calls, path, [bytes](ByteSink& sink) { sink.write(bytes); });
}

void keepFileAs(FileCalls& calls, const std::string& path, const std::string& secondPath) {
    const std::string temporaryPath = temporaryPathBeside(secondPath);
    if (uninterrupted([&] { return calls.link(path, temporaryPath); }) != 0) {
        if (errno == ENOENT) fail("kept", path, errno);
        return replaceFile(calls, secondPath, readFile(calls, path));
    }
    // Goes also when it was put in place: a rename between two names of one file does nothing.
    const TemporaryFile temporary(calls, temporaryPath);
    if (uninterrupted([&] { return calls.rename(temporaryPath, secondPath); }) != 0)
        fail("kept", path, errno);
    syncFolder(calls, parentFolder(secondPath));
}

void exchangeFiles(FileCalls& calls, const std::string& path, const std::string& otherPath) {
    const std::string aside = temporaryPathBeside(path);
    keepFileAs(calls, path, aside);
    if (uninterrupted([&] { return calls.rename(otherPath, path); }) != 0) {
        const int reason = errno;
        calls.remove(aside);
        fail("exchanged", otherPath, reason);
    }
    if (uninterrupted([&] { return calls.rename(aside, otherPath); }) != 0) {
        const int reason = errno;
        calls.rename(path, otherPath);
        calls.rename(aside, path);
        fail("exchanged", otherPath, reason);
    }
    syncFolder(calls, parentFolder(path));
}

void createFolders(FileCalls& calls, const std::string& path) {
    if (isFolder(calls, path)) return;
    // With ENOTDIR a file is in the way: the error names it rather than what was to be in it.
    const bool parentIsNone = errno == ENOENT || errno == ENOTDIR;
    const std::string parent = parentFolder(path);
    if (parentIsNone && parent != path) createFolders(calls, parent);
    if (uninterrupted([&] { return calls.createFolder(path); }) == 0) return;
    const int reason = errno;
    if (reason != EEXIST || !isFolder(calls, path)) fail("created", path, reason);
}

std::string fileName(const std::string& path) {
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string::npos) return path;
    const std::size_t slash = path.rfind('/', end);
    const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(start, end + 1 - start);
}

std::string parentFolder(const std::string& path) {
    // Slashes at the end belong to the name, several in front of it count as one.
    const std::size_t nameEnd = path.find_last_not_of('/');
    const std::size_t slash = nameEnd == std::string::npos ? nameEnd : path.rfind('/', nameEnd);
    if (slash == std::string::npos) return path.starts_with('/') ? "/" : ".";
    const std::size_t end = path.find_last_not_of('/', slash);
    return end == std::string::npos ? "/" : path.substr(0, end + 1);
}

std::string pathInFolder(const std::string& folder, std::string_view name) {
    std::string path = folder.empty() ? "." : folder;
    if (path.back() != '/') path += '/';
    return path += name;
}

} // namespace shotweaver
