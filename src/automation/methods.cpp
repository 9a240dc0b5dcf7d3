#include "automation/methods.h"

namespace tvx::automation {

const Method* find_method(std::string_view name) {
  for (const std::span<const Method> rows : {document_methods()})
    for (const Method& row : rows)
      if (row.name == name) return &row;
  return nullptr;
}

}  // namespace tvx::automation
