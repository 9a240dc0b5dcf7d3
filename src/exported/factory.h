#pragma once

#include "tvx/exported/library_face.h"
#include "tvx/exported/object_faces.h"

namespace tvx::exported {

/// Makes controls.
class Factory final : public Counted {
 public:
  Factory();
  void* face(const tvx_id& id) override;

 private:
  Face<tvx_factory> factory_face_;
  Face<tvx_library> library_face_{library_functions, *this};
};

}  // namespace tvx::exported
