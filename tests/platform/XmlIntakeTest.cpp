#include "platform/XmlIntake.h"

#include "platform/PlatformError.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <sstream>

namespace shotweaver {
namespace {

/// What the tree holds, with nothing added; the sentence when the document is refused.
std::string kept(std::string_view xml) try {
    std::ostringstream text;
    parseXml(xml)->save(text, "", pugi::format_raw | pugi::format_no_declaration);
    return text.str();
} catch (const PlatformError& error) {
    return error.what();
}

std::string refusal(std::string_view xml) {
    try {
        parseXml(xml);
    } catch (const PlatformError& error) {
        return error.what();
    }
    return "";
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

enum class ByteOrder { littleEndian, bigEndian };

std::string utf16(std::u16string_view text, ByteOrder order) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8U);
        const char low = static_cast<char>(unit & 0xFFU);
        bytes += order == ByteOrder::bigEndian ? high : low;
        bytes += order == ByteOrder::bigEndian ? low : high;
    }
    return bytes;
}

struct Kept {
    const char *label, *xml, *tree;
};

TEST(XmlIntake, keepsWhatTheDocumentSays) {
    const Kept cases[] = {
        {"text in pieces", "<a>x&amp;y&#233;\r\nz</a>", "<a>x&amp;yé\nz</a>"},
        {"CDATA", "<a>x<![CDATA[<&\r\n]]>y<![CDATA[]]></a>",
         "<a>x<![CDATA[<&\n]]>y<![CDATA[]]></a>"},
        {"comments and instructions", "<!--a-->\n<?p q?><r><!--b--><?s?></r><!--c-->",
         "<!--a--><?p q?><r><!--b--><?s?></r><!--c-->"},
        {"document type", "<!DOCTYPE r [<!--x--><?y z?><!ELEMENT r ANY>]><r/>", "<r/>"},
        {"attributes in order", R"(<r b="1" a="2" xmlns:x="u" x:c="é&lt;"/>)",
         R"(<r b="1" a="2" xmlns:x="u" x:c="é&lt;"/>)"},
        {"defaults of attributes", R"(<!DOCTYPE r [<!ATTLIST r b CDATA "d">]><r a="1"/>)",
         R"(<r a="1" b="d"/>)"},
        {"declared entities",
         R"(<!DOCTYPE r [<!ENTITY e "v"><!ENTITY f "&e;<b/>&#38;#60;">]>)"
         R"(<r a="&e;">&f;</r>)",
         R"(<r a="v">v<b/>&lt;</r>)"},
        {"declared entities beside a document type elsewhere",
         R"(<!DOCTYPE r SYSTEM "x.dtd" [<!ENTITY e "v">]><r a="&e;&quot;&#9;">&e;&amp;</r>)",
         "<r a=\"v&quot;&#09;\">v&amp;</r>"},
        {"a document type elsewhere, never read", R"(<!DOCTYPE r SYSTEM "/dev/zero"><r/>)", "<r/>"},
        {"what only looks like a reference",
         R"(<!DOCTYPE r SYSTEM "x" [<!-- AT&T; &x; --><?p &y;?><!ENTITY z SYSTEM "u?a&b;">]><r/>)",
         "<r/>"},
    };
    for (const auto& [label, xml, tree] : cases)
        EXPECT_EQ(kept(xml), tree) << label;
    // Looked through once, not once an ampersand.
    EXPECT_EQ(refusal("<!DOCTYPE r SYSTEM 'x' [<!--" + std::string(20'000, '&') + ";-->]><r/>"),
              "");
}

TEST(XmlIntake, keepsWhiteSpaceWhereItCanBeContent) {
    const Kept cases[] = {
        {"between elements", "<r>\n  <a/>\t<b/>\r\n</r>", "<r><a/><b/></r>"},
        {"between elements and comments", "<r> <!--c--> <a/> <?p?> </r>",
         "<r><!--c--><a/><?p?></r>"},
        {"alone", "<r> <a> \n</a> </r>", "<r><a> \n</a></r>"},
        {"alone beside a comment", "<r> <!--c-->\n</r>", "<r> <!--c-->\n</r>"},
        {"beside text", "<r> x <a/> <b/> </r>", "<r> x <a/> <b/> </r>"},
        {"before text", "<r> <a/> <!--c--> <b/>x</r>", "<r> <a/> <!--c--> <b/>x</r>"},
        {"before text, around inner elements", "<r> <a> <b/> </a> x</r>", "<r> <a><b/></a> x</r>"},
        {"beside CDATA", "<r> <a/> <![CDATA[x]]> </r>", "<r> <a/> <![CDATA[x]]> </r>"},
        {"a space that does not break is text", "<r> <a/>\u00A0</r>", "<r> <a/>\u00A0</r>"},
        {"a title's line feed",
         "<text>\n<text-style>a</text-style><text-style>\n</text-style> <text-style/></text>",
         "<text>\n<text-style>a</text-style><text-style>\n</text-style> <text-style/></text>"},
    };
    for (const auto& [label, xml, tree] : cases)
        EXPECT_EQ(kept(xml), tree) << label;

    for (const char* name :
         {"text", "text-style", "note", "data", "bookmark", "string", "reserved"}) {
        const std::string xml = fmt::format("<{0}> <a/>\n</{0}>", name);
        EXPECT_EQ(kept(xml), xml);
    }
}

TEST(XmlIntake, longTextIsOnePiece) {
    const std::string text = repeated("aé\n", 300'000);
    const XmlDocument document = parseXml("<a>" + text + "</a>");
    const pugi::xml_node element = document->first_child();
    EXPECT_TRUE(element.first_child().value() == text);
    EXPECT_EQ(element.first_child(), element.last_child());
}

TEST(XmlIntake, readsFourEncodingsAndRefusesOthers) {
    const std::u16string wide = u"<r a=\"é\">ü😀</r>";
    const std::u16string declared = u"<?xml version='1.0' encoding='UTF-16'?>" + wide;
    const std::pair<std::string, const char*> accepted[] = {
        {"<r a=\"é\">ü😀</r>", "UTF-8"},
        {"\xEF\xBB\xBF<?xml version='1.0'?><r a=\"é\">ü😀</r>", "UTF-8 with a byte-order mark"},
        {"\xFF\xFE" + utf16(wide, ByteOrder::littleEndian), "UTF-16LE"},
        {"\xFE\xFF" + utf16(wide, ByteOrder::bigEndian), "UTF-16BE"},
        {"\xFE\xFF" + utf16(declared, ByteOrder::bigEndian), "UTF-16BE, declared"},
        {utf16(declared, ByteOrder::littleEndian), "UTF-16LE without a byte-order mark"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><r a=\"\xE9\">\xFC&#128512;</r>", "Latin-1"},
        {"<?xml version='1.0' encoding='us-ascii'?><r a=\"&#233;\">&#xFC;&#x1F600;</r>", "ASCII"},
    };
    for (const auto& [xml, label] : accepted)
        EXPECT_EQ(kept(xml), "<r a=\"é\">ü😀</r>") << label;

    for (const char* name : {"windows-1252", "UTF-32", "Shift_JIS", "klingon"})
        EXPECT_EQ(refusal(fmt::format("<?xml version='1.0' encoding='{}'?><r/>", name)),
                  "The XML could not be read: unknown encoding at line 1, column 31.");
    EXPECT_EQ(refusal("<?xml version='1.0' encoding='UTF-16'?><r/>"),
              "The XML could not be read: encoding specified in XML declaration is incorrect at "
              "line 1, column 31.");
}

TEST(XmlIntake, refusesWhatIsNotWellFormed) {
    const std::pair<const char*, const char*> refused[] = {
        {"", "no element found at line 1, column 1"},
        {" \n", "no element found at line 2, column 1"},
        {"hello", "syntax error at line 1, column 1"},
        {"<a>\n <b>", "no element found at line 2, column 5"},
        {"<a b='1", "unclosed token at line 1, column 1"},
        {"<a><![CDATA[x</a>", "unclosed CDATA section at line 1, column 18"},
        {"<a></b>", "mismatched tag at line 1, column 6"},
        {"<a/>\n<b/>", "junk after document element at line 2, column 1"},
        {"<a/>x", "junk after document element at line 1, column 5"},
        {"<a b='1' c='2' b='1'/>", "duplicate attribute at line 1, column 16"},
        {"<a b='<'/>", "not well-formed (invalid token) at line 1, column 7"},
        {"<a>\xFF</a>", "not well-formed (invalid token) at line 1, column 4"},
        {"<a>\xC0\xAF</a>", "not well-formed (invalid token) at line 1, column 4"},
        {"<a b='\xE9'/>", "not well-formed (invalid token) at line 1, column 7"},
        {"<a>\x01</a>", "not well-formed (invalid token) at line 1, column 4"},
        {"<a>]]></a>", "not well-formed (invalid token) at line 1, column 6"},
        {"<a>&#0;</a>", "reference to invalid character number at line 1, column 4"},
        {"<a>&gone;</a>", "undefined entity at line 1, column 4"},
        {"<a b='&gone;'/>", "undefined entity at line 1, column 1"},
        {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>",
         "recursive entity reference at line 1, column 36"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a b='&e;'/>",
         "reference to external entity in attribute at line 1, column 61"},
    };
    for (const auto& [xml, reason] : refused)
        EXPECT_EQ(refusal(xml), fmt::format("The XML could not be read: {}.", reason)) << xml;
}

TEST(XmlIntake, aReferenceThatOnlyAnotherDocumentExplainsIsNeverLost) {
    const std::pair<const char*, std::string> refused[] = {
        {"text", R"(<!DOCTYPE r SYSTEM "x.dtd"><r>&gone;</r>)"},
        {"attribute", R"(<!DOCTYPE r PUBLIC "p" "x.dtd"><r><a b="1 &lt; &gone;"/></r>)"},
        {"default of an attribute",
         R"(<!DOCTYPE r SYSTEM "x.dtd" [<!ATTLIST r a CDATA "&gone;">]><r/>)"},
        {"default before the declaration",
         R"(<!DOCTYPE r SYSTEM "x.dtd" [<!ATTLIST r a CDATA "&gone;"><!ENTITY gone "v">]><r/>)"},
        {"value of an entity",
         R"(<!DOCTYPE r SYSTEM "x.dtd" [<!ENTITY e "v&gone;">]><r a="&e;"/>)"},
        {"value of an entity, by its character",
         R"(<!DOCTYPE r SYSTEM "x.dtd" [<!ENTITY e "v&#38;gone;">]><r a="&e;"/>)"},
        {"parameter entity, attribute",
         R"(<!DOCTYPE r [<!ENTITY % p SYSTEM "x.ent"> %p; <!ENTITY gone "v">]><r a="&gone;"/>)"},
        {"parameter entity, text",
         R"(<!DOCTYPE r [<!ENTITY % p SYSTEM "x.ent"> %p;]><r>&gone;</r>)"},
        {"UTF-16, attribute",
         "\xFF\xFE" + utf16(u"<!DOCTYPE r SYSTEM 'x'><r a='é &gone;'/>", ByteOrder::littleEndian)},
        {"UTF-16 without a mark, default of an attribute",
         utf16(u"<!DOCTYPE r SYSTEM 'x' [<!ATTLIST r a CDATA '&gone;'>]><r/>",
               ByteOrder::bigEndian)},
        {"behind the first blocks", R"(<!DOCTYPE r SYSTEM "x.dtd"><r>)" +
                                        std::string(600'000, ' ') + R"(<a b="&gone;"/></r>)"},
    };
    for (const auto& [label, xml] : refused)
        EXPECT_EQ(refusal(xml), "The XML refers to “&gone;”, which lies outside of it. Export XML "
                                "again from Final Cut.")
            << label;
    for (const char* entities : {R"(<!ENTITY e SYSTEM "/etc/passwd">)",
                                 R"(<!ENTITY x SYSTEM "/etc/passwd"><!ENTITY e "&x;">)"})
        EXPECT_EQ(
            refusal(fmt::format("<!DOCTYPE r [{}]><r>&e;</r>", entities)),
            "The XML refers to “/etc/passwd”, which lies outside of it. Export XML again from "
            "Final Cut.");
}

TEST(XmlIntake, findsDeclaredEntitiesInEveryEncoding) {
    const std::u16string wide = u"<!DOCTYPE r SYSTEM 'x' [<!ENTITY é 'v'>]><r a='&é;'/>";
    EXPECT_EQ(refusal("\xFE\xFF" + utf16(wide, ByteOrder::bigEndian)), "");
    EXPECT_EQ(refusal("<?xml version='1.0' encoding='ISO-8859-1'?>"
                      "<!DOCTYPE r SYSTEM 'x' [<!ENTITY \xE9 'v'>]><r a='&\xE9;'/>"),
              "");
}

TEST(XmlIntake, refusesDocumentsThatGrow) {
    std::string laughs = "<!DOCTYPE r [<!ENTITY e0 '0123456789'>";
    for (int i = 1; i < 12; ++i)
        laughs += fmt::format("<!ENTITY e{} '{}'>", i, repeated(fmt::format("&e{};", i - 1), 10));
    const std::string large =
        "<!DOCTYPE r [<!ENTITY e '" + std::string(50'000, 'x') + "'>]><r><a/>";
    const std::pair<const char*, std::string> refused[] = {
        {"nested in text", laughs + "]><r>&e11;</r>"},
        {"nested in an attribute", laughs + "]><r a='&e11;'/>"},
        {"large in text", large + repeated("&e;", 2000) + "</r>"},
        {"large in an attribute", large + "<a b='" + repeated("&e;", 2000) + "'/></r>"},
        {"large in many attributes", large + repeated("<a b='&e;'/>", 2000) + "</r>"},
    };
    for (const auto& [label, xml] : refused)
        EXPECT_TRUE(refusal(xml).starts_with("The XML could not be read: limit on input "
                                             "amplification factor (from DTD and entities) "
                                             "breached at line 1, column "))
            << label << ": " << refusal(xml);

    // The default of an attribute grows a document like an entity does.
    EXPECT_NE(refusal("<!DOCTYPE r [<!ATTLIST a b CDATA '" + std::string(50'000, 'x') + "'>]><r>" +
                      repeated("<a/>", 1000) + "</r>"),
              "");
}

TEST(XmlIntake, nestsAThousandLevelsDeep) {
    const auto nested = [](int levels) {
        return repeated("<a>", levels) + repeated("</a>", levels);
    };
    int levels = 0;
    const XmlDocument document = parseXml(nested(1000));
    for (pugi::xml_node node = document->first_child(); node; node = node.first_child())
        ++levels;
    EXPECT_EQ(levels, 1000);
    for (const int refused : {1001, 100'000})
        EXPECT_EQ(refusal(nested(refused)), "The XML is nested more than 1000 levels deep.");
    EXPECT_EQ(refusal("<!DOCTYPE r [<!ENTITY e '" + nested(600) + "'>]><r>" + repeated("<a>", 500) +
                      "&e;"),
              "The XML is nested more than 1000 levels deep.");
}

TEST(XmlIntake, oneElementMayHaveAMillionAttributes) {
    std::string xml = "<r";
    for (int i = 0; i < 1'000'000; ++i)
        xml += fmt::format(" a{}=''", i);
    const XmlDocument document = parseXml(xml + "/>");
    const auto attributes = document->first_child().attributes();
    EXPECT_EQ(std::distance(attributes.begin(), attributes.end()), 1'000'000);
    EXPECT_STREQ(document->first_child().last_attribute().name(), "a999999");
}

} // namespace
} // namespace shotweaver
