#include "platform/Files.h"

#include "platform/PlatformError.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <system_error>

namespace shotweaver {
namespace {

using test::FailingFileCalls;
using test::TestFolder;
using Names = std::vector<std::string>;

/// The sentence of a platform error; any other exception fails the test.
std::string failureOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const PlatformError& error) {
        return error.what();
    }
    return "";
}

const std::string tooLong(256, 'n');

TEST(Files, readBackWhatWasWritten) {
    const TestFolder folder;
    FileCalls& calls = systemFileCalls();
    std::string large(600'001, '\0');
    for (std::size_t i = 0; i < large.size(); ++i)
        large[i] = static_cast<char>(i % 251);
    for (const std::string& bytes : {std::string(), std::string("a\0b\r\n\xFF", 6), large}) {
        const std::string path = folder.path(fmt::format("é {}", bytes.size()));
        EXPECT_FALSE(fileExists(calls, path));
        writeNewFile(calls, path, bytes);
        EXPECT_TRUE(fileExists(calls, path));
        EXPECT_TRUE(readFile(calls, path) == bytes) << bytes.size();
    }
    EXPECT_EQ(folder.names(), (Names{"é 0", "é 6", "é 600001"}));
}

TEST(Files, failuresNameTheFileAndTheReason) {
    const TestFolder folder;
    folder.write("file", "kept");
    FileCalls& calls = systemFileCalls();
    FailingFileCalls readOnly(1, EROFS);
    FailingFileCalls hidden(1, EACCES);
    const std::pair<std::function<void()>, std::string> refused[] = {
        {[&] { readFile(calls, folder.path("none")); },
         "“none” could not be opened: No such file or directory."},
        {[&] { readFile(calls, folder.path()); },
         fmt::format("“{}” could not be read: Is a directory.", fileName(folder.path()))},
        {[&] { fileExists(calls, folder.path("file/below")); },
         "“below” could not be looked for: Not a directory."},
        {[&] { fileExists(calls, folder.path(tooLong)); },
         fmt::format("“{}” could not be looked for: File name too long.", tooLong)},
        {[&] { fileExists(hidden, folder.path("file")); },
         "“file” could not be looked for: Permission denied."},
        {[&] { writeNewFile(calls, folder.path("none/new"), "x"); },
         "“new” could not be created: No such file or directory."},
        {[&] { writeNewFile(calls, folder.path("file/new"), "x"); },
         "“new” could not be created: Not a directory."},
        {[&] { writeNewFile(calls, folder.path(tooLong), "x"); },
         fmt::format("“{}” could not be created: File name too long.", tooLong)},
        {[&] { writeNewFile(readOnly, folder.path("new"), "x"); },
         "“new” could not be created: Read-only file system."},
    };
    for (const auto& [call, sentence] : refused) {
        EXPECT_EQ(failureOf(call), sentence);
        EXPECT_EQ(folder.names(), Names{"file"}) << sentence;
    }
}

TEST(Files, nothingIsEverWrittenOver) {
    const TestFolder folder;
    folder.write("file", "kept");
    std::filesystem::create_directory(folder.path("folder"));
    std::filesystem::create_symlink(folder.path("file"), folder.path("link"));
    std::filesystem::create_symlink(folder.path("nowhere"), folder.path("broken link"));
    const Names before = folder.names();
    for (const bool lacksRenameToNew : {false, true}) {
        for (const char* name : {"file", "folder", "link", "broken link"}) {
            FailingFileCalls calls(0, 0);
            calls.lacksRenameToNew = lacksRenameToNew;
            EXPECT_TRUE(fileExists(calls, folder.path(name))) << name;
            EXPECT_EQ(failureOf([&] { writeNewFile(calls, folder.path(name), "new"); }),
                      fmt::format("“{}” could not be created: File exists.", name));
        }
    }
    EXPECT_EQ(folder.names(), before);
    EXPECT_EQ(folder.read("file"), "kept");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("broken link")));
}

