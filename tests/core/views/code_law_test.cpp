#include <iostream>

#include "core/control_fixture.h"
#include "dom/generated_html.h"
#include "dom/parse_vectors.h"
#include "support/documentation_files.h"
#include "support/random_edits.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"

/// What is edited in the code view is in the document after it has been left, and nothing else is; undo goes
/// back over it in one step.
namespace tvx::core {
namespace {

std::u16string body_of_page(std::u16string_view page) {
  const auto tree = dom::parse_document(page);
  return tree->body() ? dom::inner_html(*tree->body()) : std::u16string();
}

/// What a body holds that is given this markup, in a page without a document type as the editor starts with.
std::u16string parsed(std::u16string_view markup) {
  const auto tree = dom::parse_document(u"<body>");
  dom::set_inner_html(*tree->body(), markup);
  return dom::inner_html(*tree->body());
}

class CodeLaw : public Control {
 protected:
  std::string tree() const { return to_utf8(dom::print_tree(control->DOM()->tree())); }
  std::size_t depth() const { return control->DOM()->tree().journal().depth(); }

  void try_edits(const std::u16string& given, std::uint64_t seed, const std::string& name) {
    control->set_DocumentHTML(given);
    const std::u16string markup = body();
    const std::string before = tree();
    const std::size_t steps = depth();
    control->show_Code();
    const std::u16string code = control->txtCode().Text();
    test::RandomEdits edits(markup, code, seed);
    const std::size_t made = edits.make(1 + seed % 20);
    if (made > 0) control->txtCode().edit(edits.code());
    control->show_Code();
    ASSERT_FALSE(control->InCodeView()) << name;
    if (made == 0 || edits.code() == code) {
      ASSERT_EQ(depth(), steps) << name;
      ASSERT_TRUE(tree() == before) << name;
      return;
    }
    ++documents_;
    edits_ += made;
    const std::u16string expected = parsed(edits.markup());
    ASSERT_TRUE(control->DocumentHTML() == expected) << name << ", seed " << seed << "\n--- markup\n"
                                                     << to_utf8(markup).substr(0, 600) << "\n--- expected\n"
                                                     << to_utf8(expected).substr(0, 600) << "\n--- got\n"
                                                     << to_utf8(control->DocumentHTML()).substr(0, 600);
    ASSERT_EQ(depth(), steps + 1) << name << ": one step";
    const std::string after = tree();
    control->undo_document();
    ASSERT_TRUE(tree() == before) << name << ", seed " << seed << ": undo";
    ASSERT_EQ(control->DocumentHTML(), markup) << name;
    control->redo_document();
    ASSERT_TRUE(tree() == after) << name << ", seed " << seed << ": redo";
    // The code then is that of the document as it is now.
    control->show_Code();
    control->show_Code();
    ASSERT_TRUE(tree() == after) << name << ", seed " << seed << ": looked at again";
  }
  void report() const { std::cout << "documents: " << documents_ << ", edits: " << edits_ << "\n"; }

  std::size_t documents_ = 0, edits_ = 0;
};

TEST_F(CodeLaw, HoldsOnThePublicCases) {
  const auto cases = dom::read_parse_cases();
  if (cases.empty()) GTEST_SKIP() << "the public cases aren't here";
  start();
  std::uint64_t seed = 0;
  for (const dom::ParseCase& test : cases) {
    ASSERT_NO_FATAL_FAILURE(
        try_edits(body_of_page(test.data), ++seed, test.file + ":" + std::to_string(test.line)));
  }
  report();
}

TEST_F(CodeLaw, HoldsOnRealFiles) {
  const auto files = test::files_of_packages(300);
  if (files.empty()) GTEST_SKIP() << "no HTML files in /usr/share/doc";
  start();
  std::uint64_t seed = 0;
  for (const auto& path : files) {
    const std::u16string markup = body_of_page(from_utf8(bytes_of(path)));
    if (markup.size() > 100'000 * test::law_factor()) continue;
    ASSERT_NO_FATAL_FAILURE(try_edits(markup, ++seed, path.string()));
  }
  report();
}

TEST_F(CodeLaw, HoldsOnRandomDocuments) {
  start();
  for (std::uint64_t seed = 1; seed <= 5'000 * test::law_factor(); ++seed)
    ASSERT_NO_FATAL_FAILURE(
        try_edits(body_of_page(dom::test::generated_html(seed, 10 + seed % 60)), seed, "random"));
  report();
}

}  // namespace
}  // namespace tvx::core
