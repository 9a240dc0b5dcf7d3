#pragma once

#include <span>

#include "tvx/exported/object_faces.h"

namespace tvx::exported {

/// A class of which a host makes objects.
struct ExportedClass {
  const char* name;
  const char* id_text;
  tvx_id id;
  Counted* (*make)();
};

std::span<const ExportedClass> exported_classes();
/// Null: there is none with this identifier.
const ExportedClass* find_class(const tvx_id& id);

}  // namespace tvx::exported
