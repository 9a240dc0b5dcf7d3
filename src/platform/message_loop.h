#pragma once

// Hosts may bring a loop of their own: the interface is theirs too.
#include "tvx/message_loop.h"  // IWYU pragma: export
