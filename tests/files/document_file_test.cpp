#include "tvx/files/document_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <sstream>

#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"
#include "tvx/dom/tree.h"

namespace tvx::files {
namespace {

namespace fs = std::filesystem;

/// The tree that a reader of those bytes sees.
dom::Ref<dom::Document> read(const std::string& bytes) {
  return dom::parse_document(browser::decode_page(bytes).text);
}
std::string printed(const dom::Document& tree) { return to_utf8(dom::print_tree(tree)); }

class Files : public testing::Test {
 protected:
  Files() {
    std::string name = (fs::temp_directory_path() / "htmled-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~Files() override { fs::remove_all(folder_); }

  std::u16string path(const std::string& name) const { return from_utf8((folder_ / name).string()); }
  DocumentFile opened(const std::string& bytes) const {
    std::ofstream(folder_ / "page.html", std::ios::binary) << bytes;
    return DocumentFile::open(path("page.html"));
  }
  std::string on_disk(const std::string& name = "page.html") const {
    return read_bytes(path(name)).value_or("");
  }

  /// Saves with the first text of the body changed, and changed back: the file is then written anew and must
  /// still be read as it was.
  void expect_kept_through_edit(const std::string& bytes) {
    DocumentFile file = opened(bytes);
    const dom::Ref<dom::Document> tree = read(bytes);
    const std::string before = printed(*tree);
    ASSERT_EQ(file.bytes_of(*tree), bytes) << "not edited";
    dom::Text* text = nullptr;
    dom::Node* from = tree->body();
    if (!from) from = tree.get();
    for (dom::Node* node = from; node && !text; node = dom::next_in_order(*node))
      if (node->is_text() && !trimmed(static_cast<dom::Text*>(node)->data()).empty())
        text = static_cast<dom::Text*>(node);
    if (!text) {
      dom::set_attribute(*tree->document_element(), dom::Name(u"edited"), u"yes");
    } else {
      dom::replace_data(*text, 0, 0, u"new ");
    }
    const std::string edited = printed(*tree);
    ASSERT_NE(edited, before);
    file.save(*tree, path("page.html"));
    const std::string saved = on_disk();
    ASSERT_EQ(printed(*read(saved)), edited) << saved.substr(0, 2000);
    ASSERT_EQ(browser::decode_page(saved).encoding.name, browser::decode_page(bytes).encoding.name);
    ASSERT_EQ(browser::decode_page(saved).encoding.byte_order_mark,
              browser::decode_page(bytes).encoding.byte_order_mark);
    // What was saved is the file's new state.
    DocumentFile again = DocumentFile::open(path("page.html"));
    ASSERT_EQ(again.bytes_of(*read(saved)), saved);
    if (!text) return;
    dom::replace_data(*text, 0, 4, u"");
    again.save(*tree, path("page.html"));
    ASSERT_EQ(printed(*read(on_disk())), before);
  }

  fs::path folder_;
};

constexpr const char* pages[] = {
    "",
    "<p>a",
    "just text",
    "<!DOCTYPE html><p>a",
    "<!DOCTYPE html>\n<html>\n<head>\n<title>T</title>\n</head>\n<body>\n<p>a</p>\n</body>\n</html>\n",
    "<!doctype HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\" "
    "\"http://www.w3.org/TR/html4/loose.dtd\">\n<p>a",
    "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 3.2 Final//EN\"><table><p>quirks",
    "<!-- before -->\n<!DOCTYPE html>\n<!-- between -->\n<html lang=en>\n <!-- in -->\n "
    "<head>\n</head><body>a</body>\n"
    "<!-- behind body -->\n</html>\n<!-- behind all -->\n",
    "<?xml version=\"1.0\"?>\n<!DOCTYPE html>\n<p>a",
    "<!--><p>a --><p>b",
    "<!---><p>a",
    "<!-- a --!> <p>b</p> -->",
    "<!DOCTYPE html SYSTEM \"a>b\"><p>c",
    "<html>\n<!-- <head> -->\n<body>a",
    "<html\n>\n\n<head\n>\n<base "
    "href=\"http://example.org/a&amp;b\">\n</head>\n\n<body>\n\n<p>a\n\n</body>\n\n</html>\n\n\n",
    "<html title='a><head>'><head></head><body>x</body></html> ",
    "<HTML><HEAD></HEAD>\n<BODY>\n<PRE>\n\nfirst line is empty</PRE>\n</BODY></HTML>\n",
    "<body><pre>\n\nx</pre><textarea>\n\n y</textarea>",
    "<p>a\r\n<p>b\r\n<pre>\r\n\r\nc</pre>\r\n",
    "<p title=\"a&#13;b\">c&#13;d\n",
    "<p>a\r<p>b\r",
    "\xEF\xBB\xBF<!DOCTYPE html>\r\n<p>\xC3\xA9",
    "<meta charset=windows-1252><p>\xE9\x80",
    "<p>\xE9 without a declaration",
    "<p>\xC3\xA9 without a declaration",
    "<meta http-equiv=Content-Type content='text/html; charset=shift_jis'><p>\x93\xFA\x96\x7B",
    "<meta charset=iso-8859-2><title>\xB1</title><p>\xE6",
    "<style>p > a { content: '<' }</style><script>if (a < b && c > d) e('<!--')</script><p>x",
    "<svg viewBox='0 0 1 "
    "1'><foreignObject><p>a</p></foreignObject><style>a</style></svg><math><mi>x</mi></math>",
    "<p>a&nbsp;b &lt; &amp;amp; c<td>d",
    "<p><template><tr><td>a</template><p>b",
    "<frameset><frame src=a></frameset>",
    "</body></html>",
    "<body>a</body></html> x </body></html>\n",
    "<title>  spaced \n out </title><p>a",
    "<title></title><base><p>a",
};

TEST_F(Files, APageIsReadAsBeforeAfterAnEdit) {
  for (const char* page : pages) {
    SCOPED_TRACE(page);
    expect_kept_through_edit(page);
  }
}

TEST_F(Files, Utf16IsKept) {
  for (const bool big_endian : {false, true}) {
    std::string bytes(big_endian ? "\xFE\xFF" : "\xFF\xFE");
    for (const char16_t c : std::u16string_view(u"<p>\u20AC\r\n<b>\U0001F600</b>")) {
      const char high = char(c >> 8), low = char(c & 0xFF);
      bytes += big_endian ? high : low;
      bytes += big_endian ? low : high;
    }
    expect_kept_through_edit(bytes);
  }
}

/// Pages put together by chance from what pages are made of.
TEST_F(Files, RandomPagesAreReadAsBefore) {
  constexpr const char* parts[] = {"<!DOCTYPE html>",
                                   "<!-- c -->",
                                   "<html>",
                                   "<html lang=en>",
                                   "<head>",
                                   "</head>",
                                   "<title>T</title>",
                                   "<body>",
                                   "<p>",
                                   "</p>",
                                   "text",
                                   "\n",
                                   "\n\n",
                                   " ",
                                   "<b>",
                                   "</b>",
                                   "</body>",
                                   "</html>",
                                   "<pre>\n",
                                   "</pre>",
                                   "&nbsp;",
                                   "<table>",
                                   "<td>",
                                   "<!-->",
                                   "<?pi?>",
                                   "<style>",
                                   "</style>",
                                   "<base href=x>",
                                   "\r\n",
                                   "\xC3\xA9"};
  for (unsigned seed = 1; seed <= 1500; ++seed) {
    std::mt19937 random(seed);
    std::string page;
    for (unsigned i = random() % 14; i > 0; --i) page += parts[random() % std::size(parts)];
    const auto tree = read(page);
    // Some trees have no text of their own (a table's foster-parented neighbours, a formatting element in
    // itself): what serialising alone doesn't bring back is no matter of files.
    if (printed(*dom::parse_document(dom::serialise_node(*tree))) != printed(*tree)) continue;
    SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << page);
    DocumentFile file = opened(page);
    ASSERT_EQ(file.bytes_of(*tree), page);
    dom::set_attribute(*tree->document_element(), dom::Name(u"edited"), u"yes");
    ASSERT_EQ(printed(*read(file.bytes_of(*tree))), printed(*tree)) << file.bytes_of(*tree);
  }
}

TEST_F(Files, ALongManualIsKept) {
  const auto bytes = read_bytes(u"/usr/share/doc/ccache/manual.html");
  if (!bytes) GTEST_SKIP() << "the package ccache with its manual is not installed here";
  expect_kept_through_edit(*bytes);
}

TEST_F(Files, SamplesAreKept) {
  int count = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(TVX_SOURCE_DIR) / "samples")) {
    if (entry.path().extension() != ".html") continue;
    SCOPED_TRACE(entry.path());
    expect_kept_through_edit(read_bytes(from_utf8(entry.path().string())).value());
    ++count;
  }
  EXPECT_GT(count, 0);
}

TEST_F(Files, AnEditChangesNothingElseInATidyFile) {
  const std::string page =
      "<!-- mine -->\r\n<!doctype html>\r\n<html lang=\"en\">\r\n<head>\r\n<meta charset=\"utf-8\">\r\n"
      "<title>T</title>\r\n</head>\r\n<body>\r\n<p class=\"x\">one</p>\r\n<hr>\r\n</body>\r\n</html>\r\n";
  DocumentFile file = opened(page);
  const auto tree = read(page);
  dom::Node* text = tree->body()->first_child()->next_sibling()->first_child();
  dom::replace_data(static_cast<dom::Text&>(*text), 0, 3, u"two");
  std::string expected = page;
  expected.replace(expected.find("one"), 3, "two");
  EXPECT_EQ(file.bytes_of(*tree), expected);
}

/// How many lines of `before` are in `after` no more.
std::ptrdiff_t lines_lost(const std::string& before, const std::string& after) {
  const auto lines = [](const std::string& text) {
    std::multiset<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) result.insert(line);
    return result;
  };
  std::vector<std::string> lost;
  std::ranges::set_difference(lines(before), lines(after), std::back_inserter(lost));
  return std::ssize(lost);
}

