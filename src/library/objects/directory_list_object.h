#pragma once

#include <memory>

#include "tvx/library/objects/object.h"
#include "tvx/transfer/directory_list.h"

namespace tvx::library {

/// The entries of a listing: `count`, and `item` by position from 1 or by name. Nothing of a null list.
Value directory_list_object(std::shared_ptr<const transfer::clsDirectoryList> list);

}  // namespace tvx::library
