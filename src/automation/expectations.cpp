#include "tvx/automation/expectations.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/object.h"

namespace tvx::automation {

using headless::DialogKind;
using library::EventMember;
using platform::ControlKind;
using platform::Form;
using platform::MessageAnswer;

namespace {

const EventMember& event_named(std::u16string_view name) {
  const EventMember* event = library::find_event(name);
  if (!event) library::unknown_member(name);
  return *event;
}

std::size_t place_of(const EventMember& event, std::u16string_view name) {
  for (std::size_t place = 0; place < event.parameters.size(); ++place)
    if (equals_ignoring_ascii_case(event.parameters[place].name, name)) return place;
  library::unknown_member(name);
}

constexpr std::pair<std::u16string_view, MessageAnswer> answer_names[] = {{u"OK", MessageAnswer::ok},
                                                                          {u"Cancel", MessageAnswer::cancel},
                                                                          {u"Yes", MessageAnswer::yes},
                                                                          {u"No", MessageAnswer::no}};

std::u16string_view name_of(MessageAnswer answer) {
  for (const auto& [name, value] : answer_names)
    if (value == answer) return name;
  return u"";
}

MessageAnswer answer_named(std::u16string_view name) {
  for (const auto& [own, value] : answer_names)
    if (equals_ignoring_ascii_case(own, name)) return value;
  throw RuntimeError(errors::invalid_call, u"No such button: " + std::u16string(name));
}

/// "#rrggbb", or the platform's number with red in the low byte.
Colour colour_of(const Json& json) {
  if (json.is_number_integer()) return json.get<Colour>();
  const std::u16string text = text_of(json);
  std::uint32_t number = 0;
  if (text.size() != 7 || text[0] != u'#') library::type_mismatch();
  for (const char16_t c : text.substr(1)) {
    const char16_t letter = ascii_lower(c);
    if (!is_ascii_digit(letter) && !(letter >= u'a' && letter <= u'f')) library::type_mismatch();
    number = number * 16 + (is_ascii_digit(letter) ? letter - u'0' : letter - u'a' + 10);
  }
  return static_cast<Colour>((number & 0xFF) << 16 | (number & 0xFF00) | number >> 16);
}

/// What the user who isn't there chooses: "result", or the button of "press".
decltype(headless::ExpectedDialog::answer) dialog_answer(DialogKind kind, const Params& params) {
  const std::u16string press = params.text_or("press", u"");
  if (kind == DialogKind::msgbox) {
    if (!press.empty()) return answer_named(press);
    if (!params.given("result")) return {};
    if (params.raw("result").is_string()) return answer_named(params.text("result"));
    return static_cast<MessageAnswer>(params.number("result"));
  }
  if (!params.given("result") || equals_ignoring_ascii_case(press, u"Cancel")) return {};
  if (kind == DialogKind::color) return colour_of(params.raw("result"));
  return params.text("result");
}

struct Seen {
  Json operator()(const headless::ColorDialog& dialog) const { return {{"colour", dialog.colour}}; }
  Json operator()(const platform::FileDialog& dialog) const {
    Json items = Json::array();
    for (const platform::FileFilter& filter : dialog.filters)
      items.push_back({{"name", json_text(filter.name)}, {"pattern", json_text(filter.pattern)}});
    return {{"captions", {json_text(dialog.title)}}, {"items", items}, {"texts", {json_text(dialog.preset)}}};
  }
  Json operator()(const platform::LinkDialog& dialog) const {
    return {{"texts", {json_text(dialog.address)}}};
  }
  Json operator()(const platform::MessageBox& box) const {
    Json items = Json::array();
    for (const MessageAnswer answer : platform::answers_of(box.buttons))
      items.push_back(json_text(name_of(answer)));
    return {{"captions", {json_text(box.title)}}, {"items", items}, {"texts", {json_text(box.text)}}};
  }
};

std::u16string title_of(const headless::ShownDialog& dialog) {
  if (const auto* box = std::get_if<platform::MessageBox>(&dialog)) return box->title;
  if (const auto* open = std::get_if<headless::OpenDialog>(&dialog)) return open->title;
  if (const auto* save = std::get_if<headless::SaveDialog>(&dialog)) return save->title;
  return {};
}

/// Whether a script is told of an item: it, and each menu that it is below.
bool is_told(const platform::Menu* item) {
  while (item && item->is_listed()) item = item->parent();
  return !item;
}

/// All items in order, submenus' after their head: what they are called, what they say, how they stand.
Json seen_in(platform::Menu& menu) {
  Json items = Json::array(), captions = Json::array(), enabled = Json::array(), visible = Json::array();
  for (const platform::Menu* item : platform::all_items(menu)) {
    if (!is_told(item)) continue;
    items.push_back(json_text(platform::name_with_index(*item)));
    captions.push_back(json_text(item->Caption()));
    enabled.push_back(item->Enabled());
    visible.push_back(item->Visible());
  }
  return {{"items", items}, {"captions", captions}, {"enabled", enabled}, {"visible", visible}};
}

/// Of a list with columns all texts of each row.
Json rows_of(const platform::ListView& list) {
  Json rows = Json::array();
  for (int row = 0; row < list.count(); ++row) {
    Json texts = Json::array({json_text(list.item(row).text)});
    for (const std::u16string& text : list.item(row).sub_items) texts.push_back(json_text(text));
    rows.push_back(std::move(texts));
  }
  return rows;
}

/// What a dialog shows, by its controls' names; its own caption under its own name.
Json seen_in(const Form& form) {
  Json captions = {{to_utf8(form.Name()), json_text(form.Caption())}};
  Json texts = Json::object(), values = Json::object(), items = Json::object();
  Json enabled = Json::object(), visible = Json::object();
  for (const auto& control : form.controls()) {
    const std::string name = to_utf8(control->Name());
    enabled[name] = control->Enabled();
    visible[name] = control->Visible();
    if (control->has_caption()) captions[name] = json_text(control->Caption());
    if (control->has_text()) texts[name] = json_text(control->Text());
    if (control->kind() == ControlKind::CheckBox) values[name] = control->Value();
    if (control->kind() == ControlKind::ListView) items[name] = rows_of(control->list_view());
    if (!control->is_list()) continue;
    Json list = Json::array();
    for (int index = 0; index < control->ListCount(); ++index)
      list.push_back(json_text(control->List(index)));
    items[name] = std::move(list);
  }
  return {{"captions", captions}, {"texts", texts},     {"values", values},
          {"items", items},       {"enabled", enabled}, {"visible", visible}};
}

/// As the user fills it: texts into boxes, choices into lists, ticks. What the user couldn't reach can't be
/// filled.
void fill(Form& form, const Params& set) {
  for (const auto& [name, json] : set.object().items()) {
    platform::FormControl& control = form.Controls(from_utf8(name));
    const library::Value value = from_json(json);
    if (control.kind() == ControlKind::CheckBox)
      headless::tick(control, value.to_boolean());
    else
      headless::fill(control, value.to_text());
  }
}

}  // namespace

ArgumentValues argument_values(const EventMember& event, const Params& set) {
  ArgumentValues values;
  for (const auto& [name, json] : set.object().items()) {
    const std::size_t place = place_of(event, from_utf8(name));
    const library::Type type = event.parameters[place].type;
    // Objects are told, never written: what a host puts there goes nowhere.
    if (type == library::Type::Object) continue;
    values.emplace_back(place, library::converted(from_json(json), type));
  }
  return values;
}

Json named_arguments(const EventMember& event, const library::Values& arguments) {
  Json named = Json::object();
  for (std::size_t place = 0; place < arguments.size(); ++place)
    named[to_utf8(event.parameters[place].name)] = to_json(arguments[place]);
  return named;
}

void EventAnswers::apply(const EventMember& event, library::Values& arguments) const {
  const auto found = values_.find(event.number);
  if (found == values_.end()) return;
  for (const auto& [place, value] : found->second) arguments[place] = value;
}

Expectations::Expectations(headless::Dialogs& dialogs, headless::Menus& menus, headless::Forms& forms,
                           Notify notify, Run run)
    : dialogs_(dialogs), menus_(menus), forms_(forms), notify_(std::move(notify)), run_(std::move(run)) {
  dialogs_.on_opened([this](const headless::ShownDialog& dialog) { opened(dialog); });
  dialogs_.on_closed([this](const headless::ShownDialog& dialog, const headless::ExpectedDialog* expected) {
    closed(dialog, expected);
  });
  menus_.on_opened([this](platform::Menu& menu) { popup_opened(menu); });
  menus_.on_closed([this](platform::Menu&, const headless::ExpectedPopup* expected,
                          const platform::Menu* chosen) { popup_closed(expected, chosen); });
  forms_.on_opened([this](platform::Form& form) { form_opened(form); });
  forms_.on_closed(
      [this](platform::Form& form, const headless::ExpectedForm* expected,
             const std::optional<RuntimeError>& failure) { form_closed(form, expected, failure); });
}

int Expectations::add(const Params& params) {
  const std::u16string on = params.text("on");
  const int id = last_id_ + 1;
  if (on.starts_with(u"event:"))
    add_event(id, std::u16string_view(on).substr(6), params);
  else if (on.starts_with(u"popup:"))
    add_popup(id, std::u16string_view(on).substr(6), params);
  else if (on.starts_with(u"dialog:"))
    add_form(id, std::u16string_view(on).substr(7), params);
  else if (on == u"open")
    add_dialog(id, DialogKind::open, params);
  else if (on == u"save")
    add_dialog(id, DialogKind::save, params);
  else if (on == u"color")
    add_dialog(id, DialogKind::color, params);
  else if (on == u"msgbox")
    add_dialog(id, DialogKind::msgbox, params);
  else if (on == u"link")
    add_dialog(id, DialogKind::link, params);
  else if (on == u"print")
    prints_.push_back({id, params.list("do"), params.number_or("times", 1)});
  else
    throw RuntimeError(errors::not_supported, u"Nothing to expect: " + on);
  return last_id_ = id;
}

void Expectations::add_event(int id, std::u16string_view name, const Params& params) {
  const EventMember& event = event_named(name);
  events_.push_back({id, &event, argument_values(event, params.part("set")), params.list("do"),
                     params.number_or("times", 1)});
}

void Expectations::add_dialog(int id, DialogKind kind, const Params& params) {
  headless::ExpectedDialog expected{.kind = kind, .answer = dialog_answer(kind, params)};
  expected.while_open = [this, id, requests = params.list("do")](const headless::ShownDialog&) {
    did_[id] = run_all(requests);
  };
  expected.times = params.number_or("times", 1);
  expected.id = id;
  dialogs_.expect(std::move(expected));
}

void Expectations::add_popup(int id, std::u16string_view menu, const Params& params) {
  headless::ExpectedPopup expected{.menu = std::u16string(menu), .choose = params.text_or("choose", u"")};
  expected.while_open = [this, id, requests = params.list("do")](platform::Menu&) {
    did_[id] = run_all(requests);
  };
  expected.times = params.number_or("times", 1);
  expected.id = id;
  menus_.expect(std::move(expected));
}

void Expectations::use(const EventMember& event, library::Values& arguments) {
  const auto found = std::ranges::find(events_, &event, &ExpectedEvent::event);
  if (found == events_.end()) return;
  const ExpectedEvent expected = *found;
  if (--found->times <= 0) events_.erase(found);
  const Json seen = named_arguments(event, arguments);
  const Json did = run_all(expected.requests);
  for (const auto& [place, value] : expected.set) arguments[place] = value;
  notify_("seen", {{"id", expected.id}, {"seen", {{"args", seen}}}, {"did", did}});
}

void Expectations::print(bool with_dialog) {
  if (with_dialog) notify_("modal", {{"kind", "print"}, {"name", ""}});
  if (prints_.empty()) return;
  const ExpectedPrint expected = prints_.front();
  if (--prints_.front().times <= 0) prints_.pop_front();
  const Json did = run_all(expected.requests);
  notify_("seen", {{"id", expected.id}, {"seen", {{"dialog", with_dialog}}}, {"did", did}});
}

Json Expectations::run_all(const std::vector<Json>& requests) const {
  Json did = Json::array();
  for (const Json& request : requests) did.push_back(run_(request));
  return did;
}

void Expectations::opened(const headless::ShownDialog& dialog) const {
  notify_("modal", {{"kind", to_utf8(headless::name_of(headless::kind_of(dialog)))},
                    {"name", json_text(title_of(dialog))}});
}

void Expectations::closed(const headless::ShownDialog& dialog, const headless::ExpectedDialog* expected) {
  if (!expected) return;
  const Json did = taken(did_, expected->id);
  notify_("seen", {{"id", expected->id}, {"seen", std::visit(Seen{}, dialog)}, {"did", did}});
}

Json Expectations::taken(std::map<int, Json>& from, int id) const {
  const auto place = from.find(id);
  if (place == from.end()) return Json::array();
  Json answers = std::move(place->second);
  from.erase(place);
  return answers;
}

// --- popups ---

void Expectations::popup_opened(platform::Menu& menu) {
  seen_.push_back(seen_in(menu));
  // Without a place it opens at the mouse.
  if (const auto& place = menus_.last_place()) {
    seen_.back()["x"] = to_json(library::Value(double{place->x}));
    seen_.back()["y"] = to_json(library::Value(double{place->y}));
  }
  notify_("modal", {{"kind", "popup"}, {"name", json_text(menu.Name())}});
}

void Expectations::popup_closed(const headless::ExpectedPopup* expected, const platform::Menu* chosen) {
  Json seen = std::move(seen_.back());
  seen_.pop_back();
  if (!expected) return;
  seen["chosen"] = chosen ? json_text(platform::name_with_index(*chosen)) : Json();
  notify_("seen", {{"id", expected->id}, {"seen", std::move(seen)}, {"did", taken(did_, expected->id)}});
}

// --- the control's dialogs ---

void Expectations::add_form(int id, std::u16string_view form, const Params& params) {
  headless::ExpectedForm expected{.form = std::u16string(form), .press = params.text_or("press", u"")};
  expected.while_open = [this, id, set = params.part("set"), requests = params.list("do")](Form& open) {
    fill(open, set);
    did_[id] = run_all(requests);
  };
  expected.times = params.number_or("times", 1);
  expected.id = id;
  forms_.expect(std::move(expected));
}

void Expectations::form_opened(Form& form) {
  seen_in_forms_[&form] = seen_in(form);
  notify_("modal", {{"kind", "dialog"}, {"name", json_text(form.Name())}});
}

void Expectations::form_closed(const Form& form, const headless::ExpectedForm* expected,
                               const std::optional<RuntimeError>& failure) {
  Json seen = std::move(seen_in_forms_[&form]);
  seen_in_forms_.erase(&form);
  if (!expected) return;
  // What shows progress says most at its end.
  if (forms_.is_beside(form)) seen["last"] = seen_in(form);
  Json told = {{"id", expected->id}, {"seen", std::move(seen)}, {"did", taken(did_, expected->id)}};
  if (failure) told["error"] = {{"code", failure->number()}, {"message", json_text(failure->text())}};
  notify_("seen", std::move(told));
}

}  // namespace tvx::automation
