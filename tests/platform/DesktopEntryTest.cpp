#include "platform/DesktopEntry.h"

#include "platform/Files.h"
#include "platform/Text.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver {
namespace {

const std::string head = "[Desktop Entry]\nType=Application\n";

TEST(DesktopEntry, itsOwnGroupIsRead) {
    const auto entry = parseDesktopEntry(
        "Exec=no\n[Other]\nExec=no\n\n[Desktop Entry]\r\nType = Application\r\n#Exec=no\n"
        "Name[de]=Nein\nName =\t Cut\\sit = \\q\\\\n\\\nExec=a\\tb \"\\\\\\\\\" %f\nIcon=i\n"
        "TryExec=t\nPath=/p\n[Action x]\nName=no\n[Desktop Entry]\nHidden=true",
        "/e");
    const DesktopEntry expected{"/e", "Cut it = \\q\\n\\", "i", "a\tb \"\\\\\" %f", "t", "/p"};
    EXPECT_EQ(entry, expected);
    for (const std::string& refused : {head + "Exec=", head + "Exec=x\nHidden=true",
                                       std::string("[Desktop Entry]\nType=Link\nExec=x")})
        EXPECT_FALSE(parseDesktopEntry(refused, "")) << refused;
}

TEST(DesktopEntry, theFirstOfItsNameCounts) {
    const test::TestFolder folder;
    for (const auto& [place, line] : {std::pair("home/.local/share", "TryExec=/bin/sh"),
                                      {"own", ""},
                                      {"gone", "TryExec=no such program"}}) {
        std::filesystem::create_directories(folder.path(place) + "/applications");
        folder.write(fmt::format("{}/applications/a.desktop", place), head + "Exec=x\n" + line);
    }
    std::filesystem::create_directories(folder.path("unreadable/applications/a.desktop"));
    const char* rows[][3] = {
        // XDG_DATA_HOME, XDG_DATA_DIRS, where it is found; {0} is the test's folder, {1} the same
        // as a
        // relative path
        {"{1}/own", "{0}/own", "{0}/home/.local/share"},
        {"{0}/own", "{0}/gone", "{0}/own"},
        {"{0}/none", "{1}/gone:{0}/none:{0}/own", "{0}/own"},
        {"{0}/gone", "{0}/own", ""},
        {"{0}/unreadable", "{0}/own", ""},
    };
    const std::string relative = std::filesystem::relative(folder.path()).string();
    for (const auto& row : rows) {
        const auto environment = [&](const std::string& name) {
            const auto* folders =
                name == "HOME" ? "{0}/home" : row[name == "XDG_DATA_HOME" ? 0 : 1];
            return std::optional(fmt::format(fmt::runtime(folders), folder.path(), relative));
        };
        const auto entry = findDesktopEntry(systemFileCalls(), environment, "a.desktop");
        EXPECT_EQ(entry ? parentFolder(parentFolder(entry->path)) : "",
                  fmt::format(fmt::runtime(row[2]), folder.path()));
    }
}

TEST(DesktopEntry, commandsAreUnquotedAndTheirCodesReplaced) {
    const std::pair<const char*, const char*> rows[] = {
        {"  a   b ", "a|b|/x y%\"z"},
        {"\"a b\" \"\" \"\\\"\\`\\$\\\\\\n\" \\n %f", "a b||\"`$\\\\n|\\n|/x y%\"z"},
        {"a --b=\"c d\"e %F f", "a|--b=c de|/x y%\"z|f"},
        {"a --at=%u %U -%f", "a|--at=file:///x%20y%25%22z|-"},
        {"a %i %c \"%k\" 5%% %d%D %n b%N", "a|--icon|I|N|/e|5%|b|/x y%\"z"},
        {"a b\"c\\\"", "nothing"},
        {"a %x", "nothing"},
        {"a 5%", "nothing"},
        {"%m", "nothing"},
    };
    for (const auto& [exec, command] : rows) {
        const auto made = openCommand({"/e", "N", "I", exec, "", ""}, "/x y%\"z");
        EXPECT_EQ(made ? joined(*made, "|") : "nothing", command) << exec;
    }
    EXPECT_EQ(openCommand({"/e", "", "", "a %i %c", "", ""}, "f")->size(), 2U);
}

} // namespace
} // namespace shotweaver