TEST_F(Files, APageOfXmlStaysOne) {
  const std::string head =
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 "
      "Strict//EN\" "
      "\"http://www.w3.org/TR/xhtml1/DTD/xhtml1-strict.dtd\">\n<html "
      "xmlns=\"http://www.w3.org/1999/xhtml\">\n<head><title>T</title><meta charset=\"utf-8\"/>"
      "<script>a(\"<br>&nbsp;\")</script></head>\n<body>\n<p>One<br />two<br/>&nbsp;</p>\n";
  const std::string tail = "</body>\n</html>\n";
  expect_kept_through_edit(head + tail);
  DocumentFile file = opened(head + tail);
  const dom::Ref<dom::Document> tree = read(head + tail);
  dom::Element& body = *tree->body();
  std::u16string html = dom::inner_html(body);
  html.insert(html.rfind(u"</P>") + 4, u"\n<p>a&nbsp;b<br>c<img src=\"x.png\"></p><hr>");
  dom::set_inner_html(body, html);
  const std::string saved = file.bytes_of(*tree);
  EXPECT_EQ(saved, head + "<p>a&#160;b<br />c<img src=\"x.png\" /></p><hr />\n" + tail);
  EXPECT_EQ(printed(*read(saved)), printed(*tree));
}

// They are code of the server, which a comment would be no more.
TEST_F(Files, ProcessingInstructionsStaySoWhereTheyAreMoved) {
  const std::string page =
      "<html><head><title><?php echo $t ?></title></head><body class='x'>\n<h1><?php echo $title; ?> "
      "one</h1>\n"
      "<?php foreach ($rows as $row): ?>\n<p><?= $row ?> two</p>\n<?php endforeach; ?>\n<!-- kept -->\n"
      "</body></html>\n";
  DocumentFile file = opened(page);
  const auto tree = read(page);
  dom::Element& body = *tree->body();
  const dom::Ref<dom::Node> heading(body.first_child()->next_sibling());
  ASSERT_TRUE(heading->is(dom::Tag::H1));
  dom::insert(body, heading);
  EXPECT_EQ(file.bytes_of(*tree),
            "<html><head><title><?php echo $t ?></title></head><body class='x'>\n\n"
            "<?php foreach ($rows as $row): ?>\n<p><?= $row ?> two</p>\n<?php endforeach; ?>\n<!-- kept -->\n"
            "\n<h1><?php echo $title; ?> one</h1></body></html>");
}

