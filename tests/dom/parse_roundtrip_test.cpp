#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "base/strings.h"
#include "dom/parse.h"
#include "dom/parse_vectors.h"
#include "dom/print_tree.h"
#include "dom/serialise.h"
#include "dom/tree.h"

namespace tvx::dom {
namespace {

// What one case gives: the tree, its text, and the tree of that text.
struct RoundTrip {
  std::u16string tree, html, tree_again;
};

RoundTrip round_trip(const ParseCase& test) {
  RoundTrip result;
  Ref<Node> root = parse_case(test);
  result.tree = print_tree(*root);
  ParseCase again = test;
  again.data = result.html = serialise_children(*root);
  result.tree_again = parse_and_print(again);
  return result;
}

// The kinds of tree that HTML text cannot express. Looked for in the printed tree, which shows nesting by
// its indentation.
std::string kind_of(const std::u16string& tree) {
  if (contains(tree, u"<plaintext>")) return "plaintext has no end";
  if (contains(tree, u"<script>") && contains(tree, u"<!--") && contains(tree, u"<script "))
    return "a script that opens a script and doesn't close it";
  if (contains(tree, u"\r")) return "a carriage return";
  std::vector<std::u16string_view> open;  // names of the elements around, by level
  for (const std::u16string_view line : split(tree, u'\n')) {
    const std::size_t indent = line.find_first_not_of(u' ', 1);
    if (!line.starts_with(u"| ") || indent == line.npos || line[indent] != u'<') continue;
    open.resize(std::min(open.size(), indent / 2));
    open.resize(indent / 2);
    const std::u16string_view name = line.substr(indent);
    for (const std::u16string_view forbidden : {u"<a>", u"<form>", u"<p>"}) {
      if (name == forbidden && std::find(open.begin(), open.end(), name) != open.end())
        return "an element in its like";
    }
    open.push_back(name);
  }
  return "";
}

// parse(serialise(tree)) == tree. The exceptions are counted, so that none comes or goes unseen.
TEST(ParseRoundTrip, EveryVectorTreeIsReadBack) {
  const std::vector<ParseCase> cases = read_parse_cases();
  if (cases.empty()) GTEST_SKIP() << "the public parsing cases are not here";
  std::map<std::string, int> exceptions;
  for (const ParseCase& test : cases) {
    const RoundTrip result = round_trip(test);
    if (result.tree == result.tree_again) continue;
    const std::string kind = kind_of(result.tree);
    EXPECT_NE(kind, "") << test.file << ':' << test.line << "\nwritten:\n"
                        << to_utf8(result.html) << "\ntree:\n"
                        << to_utf8(result.tree) << "\nread back:\n"
                        << to_utf8(result.tree_again);
    ++exceptions[kind];
  }
  const std::map<std::string, int> expected = {{"a carriage return", 1},
                                               {"a script that opens a script and doesn't close it", 24},
                                               {"an element in its like", 3},
                                               {"plaintext has no end", 26}};
  EXPECT_EQ(exceptions, expected);
}

TEST(ParseRoundTrip, DocumentTypesKeepTheirIdentifiersAndSoTheirMode) {
  const std::u16string_view html = u"<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 3.2//EN\"><p><table></table>";
  const Ref<Document> document = parse_document(html);
  EXPECT_EQ(document->compatibility_mode(), CompatibilityMode::Quirks);
  const Ref<Document> again = parse_document(serialise_children(*document));
  EXPECT_EQ(again->compatibility_mode(), CompatibilityMode::Quirks);
  EXPECT_EQ(print_tree(*again), print_tree(*document));
  const Ref<Document> system = parse_document(u"<!DOCTYPE html SYSTEM 'about:legacy-compat'>");
  EXPECT_EQ(serialise_node(*system->document_type()), u"<!DOCTYPE html SYSTEM \"about:legacy-compat\">");
  EXPECT_EQ(serialise_node(*system->document_type(), Letters::Lower), u"<!DOCTYPE html>");
}

}  // namespace
}  // namespace tvx::dom
