#include <algorithm>
#include <tuple>

#include "tvx/automation/inside.h"
#include "tvx/automation/methods.h"
#include "tvx/automation/mouse_drag.h"
#include "tvx/automation/session.h"
#include "tvx/base/error.h"
#include "tvx/browser/input/drags.h"
#include "tvx/dom/range.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/platform/message_loop.h"

namespace tvx::automation {

namespace {

using browser::HTMLDocument;
using dom::Element;

[[noreturn]] void bad_params(const char* text) {
  throw ProtocolError(ProtocolError::invalid_params, std::string("Invalid params: ") + text);
}

Json element_json(Instance& instance, Element* element) {
  return to_json(library::element_object(element, instance.control().DOM()));
}

// --- toolbars ---

Json press(Session& session, const Params& params) {
  core::HTMLed& control = session.instance_of(params).control();
  const std::u16string name = params.text("toolbar");
  for (platform::Toolbar* toolbar : {&control.Toolbar1(), &control.Toolbar2(), &control.tlbDOM()}) {
    if (!equals_ignoring_ascii_case(toolbar->Name(), name)) continue;
    if (!control.press(*toolbar, params.text("key")))
      throw RuntimeError(errors::invalid_call, u"The button doesn't answer: " + params.text("key"));
    return Json::object();
  }
  throw RuntimeError(errors::unknown_member, u"No such toolbar: " + name);
}

// --- the mouse ---

Element& element_numbered(HTMLDocument& document, int index) {
  const std::vector<Element*>& all = document.tree().all();
  if (index < 0 || static_cast<std::size_t>(index) >= all.size())
    throw RuntimeError(errors::invalid_call, u"No such element");
  return *all[static_cast<std::size_t>(index)];
}

browser::MouseButton button_of(const Params& params) {
  if (!params.given("button")) return browser::MouseButton::Left;
  if (params.raw("button").is_number()) return static_cast<browser::MouseButton>(params.number("button"));
  const std::u16string name = params.text("button");
  if (name == u"left") return browser::MouseButton::Left;
  if (name == u"right") return browser::MouseButton::Right;
  if (name == u"middle") return browser::MouseButton::Middle;
  bad_params("\"button\" must be left, right or middle");
}

/// [child path, offset]: the path leads from the body by child places to the node.
dom::Boundary boundary_of(HTMLDocument& document, const Json& json) {
  if (!json.is_array() || json.size() != 2 || !json[0].is_array() || !json[1].is_number_unsigned())
    bad_params("a place must be [[child, ...], offset]");
  dom::Node* node = document.body();
  for (const Json& place : json[0]) {
    if (!place.is_number_unsigned()) bad_params("a place must be [[child, ...], offset]");
    if (node) node = dom::child_at(*node, place.get<std::size_t>());
  }
  const auto offset = json[1].get<std::size_t>();
  if (!node || offset > dom::length_of(*node)) throw RuntimeError(errors::invalid_call, u"No such place");
  return {node, offset};
}

/// A point, or an element at whose line the mouse is; the fixed geometry tells the other. The place for
/// a caret there can be given as well.
browser::MouseInput mouse_input(Instance& instance, const Params& params) {
  HTMLDocument& document = instance.document();
  browser::MouseInput mouse;
  mouse.button = button_of(params);
  mouse.shift = params.flag_or("shift", false);
  mouse.control = params.flag_or("ctrl", false);
  if (params.given("element")) {
    const int index = params.number("element");
    mouse.element = element_numbered(document, index);
    std::tie(mouse.x, mouse.y) = instance.stage().place_of(index);
  } else {
    mouse.x = params.number_or("x", 0);
    mouse.y = params.number_or("y", 0);
    mouse.element = instance.stage().element_at(mouse.x, mouse.y);
  }
  if (mouse.element) mouse.place = editing::normalized_caret_place({mouse.element.get(), 0});
  if (params.given("place")) mouse.place = boundary_of(document, params.raw("place"));
  return mouse;
}

bool drag(Instance& instance, const browser::MouseInput& from, const Params& params) {
  if (!params.given("to")) return instance.document().drag_start(from);
  MouseDrag drag{from, mouse_input(instance, params.part("to")), params.text_or("handle", u"")};
  drag.to.control = from.control;
  constexpr std::u16string_view handles[] = {u"", u"e", u"s", u"se", u"column"};
  if (std::find(std::begin(handles), std::end(handles), drag.handle) == std::end(handles))
    bad_params("\"handle\" must be e, s, se or column");
  return run_drag(instance.document(), drag);
}

platform::TransferData dropped_data(const Params& params) {
  platform::TransferData data;
  data.text = params.text_or("text", u"");
  data.html = params.text_or("html", u"");
  if (!params.given("files")) return data;
  if (!params.raw("files").is_array()) bad_params("\"files\" must be a list of addresses");
  for (const Json& address : params.raw("files")) data.uris.push_back(text_of(address));
  return data;
}

/// What is selected is let go, or with "data" what another program brings.
void drop(HTMLDocument& document, const browser::MouseInput& at, const Params& params) {
  if (!at.place) return;
  if (params.given("data")) return browser::drop_data(document, *at.place, dropped_data(params.part("data")));
  browser::drop_selection(document, *at.place,
                          at.control ? browser::DropEffect::Copy : browser::DropEffect::Move);
}

Json mouse(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  HTMLDocument& document = instance.document();
  const browser::MouseInput input = mouse_input(instance, params);
  const std::u16string kind = params.text("kind");
  bool allowed = true;
  instance.menus().clear_shown();
  if (kind == u"press") {
    document.mouse_press(input);
  } else if (kind == u"click") {
    document.mouse_press(input);
    allowed = document.click(input);
  } else if (kind == u"dblclick") {
    document.mouse_press(input);
    document.click(input);
    allowed = document.double_click(input);
  } else if (kind == u"drag") {
    allowed = drag(instance, input, params);
  } else if (kind == u"drop") {
    drop(document, input, params);
  } else if (kind != u"release") {
    throw RuntimeError(errors::not_supported, u"No such mouse event: " + kind);
  }
  session.settle();
  const std::vector<std::u16string>& popups = instance.menus().shown();
  return {{"allowed", allowed},
          {"element", element_json(instance, input.element.get())},
          {"popup", popups.empty() ? Json() : json_text(popups.front())}};
}

// --- the selection ---

std::u16string_view type_of(const editing::Selection& selection) {
  if (selection.type() == editing::SelectionType::Control) return u"Control";
  return selection.type() == editing::SelectionType::Text && !selection.collapsed() ? u"Text" : u"None";
}

/// Without "event" the selection is set as a command sets it; with it, as a press of the mouse there does.
Json select(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  HTMLDocument& document = instance.document();
  dom::Boundary start, end;
  dom::Ref<Element> control;
  if (params.given("control")) {
    control = element_numbered(document, params.number("control"));
  } else if (!params.flag_or("none", false)) {
    start = boundary_of(document, params.raw("start"));
    end = params.given("end") ? boundary_of(document, params.raw("end")) : start;
  }
  if (params.given("event")) {
    const Params event = params.part("event");
    browser::MouseInput input = mouse_input(instance, event);
    if (control) input.element = control;
    input.place = end ? std::optional(end) : std::nullopt;
    input.anchor = start ? std::optional(start) : std::nullopt;
    document.mouse_press(input);
  } else {
    document.select([&](editing::Selection& selection) {
      if (control)
        selection.select_control(*control);
      else if (start)
        selection.set(start, end);
      else
        selection.clear();
    });
  }
  session.settle();
  return {{"type", json_text(type_of(document.editor().selection()))}};
}

// --- navigation ---

/// One event of the browser's, as it raises it.
bool raise_browser_event(core::HTMLed& control, std::u16string_view name, const browser::Navigation& to) {
  browser::BrowserEvents& events = core::Inside::parts(control).navigation;
  bool cancel = false;
  if (name == u"BeforeNavigate2")
    events.BeforeNavigate2(to, cancel);
  else if (name == u"NavigateComplete2")
    events.NavigateComplete2(to.top, to.url);
  else if (name == u"DocumentComplete")
    events.DocumentComplete(to.top, to.url);
  else if (name == u"DownloadBegin")
    events.DownloadBegin();
  else if (name == u"DownloadComplete")
    events.DownloadComplete();
  else if (name == u"NavigateError")
    events.NavigateError(to, 404);
  else
    throw RuntimeError(errors::unknown_member, u"No such event: " + std::u16string(name));
  return cancel;
}

/// Stands between the browser and its control while a navigation runs, to see what becomes of it: of the
/// page, or of one frame in it.
class NavigationWatch final : public browser::BrowserEvents {
 public:
  NavigationWatch(core::HTMLed& control, bool top) : control_(control), top_(top) {
    control.WBrowser().set_events(this);
  }
  ~NavigationWatch() override { control_.WBrowser().set_events(&next()); }

