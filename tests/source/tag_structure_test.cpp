#include "tvx/source/tag_structure.h"

#include <gmock/gmock.h>

#include "tvx/base/work_count.h"
#include "tvx/source/code_completion.h"

namespace tvx::source {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* names[] = {
    "",           "never closed",      "goes on",    "closes nothing", "empty paragraph",
    "line break", "closed by another", "opens again"};

std::vector<std::string> troubles(std::u16string_view source) {
  const TagStructure structure(source);
  std::vector<std::string> all;
  for (const SourceTag& tag : structure.tags())
    if (tag.trouble != TagTrouble::None)
      all.push_back(to_utf8(source.substr(tag.begin, tag.end - tag.begin)) + " " +
                    names[std::size_t(tag.trouble)]);
  return all;
}

std::string partner(std::u16string_view source, Offset place) {
  const TagStructure structure(source);
  const SourceTag* tag = structure.at(place);
  const SourceTag* other = tag ? structure.partner_of(*tag) : nullptr;
  return other ? std::to_string(other->begin) : "none";
}

std::string open_at_end(std::u16string_view source) {
  return to_utf8(TagStructure(source).open_at(source.size(), source));
}

TEST(TagStructure, WhatIsRightHasNoTrouble) {
  EXPECT_THAT(troubles(u"<div><p>a<p>b<ul><li>c<li>d</ul><br><img src=x></div>"), IsEmpty());
  EXPECT_THAT(troubles(u"<table><tr><td>a<td>b<tr><th>c</table><dl><dt>a<dd>b</dl>"), IsEmpty());
  EXPECT_THAT(troubles(u"<p>a <b>b <i>c</i></b></p><script>'<b>'</script><!-- <b> -->"), IsEmpty());
  EXPECT_THAT(troubles(u"<svg><path d=''/><g></g></svg>"), IsEmpty());
}

TEST(TagStructure, TagsThatDontFitAreNamed) {
  EXPECT_THAT(troubles(u"<div>a"), ElementsAre("<div> never closed"));
  EXPECT_THAT(troubles(u"<div><span>a</div>"), ElementsAre("<span> closed by another"));
  EXPECT_THAT(troubles(u"<p>a</b></p>"), ElementsAre("</b> closes nothing"));
  EXPECT_THAT(troubles(u"<p><b>a</p><p>b"), ElementsAre("<b> opens again"));
  EXPECT_THAT(troubles(u"<b><i>a</b></i>"), ElementsAre("<i> opens again", "</i> closes nothing"));
  EXPECT_THAT(troubles(u"<b>a"), ElementsAre("<b> goes on"));
  EXPECT_THAT(troubles(u"a</p></br>"), ElementsAre("</p> empty paragraph", "</br> line break"));
  EXPECT_THAT(troubles(u"<div><table><tr><td></div></table></div>"), ElementsAre("</div> closes nothing"));
}

TEST(TagStructure, ATagKnowsTheOneAtTheOtherEnd) {
  EXPECT_EQ(partner(u"<p>a<b>b</b></p>", 1), "12");
  EXPECT_EQ(partner(u"<p>a<b>b</b></p>", 12), "0") << "of two the one that begins there";
  EXPECT_EQ(partner(u"<p>a<b>b</b></p>", 9), "4");
  EXPECT_EQ(partner(u"<p>a<b>b</b></p>", 4), "8");
  EXPECT_EQ(partner(u"a<br>b", 3), "none");
  EXPECT_EQ(partner(u"abc", 1), "none");
}

TEST(TagStructure, TheInnermostOpenElementIsKnown) {
  EXPECT_EQ(open_at_end(u"<div><p>a <b>b</b>"), "p");
  EXPECT_EQ(open_at_end(u"<div><p>a</p><br>"), "div");
  EXPECT_EQ(open_at_end(u"<DIV></DIV>"), "");
  EXPECT_EQ(open_at_end(u"<ul><li>a</li><li>b"), "li");
  EXPECT_EQ(open_at_end(u"<div><p>a<ul><li>b</ul>"), "div") << "the list has ended the paragraph";
  EXPECT_EQ(open_at_end(u"<div><p>a<ul>"), "ul");
  EXPECT_EQ(open_at_end(u"<div><span>a</div>"), "") << "another's end tag has ended it";
}

/// Open elements that were looked at.
std::uint64_t steps_of_unclosed(std::size_t count) {
  std::u16string source;
  for (std::size_t i = 0; i < count; ++i) source += u"<b>";
  for (std::size_t i = 0; i < count; ++i) source += u"</i>";
  const std::uint64_t before = work_done;
  const TagStructure structure(source);
  EXPECT_EQ(structure.tags().size(), 2 * count);
  return work_done - before;
}

// Looking through all of them took minutes.
TEST(TagStructure, TagsThatAreNeverClosedCostNoMoreEach) {
  const std::uint64_t few = steps_of_unclosed(600);
  EXPECT_GT(few, 600u);
  EXPECT_LT(steps_of_unclosed(6'000), 15 * few);
}

std::vector<std::string> offered(std::u16string_view source) {
  const Completion completion = completion_at(source, source.size());
  const std::string written = to_utf8(source.substr(completion.from));
  std::vector<std::string> all;
  for (const std::u16string_view name : completion.names)
    if (to_utf8(name).starts_with(written)) all.push_back(to_utf8(name));
  return all;
}

TEST(CodeCompletion, NamesOfElementsAndAttributes) {
  EXPECT_THAT(offered(u"a <bl"), ElementsAre("blockquote"));
  EXPECT_THAT(offered(u"a </str"), ElementsAre("strong"));
  EXPECT_THAT(offered(u"<img al"), ElementsAre("alt", "align"));
  EXPECT_THAT(offered(u"<a href='x > y' tar"), IsEmpty()) << "a tag ends with >, as far as is looked back";
  EXPECT_THAT(offered(u"<a href='x' tar"), ElementsAre("target"));
  EXPECT_THAT(offered(u"<p cla"), ElementsAre("class"));
}

TEST(CodeCompletion, NothingWhereNoNameIsWritten) {
  EXPECT_THAT(offered(u"abc"), IsEmpty());
  EXPECT_THAT(offered(u"<p>abc"), IsEmpty());
  EXPECT_THAT(offered(u"<p class=\"ab"), IsEmpty());
  EXPECT_THAT(offered(u"<p class= ab"), IsEmpty());
  EXPECT_THAT(offered(u"<!-- ab"), IsEmpty());
}

}  // namespace
}  // namespace tvx::source
