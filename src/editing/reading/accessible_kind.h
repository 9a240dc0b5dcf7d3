#pragma once

#include <cstdint>
#include <string>

#include "tvx/dom/node.h"

namespace tvx::editing {

/// What an element is to a reading program. None: by itself it is nothing, but part of a line or of a table.
enum class AccessibleKind : std::uint8_t {
  None,
  Document,
  Section,
  Form,
  Group,
  Paragraph,
  Heading,
  Quotation,
  Preformatted,
  List,
  Item,
  Table,
  Caption,
  Cell,
  ColumnHeader,
  RowHeader,
  Link,
  Rule,
  Image,
  Embedded,
  Button,
  CheckBox,
  RadioButton,
  TextField,
  PasswordField,
  TextArea,
  Choice,
  Choices
};

AccessibleKind accessible_kind(const dom::Element& element);
/// Its kind and that of what it is in are told by the element, not by its lines: an image, a form field, a
/// rule.
bool is_thing(AccessibleKind kind);
/// Takes lines of its own in what it stands in.
bool is_block(AccessibleKind kind);
/// 1 to 6; 0 of what is no heading.
int heading_level(const dom::Element& element);

/// What a reader calls it: the alternative text of an image, the label of a field, the title of anything.
/// Empty: its text says what it is.
std::u16string accessible_name(const dom::Element& element);
/// What a form field holds.
std::u16string field_value(const dom::Element& field);
/// The language that a node's text is said to be in, as it is written; empty if nobody says.
std::u16string language_of(const dom::Node& node);

}  // namespace tvx::editing
