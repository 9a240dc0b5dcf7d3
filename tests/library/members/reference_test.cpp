#include "tvx/library/members/reference.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tvx/base/strings.h"
#include "tvx/library/members/member_table.h"

namespace tvx::library {
namespace {

std::string text_of(const char* path) {
  std::ifstream file(std::string(TVX_SOURCE_DIR) + path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Reference, IsThePageAmongTheDocuments) {
  EXPECT_TRUE(text_of("/docs/reference.md") == reference())
      << "write it anew: htmled-cli --reference > docs/reference.md";
}

TEST(Reference, NamesEveryMemberWithItsKeyAndEveryArgument) {
  const std::string page = reference();
  const auto has = [&](std::u16string_view name) { return page.find("`" + to_utf8(name)) != page.npos; };
  for (const Member& member : members()) {
    EXPECT_TRUE(has(member.name)) << to_utf8(member.name);
    EXPECT_TRUE(member.key.empty() || has(member.key)) << to_utf8(member.name);
    EXPECT_NE(page.find(to_utf8(member.description)), page.npos) << to_utf8(member.name);
    for (const Parameter& parameter : member.parameters)
      EXPECT_NE(page.find(to_utf8(parameter.name)), page.npos) << to_utf8(parameter.name);
  }
  for (const EventMember& event : events()) {
    EXPECT_TRUE(has(event.name)) << to_utf8(event.name);
    for (const Parameter& parameter : event.parameters)
      EXPECT_TRUE(has(parameter.name)) << to_utf8(parameter.name);
  }
}

TEST(Readme, ShowsTheProgramThatIsBuilt) {
  const std::string program = text_of("/examples/embed/main.cpp");
  const std::string without_question = program.substr(program.find('\n') + 1);
  EXPECT_NE(text_of("/README.md").find("```cpp\n" + without_question + "```"), std::string::npos);
}

}  // namespace
}  // namespace tvx::library
