#include "tvx/dom/objects/table.h"

#include "tvx/library/members/facade_members.h"
#include "tvx/library/objects/element_kinds.h"

namespace tvx::library {

namespace {

using dom::TableCellObject;
using dom::TableObject;
using dom::TablePart;
using dom::TableRowObject;
using dom::TableSectionObject;

/// TablePart speaks for all parts of a table and is made by none: any element is welcome here, since only
/// those parts have these rows.
class AnyPart : public TablePart {
 public:
  explicit AnyPart(dom::Element& element) : TablePart(element) {}
};

template <auto Getter>
Value part_get(ElementObject& self) {
  return (AnyPart(*self).*Getter)();
}
template <auto Setter>
void part_set(ElementObject& self, const Value& value) {
  (AnyPart(*self).*Setter)(text_or_nothing(value));
}

constexpr MemberOf<ElementObject> part_rows[] = {
    {u"align", part_get<&TablePart::align>, part_set<&TablePart::set_align>},
    {u"vAlign", part_get<&TablePart::vAlign>, part_set<&TablePart::set_vAlign>},
    {u"bgColor", part_get<&TablePart::bgColor>, part_set<&TablePart::set_bgColor>},
    {u"borderColor", part_get<&TablePart::borderColor>, part_set<&TablePart::set_borderColor>},
    {u"borderColorLight", part_get<&TablePart::borderColorLight>, part_set<&TablePart::set_borderColorLight>},
    {u"borderColorDark", part_get<&TablePart::borderColorDark>, part_set<&TablePart::set_borderColorDark>},
};

std::vector<dom::Element*> cells_of(const TableObject& table) {
  std::vector<dom::Element*> cells;
  for (dom::Element* row : table.rows())
    for (dom::Element* cell : TableRowObject(*row).cells()) cells.push_back(cell);
  return cells;
}

Value all_cells(ElementObject& self) {
  return element_list_object(
      *self, [self] { return cells_of(TableObject(*self)); }, self.document());
}

constexpr MemberOf<ElementObject> table_rows[] = {
    {u"rows", facade_list<&TableObject::rows>},
    {u"cells", all_cells},
    {u"tBodies", facade_list<&TableObject::tBodies>},
    {u"caption", facade_get<&TableObject::caption>},
    {u"tHead", facade_get<&TableObject::tHead>},
    {u"tFoot", facade_get<&TableObject::tFoot>},
    {u"border", facade_get<&TableObject::border>, facade_set<&TableObject::set_border>},
    {u"width", facade_get<&TableObject::width>, facade_set<&TableObject::set_width>},
    {u"height", facade_get<&TableObject::height>, facade_set<&TableObject::set_height>},
    {u"cellSpacing", facade_get<&TableObject::cellSpacing>, facade_set<&TableObject::set_cellSpacing>},
    {u"cellPadding", facade_get<&TableObject::cellPadding>, facade_set<&TableObject::set_cellPadding>},
    {u"background", facade_get<&TableObject::background>, facade_set<&TableObject::set_background>},
    {.name = u"insertRow", .call = facade_call_at<&TableObject::insertRow, TableObject>},
    {.name = u"deleteRow", .call = facade_call_at<&TableObject::deleteRow, TableObject>},
    {.name = u"createCaption", .call = facade_call<&TableObject::createCaption, TableObject>},
    {.name = u"createTHead", .call = facade_call<&TableObject::createTHead, TableObject>},
    {.name = u"createTFoot", .call = facade_call<&TableObject::createTFoot, TableObject>},
    {.name = u"createTBody", .call = facade_call<&TableObject::createTBody, TableObject>},
    {.name = u"deleteCaption", .call = facade_call<&TableObject::deleteCaption, TableObject>},
    {.name = u"deleteTHead", .call = facade_call<&TableObject::deleteTHead, TableObject>},
    {.name = u"deleteTFoot", .call = facade_call<&TableObject::deleteTFoot, TableObject>},
};

constexpr MemberOf<ElementObject> section_rows[] = {
    {u"rows", facade_list<&TableSectionObject::rows>},
    {.name = u"insertRow", .call = facade_call_at<&TableSectionObject::insertRow, TableSectionObject>},
    {.name = u"deleteRow", .call = facade_call_at<&TableSectionObject::deleteRow, TableSectionObject>},
};

constexpr MemberOf<ElementObject> row_rows[] = {
    {u"cells", facade_list<&TableRowObject::cells>},
    {u"rowIndex", facade_get<&TableRowObject::rowIndex>},
    {u"sectionRowIndex", facade_get<&TableRowObject::sectionRowIndex>},
    {.name = u"insertCell", .call = facade_call_at<&TableRowObject::insertCell, TableRowObject>},
    {.name = u"deleteCell", .call = facade_call_at<&TableRowObject::deleteCell, TableRowObject>},
};

constexpr MemberOf<ElementObject> cell_rows[] = {
    {u"cellIndex", facade_get<&TableCellObject::cellIndex>},
    {u"colSpan", facade_get<&TableCellObject::colSpan>, facade_set<&TableCellObject::set_colSpan>},
    {u"rowSpan", facade_get<&TableCellObject::rowSpan>, facade_set<&TableCellObject::set_rowSpan>},
    {u"width", facade_get<&TableCellObject::width>, facade_set<&TableCellObject::set_width>},
    {u"height", facade_get<&TableCellObject::height>, facade_set<&TableCellObject::set_height>},
    {u"background", facade_get<&TableCellObject::background>, facade_set<&TableCellObject::set_background>},
    {u"noWrap", facade_get<&TableCellObject::noWrap>, facade_set<&TableCellObject::set_noWrap>},
};

}  // namespace

ElementRows table_members() { return table_rows; }
ElementRows table_section_members() { return section_rows; }
ElementRows table_row_members() { return row_rows; }
ElementRows table_cell_members() { return cell_rows; }
ElementRows table_part_members() { return part_rows; }

}  // namespace tvx::library
