#include <algorithm>
#include <set>

#include "core/control_fixture.h"
#include "support/documentation_files.h"
#include "tvx/base/text.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"

namespace tvx::core {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> samples() {
  std::vector<fs::path> files;
  for (const auto& file : fs::directory_iterator(TVX_SOURCE_DIR "/samples"))
    if (file.path().extension() == ".html") files.push_back(file.path());
  std::ranges::sort(files);
  return files;
}

class SourceRoundTrip : public Control {
 protected:
  static std::u16string body_of_file(const fs::path& file) {
    const auto page = dom::parse_document(from_utf8(bytes_of(file)));
    return page->body() ? dom::inner_html(*page->body()) : std::u16string();
  }
  std::string tree() const { return to_utf8(dom::print_tree(control->DOM()->tree())); }
  void there_and_back() {
    control->show_Code();
    ASSERT_TRUE(control->InCodeView());
    control->show_Code();
    ASSERT_FALSE(control->InCodeView());
  }
  void expect_unchanged(const std::vector<fs::path>& files) {
    start();
    for (const fs::path& file : files) {
      control->set_DocumentHTML(body_of_file(file));
      const std::string before = tree();
      const std::size_t steps = control->DOM()->tree().journal().depth();
      there_and_back();
      ASSERT_EQ(tree() == before, true) << file;
      ASSERT_EQ(control->DOM()->tree().journal().depth(), steps) << file;
    }
  }
  /// One more letter at the code's end, and back to the design.
  std::u16string code_after_an_edit() {
    control->show_Code();
    const std::u16string code = control->txtCode().Text();
    control->txtCode().edit(code + u"x");
    control->show_Code();
    return code;
  }
  struct Shape {
    std::size_t blank_lines = 0, indents = 0, lines = 0;
  };
  static Shape shape_of(std::u16string_view code) {
    Shape shape;
    for (const std::u16string_view line : split(code, u'\n')) {
      const std::size_t indent = std::min(line.find_first_not_of(u' '), line.size());
      ++shape.lines;
      shape.indents += indent;
      if (trimmed(line).empty()) ++shape.blank_lines;
    }
    return shape;
  }
  void expect_no_growth(const std::vector<fs::path>& files) {
    start();
    for (const fs::path& file : files) {
      control->set_DocumentHTML(body_of_file(file));
      code_after_an_edit();
      const Shape first = shape_of(code_after_an_edit());
      Shape last;
      for (int i = 2; i < 10; ++i) last = shape_of(code_after_an_edit());
      EXPECT_LE(last.blank_lines, first.blank_lines) << file;
      EXPECT_LE(last.indents, first.indents) << file;
      EXPECT_LE(last.lines, first.lines) << file;
    }
  }
};

TEST_F(SourceRoundTrip, TheSamplesStayAsTheyAre) {
  ASSERT_FALSE(samples().empty());
  expect_unchanged(samples());
}

TEST_F(SourceRoundTrip, RealFilesStayAsTheyAre) {
  const auto files = test::files_of_packages(200);
  if (files.empty()) GTEST_SKIP() << "no HTML files in /usr/share/doc";
  expect_unchanged(files);
  RecordProperty("files", int(files.size()));
  std::cout << "files: " << files.size() << "\n";
}

TEST_F(SourceRoundTrip, TenEditsGrowNothingInTheSamples) { expect_no_growth(samples()); }

TEST_F(SourceRoundTrip, TenEditsGrowNothingInRealFiles) {
  const auto files = test::files_of_packages(200);
  if (files.empty()) GTEST_SKIP() << "no HTML files in /usr/share/doc";
  expect_no_growth(files);
  std::cout << "files: " << files.size() << "\n";
}

TEST_F(SourceRoundTrip, TenEditsWithinPreformattedTextIndentNothing) {
  start_with(u"<DIV><DIV><PRE>a\n  b\nc</PRE></DIV></DIV><SCRIPT>x\n  y\nz</SCRIPT>");
  std::u16string shown;
  for (int i = 0; i < 10; ++i) {
    control->show_Code();
    control->txtCode().edit(ReplaceAll(u"c</PRE>", u"c+</PRE>", control->txtCode().Text(), true));
    control->show_Code();
    control->show_Code();
    control->txtCode().edit(ReplaceAll(u"+</PRE>", u"</PRE>", control->txtCode().Text(), true));
    control->show_Code();
    control->show_Code();
    if (i == 0) shown = control->txtCode().Text();
    EXPECT_EQ(to_utf8(control->txtCode().Text()), to_utf8(shown));
    control->show_Code();
  }
  EXPECT_EQ(dom::inner_html(*element(dom::Tag::Pre)), u"a\n  b\nc");
}

}  // namespace
}  // namespace tvx::core
