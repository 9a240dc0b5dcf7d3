#include "tvx/automation/methods.h"

namespace tvx::automation {

const Method* find_method(std::string_view name) {
  for (const std::span<const Method> rows :
       {member_methods(), control_methods(), object_methods(), gesture_methods(), typing_methods(),
        document_methods(), clipboard_methods()})
    for (const Method& row : rows)
      if (row.name == name) return &row;
  return nullptr;
}

}  // namespace tvx::automation
