#include "tvx/library/objects/element_kinds.h"

namespace tvx::library {

namespace {

using dom::Tag;

struct Kind {
  Tag tag;
  ElementRows (*rows)();
};

/// An element may have several groups; the first one that knows a name counts.
constexpr Kind kinds[] = {
    {Tag::Table, table_members},
    {Tag::Thead, table_section_members},
    {Tag::Tbody, table_section_members},
    {Tag::Tfoot, table_section_members},
    {Tag::Tr, table_row_members},
    {Tag::Td, table_cell_members},
    {Tag::Th, table_cell_members},
    {Tag::Table, table_part_members},
    {Tag::Thead, table_part_members},
    {Tag::Tbody, table_part_members},
    {Tag::Tfoot, table_part_members},
    {Tag::Tr, table_part_members},
    {Tag::Td, table_part_members},
    {Tag::Th, table_part_members},
    {Tag::Form, form_members},
    {Tag::Select, select_members},
    {Tag::Input, field_members},
    {Tag::Button, field_members},
    {Tag::Select, field_members},
    {Tag::Textarea, field_members},
    {Tag::Option, option_members},
    {Tag::Label, label_members},
    {Tag::Img, image_members},
    {Tag::Input, image_members},
    {Tag::A, link_members},
    {Tag::Area, link_members},
    {Tag::Link, link_members},
    {Tag::Link, sheet_owner_members},
    {Tag::Style, sheet_owner_members},
    {Tag::Base, base_members},
    {Tag::Script, script_members},
};

}  // namespace

const MemberOf<ElementObject>* find_kind_member(const dom::Element& element, std::u16string_view name) {
  for (const Kind& kind : kinds)
    if (kind.tag == element.tag())
      if (const auto* row = find_member(kind.rows(), name)) return row;
  return nullptr;
}

}  // namespace tvx::library
