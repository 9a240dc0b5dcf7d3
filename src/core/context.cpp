#include "tvx/core/context.h"

#include "tvx/base/error.h"
#include "tvx/browser/browser.h"
#include "tvx/core/events.h"

namespace tvx::core {

browser::HTMLDocument& Context::document() const {
  if (!DOM()) throw RuntimeError(errors::object_not_set, u"There is no document");
  return *DOM();
}

browser::HTMLDocument& Context::browser_document() const {
  if (!browser().Document()) throw RuntimeError(errors::object_not_set, u"There is no document");
  return *browser().Document();
}

dom::Element& body_of(browser::HTMLDocument& document) {
  dom::Element* body = document.body();
  if (!body) throw RuntimeError(errors::object_not_set, u"The document has no body");
  return *body;
}

void Context::raise_error(std::int32_t number, std::u16string text) {
  raise([&](HTMLedEvents& host) { host.Error(number, text); });
}

void Context::mark_changed() {
  PropertyChanged(u"DocumentHTML");
  properties().IsDirty = true;
  state_changed();
}

void Context::mark_clean() {
  PropertyChanged(u"DocumentHTML");
  properties().IsDirty = false;
  state_changed();
}

void Context::wait_while(const std::function<bool()>& lacks) {
  while (lacks() && browser().is_loading()) Wait();
}

void Context::wait_until_complete() {
  document();
  wait_while([&] { return browser().ReadyState() != browser::ReadyState::Complete; });
  wait_while([&] { return document().readyState() != u"complete"; });
}

void Context::set_design_mode_of_browser() {
  browser_document().set_designMode(properties().EditorEnabled && run_time() ? u"On" : u"Off");
}

}  // namespace tvx::core
