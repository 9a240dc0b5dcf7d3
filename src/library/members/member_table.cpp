#include "tvx/library/members/member_table.h"

#include "tvx/base/strings.h"

namespace tvx::library {

std::u16string_view name_of(Type type) {
  switch (type) {
    case Type::None: return u"nothing";
    case Type::Boolean: return u"boolean";
    case Type::Integer16: return u"16-bit number";
    case Type::Integer32: return u"32-bit number";
    case Type::String: return u"string";
    case Type::Object: return u"object";
    case Type::Variant: return u"variant";
    case Type::EdBorderStyle: return u"EdBorderStyle";
    case Type::EdHighLightStyle: return u"EdHighLightStyle";
    case Type::ed_FTPTransferType: return u"ed_FTPTransferType";
    case Type::ed_InsertType: return u"ed_InsertType";
  }
  return u"";
}

Value DefaultValue::value() const {
  switch (kind) {
    case Kind::None: return {};
    case Kind::Boolean: return number != 0;
    case Kind::Number: return number;
    case Kind::Text: return text;
  }
  return {};
}

std::span<const Member> members() {
  static const std::vector<Member> all = [] {
    std::vector<Member> rows;
    for (const std::span<const Member> subject :
         {document_properties(), look_properties(), transfer_properties(), document_operations(),
          formatting_operations(), search_operations(), transfer_operations()})
      rows.insert(rows.end(), subject.begin(), subject.end());
    return rows;
  }();
  return all;
}

const Member* find_member(std::u16string_view name) {
  for (const Member& member : members())
    if (equals_ignoring_ascii_case(member.name, name)) return &member;
  return nullptr;
}

const EventMember* find_event(std::u16string_view name) {
  for (const EventMember& event : events())
    if (equals_ignoring_ascii_case(event.name, name)) return &event;
  return nullptr;
}

}  // namespace tvx::library
