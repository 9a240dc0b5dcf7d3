#pragma once

#include "tvx/editing/ranges/control_range.h"
#include "tvx/library/objects/document_object.h"

namespace tvx::library {

/// A text range or a control range, for callers by name.
Value range_object(editing::AnyRange range, const DocumentHandle& document);  // range_object.cpp

}  // namespace tvx::library
