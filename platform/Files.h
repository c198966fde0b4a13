#pragma once

#include "platform/ByteSink.h"
#include "platform/ByteSource.h"
#include "platform/FileCalls.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// Whole-file operations. Each throws `PlatformError` with a sentence that names the file and the
/// system's reason.

/// The bytes of a file, read as they are asked for. Opens it at once; throws when it cannot.
class FileSource final : public ByteSource {
  public:
    /// `calls` must outlive the source.
    FileSource(FileCalls& calls, std::string path);
    /// Takes over an open descriptor; `name` stands for it in messages.
    FileSource(FileCalls& calls, int descriptor, std::string name);
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;
    ~FileSource() override;

    std::size_t read(char* into, std::size_t count) override;
    std::size_t expectedSize() const override;

  private:
    FileCalls& calls_;
    std::string path_;
    int file_;
};

/// The bytes of a file.
std::string readFile(FileCalls& calls, const std::string& path);

/// The same; nothing when there is no file.
std::optional<std::string> readFileIfThere(FileCalls& calls, const std::string& path);

/// True when anything has that name. A name that cannot be asked for (too long, no permission to
/// look) is an error, never a free name.
bool fileExists(FileCalls& calls, const std::string& path);

/// The same for a file: a link to nothing is none.
bool fileIsThere(FileCalls& calls, const std::string& path);

/// Creates a file, complete and stored on the device or not at all, and never over an existing
/// name. `write` gives it its bytes; what it throws leaves no file.
void writeNewFile(FileCalls& calls, const std::string& path,
                  const std::function<void(ByteSink&)>& write);
void writeNewFile(FileCalls& calls, const std::string& path, std::string_view bytes);

/// Replaces a file, or creates it: afterwards it holds what `write` gave it, stored on the device,
/// or, when this or `write` throws, still what it held. The file is a new one with the permissions
/// of new files; a symbolic link of that name is replaced, not followed (one to the folder is
/// kept).
void replaceFile(FileCalls& calls, const std::string& path,
                 const std::function<void(ByteSink&)>& write);
void replaceFile(FileCalls& calls, const std::string& path, std::string_view bytes);

/// Gives what a file holds a second name in its folder, in place of what had that name: replacing
/// either later leaves the other as it is. A copy where the file system knows no second names.
void keepFileAs(FileCalls& calls, const std::string& path, const std::string& secondPath);

/// Lets two files of one folder change their names. What happens meanwhile loses neither; a failure
/// on the way may leave one of them under a name of its own.
void exchangeFiles(FileCalls& calls, const std::string& path, const std::string& otherPath);

/// Creates a folder and the missing ones that lead to it. Succeeds when it already exists, also
/// through a link or because another process has just made it.
void createFolders(FileCalls& calls, const std::string& path);

/// The part of a path after its last slash; trailing slashes do not count.
std::string fileName(const std::string& path);

/// The folder that holds a path: "." when it has none.
std::string parentFolder(const std::string& path);

/// A folder and a name in it as one path.
std::string pathInFolder(const std::string& folder, std::string_view name);

} // namespace shotweaver
