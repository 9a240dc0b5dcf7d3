#include "tvx/core/views/letter_place.h"

#include <gtest/gtest.h>

#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/source/source_text.h"

namespace tvx::core {
namespace {

/// A page and its code.
struct Both {
  explicit Both(std::u16string_view html) : document(dom::parse_document(html)) {
    code = *source::SourceText::formatted(
                std::make_shared<const std::u16string>(dom::inner_html(*document->body())))
                .code();
  }
  /// Where a position of the code leads to in the page: the text there, with a bar.
  std::string from_code(std::u16string_view part, Offset within) {
    const Offset at = code.find(part) + within;
    const dom::Boundary place = boundary_at(*document->body(), letter_place(code, at));
    auto* text = dom::as<dom::Text>(place.node);
    if (!text) return "no text";
    std::u16string data = text->data();
    return to_utf8(data.insert(place.offset, u"|"));
  }
  /// And the other way: the code's line, with a bar.
  std::string from_page(dom::Boundary place) {
    const Offset at = offset_at(code, letter_place(*document->body(), place));
    std::u16string marked = code;
    marked.insert(at, u"|");
    const Offset begin = marked.rfind(u'\n', at) + 1, end = std::min(marked.find(u'\r', at), marked.size());
    return to_utf8(marked.substr(begin, end - begin));
  }
  dom::Ref<dom::Document> document;
  std::u16string code;
};

TEST(LetterPlace, APositionInTheCodeIsOneInThePage) {
  Both both(u"<body><p>one <b>two</b></p><table><tr><td>three &lt; four</table>");
  EXPECT_EQ(both.from_code(u"one", 2), "on|e ");
  EXPECT_EQ(both.from_code(u"one", 3), "one| ");
  EXPECT_EQ(both.from_code(u"two", 0), "|two");
  EXPECT_EQ(both.from_code(u"&lt;", 4), "three <| four");
  EXPECT_EQ(both.from_code(u"four", 2), "three < fo|ur");
  EXPECT_EQ(both.from_code(u"<TABLE", 3), "|three < four") << "within a tag";
  EXPECT_EQ(both.from_code(u"</P>", 4), "two|") << "at the line's end";
}

TEST(LetterPlace, APositionInThePageIsOneInTheCode) {
  Both both(u"<body><p>one <b>two</b></p><script>var x;</script><ul><li>&nbsp;three</ul>");
  dom::Node& paragraph = *both.document->body()->first_child();
  EXPECT_EQ(both.from_page({paragraph.first_child(), 2}), "<P>on|e <B>two</B></P>");
  EXPECT_EQ(both.from_page({&paragraph, 1}), "<P>one <B>|two</B></P>");
  dom::Node& item = *both.document->body()->last_child()->first_child();
  EXPECT_EQ(both.from_page({item.first_child(), 3}), "  <LI>&nbsp;th|ree</LI>");
}

TEST(LetterPlace, EachPositionComesBack) {
  Both both(u"<body><h1>a b</h1><p>c<i>d</i>&amp;e</p><pre>f\n g</pre>");
  for (Offset at = 0; at <= both.code.size(); ++at) {
    const LetterPlace place = letter_place(both.code, at);
    constexpr std::size_t all = 8;
    if (place.before == all && !place.after_letter)
      continue;  // after the last letter: that is where it leads to
    EXPECT_EQ(letter_place(*both.document->body(), boundary_at(*both.document->body(), place)), place) << at;
    EXPECT_EQ(letter_place(both.code, offset_at(both.code, place)), place) << at;
  }
}

TEST(LetterPlace, AnEmptyLineIsAPlaceOfItsOwn) {
  Both both(u"<ul><li>one</li><li><br></li></ul><table><tr><td><br><td>two</table>");
  dom::Element& body = *both.document->body();
  dom::Node& item = *body.first_child()->last_child();
  EXPECT_EQ(both.from_page({&item, 0}), "  |<BR></LI>");
  EXPECT_EQ(letter_place(body, {&item, 1}), (LetterPlace{4, true}));
  const Offset second_break = both.code.find(u"<BR>", both.code.find(u"<TD>"));
  EXPECT_EQ(boundary_at(body, letter_place(both.code, second_break)),
            (dom::Boundary{body.last_child()->first_child()->first_child()->first_child(), 0}));
}

TEST(LetterPlace, ImagesAndFieldsCountAsLetters) {
  Both both(u"<p><img alt=\"a b\"><img>text<input value=v></p>");
  dom::Element& body = *both.document->body();
  dom::Node& paragraph = *body.first_child();
  for (Offset at = 0; at <= 4; ++at) {
    if (at == 3) continue;  // beside the text
    const LetterPlace place = letter_place(body, {&paragraph, at});
    EXPECT_EQ(letter_place(both.code, offset_at(both.code, place)), place) << at;
    EXPECT_EQ(boundary_at(body, place), (dom::Boundary{&paragraph, at}));
  }
  EXPECT_EQ(both.from_page({&paragraph, 1}), "<P><IMG alt=\"a b\">|<IMG>text<INPUT value=\"v\"></P>");
}

TEST(LetterPlace, BesideElementsCountsTheLettersBefore) {
  const Both both(u"<P>ab</P><UL><LI>cd</LI></UL><SCRIPT>xx</SCRIPT><P>ef</P>");
  dom::Element& body = *both.document->body();
  const auto before = [&](dom::Node* node, Offset offset) {
    return letter_place(body, {node, offset}).before;
  };
  EXPECT_EQ(before(&body, 0), 0u);
  EXPECT_EQ(before(&body, 1), 2u);
  EXPECT_EQ(before(body.first_child(), 1), 2u) << "the end of the first paragraph";
  EXPECT_EQ(before(body.first_child()->next_sibling(), 0), 2u);
  EXPECT_EQ(before(body.first_child()->next_sibling(), 1), 4u);
  EXPECT_EQ(before(&body, 3), 4u) << "after the script";
  EXPECT_EQ(before(&body, 4), 6u);
  dom::Node* script = body.last_child()->previous_sibling();
  EXPECT_EQ(before(script, 0), 4u);
  EXPECT_EQ(before(script->first_child(), 1), 4u) << "its letters are none of the page";
}

}  // namespace
}  // namespace tvx::core