  bool cancelled = false, ended = false;

 private:
  browser::BrowserEvents& next() { return core::Inside::parts(control_).navigation; }
  void BeforeNavigate2(const browser::Navigation& to, bool& cancel) override {
    next().BeforeNavigate2(to, cancel);
    if (to.top == top_ && cancel) cancelled = ended = true;
  }
  void NavigateComplete2(bool top, const std::u16string& url) override { next().NavigateComplete2(top, url); }
  void DocumentComplete(bool top, const std::u16string& url) override {
    next().DocumentComplete(top, url);
    ended = ended || top == top_;
  }
  void DownloadBegin() override { next().DownloadBegin(); }
  void DownloadComplete() override { next().DownloadComplete(); }
  void NavigateError(const browser::Navigation& to, std::int32_t status) override {
    next().NavigateError(to, status);
    ended = ended || to.top == top_;
  }

  core::HTMLed& control_;
  const bool top_;
};

Json navigate(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  browser::Navigation to;
  to.url = params.text_or("url", u"");
  to.target_frame = params.text_or("frame", u"");
  to.top = to.target_frame.empty();
  bool cancelled = false;
  if (params.given("event")) {
    cancelled = raise_browser_event(instance.control(), params.text("event"), to);
  } else {
    NavigationWatch watch(instance.control(), to.top);
    instance.control().WBrowser().follow_link(to);
    // The browser's own limits come before: this ends what is given up without a word.
    constexpr std::int64_t longest_load = 310'000;
    const std::int64_t end = session.loop().now() + longest_load;
    while (!watch.ended && !core::Inside::terminated(instance.control()) && session.loop().now() < end)
      session.loop().pump(5);
    session.settle();
    cancelled = watch.cancelled;
  }
  const auto& document = instance.control().WBrowser().Document();
  return {{"cancelled", cancelled}, {"url", json_text(document ? document->url() : std::u16string())}};
}

constexpr Method rows[] = {{"press", press}, {"mouse", mouse}, {"select", select}, {"navigate", navigate}};

}  // namespace

std::span<const Method> gesture_methods() { return rows; }

}  // namespace tvx::automation
