#include <algorithm>

#include "tvx/automation/methods.h"
#include "tvx/automation/session.h"
#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/object.h"

namespace tvx::automation {

namespace {

Json get(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  return {{"value", to_json(library::get_property(instance.control(), params.text("name")))}};
}

Json set(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  if (!params.has("value"))
    throw ProtocolError(ProtocolError::invalid_params, "Invalid params: \"value\" is missing");
  const library::Value value = from_json(params.raw("value"), &instance);
  library::set_property(instance.control(), params.text("name"), value);
  return Json::object();
}

Json call(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  library::Values arguments;
  for (const Json& argument : params.list("args")) arguments.push_back(from_json(argument, &instance));
  const library::Value result = library::call_method(instance.control(), params.text("name"), arguments);
  return {{"result", to_json(result)}, {"args", to_json(library::Value(arguments))}};
}

Json answer(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  const std::u16string name = params.text("event");
  const library::EventMember* event = library::find_event(name);
  if (!event) library::unknown_member(name);
  if (params.given("set"))
    instance.answers().set(*event, argument_values(*event, params.part("set")));
  else
    instance.answers().clear(*event);
  return Json::object();
}

Json expect(Session& session, const Params& params) {
  return {{"id", session.instance_of(params).expectations().add(params)}};
}

Json pump(Session& session, const Params& params) {
  session.pump(params.number_or("ms", 0));
  return Json::object();
}

/// Operations that can be made to fail. That of a command goes on with the command's name.
constexpr std::u16string_view operations[] = {u"body.innerHTML",
                                              u"CheckSpelling",
                                              u"CloseLocalFile",
                                              u"CreateObject",
                                              u"DeleteLocalFile",
                                              u"DeleteUrlCacheEntry",
                                              u"Documents.Add",
                                              u"ExecWB",
                                              u"FileCopy",
                                              u"FtpCreateDirectory",
                                              u"FtpDeleteFile",
                                              u"FtpFindFirstFile",
                                              u"FtpGetCurrentDirectory",
                                              u"FtpOpenFile",
                                              u"FtpRemoveDirectory",
                                              u"FtpRenameFile",
                                              u"FtpSetCurrentDirectory",
                                              u"GetAttr",
                                              u"GetSpellingSuggestions",
                                              u"GetWindowThreadProcessId",
                                              u"GlobalAlloc",
                                              u"InternetAutodial",
                                              u"InternetConnect",
                                              u"InternetFindNextFile",
                                              u"InternetOpen",
                                              u"InternetReadFile",
                                              u"InternetWriteFile",
                                              u"OleTranslateColor",
                                              u"OpenClipboard",
                                              u"OpenLocalFile",
                                              u"QueryStatusWB",
                                              u"ReadLocalFile",
                                              u"ReadPage",
                                              u"RegisterClipboardFormat",
                                              u"SetClipboardData",
                                              u"SetProp",
                                              u"SetTimer",
                                              u"SetWindowLong",
                                              u"ShowColor",
                                              u"ShowOpen",
                                              u"ShowSave",
                                              u"UrlCanonicalize",
                                              u"UrlEscape",
                                              u"UrlUnescape",
                                              u"WriteLocalFile",
                                              u"WriteTextFile"};
constexpr std::u16string_view command_operation = u"execCommand ";

/// RuntimeError(438) for a name that is none of these.
void require_operation(std::u16string_view name) {
  const auto is_it = [name](std::u16string_view known) { return equals_ignoring_ascii_case(known, name); };
  if (std::ranges::none_of(operations, is_it) &&
      !equals_ignoring_ascii_case(name.substr(0, command_operation.size()), command_operation))
    library::unknown_member(name);
}

/// {"error":[number,text]} throws, {"result":v} answers so; neither: the failure that says nothing more.
Json fault(Session&, const Params& params) {
  Fault fault;
  if (params.given("error")) {
    const std::vector<Json>& error = params.list("error");
    if (error.size() != 2 || !error[0].is_number_integer())
      throw ProtocolError(ProtocolError::invalid_params, "Invalid params: \"error\" must be [number, text]");
    fault.error = RuntimeError(error[0].get<int>(), text_of(error[1]));
  } else if (params.given("result")) {
    fault.result = from_json(params.raw("result")).to_integer32();
  } else {
    throw ProtocolError(ProtocolError::invalid_params, "Invalid params: \"result\" or \"error\" is missing");
  }
  const std::u16string operation = params.text("operation");
  require_operation(operation);
  set_fault(operation, std::move(fault), params.number_or("times", 1));
  return Json::object();
}

constexpr Method rows[] = {
    {"get", get},       {"set", set},   {"call", call},   {"answer", answer},
    {"expect", expect}, {"pump", pump}, {"fault", fault},
};

}  // namespace

std::span<const Method> member_methods() { return rows; }

}  // namespace tvx::automation
