#include "tvx/automation/bench.h"
#include "tvx/automation/methods.h"
#include "tvx/automation/session.h"
#include "tvx/base/error.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"
#include "tvx/dom/serialise.h"
#include "tvx/editing/walk/marks.h"

namespace tvx::automation {

namespace {

[[noreturn]] void bad_params(const char* text) {
  throw ProtocolError(ProtocolError::invalid_params, std::string("Invalid params: ") + text);
}

Json load(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  const std::u16string host = params.text_or("host", u"body");
  if (host != u"body" && host != u"div") bad_params("\"host\" must be \"body\" or \"div\"");
  BenchContent content;
  content.html = params.text("html");
  content.in_div = host == u"div";
  content.style_with_css = params.flag_or("css", false);
  content.separator = params.text_or("separator", u"p");
  if (content.separator != u"div" && content.separator != u"p")
    bad_params("\"separator\" must be \"div\" or \"p\"");
  content.sheet = params.text_or("sheet", u"");
  instance.host = lay_out_bench(instance.document().editor(), content, true);
  return Json::object();
}

/// Command values come as texts, or as the true and the numbers that the platform's commands take.
std::u16string command_value(const Params& params) {
  if (!params.given("value")) return {};
  return from_json(params.raw("value")).to_text();
}

Json exec(Session& session, const Params& params) {
  browser::HTMLDocument& document = session.instance_of(params).document();
  return {{"returned",
           document.execCommand(params.text("command"), params.flag_or("ui", false), command_value(params))}};
}

/// At every face of the control this one call says true as -1 and false as 0.
struct ToJson {
  Json operator()(bool flag) const { return flag ? -1 : 0; }
  Json operator()(std::int32_t number) const { return number; }
  Json operator()(const std::u16string& text) const { return json_text(text); }
  Json operator()(std::monostate) const { return nullptr; }
};

Json query(Session& session, const Params& params) {
  browser::HTMLDocument& document = session.instance_of(params).document();
  editing::Editor& editor = document.editor();
  const std::u16string command = params.text("command");
  const bool supported = editor.supported(command);
  return {{"supported", supported},
          {"enabled", supported && editor.enabled(command)},
          {"indeterm", supported && editor.indeterminate(command)},
          {"state", supported && editor.state(command)},
          {"value", json_text(supported ? editor.value(command) : std::u16string())},
          {"platform", supported ? std::visit(ToJson{}, document.queryCommandValue(command)) : Json()}};
}

/// The element that the last document.load filled, while it stands; else the body.
const dom::Element& host_of(Instance& instance) {
  const dom::Document& document = instance.document().tree();
  if (instance.host && instance.host->document() == &document) return *instance.host;
  const dom::Element* body = document.body();
  if (!body) throw RuntimeError(errors::object_not_set, u"The document has no body");
  return *body;
}

Json dump(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  const std::u16string name = params.text_or("letters", u"upper");
  if (name != u"upper" && name != u"lower") bad_params("\"letters\" must be \"upper\" or \"lower\"");
  const dom::Letters letters = name == u"lower" ? dom::Letters::Lower : dom::Letters::Upper;
  const dom::Element& host = host_of(instance);
  return {{"html", json_text(params.flag_or("marks", false)
                                 ? editing::dump_marked(instance.document().editor(), host, letters)
                                 : dom::serialise_children(host, letters))}};
}

dom::FragmentContext context_named(std::u16string_view name) {
  dom::FragmentContext context;
  const std::size_t blank = name.find(u' ');
  const std::u16string_view space = name.substr(0, blank == name.npos ? 0 : blank);
  if (space == u"svg") context.name_space = dom::Namespace::Svg;
  if (space == u"math") context.name_space = dom::Namespace::MathMl;
  context.name = dom::Name(name.substr(space.empty() ? 0 : blank + 1));
  context.inside_form = space.empty() && name == u"form";
  return context;
}

Json parse(Session&, const Params& params) {
  const std::u16string html = params.text("html");
  if (!params.given("context")) return {{"tree", json_text(dom::print_tree(*dom::parse_document(html)))}};
  const dom::Ref<dom::Document> document = dom::Document::create();
  const dom::FragmentContext context = context_named(params.text("context"));
  return {{"tree", json_text(dom::print_tree(*dom::parse_fragment(*document, context, html)))}};
}

constexpr Method rows[] = {
    {"document.load", load}, {"document.exec", exec},   {"document.query", query},
    {"document.dump", dump}, {"document.parse", parse},
};

}  // namespace

std::span<const Method> document_methods() { return rows; }

}  // namespace tvx::automation
