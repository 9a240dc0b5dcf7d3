#include "tvx/files/page_replacement.h"

#include <gtest/gtest.h>

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

namespace tvx::files {
namespace {

std::u16string text_of(const dom::Document& document) {
  return dom::serialise_node(document, dom::Letters::Small);
}

TEST(PageReplacement, IsOneStepOfUndo) {
  const std::u16string before =
      u"<!DOCTYPE html><html lang=\"en\" class=\"x\"><head><title>a</title></head><body bgcolor=\"red\">"
      u"<p>one</p></body></html>";
  const std::u16string after =
      u"<!DOCTYPE html><html lang=\"de\" dir=\"ltr\"><head><title>b</title><base href=\"/x\"></head>"
      u"<body text=\"blue\"><p>two</p></body></html>";
  const auto document = dom::parse_document(before);
  replace_page(*document, after);
  EXPECT_EQ(text_of(*document), after);
  EXPECT_EQ(document->journal().depth(), 1u);
  ASSERT_TRUE(document->journal().undo());
  EXPECT_EQ(text_of(*document), before);
}

TEST(PageReplacement, NeedsARoot) {
  const auto document = dom::parse_document(u"<p>one</p>");
  dom::remove(*document->document_element());
  replace_page(*document, u"<p>two</p>");
  EXPECT_EQ(document->document_element(), nullptr);
}

TEST(PageReplacement, LeavesAloneWhatIsTheSame) {
  const auto document = dom::parse_document(u"<title>a</title><p>one</p>");
  const dom::Node* first = document->body()->first_child();
  replace_page(*document, u"<title>b</title><p>one</p>");
  EXPECT_EQ(document->body()->first_child(), first);
  replace_page(*document, text_of(*document));
  EXPECT_EQ(document->journal().depth(), 1u) << "nothing changed, no step";
}

}  // namespace
}  // namespace tvx::files
