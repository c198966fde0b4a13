#include "platform/Files.h"

#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace shotweaver {
namespace {

using test::FailingFileCalls;
using test::failureOf;
using test::TestFolder;
using Names = std::vector<std::string>;

TEST(Files, areReadBackAndNeverWrittenOver) {
    const TestFolder folder;
    std::filesystem::create_symlink(folder.path("nowhere"), folder.path("link"));
    const std::string bytes = std::string("a\0b\r\n\xFF", 6) + std::string(600'000, 'x');
    for (const char* name : {"file", "é"}) {
        const std::string path = folder.path(name);
        FailingFileCalls calls(0, 0);
        calls.lacksRenameToNew = path.ends_with("é");
        EXPECT_FALSE(fileExists(calls, path));
        writeNewFile(calls, path, bytes);
        for (const std::string& taken : {path, folder.path("link"), folder.path()}) {
            EXPECT_TRUE(fileExists(calls, taken)) << taken;
            EXPECT_EQ(failureOf([&] { writeNewFile(calls, taken, "new"); }),
                      fmt::format("“{}” could not be created: File exists.", taken));
        }
        EXPECT_TRUE(readFile(calls, path) == bytes);
    }
    EXPECT_EQ(folder.names(), (Names{"file", "link", "é"}));
}

TEST(Files, failuresNameThePathAndTheReason) {
    const TestFolder folder;
    const auto write = [](auto& calls, auto& path) { writeNewFile(calls, path, "x"); };
    const auto expect = [&](auto call, const std::string& name, const char* reason) {
        const std::string path = folder.path(name);
        EXPECT_EQ(failureOf([&] { call(systemFileCalls(), path); }),
                  fmt::format("“{}” could not be {}.", path, reason));
    };
    const std::string tooLong(256, 'n');
    expect(readFile, "none", "opened: No such file or directory");
    expect(readFile, "", "read: Is a directory");
    expect(fileExists, tooLong, "looked for: File name too long");
    expect(write, "none/new", "created: No such file or directory");
    expect(write, tooLong, "created: File name too long");
    EXPECT_EQ(folder.names(), Names{});
}

/// Writes a new file, or replaces one that holds `old`. A letter for each call that fails in turn:
/// "c" when the file could not be created, "w" when it could not be written, "." when it is there
/// all the same.
std::string outcomes(const std::string& old, int error, bool lacksRenameToNew,
                     std::size_t shortWrites) {
    std::string letters;
    for (int failing = 1;; ++failing) {
        const TestFolder folder;
        const std::string path = old.empty() ? folder.path("a") : folder.write("a", old);
        FailingFileCalls calls(failing, error);
        calls.lacksRenameToNew = lacksRenameToNew;
        calls.shortWrites = shortWrites;
        const std::string failure = failureOf([&] {
            if (old.empty()) return writeNewFile(calls, path, "0123456789");
            replaceFile(calls, path, [](ByteSink& sink) {
                for (const char* piece : {"0123", "", "456789"})
                    sink.write(piece);
            });
        });
        if (calls.calls() < failing) return letters; // there are no more calls
        EXPECT_EQ(folder.names(), failure.empty() || !old.empty() ? Names{"a"} : Names{})
            << failing;
        EXPECT_EQ(folder.read("a"), failure.empty() ? "0123456789" : old) << failing;
        const bool isCreation = failure.find("created: ") != std::string::npos;
        letters += failure.empty() ? '.' : isCreation ? 'c' : 'w';
        replaceFile(calls, path, "next");
        EXPECT_EQ(folder.read("a"), "next") << failing;
    }
}

TEST(Files, aFileIsCompleteOrAsItWasWhateverCallFails) {
    // create, write, sync, close, rename; then the folder: open, sync, close
    EXPECT_EQ(outcomes("", ENOSPC, false, 0), "cwwwc...");
    // between rename and folder: reserve the name, close, rename
    EXPECT_EQ(outcomes("", ENOSPC, true, 3), "cwwwwwwcc.c...");
    EXPECT_EQ(outcomes("", EINTR, true, 3), std::string(14, '.')); // made again
    // replacing, in two pieces
    EXPECT_EQ(outcomes("what it held", EACCES, false, 0), "wwwwww...");
    EXPECT_EQ(outcomes("what it held", ENOSPC, false, 3), "wwwwwwww...");
    EXPECT_EQ(outcomes("what it held", EINTR, false, 3), std::string(11, '.'));
}

TEST(Files, replacingMakesNewFilesAndReplacesLinks) {
    const TestFolder folder;
    std::filesystem::create_symlink(folder.write("elsewhere", "kept"), folder.path("link"));
    for (const std::string name : {"new", "link"})
        replaceFile(systemFileCalls(), folder.path(name), name + "!");
    EXPECT_EQ(folder.read("new") + folder.read("link") + folder.read("elsewhere"), "new!link!kept");
    EXPECT_EQ(failureOf([&] { replaceFile(systemFileCalls(), folder.path(), "x"); }),
              fmt::format("“{}” could not be written: Is a directory.", folder.path()));
    EXPECT_EQ(folder.names(), (Names{"elsewhere", "link", "new"}));
}

TEST(Files, foldersAreCreatedWithTheirParents) {
    const TestFolder folder;
    folder.write("file", "");
    std::filesystem::create_directory_symlink(folder.path(), folder.path("link"));
    std::filesystem::create_symlink(folder.path("nowhere"), folder.path("broken"));
    for (const char* created : {"a/b//c/", "a/b/c", "link", "link/d/e", "é/../f", "."}) {
        createFolders(systemFileCalls(), folder.path(created));
        EXPECT_TRUE(std::filesystem::is_directory(folder.path(created))) << created;
    }
    for (const char* existing : {"", "/", ".", "..", "//"})
        createFolders(systemFileCalls(), existing);
    FailingFileCalls overtaken(1, ENOENT); // another process creates it after the first look
    createFolders(overtaken, folder.path("a"));

    const std::pair<const char*, const char*> blocked[] = {
        {"file", "file"}, {"a/../file/x/y", "a/../file"}, {"broken/x", "broken"}};
    for (const auto& [path, inTheWay] : blocked)
        EXPECT_EQ(
            failureOf([&, name = path] { createFolders(systemFileCalls(), folder.path(name)); }),
            fmt::format("“{}” could not be created: File exists.", folder.path(inTheWay)));
    FailingFileCalls full(4, ENOSPC); // after three looks
    EXPECT_EQ(failureOf([&] { createFolders(full, folder.path("i/j")); }),
              fmt::format("“{}” could not be created: No space left on device.", folder.path("i")));
}

TEST(Files, readingSurvivesSignalsReportsErrorsAndCloses) {
    const TestFolder folder;
    const std::string path = folder.write("a", "bytes");
    const std::pair<const char*, int> failures[] = {{"opened", 1}, {"read", 3}, {"read", 4}};
    for (int failing = 1; const auto& [what, calls] : failures) {
        FailingFileCalls interrupted(failing, EINTR);
        EXPECT_EQ(readFile(interrupted, path), "bytes") << failing;
        FailingFileCalls broken(failing++, EIO);
        EXPECT_EQ(failureOf([&] { readFile(broken, path); }),
                  fmt::format("“{}” could not be {}: Input/output error.", path, what));
        EXPECT_EQ(broken.calls(), calls);
    }
}

TEST(Files, pathsAreTakenApart) {
    EXPECT_EQ(fileName("a//b.t//"), "b.t");
    EXPECT_EQ(parentFolder("a//b.t//"), "a");
    EXPECT_EQ(parentFolder("/b"), "/");
    EXPECT_EQ(parentFolder("b"), ".");
}

} // namespace
} // namespace shotweaver