TEST_F(Files, LinesThatArentEditedStayAsTheyAreWritten) {
  const std::string page =
      "<!DOCTYPE html>\n<HTML lang=en>\n<head><title>T</title>\n<body bgcolor='white'>\n<p>don&#8217;t\n"
      "<p class=x>one\n<table\n  border=1>\n<tr><td>a<td>b\n</table>\n<p>two\n<BR />three &copy; 2001\n";
  DocumentFile file = opened(page);
  const auto tree = read(page);
  for (dom::Node* node = tree.get(); node; node = dom::next_in_order(*node))
    if (node->is_text() && contains(static_cast<dom::Text*>(node)->data(), u"one"))
      dom::replace_data(*static_cast<dom::Text*>(node), 0, 3, u"uno");
  const std::string saved = file.bytes_of(*tree);
  EXPECT_EQ(printed(*read(saved)), printed(*tree));
  EXPECT_EQ(lines_lost(page, saved), 1) << saved;
}

TEST_F(Files, WhatWasTakenOutAndSavedComesBackAsItWasWritten) {
  const std::string
      before = "<!DOCTYPE html>\n<html><body>\n<p>one\n<TABLE border=1><tr><td>a<td>b</TABLE>\n<P class=x>",
      bytes = before + "t&eacute;xt\n</body></html>\n";
  DocumentFile file = opened(bytes);
  const dom::Ref<dom::Document> tree = read(bytes);
  const dom::Ref<dom::Node> table(dom::next_element_sibling(*dom::first_child_element(*tree->body())));
  const dom::Ref<dom::Node> after(table->next_sibling());
  dom::remove(*table);
  file.save(*tree, path("page.html"));
  ASSERT_EQ(on_disk().find("TABLE"), std::string::npos);
  dom::insert(*tree->body(), table, after.get());
  file.save(*tree, path("page.html"));
  EXPECT_EQ(on_disk(), bytes);
  dom::Node* last = dom::next_element_sibling(*table);
  dom::replace_data(static_cast<dom::Text&>(*last->first_child()), 0, 0, u"my ");
  file.save(*tree, path("page.html"));
  EXPECT_EQ(on_disk(), before + "my t&eacute;xt\n</body></html>\n");
}

