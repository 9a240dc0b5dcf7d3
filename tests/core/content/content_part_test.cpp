#include "core/fake_context.h"
#include "tvx/core/content/content.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/tree.h"

/// The content alone, without a control around it.
namespace tvx::core {
namespace {

struct ContentAlone : testing::Test {
  FakeContext context;
  CodePane code{context};
  SelectionHighlight highlight;
  Content content{context, code, highlight};
};

TEST_F(ContentAlone, WhatWasGivenIsInTheDocumentAndComesBack) {
  content.set_DocumentHTML(u"<p>One</p>");
  EXPECT_EQ(context.html(), "<P>One</P>");
  EXPECT_EQ(content.DocumentHTML(), u"<P>One</P>");
  EXPECT_EQ(content.original_html(), u"<p>One</p>");
  EXPECT_FALSE(context.values.IsDirty);
  EXPECT_EQ(context.host.count("BeforeGetDocumentHTML"), 1u);
}

TEST_F(ContentAlone, AtDesignTimeTheTextIsOnlyStored) {
  context.at_run_time = false;
  context.load(u"<p>there</p>");
  content.set_DocumentHTML(u"<p>One</p>");
  EXPECT_EQ(context.html(), "<P>there</P>");
  EXPECT_EQ(content.DocumentHTML(), u"<p>One</p>");
  EXPECT_TRUE(context.host.heard.empty());
}

TEST_F(ContentAlone, TheCodeIsReadWhileItIsInFront) {
  content.set_DocumentHTML(u"<p>One</p>");
  code.set_in_front(true);
  code.box().set_Text(std::u16string_view(u"<p>Two</p>"));
  EXPECT_EQ(content.DocumentHTML(), u"<p>Two</p>");
}

TEST_F(ContentAlone, RevertBringsBackWhatWasGiven) {
  content.set_DocumentHTML(u"<p>One</p>");
  context.load(u"<p>Two</p>");
  context.values.IsDirty = true;
  content.RevertToOriginal();
  EXPECT_EQ(context.html(), "<P>One</P>");
  EXPECT_FALSE(context.values.IsDirty);
}

TEST_F(ContentAlone, TheCurrentElementThatHasGoneWithTheBodyIsForgotten) {
  context.load(u"<p>One</p>");
  highlight.set_element(dom::first_child_element(context.body()));
  content.write_body(u"<p>Two</p>");
  EXPECT_EQ(highlight.element(), nullptr);
}

TEST_F(ContentAlone, CharactersBecomeNumbersByTheProperty) {
  EXPECT_EQ(content.ConvertUnicodeCharacters(u"\u00e4"), u"\u00e4");
  context.values.AlwaysConvertUnicodeCharacters = true;
  EXPECT_EQ(content.ConvertUnicodeCharacters(u"\u00e4"), u"&#228;");
}

}  // namespace
}  // namespace tvx::core
