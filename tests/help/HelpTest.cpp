#include "help/AboutTexts.h"
#include "help/HelpContent.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace shotweaver::test {
namespace {

using Section = ShotweaverManual::Section;

const std::string stored =
    R"({"title":"T","description":"D","sections":[{"id":"a","title":"A","summary":"S","blocks":[)"
    R"({"kind":"steps","text":"x","items":["one","two"],"links":[{"title":"L","url":"mailto:b@c"}]}]}]})";

TEST(ShotweaverManual, isReadOrRefusedWithItsPlace) {
    const std::string block = "The JSON's \"sections[0].blocks[0].";
    const std::tuple<const char*, const char*, std::string> rows[] = {
        {"\"title\":\"T\"", R"("more":[{}],"title":"")", ""},
        {"\"text\":\"x\",", "", ""},
        {R"(["one","two"])", "null", ""},

        {"\"title\":\"T\",", "", "The JSON has no \"title\"."},
        {"\"D\"", "null", "The JSON's \"description\" must be a string."},
        {R"("kind":"steps",)", "", "The JSON has no \"sections[0].blocks[0].kind\"."},
        {R"("two")", "2", block + "items[1]\" must be a string."},
        {R"("title":"L",)", "", "The JSON has no \"sections[0].blocks[0].links[0].title\"."},
    };
    for (const auto& [from, to, failure] : rows)
        EXPECT_EQ(failureOf([&, a = from, b = to] { readManual(replaced(stored, a, b)); }), failure)
            << from;
    EXPECT_EQ(readManual(stored).sections,
              (std::vector<Section>{
                  {"a", "A", "S", {{"steps", "x", {{"one", "two"}}, {{{"L", "mailto:b@c"}}}}}}}));
}

TEST(ShotweaverManual, linksAreAbsoluteURLs) {
    const auto failure = [](const std::string& url) {
        return failureOf([&] { readManual(replaced(stored, "mailto:b@c", url)); });
    };
    for (const char* url : {"https://a.example/b%20c?d=/?#e", "x-App+1.0:~", "Z:a"})
        EXPECT_EQ(failure(url), "") << url;
    for (const char* url : {"", "a.example", "//a/", ":a", "a:", "1a:b", "a_b:c", "a:b c", "a:b\\t",
                            "a:b\x7F", "a:é", "a:\u3000"})
        EXPECT_EQ(failure(url),
                  "The JSON's \"sections[0].blocks[0].links[0].url\" must be an absolute URL.")
            << url;
}

TEST(ShotweaverManual, thatCannotBeLoadedSaysWhy) {
    const TestFolder folder;
    const std::pair<std::string, ManualError> rows[] = {
        {folder.path("none"),
         {"Shotweaver.Help", 1,
          "The included manual could not be found. Reinstall Shotweaver to restore the help "
          "files."}},
        {folder.write("bad", "[]"), {"", 0, "The JSON must be an object."}},
        {folder.path(), {"", 0, "“" + folder.path() + "” could not be read: Is a directory."}}};
    for (const auto& [path, error] : rows) {
        const HelpContent content(loadManual(systemFileCalls(), path), "und");
        ASSERT_NE(content.error(), nullptr);
        EXPECT_EQ(*content.error(), error);
        EXPECT_EQ(content.manual(), nullptr);
        EXPECT_EQ(content.shownSection(), nullptr);
    }
}

HelpContent smallContent(const char* firstID = "quick-start") {
    const std::vector<Section> sections{
        {firstID, "Start", "Begin here", {{"heading", "The audio angle", {}, {}}}},
        {"cafe", "Break", "Le café", {{"steps", {}, {{"one", "two"}}, {}}}},
        {"links", "Further", "Elsewhere", {{"links", {}, {}, {{{"A page", "https://hid.den/"}}}}}}};
    return {ShotweaverManual{"T", "D", sections}, "und"};
}

TEST(HelpContent, findsTopicsByAllTheirWords) {
    const std::string all = "3 topics · Available offline: quick-start cafe links";
    const std::string first = "1 matching topics: quick-start";
    const std::string none = "0 matching topics:";
    const std::pair<const char*, std::string> rows[] = {
        {"", all},
        {" \n\t\u3000", all},
        {"AUDIO", first},
        {"  ÀUDÏO ", first},
        {"cafe", "1 matching topics: cafe"},
        {"begin here the audio", first},
        {"a pagé", "1 matching topics: links"},
        {"er", "2 matching topics: quick-start links"},
        {"hid.den", none},
        {"heading", none}};
    HelpContent content = smallContent();
    for (const auto& [query, expected] : rows) {
        content.setQuery(query);
        std::string found = content.countLine() + ":";
        for (const Section* section : content.sections())
            found += " " + section->id;
        EXPECT_EQ(found, expected) << query;
    }
}

TEST(HelpContent, keepsItsSelectionWhileItMatches) {
    HelpContent content = smallContent();
    const auto state = [&] {
        const Section* const shown = content.shownSection();
        return content.selectedID().value_or("-") + ", " + (shown ? shown->id : "-");
    };
    EXPECT_EQ(state(), "quick-start, quick-start");
    content.select("links");
    const std::pair<const char*, const char*> queries[] = {{"e", "links, links"}, // in all of them
                                                           {"cafe", "cafe, cafe"},
                                                           {"", "cafe, cafe"},
                                                           {"nowhere", "-, -"},
                                                           {"", "quick-start, quick-start"}};
    for (const auto& [query, expected] : queries) {
        content.setQuery(query);
        EXPECT_EQ(state(), expected) << query;
    }
    content.select(std::nullopt);
    EXPECT_EQ(state(), "-, quick-start");

    content = smallContent("other");
    content.showAll(); // nothing changes
    EXPECT_EQ(state(), "quick-start, other");
}

TEST(HelpContent, theIncludedManualIsWhole) {
    const std::string path = SHOTWEAVER_SOURCE_DIR "/resources/ShotweaverHelp.json";
    HelpContent content(loadManual(systemFileCalls(), path), "en");
    ASSERT_EQ(content.error(), nullptr) << content.error()->description;
    const std::vector<Section>& sections = content.manual()->sections;
    ASSERT_GE(sections.size(), 12U);
    EXPECT_EQ(sections.front().id, "quick-start");
    std::set<std::string> ids;
    for (const Section& section : sections) {
        EXPECT_TRUE(ids.insert(section.id).second) << section.id;
        for (const ShotweaverManual::Block& block : section.blocks) {
            const bool isText = block.kind == "heading" || block.kind == "paragraph";
            const bool isList = block.kind == "steps" || block.kind == "bullets";
            EXPECT_EQ(block.text.has_value(), isText) << block.kind;
            EXPECT_EQ(block.items.has_value(), isList) << block.kind;
            EXPECT_EQ(block.links.has_value(), block.kind == "links") << block.kind;
        }
    }
}

TEST(AboutTexts, whatTheBuildDoesNotSayHasADefault) {
    EXPECT_EQ(versionText("2.5", std::nullopt), "Version 2.5 (Beta) (Build 1)");
    EXPECT_EQ(versionText(std::nullopt, "31"), "Version 0.1 (Beta) (Build 31)");
}

} // namespace
} // namespace shotweaver::test
