#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/ref.h"

/// Tables as objects: HTML standard, section 4.9, with the attributes that hosts of this control know. The
/// members have the names of that object model. Sizes and `border` read as the attribute's text; a colour or
/// size set to "" removes its attribute. Whatever changes the structure is one undo step. An index out of
/// range throws RuntimeError(5), a value that isn't among those allowed RuntimeError(380).
namespace tvx::dom {

/// What tables, sections, rows and cells have in common.
class TablePart {
 public:
  Element& element() const { return *element_; }

  /// left, center, right or justify.
  std::u16string align() const;
  void set_align(std::u16string_view value);
  /// top, middle, bottom or baseline.
  std::u16string vAlign() const;
  void set_vAlign(std::u16string_view value);
  std::u16string bgColor() const;
  void set_bgColor(std::u16string_view value);
  std::u16string borderColor() const;
  void set_borderColor(std::u16string_view value);
  std::u16string borderColorLight() const;
  void set_borderColorLight(std::u16string_view value);
  std::u16string borderColorDark() const;
  void set_borderColorDark(std::u16string_view value);

 protected:
  explicit TablePart(Element& element) : element_(element) {}
  Ref<Element> element_;
};

class TableObject : public TablePart {
 public:
  /// Throws RuntimeError(13) for anything but a TABLE.
  explicit TableObject(Element& table);

  /// Those of the heads, then of the bodies and the table itself, then of the feet.
  std::vector<Element*> rows() const;
  std::vector<Element*> tBodies() const;
  Element* caption() const;
  Element* tHead() const;
  Element* tFoot() const;

  /// A row before that number, -1: after the last, in the section of that. A table without rows gets a body.
  Ref<Element> insertRow(std::int32_t index = -1);
  /// -1: the last row, of which an empty table has none to lose.
  void deleteRow(std::int32_t index = -1);
  // The one that is there, or a new one in its position.
  Ref<Element> createCaption();
  Ref<Element> createTHead();
  Ref<Element> createTFoot();
  /// After the last body.
  Ref<Element> createTBody();
  void deleteCaption();
  void deleteTHead();
  void deleteTFoot();

  std::u16string border() const;
  void set_border(std::u16string_view value);
  std::u16string width() const;
  void set_width(std::u16string_view value);
  std::u16string height() const;
  void set_height(std::u16string_view value);
  std::u16string cellSpacing() const;
  void set_cellSpacing(std::u16string_view value);
  std::u16string cellPadding() const;
  void set_cellPadding(std::u16string_view value);
  std::u16string background() const;
  void set_background(std::u16string_view value);

 private:
  Element* first(Tag tag) const;
  Ref<Element> create(Tag tag);
  void remove(Tag tag);
};

/// THEAD, TBODY or TFOOT.
class TableSectionObject : public TablePart {
 public:
  explicit TableSectionObject(Element& section);
  std::vector<Element*> rows() const;
  /// The index counts inside the section.
  Ref<Element> insertRow(std::int32_t index = -1);
  void deleteRow(std::int32_t index = -1);
};

class TableRowObject : public TablePart {
 public:
  explicit TableRowObject(Element& row);
  std::vector<Element*> cells() const;
  /// Counted over the whole table; -1 outside any.
  std::int32_t rowIndex() const;
  /// Counted inside the section (or the table, if it stands right in it); -1 outside any.
  std::int32_t sectionRowIndex() const;
  Ref<Element> insertCell(std::int32_t index = -1);
  /// -1: the last cell, of which an empty row has none to lose.
  void deleteCell(std::int32_t index = -1);
};

/// TD or TH.
class TableCellObject : public TablePart {
 public:
  explicit TableCellObject(Element& cell);
  /// -1 outside any row.
  std::int32_t cellIndex() const;
  /// At least 1; setting less is refused.
  std::int32_t colSpan() const;
  void set_colSpan(std::int32_t value);
  std::int32_t rowSpan() const;
  void set_rowSpan(std::int32_t value);
  std::u16string width() const;
  void set_width(std::u16string_view value);
  std::u16string height() const;
  void set_height(std::u16string_view value);
  std::u16string background() const;
  void set_background(std::u16string_view value);
  bool noWrap() const;
  void set_noWrap(bool on);
};

}  // namespace tvx::dom
