#include "tvx/automation/keys.h"
#include "tvx/automation/methods.h"
#include "tvx/automation/session.h"
#include "tvx/headless/form_keys.h"
#include "tvx/platform/message_loop.h"

namespace tvx::automation {

namespace {

/// Keys wait in the view's queue; whoever asks for the next thing wants them written.
void let_keys_through(Session& session, const Instance& instance) {
  constexpr std::int64_t longest_wait = 1000;
  const std::int64_t end = session.loop().now() + longest_wait;
  do session.settle();
  while (!instance.settled() && session.loop().now() < end);
}

/// A dialog that is open has the keyboard.
void press(Instance& instance, const browser::KeyInput& key, bool down) {
  platform::Form* dialog = instance.forms().open();
  if (!dialog) return instance.key(key, down);
  if (down) headless::type_key(*dialog, key);
}

Json type(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  const std::u16string text = params.text("text");
  for (std::size_t at = 0; at < text.size();) {
    // What came as UTF-8 has no half of a pair.
    const std::u16string_view character =
        std::u16string_view(text).substr(at, is_high_surrogate(text[at]) ? 2 : 1);
    const std::u16string_view name = character == u"\n"   ? std::u16string_view(u"Enter")
                                     : character == u"\t" ? u"Tab"
                                                          : character;
    press(instance, key_input(name, {}), true);
    at += character.size();
  }
  let_keys_through(session, instance);
  return Json::object();
}

Json key(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  const browser::KeyInput input = key_input(params.text("key"), {.control = params.flag_or("ctrl", false),
                                                                 .shift = params.flag_or("shift", false),
                                                                 .alt = params.flag_or("alt", false)});
  press(instance, input, !params.flag_or("up", false));
  let_keys_through(session, instance);
  return Json::object();
}

constexpr Method rows[] = {{"document.type", type}, {"document.key", key}};

}  // namespace

std::span<const Method> typing_methods() { return rows; }

}  // namespace tvx::automation
