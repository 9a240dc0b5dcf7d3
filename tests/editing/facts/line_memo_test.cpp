#include "tvx/editing/facts/line_memo.h"

#include <gtest/gtest.h>

#include <random>

#include "tvx/base/strings.h"
#include "tvx/base/work_count.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"

namespace tvx::editing {
namespace {

using dom::Node;

std::u16string random_page(std::mt19937& random) {
  static const char16_t* const pieces[] = {
      u"<p>",   u"</p>",   u"x",       u" ",          u"\n",
      u"<br>",  u"<b>",    u"</b>",    u"<!-- c -->", u"<img>",
      u"<div>", u"</div>", u"<span> ", u"</span>",    u"<script></script>",
      u"<hr>",  u"<pre>",  u"</pre>",  u"\u00A0",     u"<i hidden> "};
  std::u16string page;
  for (int i = 0; i < 30; ++i) page += pieces[random() % std::size(pieces)];
  return page;
}

std::vector<bool> answers(dom::Document& document) {
  std::vector<bool> all;
  for (Node* node = document.first_child(); node; node = dom::next_in_order(*node))
    all.push_back(is_collapsed_whitespace_node(*node));
  return all;
}

TEST(LineMemoTest, AnswersAreTheSameWithAndWithout) {
  std::mt19937 random(7);
  for (int round = 0; round < 2'000; ++round) {
    const std::u16string page = random_page(random);
    const dom::Ref<dom::Document> document = dom::parse_document(page);
    const std::vector<bool> plain = answers(*document);
    const LineMemo memo;
    ASSERT_EQ(answers(*document), plain) << to_utf8(page);
    ASSERT_EQ(answers(*document), plain) << "asked again: " << to_utf8(page);
  }
}

TEST(LineMemoTest, AChangeOfTheTreeIsHeardOf) {
  const dom::Ref<dom::Document> document = dom::parse_document(u"<p> <!-- c --> <!-- c --> </p>");
  const LineMemo memo;
  Node* paragraph = document->body()->first_child();
  EXPECT_TRUE(is_collapsed_whitespace_node(*paragraph->first_child()));
  dom::insert(*paragraph, document->create_text(u"a"), paragraph->first_child());
  dom::insert(*paragraph, document->create_text(u"z"));
  EXPECT_FALSE(is_collapsed_whitespace_node(*paragraph->first_child()->next_sibling()));
}

TEST(LineMemoTest, ARunIsWalkedOnce) {
  const auto steps = [](int count) {
    std::u16string page = u"<p>x</p>";
    for (int i = 0; i < count; ++i) page += u"\n<!-- c -->";
    const dom::Ref<dom::Document> document = dom::parse_document(page);
    const LineMemo memo;
    const std::uint64_t before = work_done;
    answers(*document);
    return work_done - before;
  };
  EXPECT_LT(steps(3'000), 15 * steps(300));
}

}  // namespace
}  // namespace tvx::editing
