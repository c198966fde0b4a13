#include "engine/ExportFiles.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include "engine/FinalCutImportError.h"
#include "platform/PlatformError.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <set>
#include <system_error>

namespace shotweaver {
namespace {

using test::FailingFileCalls;
using test::failureOf;
using test::TestFolder;
using Names = std::vector<std::string>;

std::string reason(int error) {
    return std::generic_category().message(error);
}

std::string repeated(int count, std::string_view text) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

/// The system's calls, but the test says which names exist.
class ClaimedNames final : public FileCalls {
  public:
    explicit ClaimedNames(std::function<bool(const std::string&)> exists)
        : exists_(std::move(exists)) {}

    int openForReading(const std::string& path) override { return system_.openForReading(path); }
    int createNew(const std::string& path) override { return system_.createNew(path); }
    std::ptrdiff_t read(int file, char* bytes, std::size_t count) override {
        return system_.read(file, bytes, count);
    }
    std::ptrdiff_t write(int file, const char* bytes, std::size_t count) override {
        return system_.write(file, bytes, count);
    }
    int sync(int file) override { return system_.sync(file); }
    int close(int file) override { return system_.close(file); }
    int rename(const std::string& from, const std::string& to) override {
        return system_.rename(from, to);
    }
    int renameToNew(const std::string& from, const std::string& to) override {
        if (!lacksRenameToNew) return system_.renameToNew(from, to);
        errno = ENOTSUP;
        return -1;
    }
    int remove(const std::string& path) override { return system_.remove(path); }
    int probe(const std::string& path) override {
        if (exists_(path)) return 0;
        errno = ENOENT;
        return -1;
    }

    bool lacksRenameToNew = false;

