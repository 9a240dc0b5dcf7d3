#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <sstream>

#include "dom/generated_html.h"
#include "dom/parse_vectors.h"
#include "support/documentation_files.h"
#include "support/random_edits.h"
#include "tvx/base/text.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"
#include "tvx/source/source_text.h"

/// What the user edits in a code is what changes in the markup, and nothing else.
namespace tvx::source {
namespace {

std::u16string body_of(std::u16string_view page) {
  const auto tree = dom::parse_document(page);
  return tree->body() ? dom::inner_html(*tree->body()) : std::u16string();
}

/// A carriage return of the document leaves the code view as a reference, without which it would be none.
std::u16string with_references(std::u16string_view markup) {
  return ReplaceAll(u"\r", u"&#13;", markup, true);
}

class SourceLaw : public testing::Test {
 protected:
  void try_edits(const std::u16string& markup, std::uint64_t seed, const std::string& name) {
    const SourceText text = SourceText::formatted(std::make_shared<const std::u16string>(markup));
    ASSERT_EQ(with_references(text.markup_after(*text.code())), with_references(markup)) << name;
    test::RandomEdits edits(markup, *text.code(), seed);
    ASSERT_TRUE(edits.shows_all_letters()) << name;
    const std::size_t made = edits.make(1 + seed % 20);
    if (made == 0) return;
    ++documents_;
    edits_ += made;
    const std::u16string expected = with_references(edits.markup()),
                         now = with_references(text.markup_after(edits.code()));
    if (now == expected) return;
    ++others_;
    const auto [a, b] = std::ranges::mismatch(expected, now);
    const auto at = std::max<std::ptrdiff_t>(a - expected.begin() - 60, 0);
    const auto around = [&](const std::u16string& t) {
      return to_utf8(std::u16string_view(t).substr(std::size_t(at), 140));
    };
    if (others_ < 6)
      ADD_FAILURE() << name << ", seed " << seed << "\n--- expected\n"
                    << around(expected) << "\n--- got\n"
                    << around(now)
                    << (markup.size() < 700
                            ? "\n--- markup\n" + to_utf8(markup) + "\n--- code\n" + to_utf8(*text.code()) +
                                  "\n--- left\n" + to_utf8(edits.code()) + "\n--- all\n" + to_utf8(now)
                            : "");
  }
  void report() {
    std::cout << "documents: " << documents_ << ", edits: " << edits_ << ", other than expected: " << others_
              << "\n";
    EXPECT_GT(edits_, 0u);
    EXPECT_EQ(others_, 0u);
  }

  std::size_t documents_ = 0, edits_ = 0, others_ = 0;
};

TEST_F(SourceLaw, HoldsOnThePublicCases) {
  const auto cases = dom::read_parse_cases();
  if (cases.empty()) GTEST_SKIP() << "the public cases aren't here";
  std::uint64_t seed = 0;
  for (const dom::ParseCase& test : cases)
    try_edits(body_of(test.data), ++seed, test.file + ":" + std::to_string(test.line));
  report();
}

TEST_F(SourceLaw, HoldsOnRealFiles) {
  const auto files = test::files_of_packages(300);
  if (files.empty()) GTEST_SKIP() << "no HTML files in /usr/share/doc";
  std::uint64_t seed = 0;
  for (const auto& path : files) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    const std::u16string markup = body_of(from_utf8(bytes.str()));
    if (markup.size() > 200'000 * test::law_factor()) continue;
    for (std::size_t i = 0; i < test::law_factor(); ++i) try_edits(markup, ++seed, path.string());
  }
  report();
}

TEST_F(SourceLaw, HoldsOnRandomDocuments) {
  for (std::uint64_t seed = 1; seed <= 10'000 * test::law_factor(); ++seed)
    try_edits(body_of(dom::test::generated_html(seed, 10 + seed % 60)), seed, "random");
  report();
}

}  // namespace
}  // namespace tvx::source
