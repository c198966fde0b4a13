#include "editor/ProjectFile.h"

#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace shotweaver::test {
namespace {

TEST(ProjectFile, filesAndBundlesAreReadByTheirExtension) {
    const TestFolder folder;
    std::filesystem::create_directories(folder.path("Bundle.fcpxmld"));
    std::filesystem::create_directories(folder.path("BIG.FcpXMLd"));
    std::filesystem::create_directories(folder.path("folder.fcpxml"));
    std::filesystem::create_directories(folder.path("empty.fcpxmld"));
    folder.write("Bundle.fcpxmld/Info.fcpxml", "bundle");
    folder.write("BIG.FcpXMLd/Info.fcpxml", "big");
    for (const char* name : {"a.fcpxml", "B.FCPXML", "two.dots.fcpxml", "file.fcpxmld", "a.xml",
                             "fcpxml", ".fcpxml", "a.fcpxml.txt", "a.fcpxml ", "a."})
        folder.write(name, name);

    const std::string refusal = "Choose a .fcpxml file or .fcpxmld bundle.";
    const struct {
        const char* name;
        const char* bytes;
        std::string failure;
    } rows[] = {
        {"a.fcpxml", "a.fcpxml", ""},
        {"B.FCPXML", "B.FCPXML", ""},
        {"two.dots.fcpxml", "two.dots.fcpxml", ""},
        {"Bundle.fcpxmld", "bundle", ""},
        {"Bundle.fcpxmld/", "bundle", ""},
        {"Bundle.fcpxmld//", "bundle", ""},
        {"BIG.FcpXMLd", "big", ""},
        {"Bundle.fcpxmld/Info.fcpxml", "bundle", ""},
        {"a.xml", "", refusal},
        {"fcpxml", "", refusal},
        {".fcpxml", "", refusal},
        {"a.fcpxml.txt", "", refusal},
        {"a.fcpxml ", "", refusal},
        {"a.", "", refusal},
        {"Bundle.fcpxmld/missing", "", refusal},
        {"missing.fcpxml", "", "“missing.fcpxml” could not be opened: No such file or directory."},
        {"folder.fcpxml", "", "“folder.fcpxml” could not be read: Is a directory."},
        {"empty.fcpxmld", "", "“Info.fcpxml” could not be opened: No such file or directory."},
        {"file.fcpxmld", "", "“Info.fcpxml” could not be opened: Not a directory."},
    };
    for (const auto& row : rows) {
        std::string bytes;
        EXPECT_EQ(failureOf([&] {
                      bytes = readAll(*openProjectFile(systemFileCalls(), folder.path(row.name)));
                  }),
                  row.failure)
            << row.name;
        EXPECT_EQ(bytes, row.bytes) << row.name;
    }
    for (const char* path : {"", "/", "."})
        EXPECT_EQ(failureOf([&] { openProjectFile(systemFileCalls(), path); }), refusal) << path;
}

TEST(ProjectFile, noFileIsTouchedForAnotherExtension) {
    FailingFileCalls calls(0, 0);
    EXPECT_EQ(failureOf([&] { openProjectFile(calls, "/dev/stdin"); }),
              "Choose a .fcpxml file or .fcpxmld bundle.");
    EXPECT_EQ(calls.calls(), 0);
}

} // namespace
} // namespace shotweaver::test
