#include "dom/parse_vectors.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"

namespace tvx::dom {
namespace {

// The public tree construction cases (html5lib-tests), all but those that need scripting.
TEST(ParseVectors, EveryCaseGivesItsTree) {
  const std::vector<ParseCase> cases = read_parse_cases();
  if (cases.empty()) GTEST_SKIP() << "the public parsing cases are not here";
  for (const ParseCase& test : cases) {
    const std::u16string got = parse_and_print(test);
    EXPECT_TRUE(got == test.tree) << test.file << ':' << test.line << "\ninput:\n"
                                  << to_utf8(test.data) << "\nexpected:\n"
                                  << to_utf8(test.tree) << "\ngot:\n"
                                  << to_utf8(got);
  }
  EXPECT_GT(cases.size(), 1000u);
}

}  // namespace
}  // namespace tvx::dom
