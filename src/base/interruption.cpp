#include "tvx/base/interruption.h"

namespace tvx {
namespace {

detail::InterruptionState& state() { return detail::interruption; }

}  // namespace

void set_interruption_watch(InterruptionWatch* watch, std::uint32_t changes_between_questions) {
  state().watch = watch;
  state().between_questions = changes_between_questions;
}
InterruptionWatch* interruption_watch() { return state().watch; }

void detail::ask_whether_to_stop() {
  state().until_asked = state().between_questions;
  InterruptionWatch* const watch = state().watch;
  // In a dialog that the act has opened, Escape is the dialog's.
  if (!watch || state().act_level != watch->loop_level() || !watch->wants_to_stop()) return;
  state().stoppable = false;
  state().stopping = true;
  throw Interrupted();
}

detail::Door::Door() : outer_(state()) {
  if (!state().watch) return;
  const int level = state().watch->loop_level();
  outermost_ = state().act_level != level;
  if (!outermost_) return;
  state().act_level = level;
  state().stoppable = false;
}

detail::Door::~Door() {
  if (!outermost_) return;
  state().act_level = outer_.act_level;
  state().stoppable = outer_.stoppable;
  state().stopping = false;
}

bool begin_stoppable() {
  auto& now = state();
  if (!now.watch || now.act_level < 0 || now.stoppable || now.act_level != now.watch->loop_level())
    return false;
  now.stoppable = true;
  now.until_asked = now.between_questions;
  now.watch->started();
  return true;
}

void end_stoppable() {
  state().stoppable = false;
  if (state().watch) state().watch->ended();
}

Uninterrupted::Uninterrupted() : act_level_(state().act_level), stoppable_(state().stoppable) {
  state().act_level = -1;
  state().stoppable = false;
}

Uninterrupted::~Uninterrupted() {
  state().act_level = act_level_;
  state().stoppable = stoppable_;
}

}  // namespace tvx