TEST_F(Files, EachLineKeepsItsEndWhereTheyAreMixed) {
  DocumentFile file = opened("<p>one\r\n<p>two\n<p>three\r<p>four\r\n<!-- x\ry -->\n<p>five\n\r\n");
  const dom::Ref<dom::Document> tree = read(on_disk());
  ASSERT_EQ(file.bytes_of(*tree), on_disk());
  const auto paragraph = [&](int number) {
    dom::Node* node = tree->body()->first_child();
    for (int i = 1; i < number; ++i) node = dom::next_element_sibling(*node);
    return static_cast<dom::Text*>(node->first_child());
  };
  dom::replace_data(*paragraph(2), 3, 0, u" new");
  EXPECT_EQ(file.bytes_of(*tree), "<p>one\r\n<p>two new\n<p>three\r<p>four\r\n<!-- x\ry -->\n<p>five\n\r\n");
  // A line that comes new ends like the one before it, and what is saved so is saved so again.
  dom::replace_data(*paragraph(3), 5, 0, u"\nand");
  file.save(*tree, path("page.html"));
  const std::string saved = "<p>one\r\n<p>two new\n<p>three\rand\r<p>four\r\n<!-- x\ry -->\n<p>five\n\r\n";
  EXPECT_EQ(on_disk(), saved);
  dom::replace_data(*paragraph(2), 3, 4, u"");
  dom::replace_data(*paragraph(3), 5, 4, u"");
  EXPECT_EQ(file.bytes_of(*tree), "<p>one\r\n<p>two\n<p>three\r<p>four\r\n<!-- x\ry -->\n<p>five\n\r\n");
}

