#include "platform/XmlWriter.h"

#include "platform/Random.h"
#include "platform/XmlIntake.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <sstream>

namespace shotweaver {
namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string written(const XmlDocument& document) {
    XmlWriter writer;
    for (const pugi::xml_node node : document->children())
        writer.node(node);
    return writer.take();
}

/// What a tree holds, with nothing added.
std::string held(const XmlDocument& document) {
    std::ostringstream text;
    document->save(text, "", pugi::format_raw | pugi::format_no_declaration);
    return text.str();
}

TEST(XmlWriter, writesAnElementALineAndLeavesContentAlone) {
    const struct {
        const char *label, *xml, *text;
    } cases[] = {
        {"nested elements", "<r a='1'><b><c/></b><d></d></r>",
         "<r a=\"1\">\n    <b>\n        <c/>\n    </b>\n    <d/>\n</r>\n"},
        {"around the root", "<?p q?><!--a--><r/><!--b--><?s?>",
         "<?p q?>\n<!--a-->\n<r/>\n<!--b-->\n<?s?>\n"},
        {"comments between elements", "<r><!-- c --><b/></r>",
         "<r>\n    <!-- c -->\n    <b/>\n</r>\n"},
        {"a comment alone", "<r><b><!--c--></b></r>", "<r>\n    <b><!--c--></b>\n</r>\n"},
        {"text", "<r><b> x\n</b><c>\n</c></r>", "<r>\n    <b> x\n</b>\n    <c>\n</c>\n</r>\n"},
        {"mixed content", "<r><b>x<c><d/></c><!--e--><?f g?></b></r>",
         "<r>\n    <b>x<c><d/></c><!--e--><?f g?></b>\n</r>\n"},
        {"CDATA", "<r><![CDATA[<&>]]><b/></r>", "<r><![CDATA[<&>]]><b/></r>\n"},
        {"runs of a title",
         "<title><text><text-style ref='1'>A</text-style><text-style ref='2'>\n</text-style>"
         "</text><b/></title>",
         "<title>\n    <text><text-style ref=\"1\">A</text-style><text-style ref=\"2\">\n"
         "</text-style></text>\n    <b/>\n</title>\n"},
        {"escapes in text", "<r>&lt;&amp;&gt;]]&gt;\"'&#9;&#10;&#13;é😀</r>",
         "<r>&lt;&amp;&gt;]]&gt;\"'\t\n&#13;é😀</r>\n"},
        {"escapes in attributes", "<r a='&lt;&amp;&gt;&quot;&apos;&#9;&#10;&#13;é'/>",
         "<r a=\"&lt;&amp;&gt;&quot;'&#9;&#10;&#13;é\"/>\n"},
    };
    for (const auto& [label, xml, text] : cases)
        EXPECT_EQ(written(parseXml(xml)), declaration + text) << label;
}

TEST(XmlWriter, writesElementByElement) {
    const XmlDocument document = parseXml("<spine><note/><text/></spine>");
    XmlWriter writer;
    writer.begin("r");
    writer.attribute("empty", "");
    writer.beginLike(document->first_child());
    writer.node(document->first_child().first_child());
    writer.end();
    writer.beginLike(document->first_child().last_child());
    writer.begin("a");
    writer.end();
    writer.end();
    writer.end();
    EXPECT_EQ(writer.take(), declaration + "<r empty=\"\">\n    <spine>\n        <note/>\n"
                                           "    </spine>\n    <text><a/></text>\n</r>\n");
}

/// An element of chance with everything that a document can hold.
std::string randomElement(RandomSource& random, int depth) {
    const auto draw = [&](std::uint64_t count) { return random.bits() % count; };
    static constexpr const char* names[] = {"a", "clip", "text", "text-style", "note"};
    static constexpr const char* pieces[] = {" ",
                                             "\n\t",
                                             "x",
                                             "&amp;&lt;]]&gt;",
                                             "&#13;",
                                             "<!--c-->",
                                             "<?p q?>",
                                             "<![CDATA[<&]]>",
                                             "<![CDATA[ ]]>",
                                             "<b/>",
                                             "é",
                                             ""};
    const char* const name = names[draw(std::size(names))];
    std::string xml = fmt::format("<{} k='{}'>", name, draw(2) == 0 ? "&#10;\"&gt;&#13;&#9; " : "");
    for (std::uint64_t count = draw(6); count > 0; --count) {
        const bool isElement = depth < 4 && draw(3) == 0;
        xml += isElement ? randomElement(random, depth + 1) : pieces[draw(std::size(pieces))];
    }
    return xml + fmt::format("</{}>", name);
}

TEST(XmlWriter, whatIsWrittenReadsBackTheSame) {
    for (std::uint64_t seed = 1; seed <= 500; ++seed) {
        SeededRandom random(seed);
        const std::string xml = randomElement(random, 0);
        const XmlDocument document = parseXml(xml);
        const std::string text = written(document);
        const XmlDocument again = parseXml(text);
        ASSERT_EQ(held(again), held(document)) << "seed " << seed << ": " << xml;
        ASSERT_EQ(written(again), text) << "seed " << seed << ": " << xml;
    }
}

TEST(XmlWriter, writesTheDeepestDocument) {
    std::string xml;
    for (int i = 0; i < maximumXmlDepth; ++i)
        xml += "<a>";
    for (int i = 0; i < maximumXmlDepth; ++i)
        xml += "</a>";
    const XmlDocument document = parseXml(xml);
    EXPECT_EQ(held(parseXml(written(document))), held(document));
}

} // namespace
} // namespace shotweaver