  private:
    std::function<bool(const std::string&)> exists_;
    FileCalls& system_ = systemFileCalls();
};

TEST(ExportFiles, areNamedAfterTheProject) {
    const std::string family = "👨‍👩‍👧"; // one character of three people
    const std::pair<std::string, std::string> rows[] = {
        {"Sunday", "Sunday"},
        {"A/B: Live\\2", "A_B_ Live_2"},
        {"///", "___"},
        {"", "Project"},
        {" ", " "},
        {"..", ".."},
        {repeated(150, "x"), repeated(100, "x")},
        {repeated(50, "e\u0301") + repeated(60, "x"), repeated(50, "e\u0301") + repeated(50, "x")},
        {repeated(99, "/") + family + "y", repeated(99, "_") + family},
    };
    for (const auto& [project, stem] : rows) {
        const TestFolder folder;
        const ExportedFiles files =
            writeExportFiles(systemFileCalls(), folder.path(), "<xml/>", "line\n", project);
        EXPECT_EQ(files.xml, folder.path(stem + " Shotweaver.fcpxml"));
        EXPECT_EQ(files.record, folder.path(stem + " Shotweaver.settings.txt"));
        EXPECT_EQ(folder.read(stem + " Shotweaver.fcpxml"), "<xml/>");
        EXPECT_EQ(folder.read(stem + " Shotweaver.settings.txt"), "line\n");
        EXPECT_EQ(folder.names().size(), 2U) << project;
    }
}

TEST(ExportFiles, takeTheFirstNumberThatIsFree) {
    const std::pair<Names, std::string> rows[] = {
        {{"P Shotweaver.fcpxml"}, "P Shotweaver 2"},
        {{"P Shotweaver.settings.txt"}, "P Shotweaver 2"},
        {{"P Shotweaver.fcpxml", "P Shotweaver 2.settings.txt", "P Shotweaver 4.fcpxml"},
         "P Shotweaver 3"},
        {{"P Shotweaver 2.fcpxml", "P Shotweaver 1.fcpxml", "P Shotweaver"}, "P Shotweaver"},
    };
    for (const auto& [taken, stem] : rows) {
        const TestFolder folder;
        for (const std::string& name : taken)
            folder.write(name, "kept");
        const ExportedFiles files =
            writeExportFiles(systemFileCalls(), folder.path() + "/", "<xml/>", "line\n", "P");
        EXPECT_EQ(files.xml, folder.path(stem + ".fcpxml"));
        EXPECT_EQ(files.record, folder.path(stem + ".settings.txt"));
        for (const std::string& name : taken)
            EXPECT_EQ(folder.read(name), "kept") << name;
    }

    const TestFolder folder; // a link to nowhere, and a folder, have a name too
    std::filesystem::create_symlink("nowhere", folder.path("P Shotweaver.fcpxml"));
    std::filesystem::create_directory(folder.path("P Shotweaver 2.settings.txt"));
    EXPECT_EQ(writeExportFiles(systemFileCalls(), folder.path(), "", "", "P").xml,
              folder.path("P Shotweaver 3.fcpxml"));
}

TEST(ExportFiles, tryTenThousandNames) {
    const TestFolder folder;
    ClaimedNames lastIsFree([](const std::string& path) {
        return path.find(" Shotweaver 10000.") == std::string::npos;
    });
    writeExportFiles(lastIsFree, folder.path(), "<xml/>", "line\n", "P");
    const Names written{"P Shotweaver 10000.fcpxml", "P Shotweaver 10000.settings.txt"};
    EXPECT_EQ(folder.names(), written);

    ClaimedNames noneIsFree([](const std::string& path) {
        return path.find(" Shotweaver 10001.") == std::string::npos;
    });
    EXPECT_EQ(failureOf([&] { writeExportFiles(noneIsFree, folder.path(), "", "", "P"); }),
              "Choose another folder or clear space for a new export name.");
    EXPECT_EQ(folder.names(), written);
}

TEST(ExportFiles, refuseNamesThatTheFolderCannotHold) {
    const TestFolder folder;
    const auto failureFor = [&](const std::string& project) {
        return failureOf(
            [&] { writeExportFiles(systemFileCalls(), folder.path(), "<xml/>", "", project); });
    };
    const std::pair<std::string, std::string> rows[] = {
        {repeated(100, "教"), ".fcpxml"},
        {repeated(58, "🎥"), ".settings.txt"}, // 243 bytes: fits with ".fcpxml" alone
    };
    for (const auto& [project, end] : rows)
        EXPECT_EQ(failureFor(project), fmt::format("“{} Shotweaver{}” could not be looked for: {}.",
                                                   project, end, reason(ENAMETOOLONG)));
    EXPECT_EQ(folder.names(), Names{});
}

TEST(ExportFiles, needAFolder) {
    const TestFolder folder;
    folder.write("file", "kept");
    const auto failureIn = [&](const char* name) {
        return failureOf(
            [&] { writeExportFiles(systemFileCalls(), folder.path(name), "<xml/>", "", "P"); });
    };
    EXPECT_EQ(failureIn("missing"),
              "“P Shotweaver.fcpxml” could not be created: " + reason(ENOENT) + ".");
    EXPECT_EQ(failureIn("file"),
              "“P Shotweaver.fcpxml” could not be looked for: " + reason(ENOTDIR) + ".");
    EXPECT_EQ(folder.names(), Names{"file"});
    EXPECT_EQ(folder.read("file"), "kept");
}

TEST(ExportFiles, areNeverWrittenOverAFileThatJustAppeared) {
    for (const bool lacksRenameToNew : {false, true}) {
        const TestFolder folder;
        ClaimedNames calls([](const std::string&) { return false; });
        calls.lacksRenameToNew = lacksRenameToNew;
        const auto failure = [&] {
            return failureOf([&] { writeExportFiles(calls, folder.path(), "<xml/>", "new", "P"); });
        };
        folder.write("P Shotweaver.settings.txt", "kept");
        EXPECT_EQ(failure(), "The XML was saved as P Shotweaver.fcpxml, but the settings record "
                             "could not be saved: “P Shotweaver.settings.txt” could not be "
                             "created: " +
                                 reason(EEXIST) + ".");
        EXPECT_EQ(failure(), "“P Shotweaver.fcpxml” could not be created: " + reason(EEXIST) + ".");
        EXPECT_EQ(folder.read("P Shotweaver.fcpxml"), "<xml/>");
        EXPECT_EQ(folder.read("P Shotweaver.settings.txt"), "kept");
        EXPECT_EQ(folder.names().size(), 2U);
    }
}

/// Exports with the k-th call failing; gives how that ended, once the folder is as it should be.
std::string outcomeOfFailingCall(int k, bool lacksRenameToNew) {
    const TestFolder folder;
    FailingFileCalls calls(k, EIO);
    calls.lacksRenameToNew = lacksRenameToNew;
    calls.shortWrites = 4;
    std::string outcome = "both";
    Names names{"P Shotweaver.fcpxml", "P Shotweaver.settings.txt"};
    try {
        writeExportFiles(calls, folder.path(), "<fcpxml/>", "record\n", "P");
    } catch (const PlatformError& error) {
        outcome = error.what();
        names.clear();
    } catch (const FinalCutImportError& error) {
        outcome = error.what();
        names.pop_back();
    }
    EXPECT_EQ(folder.names(), names) << "call " << k;
    for (const std::string& name : names)
        EXPECT_EQ(folder.read(name), name.ends_with("xml") ? "<fcpxml/>" : "record\n") << k;
    return outcome;
}

TEST(ExportFiles, areWholeOrNotThereWhateverCallFails) {
    const std::string failing = ": " + reason(EIO) + ".";
    const std::string xml = "“P Shotweaver.fcpxml” could not be ";
    const std::string record = "“P Shotweaver.settings.txt” could not be ";
    const std::string saved =
        "The XML was saved as P Shotweaver.fcpxml, but the settings record could not be saved: ";
    const std::set<std::string> all{xml + "looked for" + failing,
                                    record + "looked for" + failing,
                                    xml + "created" + failing,
                                    xml + "written" + failing,
                                    saved + record + "created" + failing,
                                    saved + record + "written" + failing,
                                    "both"};
    for (const bool lacksRenameToNew : {false, true}) {
        const TestFolder folder;
        FailingFileCalls counting(0, EIO);
        counting.lacksRenameToNew = lacksRenameToNew;
        counting.shortWrites = 4;
        writeExportFiles(counting, folder.path(), "<fcpxml/>", "record\n", "P");
        std::multiset<std::string> outcomes;
        for (int k = 1; k <= counting.calls(); ++k)
            outcomes.insert(outcomeOfFailingCall(k, lacksRenameToNew));
        EXPECT_EQ(std::set<std::string>(outcomes.begin(), outcomes.end()), all);
        // Nothing is lost when the folder cannot be opened, stored or closed, or the empty file
        // that reserves a name cannot be closed; this for each of the two files.
        EXPECT_EQ(outcomes.count("both"), lacksRenameToNew ? 8U : 6U);
    }
}

} // namespace
} // namespace shotweaver
