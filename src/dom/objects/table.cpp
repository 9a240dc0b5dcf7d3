#include "tvx/dom/objects/table.h"

#include "tvx/base/error.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

namespace {

namespace attributes {
const Name border_color(u"bordercolor"), border_color_light(u"bordercolorlight"),
    border_color_dark(u"bordercolordark"), cell_spacing(u"cellspacing"), cell_padding(u"cellpadding"),
    no_wrap(u"nowrap");
}

void expect_tag(const Element& element, std::initializer_list<Tag> tags) {
  for (const Tag tag : tags)
    if (element.is(tag)) return;
  throw RuntimeError(errors::type_mismatch, u"The element is of another kind");
}

bool is_section(const Node& node) {
  return node.is(Tag::Tbody) || node.is(Tag::Thead) || node.is(Tag::Tfoot);
}
bool is_cell(const Node& node) { return node.is(Tag::Td) || node.is(Tag::Th); }
bool is_row(const Node& node) { return node.is(Tag::Tr); }

Element* last_child(const Node& parent, bool (*fits)(const Node&)) {
  Node* child = parent.last_child();
  while (child && !fits(*child)) child = child->previous_sibling();
  return static_cast<Element*>(child);
}

template <class Fits>
void add_children(const Node& parent, Fits fits, std::vector<Element*>& list) {
  for (Element* child = first_child_element(parent); child; child = next_element_sibling(*child))
    if (fits(*child)) list.push_back(child);
}

void add_rows(const Node& section, std::vector<Element*>& rows) { add_children(section, is_row, rows); }

/// The child that an index means, null for "at the end". An index of `list.size()` is allowed for insertions
/// only.
Element* child_for(const std::vector<Element*>& list, std::int32_t index, bool inserting) {
  const auto count = static_cast<std::int32_t>(list.size());
  if (index < -1 || index > count || (index == count && !inserting))
    throw RuntimeError(errors::invalid_call, u"The index is out of range");
  if (inserting) return index == -1 || index == count ? nullptr : list[static_cast<std::size_t>(index)];
  if (index == -1) return list.empty() ? nullptr : list.back();
  return list[static_cast<std::size_t>(index)];
}

Ref<Element> put(Node& parent, Tag tag, Node* before) {
  Ref<Element> made = document_of(parent).create_element(tag);
  insert(parent, made, before);
  return made;
}

std::int32_t place_in(const std::vector<Element*>& list, const Element& element) {
  for (std::size_t i = 0; i < list.size(); ++i)
    if (list[i] == &element) return static_cast<std::int32_t>(i);
  return -1;
}

Journal& journal_of(const Element& element) { return document_of(element).journal(); }

}  // namespace

// --- what the parts have in common ---

std::u16string TablePart::align() const { return reflected_text(*element_, names::align); }
void TablePart::set_align(std::u16string_view value) {
  set_enumerated(*element_, names::align, value, {u"left", u"center", u"right", u"justify"});
}
std::u16string TablePart::vAlign() const { return reflected_text(*element_, names::valign); }
void TablePart::set_vAlign(std::u16string_view value) {
  set_enumerated(*element_, names::valign, value, {u"top", u"middle", u"bottom", u"baseline"});
}
std::u16string TablePart::bgColor() const { return reflected_text(*element_, names::bgcolor); }
void TablePart::set_bgColor(std::u16string_view value) { set_or_remove(*element_, names::bgcolor, value); }
std::u16string TablePart::borderColor() const { return reflected_text(*element_, attributes::border_color); }
void TablePart::set_borderColor(std::u16string_view value) {
  set_or_remove(*element_, attributes::border_color, value);
}
std::u16string TablePart::borderColorLight() const {
  return reflected_text(*element_, attributes::border_color_light);
}
void TablePart::set_borderColorLight(std::u16string_view value) {
  set_or_remove(*element_, attributes::border_color_light, value);
}
std::u16string TablePart::borderColorDark() const {
  return reflected_text(*element_, attributes::border_color_dark);
}
void TablePart::set_borderColorDark(std::u16string_view value) {
  set_or_remove(*element_, attributes::border_color_dark, value);
}

// --- tables ---

TableObject::TableObject(Element& table) : TablePart(table) { expect_tag(table, {Tag::Table}); }