TEST_F(Files, AFileWhoseMixedEndsBecomeOfOneKindStaysOfThat) {
  DocumentFile file = opened("<p>a\r\n<p>b\r\n<p>c\n<p>d");
  const dom::Ref<dom::Document> tree = read(on_disk());
  dom::Node* const first = tree->body()->first_child();
  dom::Node* const second = first->next_sibling();
  dom::remove(*second);
  dom::remove(*first);
  file.save(*tree, path("page.html"));
  ASSERT_EQ(on_disk(), "<p>c\n<p>d");
  dom::set_attribute(*static_cast<dom::Element*>(tree->body()->first_child()), dom::names::id, u"x");
  EXPECT_EQ(file.bytes_of(*tree), "<p id=\"x\">c\n<p>d");
}

TEST_F(Files, TheEndOfThePageIsWrittenOnceWhereTheLastParagraphIsntClosed) {
  const std::string page = "<!doctype html>\n<html>\n<body>\n<p>one</p>\n<p>last\n</body></html>\n";
  DocumentFile file = opened(page);
  const auto tree = read(page);
  const dom::Ref<dom::Element> typed = tree->create_element(dom::Tag::P);
  dom::set_inner_html(*typed, u"typed");
  dom::insert(*tree->body(), typed);
  const std::string saved = file.bytes_of(*tree);
  EXPECT_EQ(printed(*read(saved)), printed(*tree));
  EXPECT_EQ(saved.find("</body>"), saved.rfind("</body>")) << saved;
  EXPECT_EQ(lines_lost(page, saved), 1) << saved;
}

TEST_F(Files, AnEditInALongManualChangesOneLine) {
  const auto bytes = read_bytes(u"/usr/share/doc/ccache/manual.html");
  if (!bytes) GTEST_SKIP() << "the package ccache with its manual is not installed here";
  DocumentFile file = opened(*bytes);
  const auto tree = read(*bytes);
  dom::Text* last = nullptr;
  for (dom::Node* node = tree->body(); node; node = dom::next_in_order(*node))
    if (node->is_text() && node->parent()->is(dom::Tag::P)) last = static_cast<dom::Text*>(node);
  ASSERT_NE(last, nullptr);
  dom::replace_data(*last, 0, 0, u"new ");
  EXPECT_EQ(lines_lost(*bytes, file.bytes_of(*tree)), 1);
}

TEST_F(Files, CharactersThatDontFitBecomeReferences) {
  const std::string page = "<meta charset=windows-1252><style>a { }</style><script>b</script><p>\xE9</p>";
  DocumentFile file = opened(page);
  const auto tree = read(page);
  const auto append = [&](dom::Tag tag, std::u16string_view text) {
    for (dom::Node* node = tree.get(); node; node = dom::next_in_order(*node))
      if (node->is(tag)) return dom::insert(*node, tree->create_text(std::u16string(text)));
  };
  append(dom::Tag::P, u"\u2713\U0001F600\u20AC");
  append(dom::Tag::Style, u"\u2713");
  append(dom::Tag::Script, u"'\U0001F600'");
  const std::string saved = file.bytes_of(*tree);
  EXPECT_NE(saved.find("<p>\xE9&#10003;&#128512;\x80</p>"), saved.npos) << saved;
  EXPECT_NE(saved.find("a { }\\2713 </style>"), saved.npos) << saved;
  EXPECT_NE(saved.find("b'\\ud83d\\ude00'</script>"), saved.npos) << saved;
}

