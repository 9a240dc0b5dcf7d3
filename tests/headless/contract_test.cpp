#include <gtest/gtest.h>

#include "contract/clipboard_contract.h"
#include "contract/message_loop_contract.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/message_loop.h"
#include "tvx/headless/virtual_time_loop.h"

/// The parts without a screen keep what the desktop's keep.
namespace tvx::contract {

using Loops = testing::Types<headless::MessageLoop, headless::VirtualTimeLoop>;
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, MessageLoopContract, Loops);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, ClipboardContract, headless::Clipboard);

}  // namespace tvx::contract
