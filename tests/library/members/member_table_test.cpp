#include "tvx/library/members/member_table.h"

#include <gtest/gtest.h>

#include <set>

#include "support/failures.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/core/htmled.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/property_bag.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/object.h"

namespace tvx::library {
namespace {

/// A control in a designer: its properties as a new control has them, and no document.
class MemberTable : public testing::Test {
 protected:
  MemberTable() {
    control->UserControl_Initialize();
    control->UserControl_InitProperties();
  }
  headless::VirtualTimeLoop loop;
  headless::Container container{false};
  headless::Dialogs dialogs;
  std::shared_ptr<core::HTMLed> control = core::HTMLed::create({loop, container, dialogs});
};

TEST_F(MemberTable, NamesAndNumbersAreTheirOwn) {
  std::set<std::u16string> names;
  std::set<std::int32_t> numbers;
  for (const Member& member : members()) {
    EXPECT_TRUE(names.insert(ascii_lower(member.name)).second) << to_utf8(member.name);
    EXPECT_TRUE(numbers.insert(member.number).second) << to_utf8(member.name);
    EXPECT_FALSE(member.description.empty()) << to_utf8(member.name);
    EXPECT_EQ(member.description.back(), u'.') << to_utf8(member.name);
  }
  EXPECT_EQ(names.size(), members().size());
  EXPECT_EQ(find_member(u"documenthtml"), find_member(u"DocumentHTML"));
  EXPECT_EQ(find_member(u"nothing"), nullptr);
}

TEST_F(MemberTable, EventsAreNumberedInOrder) {
  ASSERT_EQ(events().size(), 16u);
  for (std::size_t i = 0; i < events().size(); ++i) {
    EXPECT_EQ(events()[i].number, static_cast<int>(i) + 1);
    for (const Parameter& parameter : events()[i].parameters)
      EXPECT_EQ(parameter.by_reference, ByReference::Yes) << to_utf8(events()[i].name);
  }
  EXPECT_EQ(find_event(u"beforenavigate")->number, 16);
}

TEST_F(MemberTable, DefaultsAreThoseOfANewControl) {
  int compared = 0;
  for (const Member& member : members()) {
    if (member.kind != MemberKind::Property || member.initial.kind == DefaultValue::Kind::None) continue;
    EXPECT_EQ(get_property(*control, member.name), member.initial.value()) << to_utf8(member.name);
    ++compared;
  }
  EXPECT_EQ(compared, 48);
}

TEST_F(MemberTable, EveryKeyIsWrittenByTheControl) {
  headless::PropertyBag bag;
  // Younger than the store, which is given these only where they aren't the default.
  control->set_RemoteContent(2);
  control->set_AutoFormat(true);
  control->UserControl_WriteProperties(bag);
  std::set<std::u16string> written(bag.written().begin(), bag.written().end());
  for (const Member& member : members())
    if (!member.key.empty()) {
      EXPECT_EQ(written.erase(std::u16string(member.key)), 1u) << to_utf8(member.name);
    }
  EXPECT_EQ(written, (std::set<std::u16string>{u"FullToolBar", u"FTPDirectoryItem"}));
}

TEST_F(MemberTable, SettersKeepWhatTheyAreGiven) {
  for (const Member& member : members()) {
    if (member.kind != MemberKind::Property || member.access != Access::ReadWrite) continue;
    const Value value = member.type == Type::Boolean  ? Value(!member.initial.number)
                        : member.type == Type::String ? Value(u"http://x/\\")
                                                      : Value(std::int32_t{1});
    container.clear_changed();
    set_property(*control, member.name, value);
    EXPECT_EQ(container.changed(), std::vector<std::u16string>{std::u16string(member.key)})
        << to_utf8(member.name);
    if (member.type != Type::String) {
      EXPECT_EQ(get_property(*control, member.name), value) << to_utf8(member.name);
    }
  }
}

TEST_F(MemberTable, AccessIsAsTheTableSays) {
  for (const Member& member : members()) {
    if (member.kind != MemberKind::Property || member.access == Access::ReadWrite) continue;
    int number = 0;
    try {
      set_property(*control, member.name, member.initial.value());
    } catch (const RuntimeError& error) {
      number = error.number();
    }
    const int expected = member.access == Access::DesignTime ? 0
                         : member.access == Access::Refused  ? 387
                                                             : 383;
    EXPECT_EQ(number, expected) << to_utf8(member.name);
  }
}

int failure_of(core::HTMLed& control, std::u16string_view name, Values arguments) {
  return number_of_failure([&] { call_method(control, name, arguments); });
}

TEST_F(MemberTable, CallsAreCheckedBeforeTheyAreMade) {
  EXPECT_EQ(failure_of(*control, u"cleanup", {}), 0);
  EXPECT_EQ(failure_of(*control, u"CleanUp", {1}), 450);
  EXPECT_EQ(failure_of(*control, u"Nothing", {}), 438);
  EXPECT_EQ(failure_of(*control, u"FTPPort", {}), 438);
  EXPECT_EQ(failure_of(*control, u"InCodeView", {u"perhaps"}), 13);
  Values arguments{u"True"};
  call_method(*control, u"InCodeView", arguments);
  EXPECT_EQ(arguments, Values{false});
}

TEST_F(MemberTable, EachReadOfDirectoryItemGivesANewEmptyEntry) {
  const ObjectHandle item = get_property(*control, u"DirectoryItem").to_object();
  ASSERT_TRUE(item);
  EXPECT_EQ(item->get(u"Filename"), Value(u""));
  EXPECT_EQ(item->get(u"LastWriteTime"), Value(0.0));
  item->set(u"filename", u"a.gif");
  item->set(u"FileSize", u"12");
  item->set(u"readonly", true);
  item->set(u"CreationTime", 1.5);
  EXPECT_EQ(item->get(u"Filename"), Value(u"a.gif"));
  EXPECT_EQ(item->get(u"FileSize"), Value(12));
  EXPECT_EQ(item->get(u"READONLY"), Value(true));
  EXPECT_EQ(item->get(u"CreationTime"), Value(1.5));
  const ObjectHandle other = get_property(*control, u"DirectoryItem").to_object();
  EXPECT_NE(other, item);
  EXPECT_EQ(other->get(u"Filename"), Value(u""));
}

}  // namespace
}  // namespace tvx::library