std::vector<Element*> TableObject::rows() const {
  std::vector<Element*> rows;
  const auto add_sections = [&](Tag tag) {
    for (Element* child = first_child_element(*element_); child; child = next_element_sibling(*child))
      if (child->is(tag)) add_rows(*child, rows);
  };
  add_sections(Tag::Thead);
  for (Element* child = first_child_element(*element_); child; child = next_element_sibling(*child)) {
    if (child->is(Tag::Tr)) rows.push_back(child);
    if (child->is(Tag::Tbody)) add_rows(*child, rows);
  }
  add_sections(Tag::Tfoot);
  return rows;
}

std::vector<Element*> TableObject::tBodies() const {
  std::vector<Element*> bodies;
  add_children(
      *element_, [](const Element& child) { return child.is(Tag::Tbody); }, bodies);
  return bodies;
}

Element* TableObject::first(Tag tag) const {
  Element* child = first_child_element(*element_);
  while (child && !child->is(tag)) child = next_element_sibling(*child);
  return child;
}
Element* TableObject::caption() const { return first(Tag::Caption); }
Element* TableObject::tHead() const { return first(Tag::Thead); }
Element* TableObject::tFoot() const { return first(Tag::Tfoot); }

// HTML standard, "insertRow(index)" of a table.
Ref<Element> TableObject::insertRow(std::int32_t index) {
  const std::vector<Element*> present = rows();
  Element* before = child_for(present, index, true);
  const UndoStep step(journal_of(*element_), u"Insert row");
  if (before) return put(*before->parent(), Tag::Tr, before);
  if (!present.empty()) return put(*present.back()->parent(), Tag::Tr, nullptr);
  const std::vector<Element*> bodies = tBodies();
  const Ref<Element> body =
      bodies.empty() ? put(*element_, Tag::Tbody, nullptr) : Ref<Element>(bodies.back());
  return put(*body, Tag::Tr, nullptr);
}

void TableObject::deleteRow(std::int32_t index) {
  if (Element* row = child_for(rows(), index, false)) dom::remove(*row);
}

// Each kind has its position: the caption first, the head before all rows, the foot last.
Ref<Element> TableObject::create(Tag tag) {
  if (Element* present = first(tag)) return present;
  Node* before = nullptr;
  if (tag == Tag::Caption) before = element_->first_child();
  if (tag == Tag::Thead) {
    Element* child = first_child_element(*element_);
    while (child && (child->is(Tag::Caption) || child->is(Tag::Colgroup) || child->is(Tag::Col)))
      child = next_element_sibling(*child);
    before = child;
  }
  return put(*element_, tag, before);
}
Ref<Element> TableObject::createCaption() { return create(Tag::Caption); }
Ref<Element> TableObject::createTHead() { return create(Tag::Thead); }
Ref<Element> TableObject::createTFoot() { return create(Tag::Tfoot); }

Ref<Element> TableObject::createTBody() {
  const std::vector<Element*> bodies = tBodies();
  return put(*element_, Tag::Tbody, bodies.empty() ? nullptr : bodies.back()->next_sibling());
}

void TableObject::remove(Tag tag) {
  if (Element* present = first(tag)) dom::remove(*present);
}
void TableObject::deleteCaption() { remove(Tag::Caption); }
void TableObject::deleteTHead() { remove(Tag::Thead); }
void TableObject::deleteTFoot() { remove(Tag::Tfoot); }

std::u16string TableObject::border() const { return reflected_text(*element_, names::border); }
void TableObject::set_border(std::u16string_view value) { set_or_remove(*element_, names::border, value); }
std::u16string TableObject::width() const { return reflected_text(*element_, names::width); }
void TableObject::set_width(std::u16string_view value) { set_or_remove(*element_, names::width, value); }
std::u16string TableObject::height() const { return reflected_text(*element_, names::height); }
void TableObject::set_height(std::u16string_view value) { set_or_remove(*element_, names::height, value); }
std::u16string TableObject::cellSpacing() const {
  return reflected_text(*element_, attributes::cell_spacing);
}
void TableObject::set_cellSpacing(std::u16string_view value) {
  set_or_remove(*element_, attributes::cell_spacing, value);
}
std::u16string TableObject::cellPadding() const {
  return reflected_text(*element_, attributes::cell_padding);
}
void TableObject::set_cellPadding(std::u16string_view value) {
  set_or_remove(*element_, attributes::cell_padding, value);
}
std::u16string TableObject::background() const { return reflected_text(*element_, names::background); }
void TableObject::set_background(std::u16string_view value) {
  set_or_remove(*element_, names::background, value);
}

