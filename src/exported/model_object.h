#pragma once

#include "tvx/library/objects/object.h"
#include "tvx/tvxhtml.h"

/// Objects that the control gives: elements, documents, entries of folders, and the like.
namespace tvx::exported {

/// A new pointer to it, with one reference.
tvx_dispatch* make_model_object(library::ObjectHandle object);

/// What such a pointer stands for. Throws RuntimeError(13) for any other.
library::ObjectHandle model_object_of(const tvx_dispatch* object);

}  // namespace tvx::exported