/// A letter for each call that fails in turn: "c" when the file could not be created, "w" when it
/// could not be written, "." when the file is there all the same.
std::string outcomes(int error, bool lacksRenameToNew, std::size_t shortWrites) {
    const std::string reason = std::generic_category().message(error);
    std::string letters;
    for (int failing = 1; failing < 100; ++failing) {
        const TestFolder folder;
        FailingFileCalls calls(failing, error);
        calls.lacksRenameToNew = lacksRenameToNew;
        calls.shortWrites = shortWrites;
        const std::string failure =
            failureOf([&] { writeNewFile(calls, folder.path("a.fcpxml"), "0123456789"); });
        if (calls.calls() < failing) return letters; // there are no more calls
        if (failure.empty()) {
            EXPECT_EQ(folder.read("a.fcpxml"), "0123456789") << failing;
            EXPECT_EQ(folder.names(), Names{"a.fcpxml"}) << failing;
            letters += '.';
            continue;
        }
        EXPECT_EQ(folder.names(), Names{}) << failing;
        const bool isCreation = failure.find("created") != std::string::npos;
        EXPECT_EQ(failure, fmt::format("“a.fcpxml” could not be {}: {}.",
                                       isCreation ? "created" : "written", reason));
        letters += isCreation ? 'c' : 'w';
    }
    return "no end";
}

TEST(Files, aNewFileIsCompleteOrNotThereWhateverCallFails) {
    const struct {
        bool lacksRenameToNew;
        std::size_t shortWrites;
        const char* onError;
    } cases[] = {
        // create, write, sync, close, rename; then the folder: open, sync, close
        {false, 0, "cwwwc..."},
        {false, 3, "cwwwwwwc..."},
        // between rename and folder: reserve the name, close, rename
        {true, 0, "cwwwcc.c..."},
        {true, 3, "cwwwwwwcc.c..."},
    };
    for (const auto& [lacksRenameToNew, shortWrites, onError] : cases) {
        for (const int error : {ENOSPC, EIO})
            EXPECT_EQ(outcomes(error, lacksRenameToNew, shortWrites), onError) << error;
        // A call that a signal interrupts is made again.
        EXPECT_EQ(outcomes(EINTR, lacksRenameToNew, shortWrites).find_first_not_of('.'),
                  std::string::npos);
    }
}

TEST(Files, readingSurvivesSignalsAndReportsErrors) {
    const TestFolder folder;
    const std::string path = folder.write("a", "bytes");
    const char* const sentences[] = {"“a” could not be opened: Input/output error.",
                                     "“a” could not be read: Input/output error.",
                                     "“a” could not be read: Input/output error.", ""};
    for (int failing = 1; failing <= 4; ++failing) {
        FailingFileCalls interrupted(failing, EINTR);
        EXPECT_EQ(readFile(interrupted, path), "bytes") << failing;
        FailingFileCalls broken(failing, EIO);
        EXPECT_EQ(failureOf([&] { readFile(broken, path); }), sentences[failing - 1]);
        EXPECT_GE(broken.calls(), failing);
    }
}

TEST(Files, pathsAreTakenApartAndPutTogether) {
    const struct {
        const char *path, *name, *folder;
    } cases[] = {{"/a/b.txt", "b.txt", "/a"}, {"b", "b", "."}, {"/b", "b", "/"}, {"a/b", "b", "a"}};
    for (const auto& [path, name, folder] : cases) {
        EXPECT_EQ(fileName(path), name) << path;
        EXPECT_EQ(parentFolder(path), folder) << path;
    }
    EXPECT_EQ(fileName("/a/b//"), "b");
    EXPECT_EQ(fileName("/"), "/");
    EXPECT_EQ(pathInFolder("/a", "b"), "/a/b");
    EXPECT_EQ(pathInFolder("/a/", "b"), "/a/b");
    EXPECT_EQ(pathInFolder("/", "b"), "/b");
    EXPECT_EQ(pathInFolder("", "b"), "./b");
}

} // namespace
} // namespace shotweaver
