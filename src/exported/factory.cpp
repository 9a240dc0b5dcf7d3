#include "tvx/exported/factory.h"

namespace tvx::exported {

namespace {

tvx_result create_instance(tvx_factory* self, tvx_unknown* outer, const tvx_id* id, void** object) {
  if (!id || !object) return TVX_POINTER;
  *object = nullptr;
  if (outer) return TVX_NO_AGGREGATION;
  return guarded([&] {
    Counted* made = owner_of<Factory>(self).made().make();
    const tvx_result result = made->query(id, object);
    made->release();
    return result;
  });
}

tvx_result lock_server(tvx_factory*, std::int32_t lock) {
  Module::only().lock(lock != 0);
  return TVX_OK;
}

constexpr tvx_factory_functions factory_functions = {query_interface<tvx_factory>, add_reference<tvx_factory>,
                                                     release_reference<tvx_factory>, create_instance,
                                                     lock_server};

}  // namespace

Factory::Factory(const ExportedClass& made) : made_(made), factory_face_(factory_functions, *this) {}

void* Factory::face(const tvx_id& id) {
  if (id == tvx_id_factory || id == tvx_id_unknown) return &factory_face_;
  return id == tvx_id_library ? &library_face_ : nullptr;
}

}  // namespace tvx::exported
