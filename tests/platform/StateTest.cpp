#include "platform/Base64.h"
#include "platform/FileURL.h"
#include "platform/Locale.h"
#include "platform/StateFolders.h"
#include "platform/UserDefaults.h"

#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <map>

namespace shotweaver {
namespace {

using test::FailingFileCalls;
using test::failureOf;
using test::TestFolder;

TEST(UserDefaults, keepEachEntryInAFileOfItsOwn) {
    const TestFolder folder;
    UserDefaults defaults(systemFileCalls(), folder.path("a/b"));
    const std::string names[] = {"",    ".", "..",   "...", "_", "%",
                                 "%2F", "/", "../x", "a b", "é", {'\0'}};
    for (const std::string& name : names) {
        EXPECT_EQ(defaults.data(name), "") << name;
        defaults.setData(name, "of " + name);
    }
    for (const std::string& name : names)
        EXPECT_EQ(defaults.data(name), "of " + name) << name;
    EXPECT_EQ(folder.read("a/b/a%20b"), "of a b");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
}

TEST(UserDefaults, anEntryThatCannotBeReadIsNotNone) {
    const TestFolder folder;
    folder.write("file", "bytes");
    std::filesystem::create_directory(folder.path("entry"));
    EXPECT_EQ(failureOf([&] { UserDefaults(systemFileCalls(), folder.path()).data("entry"); }),
              fmt::format("“{}” could not be read: Is a directory.", folder.path("entry")));
    EXPECT_EQ(failureOf([&] { UserDefaults(systemFileCalls(), folder.path("file")).data("e"); }),
              fmt::format("“{}” could not be looked for: Not a directory.", folder.path("file/e")));
    for (int failing = 1; failing <= 4; ++failing) { // look, open, read twice
        FailingFileCalls calls(failing, EIO);
        EXPECT_NE(failureOf([&] { UserDefaults(calls, folder.path()).data("file"); }), "");
    }
}

TEST(StateFolders, followTheEnvironmentWhereItIsAbsolute) {
    using Variables = std::map<std::string, std::string>;
    const auto folders = [](const Variables& variables) {
        return stateFolders([&](const char* name) -> std::optional<std::string> {
            const auto found = variables.find(name);
            return found == variables.end() ? std::nullopt : std::optional(found->second);
        });
    };
    const char* const noHome = "No home folder is known: HOME is not set to an absolute path.";
    for (const Variables& variables : {Variables{}, {{"HOME", ""}}, {{"HOME", "h"}}})
        EXPECT_EQ(failureOf([&] { folders(variables); }), noHome);
#if !defined(__APPLE__)
    const StateFolders inHome{"/h/.local/share/Shotweaver", "/h/.config/Shotweaver"};
    EXPECT_EQ(folders({{"HOME", "/h/"}, {"XDG_DATA_HOME", "d"}, {"XDG_CONFIG_HOME", ""}}), inHome);
    EXPECT_EQ(folders({{"HOME", "/h"}, {"XDG_DATA_HOME", "/d/"}}),
              (StateFolders{"/d/Shotweaver", inHome.userDefaults}));
    EXPECT_EQ(folders({{"XDG_DATA_HOME", "/d"}, {"XDG_CONFIG_HOME", "/"}}),
              (StateFolders{"/d/Shotweaver", "/Shotweaver"}));
    EXPECT_EQ(failureOf([&] { folders({{"XDG_DATA_HOME", "/d"}}); }), noHome);
#endif
}

TEST(Base64, isTheStandardOneAndNothingElse) {
    EXPECT_EQ(base64("\xFB\xFF\xBF"), "+/+/");
    for (std::size_t count = 0; const char* text : // the vectors of RFC 4648
                                {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"})
        EXPECT_EQ(base64(std::string_view("foobar", count++)), text);
    std::string bytes;
    for (int byte = 255; byte >= 0; --byte) {
        EXPECT_EQ(fromBase64(base64(bytes)), bytes);
        bytes += static_cast<char>(byte);
    }
    for (const char* refused :
         {"Z", "Zg", "Zg=", "Zm8", "Zg==Zg==", "====", "Z===", "Zg=v", "Zh==", "Zm9=", "Zm9vZm9\n",
          "Zm 9", "Zm-_", "\xC3\xA9Zm", "Zm9v====", "Zm=vZm9v"})
        EXPECT_EQ(fromBase64(refused), std::nullopt) << refused;
}

TEST(FileURL, standsForAnAbsolutePath) {
    const std::pair<const char*, const char*> both[] = {
        {"/", "file:///"},
        {"/a b/ä%20#?.xml", "file:///a%20b/%C3%A4%2520%23%3F.xml"},
        {"//x/-._~+\n\xFF", "file:////x/-._~%2B%0A%FF"}};
    for (const auto& [path, url] : both) {
        EXPECT_EQ(fileURL(path), url);
        EXPECT_EQ(pathOfFileURL(url), path);
    }
    for (const char* url : {"file:/ä", "FILE://LocalHost/%c3%A4", "file:///ä?/q", "file:///ä#/?"})
        EXPECT_EQ(pathOfFileURL(url), "/ä") << url;
    for (const char* refused :
         {"", "file", "file:", "file://", "file:a", "file://localhost", "file://host/a", "/a",
          "http:///a", "file://localhost?/a", "file:///%", "file:///%4", "file:///%4g",
          "file:///%+4", "file:///%-1", "file:///a%00", " file:///a"})
        EXPECT_EQ(pathOfFileURL(refused), std::nullopt) << refused;
}

TEST(NameCollator, ordersNamesAsReadersOfTheLocaleDo) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"und", {"",          "\x01", "007", "7",  "７",       "10",       "a",
                 "a\x01",     "A",    "ä",   "az", "preset 2", "Preset 2", "PRESET 3",
                 "preset 10", "ss",   "ß",   "Z",  "Ω",        "日本",     "\xFF"}},
        {"de", {"Arzt", "Ärzte", "Arztin", "Zahl"}},
        {"sv", {"a", "z", "Å", "ä", "Ö"}},
        {"no such locale!", {"a", "ä", "b", "ö", "z"}}};
    for (const auto& [locale, names] : cases) {
        const NameCollator collator(locale);
        for (std::size_t a = 0; a < names.size(); ++a) {
            for (std::size_t b = 0; b < names.size(); ++b) {
                const int order = collator.compare(names[a], names[b]);
                EXPECT_EQ((order > 0) - (order < 0), (a > b) - (a < b)) << names[a] << names[b];
            }
        }
    }
    EXPECT_EQ(NameCollator("und").compare("e\u0301 \u1E0B\u0323", "é \u1E0D\u0307"), 0);
}

} // namespace
} // namespace shotweaver
