#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tvx/editing/tree/surgery.h"

/// The style of nodes and of the caret, noted before an operation that would lose it and put back after.
namespace tvx::editing {

class Editor;

/// What "record the values" keeps: for each node and command the specified value it had.
struct RecordedValue {
  dom::Ref<dom::Node> node;
  std::u16string_view command;  // a row's name in small letters
  std::optional<std::u16string> value;
};
using RecordedValues = std::vector<RecordedValue>;
RecordedValues record_values(const NodeList& nodes);
void restore_values(const RecordedValues& values, Editor& editor);

/// "Record current states and values", "record current overrides" and "restore states and values".
struct RecordedLook {
  std::vector<std::pair<std::u16string_view, bool>> states;
  std::vector<std::pair<std::u16string_view, std::u16string>> values;
};
RecordedLook record_current_overrides(Editor& editor);
RecordedLook record_current_look(Editor& editor);
void restore_look(const RecordedLook& look, Editor& editor);

}  // namespace tvx::editing
