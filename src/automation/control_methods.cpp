#include <tuple>

#include "tvx/automation/methods.h"
#include "tvx/automation/session.h"
#include "tvx/base/error.h"

namespace tvx::automation {

namespace {

[[noreturn]] void bad_params(const char* text) {
  throw ProtocolError(ProtocolError::invalid_params, std::string("Invalid params: ") + text);
}

Json told(Instance& instance) {
  return {{"instance", instance.number()}, {"hwnd", instance.control().hwnd()}};
}

/// Width and height, in twips.
std::pair<float, float> size_of(const Params& params) {
  const std::vector<Json>& size = params.list("size");
  if (size.size() != 2 || !size[0].is_number() || !size[1].is_number())
    bad_params("\"size\" must be [width, height]");
  return {size[0].get<float>(), size[1].get<float>()};
}

platform::PropertyValue stored_value(const Json& json) {
  if (json.is_boolean()) return json.get<bool>();
  if (json.is_string()) return text_of(json);
  const library::Value value = from_json(json);
  const std::int32_t number = value.to_integer32();
  if (number == static_cast<std::int16_t>(number)) return static_cast<std::int16_t>(number);
  return number;
}

headless::PropertyBag stored_values(const Params& store) {
  headless::PropertyBag bag;
  for (const auto& [key, value] : store.object().items()) bag.put(from_utf8(key), stored_value(value));
  return bag;
}

CodePage code_page_named(const Params& params) {
  const std::optional<CodePage> page = CodePage::by_name(to_utf8(params.text("codepage")));
  if (!page) throw RuntimeError(errors::invalid_call, u"No such code page: " + params.text("codepage"));
  return *page;
}

InstanceOptions options_of(const Params& params) {
  InstanceOptions options;
  const std::u16string mode = params.text_or("mode", u"run");
  if (mode != u"run" && mode != u"design") bad_params("\"mode\" must be \"run\" or \"design\"");
  options.design_mode = mode == u"design";
  if (params.given("store"))
    options.store = stored_values(params.part("store"));
  else if (params.has("store"))
    options.store.reset();
  if (params.given("codepage")) options.code_page = code_page_named(params);
  if (params.given("folder")) options.folder = params.text("folder");
  options.hwnd = static_cast<platform::WindowHandle>(params.number_or("hwnd", 0));
  if (params.given("size")) std::tie(options.width, options.height) = size_of(params);
  return options;
}

Json begin(Session& session, const Params& params) { return told(session.add_instance(options_of(params))); }

Json show(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  instance.stage().show();
  return told(instance);
}

Json resize(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  if (params.given("size")) {
    const auto [width, height] = size_of(params);
    instance.stage().resize(width, height);
  } else {
    instance.control().UserControl_Resize();
  }
  return told(instance);
}

Json enter_focus(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  instance.control().UserControl_EnterFocus();
  return told(instance);
}

Json exit_focus(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  instance.control().UserControl_ExitFocus();
  return told(instance);
}

struct StoredToJson {
  Json operator()(const std::u16string& text) const { return json_text(text); }
  Json operator()(bool flag) const { return flag; }
  Json operator()(std::int16_t number) const { return number; }
  Json operator()(std::int32_t number) const { return number; }
};

Json write(Session& session, const Params& params) {
  const headless::PropertyBag bag = session.instance_of(params).stored();
  Json store = Json::object();
  for (const auto& [key, value] : bag.entries()) store[to_utf8(key)] = std::visit(StoredToJson{}, value);
  Json order = Json::array();
  for (const std::u16string& key : bag.written()) order.push_back(json_text(key));
  return {{"store", std::move(store)}, {"order", std::move(order)}};
}

Json terminate(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  const Json answer = told(instance);
  session.remove_instance(instance.number());
  return answer;
}

constexpr Method acts[] = {
    {"new", begin},
    {"show", show},
    {"resize", resize},
    {"enterFocus", enter_focus},
    {"exitFocus", exit_focus},
    {"write", write},
    {"terminate", terminate},
};

Json control(Session& session, const Params& params) {
  const std::string act = to_utf8(params.text("do"));
  for (const Method& row : acts)
    if (row.name == act) return row.run(session, params);
  bad_params("\"do\" must be new, show, resize, enterFocus, exitFocus, write or terminate");
}

constexpr Method rows[] = {{"control", control}};

}  // namespace

std::span<const Method> control_methods() { return rows; }

}  // namespace tvx::automation