TEST_F(Files, AnUndeclaredFileStaysReadableForEverybody) {
  DocumentFile ascii = opened("<p>a");
  auto tree = read("<p>a");
  dom::insert(*tree->body(), tree->create_text(u"\u00E9\u20AC"));
  EXPECT_EQ(ascii.bytes_of(*tree), "<p>a</p>&#233;&#8364;");
  // One more byte makes this file UTF-8 to whoever guesses.
  DocumentFile guessed = opened("<p>\xC3 \xA9");
  tree = read("<p>\xC3 \xA9");
  dom::Node* text = tree->body()->first_child()->first_child();
  dom::replace_data(static_cast<dom::Text&>(*text), 1, 1, u"");
  EXPECT_EQ(printed(*read(guessed.bytes_of(*tree))), printed(*tree));
}

TEST_F(Files, BytesThatMeanNothingAreTold) {
  EXPECT_FALSE(opened("<meta charset=utf-8><p>\xFF").faithful());
  EXPECT_TRUE(opened("<meta charset=utf-8><p>\xEF\xBF\xBD").faithful());
  EXPECT_TRUE(opened("<meta charset=windows-1252><p>\x81").faithful());
  // Until it is edited, such a file is kept as well.
  const std::string page = "<meta charset=utf-8><p>\xFF";
  EXPECT_EQ(opened(page).bytes_of(*read(page)), page);
}

// A control writes its own title and base into what it opens.
TEST_F(Files, TitleAndBaseComeBackAsWritten) {
  const std::string page = "<title> A\n  title </title><base href='sub/ dir/'><p>a";
  const DocumentFile file = opened(page);
  EXPECT_EQ(file.title(), u"A title");
  EXPECT_EQ(file.base_url(), u"sub/ dir/");
  const auto tree = read(page);
  const auto find = [&](dom::Tag tag) -> dom::Element* {
    for (dom::Node* node = tree.get(); node; node = dom::next_in_order(*node))
      if (node->is(tag)) return static_cast<dom::Element*>(node);
    return nullptr;
  };
  dom::replace_children(*find(dom::Tag::Title), tree->create_text(u"A title"));
  dom::set_attribute(*find(dom::Tag::Base), dom::names::href, u"sub/%20dir/");
  file.keep_head(*tree);
  EXPECT_EQ(file.bytes_of(*tree), page);
}

TEST_F(Files, NoTitleAndNoBaseStayAway) {
  const std::string page = "<meta charset=utf-8><p>a";
  const DocumentFile file = opened(page);
  EXPECT_EQ(file.title(), u"");
  EXPECT_EQ(file.base_url(), u"");
  const auto tree = read(page);
  dom::insert(*tree->head(), tree->create_element(dom::Tag::Title));
  file.keep_head(*tree);
  EXPECT_EQ(file.bytes_of(*tree), page);
}