// --- sections ---

TableSectionObject::TableSectionObject(Element& section) : TablePart(section) {
  expect_tag(section, {Tag::Tbody, Tag::Thead, Tag::Tfoot});
}

std::vector<Element*> TableSectionObject::rows() const {
  std::vector<Element*> rows;
  add_rows(*element_, rows);
  return rows;
}

Ref<Element> TableSectionObject::insertRow(std::int32_t index) {
  return put(*element_, Tag::Tr, index == -1 ? nullptr : child_for(rows(), index, true));
}

void TableSectionObject::deleteRow(std::int32_t index) {
  Element* row = index == -1 ? last_child(*element_, is_row) : child_for(rows(), index, false);
  if (row) dom::remove(*row);
}

// --- rows ---

TableRowObject::TableRowObject(Element& row) : TablePart(row) { expect_tag(row, {Tag::Tr}); }

std::vector<Element*> TableRowObject::cells() const {
  std::vector<Element*> cells;
  add_children(*element_, is_cell, cells);
  return cells;
}

std::int32_t TableRowObject::rowIndex() const {
  Element* parent = element_->parent_element();
  if (parent && is_section(*parent)) parent = parent->parent_element();
  return parent && parent->is(Tag::Table) ? place_in(TableObject(*parent).rows(), *element_) : -1;
}

std::int32_t TableRowObject::sectionRowIndex() const {
  const Element* parent = element_->parent_element();
  if (!parent || !(is_section(*parent) || parent->is(Tag::Table))) return -1;
  std::vector<Element*> rows;
  add_rows(*parent, rows);
  return place_in(rows, *element_);
}

// At the end of a row nothing is counted: cells that are appended one by one cost the same each.
Ref<Element> TableRowObject::insertCell(std::int32_t index) {
  return put(*element_, Tag::Td, index == -1 ? nullptr : child_for(cells(), index, true));
}

void TableRowObject::deleteCell(std::int32_t index) {
  Element* cell = index == -1 ? last_child(*element_, is_cell) : child_for(cells(), index, false);
  if (cell) dom::remove(*cell);
}

// --- cells ---

TableCellObject::TableCellObject(Element& cell) : TablePart(cell) { expect_tag(cell, {Tag::Td, Tag::Th}); }

std::int32_t TableCellObject::cellIndex() const {
  Element* row = element_->parent_element();
  return row && row->is(Tag::Tr) ? place_in(TableRowObject(*row).cells(), *element_) : -1;
}

std::int32_t TableCellObject::colSpan() const { return reflected_number(*element_, names::colspan, 1, 1); }
void TableCellObject::set_colSpan(std::int32_t value) {
  set_reflected_number(*element_, names::colspan, value, 1);
}
std::int32_t TableCellObject::rowSpan() const { return reflected_number(*element_, names::rowspan, 1, 1); }
void TableCellObject::set_rowSpan(std::int32_t value) {
  set_reflected_number(*element_, names::rowspan, value, 1);
}
std::u16string TableCellObject::width() const { return reflected_text(*element_, names::width); }
void TableCellObject::set_width(std::u16string_view value) { set_or_remove(*element_, names::width, value); }
std::u16string TableCellObject::height() const { return reflected_text(*element_, names::height); }
void TableCellObject::set_height(std::u16string_view value) {
  set_or_remove(*element_, names::height, value);
}
std::u16string TableCellObject::background() const { return reflected_text(*element_, names::background); }
void TableCellObject::set_background(std::u16string_view value) {
  set_or_remove(*element_, names::background, value);
}
bool TableCellObject::noWrap() const { return reflected_flag(*element_, attributes::no_wrap); }
void TableCellObject::set_noWrap(bool on) { set_reflected_flag(*element_, attributes::no_wrap, on); }

}  // namespace tvx::dom
