#include "tvx/editing/inline/effectively_contained.h"

#include "editing/editing_fixture.h"
#include "tvx/editing/inline/inline_values.h"

namespace tvx::editing::test {

class EffectivelyContained : public EditingFixture {
 protected:
  /// The standard's definition word for word, as slow as it reads.
  static bool by_the_book(const dom::Node& node, const dom::Range& range) {
    if (range.collapsed()) return false;
    if (dom::contains(range, node)) return true;
    if (&node == range.start.node && node.is_text() && dom::length_of(node) != range.start.offset)
      return true;
    if (&node == range.end.node && node.is_text() && range.end.offset != 0) return true;
    if (!node.has_children()) return false;
    for (const dom::Node* child = node.first_child(); child; child = child->next_sibling()) {
      if (!by_the_book(*child, range)) return false;
    }
    const dom::Node &start = *range.start.node, &end = *range.end.node;
    return (!dom::is_ancestor(node, start) || !start.is_text() || range.start.offset == 0) &&
           (!dom::is_ancestor(node, end) || !end.is_text() || range.end.offset == dom::length_of(end));
  }

  static std::vector<dom::Boundary> places(dom::Node& root) {
    std::vector<dom::Boundary> all;
    for (dom::Node* node = &root; node; node = dom::next_in_order(*node, &root)) {
      for (Offset offset = 0; offset <= dom::length_of(*node); ++offset) all.push_back({node, offset});
    }
    return all;
  }
};

TEST_F(EffectivelyContained, AgreesWithTheDefinitionAtEveryRange) {
  for (const char* html : {"<P>ab<B>cd</B></P><UL><LI><I></I>e</LI></UL>", "<B><I>ab</I></B>",
                           "<P><SPAN><B>a</B></SPAN></P><!--b--><P></P>", "a<BR>b"}) {
    load(html);
    const auto all = places(host);
    for (const dom::Boundary& start : all) {
      for (const dom::Boundary& end : all) {
        if (dom::compare(start, end) > 0) continue;
        const dom::Range range{start, end};
        std::vector<const dom::Node*> wanted, walked;
        for (dom::Node* node = document->body(); node; node = dom::next_in_order(*node, document->body())) {
          if (by_the_book(*node, range)) wanted.push_back(node);
          EXPECT_EQ(is_effectively_contained(*node, range), by_the_book(*node, range));
        }
        walk_effectively_contained(range, [&](dom::Node& node) {
          walked.push_back(&node);
          return true;
        });
        EXPECT_EQ(walked, wanted) << html;
      }
    }
  }
}

}  // namespace tvx::editing::test
