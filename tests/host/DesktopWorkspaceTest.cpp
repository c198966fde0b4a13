#include "host/DesktopWorkspace.h"
#include "platform/FileURL.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace shotweaver {
namespace {

const std::string head = "[Desktop Entry]\nType=Application\n";

/// A user whose home, programs and data folders lie in a folder of the test's own.
struct DesktopWorkspaceTest : testing::Test {
    std::optional<std::string> valueOf(const std::string& variable) const {
        if (variable == "XDG_DATA_HOME") return dataHome;
        if (variable == "XDG_DATA_DIRS") return dataFolders;
        return folder.path(variable == "HOME" ? "home" : "");
    }
    std::string writeEntry(const std::string& place, const std::string& lines) const {
        return folder.write(place + "/applications/a.b.desktop", head + lines);
    }
    std::string opening(const std::string& file, const std::string& application) {
        std::string outcome;
        workspace.open(file, application, [&](const auto& error) {
            outcome += error ? error->description : "opened";
        });
        return outcome;
    }

    const test::TestFolder folder;
    std::string dataHome = folder.path("own");
    std::string dataFolders;
    DesktopWorkspace workspace{[this](const char* name) { return valueOf(name); }};
};

TEST_F(DesktopWorkspaceTest, theFirstEntryOfItsNameCounts) {
    writeEntry("home/.local/share", "Exec=x\nTryExec=/bin/sh\n");
    writeEntry("own", "Exec=x\n[Other]\nHidden=true");
    writeEntry("hidden", "Exec=x\nHidden=true");
    writeEntry("link", "Exec=x\nType=Link");
    writeEntry("idle", "");
    writeEntry("gone", "Exec=x\nTryExec=no such program");
    folder.write("noise/applications/a.b.desktop", "\xFF\n=[");
    std::filesystem::create_directories(folder.path("unreadable/applications/a.b.desktop"));
    const char* rows[][3] = {
        // XDG_DATA_HOME, XDG_DATA_DIRS, where it is found; {0} is the test's folder, {1} the same
        // as a relative path
        {"{1}/own", "{0}/own", "{0}/home/.local/share"},
        {"{0}/own", "{0}/gone", "{0}/own"},
        {"{0}/none", "{1}/gone:{0}/none:{0}/own", "{0}/own"},
        {"{0}/none", "", ""},
        {"{0}/hidden", "{0}/own", ""},
        {"{0}/link", "{0}/own", ""},
        {"{0}/idle", "{0}/own", ""},
        {"{0}/gone", "{0}/own", ""},
        {"{0}/noise", "{0}/own", ""},
        {"{0}/unreadable", "{0}/own", ""},
    };
    const std::string relative = std::filesystem::relative(folder.path()).string();
    const auto filled = [&](const char* text) {
        return fmt::format(fmt::runtime(text), folder.path(), relative);
    };
    for (const auto& [home, others, place] : rows) {
        dataHome = filled(home);
        dataFolders = filled(others);
        const auto entry = workspace.urlForApplication("a.b");
        EXPECT_EQ(entry.value_or("/applications/a.b.desktop"),
                  filled(place) + "/applications/a.b.desktop")
            << home;
    }
}

TEST_F(DesktopWorkspaceTest, theCommandGetsTheFileAsItAsks) {
    ASSERT_EQ(mkfifo(folder.path("said").c_str(), 0600), 0);
    const std::string script = folder.write("cutter", R"(#!/bin/sh
[ /dev/stdin -ef /dev/null ] && [ /dev/stdout -ef /dev/null ] && printf '<%s>' "$@" >said)");
    chmod(script.c_str(), 0700);
    const std::string file = "/My “first” \"50%f\" 'cut' $HOME #1.fcpxml";
    const std::string url = fileURL(file);
    const std::string entry = folder.path("own/applications/a.b.desktop");
    const std::pair<std::string, std::string> rows[] = {
        {"cutter", "<" + file + ">"},
        {R"(  cutter   "for \\$\\"" "" %F %% a\sb)", "<for $\"><><" + file + "><%><a><b>"},
        {"cutter --at=%u -%m", "<--at=" + url + "><->"},
        {"cutter %i %c %k %U %m", "<--icon><I><A name><" + entry + "><" + url + ">"},
    };
    for (const auto& [exec, arguments] : rows) {
        writeEntry("own", fmt::format("Exec={}\nPath={}\nName=A name\nName[de]=N\nIcon=I\n", exec,
                                      folder.path()));
        ASSERT_EQ(workspace.urlForApplication("a.b"), entry);
        ASSERT_EQ(opening(file, entry), "opened") << exec;
        EXPECT_EQ(folder.read("said"), arguments) << exec;
    }
}

TEST_F(DesktopWorkspaceTest, whatCannotBeStartedIsTold) {
    chmod(folder.write("old", "#!/no interpreter\n").c_str(), 0700);
    folder.write("data", "");
    const std::string entry = folder.path("own/applications/a.b.desktop");
    const std::string none = "“" + entry + "” has no command that opens a file.";
    const std::pair<std::string, std::string> rows[] = {
        {"Exec=old \"%f", none},
        {"Exec=%m", none},
        {"Exec=data", "“data” could not be found."},
        {"Exec=../sh", "“../sh” could not be found."},
        {"Exec=old",
         "“" + folder.path("old") + "” could not be started: No such file or directory."},
    };
    for (const auto& [lines, sentence] : rows) {
        writeEntry("own", lines);
        EXPECT_EQ(opening("/f", entry), sentence);
    }
    std::filesystem::remove(entry);
    EXPECT_EQ(opening("/f", entry), none);
}

} // namespace
} // namespace shotweaver