TEST_F(Files, SavingKeepsModeAndLink) {
  DocumentFile file = opened("<p>a");
  chmod((folder_ / "page.html").c_str(), 0640);
  fs::create_symlink("page.html", folder_ / "link.html");
  const auto tree = read("<p>b");
  file.save(*tree, path("link.html"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.html"));
  EXPECT_EQ(fs::status(folder_ / "page.html").permissions(), fs::perms(0640));
  EXPECT_EQ(printed(*read(on_disk())), printed(*tree));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 2);
}

TEST_F(Files, AFailedSaveLeavesTheFile) {
  DocumentFile file = opened("<p>a");
  EXPECT_THROW(file.save(*read("<p>b"), path("no/such/folder.html")), RuntimeError);
  EXPECT_EQ(file.path(), path("page.html"));
  EXPECT_EQ(on_disk(), "<p>a");
  EXPECT_THROW(DocumentFile::open(path("none.html")), RuntimeError);
}

TEST_F(Files, SavingUnderAnotherNameMovesTheDocument) {
  DocumentFile file = opened("<p>a\r\n");
  const auto tree = read("<p>a\r\n");
  file.save(*tree, path("other.html"));
  EXPECT_EQ(file.path(), path("other.html"));
  EXPECT_EQ(on_disk("other.html"), "<p>a\r\n");
}

// What was parsed to know the title is what a load of the file would have made.
TEST_F(Files, APageIsParsedOnceWhenItIsOpened) {
  for (const std::string bytes : pages) {
    DocumentFile file = opened(bytes);
    const auto loaded = browser::make_page(browser::read_local(path("page.html")));
    const dom::Document* tree = nullptr;
    {
      const browser::ParsedPage parsed = file.parsed();
      const auto page = browser::make_page(browser::read_local(path("page.html")));
      tree = &page->tree();
      EXPECT_EQ(printed(*tree), printed(loaded->tree())) << bytes;
      EXPECT_EQ(page->encoding().name, loaded->encoding().name) << bytes;
      EXPECT_EQ(page->encoding().byte_order_mark, loaded->encoding().byte_order_mark) << bytes;
      EXPECT_EQ(browser::ParsedPage::of(bytes), nullptr) << "taken";
    }
    EXPECT_EQ(file.bytes_of(*read(bytes)), bytes) << "the file knows its text without the tree";
  }
}

// A copy of the file doesn't take for the file's own what somebody edits.
TEST_F(Files, ATreeThatWasTakenIsNobodysButTheTakers) {
  DocumentFile file = opened("<p>a");
  const DocumentFile copy = file;
  std::shared_ptr<browser::HTMLDocument> page;
  {
    const browser::ParsedPage parsed = file.parsed();
    page = browser::make_page(browser::read_local(path("page.html")));
  }
  dom::clear(*page->tree().body());
  EXPECT_NE(copy.page_text().find(u"<p>a"), std::u16string::npos);
  EXPECT_NE(file.page_text().find(u"<p>a"), std::u16string::npos);
}

TEST_F(Files, ChangesOfOthersAreSeen) {
  DocumentFile file = opened("<p>a");
  EXPECT_FALSE(file.changed_on_disk());
  std::ofstream(folder_ / "page.html") << "<p>theirs";
  EXPECT_TRUE(file.changed_on_disk());
  file.save(*read("<p>mine"), path("page.html"));
  EXPECT_FALSE(file.changed_on_disk());
}

TEST_F(Files, ANewPageIsAWholeOne) {
  DocumentFile file = DocumentFile::untitled(path("draft.html"));
  EXPECT_EQ(file.path(), u"");
  EXPECT_EQ(file.source(), path("draft.html"));
  const auto tree = read(on_disk("draft.html"));
  EXPECT_EQ(tree->compatibility_mode(), dom::CompatibilityMode::NoQuirks);
  dom::Node* paragraph = dom::first_child_element(*tree->body());
  ASSERT_TRUE(paragraph && paragraph->is(dom::Tag::P));
  dom::insert(*paragraph, tree->create_text(u"\u00E9"));
  file.save(*tree, path("mine.html"));
  EXPECT_EQ(printed(*read(on_disk("mine.html"))), printed(*tree));
  EXPECT_NE(on_disk("mine.html").find("\xC3\xA9"), std::string::npos);
}

// Nobody has laid out its source yet: a line for each paragraph. A page that was read from a file is left as
// it is.
TEST_F(Files, AFreshPageIsSavedWithALineForEachBlock) {
  DocumentFile file = DocumentFile::untitled(path("draft.html"));
  const auto tree = read(on_disk("draft.html"));
  dom::Element* const body = tree->body();
  dom::set_inner_html(*body, u"\n<p>a</p><ul><li>b</li><li>c</li></ul><p>d</p>\n");
  file.save(*tree, path("mine.html"));
  const std::string saved = on_disk("mine.html");
  EXPECT_NE(saved.find("<p>a</p>\n<ul>\n<li>b</li>\n<li>c</li>\n</ul>\n<p>d</p>\n"), std::string::npos)
      << saved;
  EXPECT_EQ(file.bytes_of(*tree), saved);
  const DocumentFile again = DocumentFile::open(path("mine.html"));
  const auto opened = read(saved);
  dom::set_inner_html(*opened->body(), u"<p>a</p><p>b</p>");
  EXPECT_NE(again.bytes_of(*opened).find("<p>a</p><p>b</p>"), std::string::npos);
}

/// The file after the first text of the body that says `find` has become `now`.
std::string saved_after(const DocumentFile& file, const std::string& bytes, std::u16string_view find,
                        std::u16string_view now) {
  const dom::Ref<dom::Document> tree = read(bytes);
  for (dom::Node* node = tree->body(); node; node = dom::next_in_order(*node)) {
    if (!node->is_text()) continue;
    auto& text = static_cast<dom::Text&>(*node);
    const std::size_t at = text.data().find(find);
    if (at == std::u16string::npos) continue;
    dom::replace_data(text, at, find.size(), now);
    break;
  }
  return file.bytes_of(*tree);
}

TEST_F(Files, AFragmentStaysOne) {
  for (const std::string bytes : {"<p>one\n<p>two", "just one\n", "<UL>\n<LI>one\n<LI>two\n</UL>\n",
                                  "<title>t</title>\n<p class=a>one"}) {
    std::string expected = bytes;
    expected.insert(expected.find("one"), "x");
    EXPECT_EQ(saved_after(opened(bytes), bytes, u"one", u"xone"), expected);
  }
}

TEST_F(Files, ALastParagraphThatIsNotClosedStaysSo) {
  const std::string bytes = "<HTML>\n<BODY>\n<P>one\n<P ALIGN=left>last\n</BODY>\n</HTML>\n";
  EXPECT_EQ(saved_after(opened(bytes), bytes, u"last", u"last x"),
            "<HTML>\n<BODY>\n<P>one\n<P ALIGN=left>last x\n</BODY>\n</HTML>\n");
  EXPECT_EQ(saved_after(opened(bytes), bytes, u"one", u"x"),
            "<HTML>\n<BODY>\n<P>x\n<P ALIGN=left>last\n</BODY>\n</HTML>\n");
}

TEST_F(Files, APictureIsNoText) {
  using namespace std::string_literals;
  const std::string png = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x01\0\0\0\x01\x08\x02\0\0\0\x90wS\xde"s;
  EXPECT_FALSE(opened(png).is_text());
  EXPECT_FALSE(opened("GIF89a\x01\0\x01\0\x80\0\0"s).is_text());
  EXPECT_FALSE(opened("%PDF-1.4\n1 0 obj\n").is_text());
  EXPECT_FALSE(opened("PK\x03\x04\x14\0\x06\0\x08\0"s + std::string(400, '\0')).is_text());
}

TEST_F(Files, APageIsTextWhateverIsInIt) {
  using namespace std::string_literals;
  for (const std::string& bytes :
       {""s, "text"s, "<p>a\0b</p>"s, "\xFE\xFF\0<\0p\0>"s, "\x01\x02\x03"s, "caf\xe9 \x81\x8d\x9d"s,
        "some words "s + '\0' + std::string(1000, 'x'), "<svg xmlns='http://www.w3.org/2000/svg'/>"s})
    EXPECT_TRUE(opened(bytes).is_text()) << bytes;
}

}  // namespace
}  // namespace tvx::files
