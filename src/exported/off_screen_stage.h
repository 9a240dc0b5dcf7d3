#pragma once

#include <memory>

#include "tvx/exported/stage.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::exported {

/// A control that nobody sees; until it is started, its properties can be set.
std::unique_ptr<Stage> make_off_screen_stage(StageOwner& owner, platform::MessageLoop& loop);

}  // namespace tvx::exported
