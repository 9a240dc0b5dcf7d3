#pragma once

#include "tvx/exported/classes.h"
#include "tvx/exported/library_face.h"
#include "tvx/exported/object_faces.h"

namespace tvx::exported {

/// Makes objects of one class.
class Factory final : public Counted {
 public:
  explicit Factory(const ExportedClass& made);
  void* face(const tvx_id& id) override;
  const ExportedClass& made() const { return made_; }

 private:
  const ExportedClass& made_;
  Face<tvx_factory> factory_face_;
  Face<tvx_library> library_face_{library_functions, *this};
};

}  // namespace tvx::exported
