#pragma once

#include "tvx/library/objects/object.h"
#include "tvx/transfer/directory_item.h"

namespace tvx::library {

/// An entry of a remote folder, all of whose fields can be read and set.
ObjectHandle directory_item_object(transfer::clsDirectoryItem item);

}  // namespace tvx::library
