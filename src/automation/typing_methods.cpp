#include "automation/keys.h"
#include "automation/methods.h"
#include "automation/session.h"

namespace tvx::automation {

namespace {

Json type(Session& session, const Params& params) {
  browser::HTMLDocument& document = session.instance_of(params).document();
  const std::u16string text = params.text("text");
  for (std::size_t at = 0; at < text.size();) {
    const bool pair = is_high_surrogate(text[at]) && at + 1 < text.size() && is_low_surrogate(text[at + 1]);
    const std::u16string_view character = std::u16string_view(text).substr(at, pair ? 2 : 1);
    document.key_down(key_input(character == u"\n" ? u"Enter" : character, {}));
    at += character.size();
  }
  return Json::object();
}

Json key(Session& session, const Params& params) {
  browser::HTMLDocument& document = session.instance_of(params).document();
  const browser::KeyInput input = key_input(
      params.text("key"),
      {params.flag_or("ctrl", false), params.flag_or("shift", false), params.flag_or("alt", false)});
  if (params.flag_or("up", false))
    document.key_up(input);
  else
    document.key_down(input);
  return Json::object();
}

constexpr Method rows[] = {{"document.type", type}, {"document.key", key}};

}  // namespace

std::span<const Method> typing_methods() { return rows; }

}  // namespace tvx::automation
