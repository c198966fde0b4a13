#include "platform/XmlIntake.h"
#include "platform/XmlWriter.h"

#include "platform/PlatformError.h"
#include "platform/Random.h"
#include "tests/support/RawXml.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>

namespace shotweaver {
namespace {

using test::rawText;

/// Gives one byte a read, as a pipe may.
struct SlowSource final : ByteSource {
    explicit SlowSource(std::string_view bytes) : bytes_(bytes) {}
    std::size_t read(char* into, std::size_t) override { return bytes_.read(into, 1); }
    MemorySource bytes_;
};

constexpr std::array<std::string_view, 2> names{"text", "a"};
constexpr XmlVocabulary vocabulary{names, 1};

/// What the tree of a document holds; the sentence when it is refused.
std::string kept(std::string_view xml) try {
    SlowSource slow(xml);
    const std::string tree = rawText(parseXml(xml, vocabulary)->root());
    EXPECT_EQ(rawText(parseXml(slow, vocabulary)->root()), tree);
    return tree;
} catch (const PlatformError& error) {
    return error.what();
}

std::string repeated(std::string_view text, int times) {
    return times == 0 ? "" : repeated(text, times - 1).append(text);
}

std::string utf16(std::u16string_view text, int shift) {
    std::string bytes;
    for (const int unit : text)
        bytes += {static_cast<char>(unit >> shift), static_cast<char>(unit >> (8 - shift))};
    return bytes;
}

TEST(XmlIntake, keepsWhatTheDocumentSays) {
    for (const char* same :
         {R"(<!--a--><?p q?><r b="1" a="2" xmlns:x="u" x:c="é&lt;"><!--b--><?s?></r>)",
          "<r> <!--c-->\n</r>", "<r> x <a/> <b/> </r>", "<r> <a/> <!--c--> <b/>x</r>",
          "<r> <a/> <![CDATA[x]]> </r>", "<r> <a/>\u00A0</r>", "<text> <a/>\n</text>"})
        EXPECT_EQ(kept(same), same);
    const std::pair<std::string_view, const char*> changed[] = {
        {"<a>x&amp;y&#233;\r\nz<![CDATA[<&\r\n]]><![CDATA[]]></a>",
         "<a>x&amp;yé\nz<![CDATA[<&\n]]><![CDATA[]]></a>"},
        {"<r>\n <a/>\t<!--c--> <b> \n</b>\r\n</r>", "<r><a/><!--c--><b> \n</b></r>"},
        {R"(<!DOCTYPE r [<!ENTITY e "v"><!ENTITY f "&e;<b a='&e;'/>">]><r a="&e;">&f;</r>)",
         R"(<r a="v">v<b a="v"/></r>)"},
        {R"(<?xml version="1.0" standalone="yes"?><!DOCTYPE r SYSTEM "x" [<!ENTITY e "v">]>)"
         R"(<r a="&e;"/>)",
         R"(<r a="v"/>)"},
        {R"(<!DOCTYPE r SYSTEM "?&b;" [<!--T&T;--><?p &y;?><!ELEMENT r ANY><!ENTITY e "v<b/>">]>)"
         R"(<r a="&lt;&gt;&amp;&quot;&apos;&#233;&#xE9;">&e;<!--&c;--><![CDATA[&d;]]></r>)",
         R"(<r a="&lt;>&amp;&quot;'éé">v<b/><!--&c;--><![CDATA[&d;]]></r>)"},
    };
    for (const auto& [xml, tree] : changed)
        EXPECT_EQ(kept(xml), tree);
}

TEST(XmlIntake, readsFourEncodings) {
    const std::u16string wide = u"<!DOCTYPE r SYSTEM 'x'><r a='☀é&amp;'>ü😀</r>";
    for (const std::string& xml :
         {"\xFF\xFE" + utf16(wide, 0), "\xFE\xFF" + utf16(wide, 8), utf16(wide, 0),
          std::string("<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE r SYSTEM 'x'>"
                      "<r a='&#9728;\xE9&amp;'>\xFC&#128512;</r>"),
          std::string("\xEF\xBB\xBF<!DOCTYPE r SYSTEM 'x'><r a='☀é&amp;'>ü😀</r>")})
        EXPECT_EQ(kept(xml), "<r a=\"☀é&amp;\">ü😀</r>");
}

TEST(XmlIntake, refusesWhatIsNotWellFormed) {
    const std::pair<const char*, const char*> refused[] = {
        {"<?xml version='1.0' encoding='IBM037'?><r/>", "unknown encoding at line 1, column 31"},
        {"<a>\n <b>", "no element found at line 2, column 5"},
        {"<a></b>", "mismatched tag at line 1, column 6"},
        {"<a/>\n<b/>", "junk after document element at line 2, column 1"},
        {"<a>\xC0\xAF</a>", "not well-formed (invalid token) at line 1, column 4"},
        {"<a b='&gone;'/>", "undefined entity at line 1, column 1"},
    };
    for (const auto& [xml, reason] : refused)
        EXPECT_EQ(kept(xml), fmt::format("The XML could not be read: {}.", reason)) << xml;
}

TEST(XmlIntake, aReferenceThatMayLieOutsideIsNeverLost) {
    const std::string system = R"(<!DOCTYPE r SYSTEM "x")";
    const std::u16string wide =
        u"<!DOCTYPE r SYSTEM 'x'><r a='" + std::u16string(2000, ' ') + u"&é;'/>";
    const std::string cases[] = {
        system + "><r>&é;</r>",
        system + R"( [<!ENTITY e "v&#38;é;">]><r>&e;</r>)",
        system + R"( [<!ENTITY é "v">]><r a="&é;"/>)",
        system + R"( [<!ENTITY e "<b a='&é;'/>">]><r>&e;</r>)",
        system + R"(><r a="1 &lt; )" + std::string(600'000, ' ') + R"(&é;"/>)",
        R"(<!DOCTYPE r [<!ENTITY % p SYSTEM "x"> %p;]><r a="&é;"/>)",
        "<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE r SYSTEM 'x'><r a='&\xE9;'/>",
        utf16(wide, 0),
        utf16(wide, 8)};
    for (const std::string& xml : cases)
        EXPECT_EQ(kept(xml), "The XML refers to “&é;”, which lies outside of it. Export XML again "
                             "from Final Cut.");
    EXPECT_EQ(kept("<!DOCTYPE r [<!ENTITY x SYSTEM 'u'><!ENTITY e '&x;'>]><r>&e;</r>"),
              "The XML refers to “u”, which lies outside of it. Export XML again from Final Cut.");
}

TEST(XmlIntake, refusesAttributeDeclarations) {
    for (const char* declaration : {"CDATA 'd'", "(c|d) #FIXED 'd'", "ID #IMPLIED"})
        EXPECT_EQ(kept(fmt::format("<!DOCTYPE r [<!ATTLIST x a {}>]><r/>", declaration)),
                  "The XML's document type declares attributes. Export XML again from Final Cut.");
}

TEST(XmlIntake, refusesDocumentsThatGrowOrNestTooDeep) {
    const std::string large = std::string(50'000, 'x') + "'>]><r>";
    EXPECT_TRUE(kept("<!DOCTYPE r [<!ENTITY e '" + large + repeated("<a b='&e;'/>", 2000) + "</r>")
                    .starts_with("The XML could not be read: limit on input amplification factor"));
    const std::string deepest = repeated("<a>", 999) + "<a/>" + repeated("</a>", 999);
    EXPECT_EQ(kept(deepest), deepest);
    EXPECT_EQ(kept("<r>" + deepest), "The XML is nested more than 1000 levels deep.");
}

std::string written(const XmlDocument& document) {
    StringSink sink;
    XmlWriter writer(sink);
    for (const XmlNode node : document.root().children())
        writer.node(node);
    writer.finish();
    return sink.take();
}

TEST(XmlWriter, writesAnElementALineAndLeavesContentAlone) {
    const std::pair<const char*, const char*> cases[] = {
        {"<?p q?><!--a--><r a=''><b><c/></b><!-- d --><e></e></r><!--f-->",
         "<?p q?>\n<!--a-->\n<r a=\"\">\n    <b>\n        <c/>\n    </b>\n    <!-- d -->\n"
         "    <e/>\n</r>\n<!--f-->\n"},
        {"<r><a><!--c--></a><b>x<c><d/></c><!--e--><?f g?></b><text><a/></text></r>",
         "<r>\n    <a><!--c--></a>\n    <b>x<c><d/></c><!--e--><?f g?></b>\n"
         "    <text><a/></text>\n</r>\n"},
        {"<r a='&lt;&amp;&gt;&quot;&apos;&#9;&#10;&#13;é'>&lt;&amp;]]&gt;\"'&#9;&#10;&#13;é😀</r>",
         "<r a=\"&lt;&amp;&gt;&quot;'&#9;&#10;&#13;é\">&lt;&amp;]]&gt;\"'\t\n&#13;é😀</r>\n"},
    };
    for (const auto& [xml, text] : cases)
        EXPECT_EQ(written(*parseXml(xml, vocabulary)),
                  std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + text);
    const std::string deep = repeated("<a>", 40) + "<b/>" + repeated("</a>", 40);
    EXPECT_NE(written(*parseXml(deep, vocabulary)).find("\n" + std::string(32 * 4, ' ') + "<b/>\n"),
              std::string::npos); // no farther in than 32 levels
}

/// An element of chance with everything that a document can hold.
std::string randomElement(RandomSource& random, int depth) {
    const auto oneOf = [&](auto... texts) {
        return std::array<const char*, sizeof...(texts)>{
            texts...}[random.bits() % sizeof...(texts)];
    };
    const std::string name = oneOf("a", "clip", "text");
    std::string xml = fmt::format("<{} k='{}'>", name, oneOf("", "&#10;\"&gt;&#13;&#9; "));
    for (std::uint64_t count = random.bits() % 6; count > 0; --count)
        xml += depth < 4 && random.bits() % 3 == 0
                   ? randomElement(random, depth + 1)
                   : oneOf(" ", "\n\t", "x", "&amp;&lt;]]&gt;", "&#13;", "<!--c-->", "<?p q?>",
                           "<![CDATA[<&]]>", "<![CDATA[ ]]>", "<b/>", "é");
    return xml + "</" + name + ">";
}

TEST(XmlWriter, whatIsWrittenReadsBackTheSame) {
    for (std::uint64_t seed = 1; seed <= 500; ++seed) {
        SeededRandom random(seed);
        const auto document = parseXml(randomElement(random, 0), vocabulary);
        const auto again = parseXml(written(*document), vocabulary);
        ASSERT_EQ(rawText(again->root()), rawText(document->root())) << "seed " << seed;
    }
}

} // namespace
} // namespace shotweaver
