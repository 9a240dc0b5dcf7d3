#include "tvx/platform/common_dialogs.h"

namespace tvx::platform {

MessageAnswer answer_when_closed(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::ok: return MessageAnswer::ok;
    case MessageButtons::yes_no: return MessageAnswer::no;
    case MessageButtons::ok_cancel:
    case MessageButtons::yes_no_cancel: break;
  }
  return MessageAnswer::cancel;
}

std::vector<MessageAnswer> answers_of(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::ok_cancel: return {MessageAnswer::ok, MessageAnswer::cancel};
    case MessageButtons::yes_no: return {MessageAnswer::yes, MessageAnswer::no};
    case MessageButtons::yes_no_cancel: return {MessageAnswer::yes, MessageAnswer::no, MessageAnswer::cancel};
    case MessageButtons::ok: break;
  }
  return {MessageAnswer::ok};
}

}  // namespace tvx::platform
