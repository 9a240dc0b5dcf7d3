#include "tvx/automation/control_object.h"
#include "tvx/automation/methods.h"
#include "tvx/automation/session.h"
#include "tvx/library/objects/object_path.h"

namespace tvx::automation {

namespace {

Json object(Session& session, const Params& params) {
  Instance& instance = session.instance_of(params);
  std::vector<library::PathStep> steps = library::parse_path(params.text("path"));
  const library::ObjectHandle root = control_object(instance, session.loop());
  if (params.has("set")) {
    const library::Value value = from_json(params.raw("set"), &instance);
    library::write_path(*root, steps, value);
    return {{"value", to_json(value)}};
  }
  for (const Json& argument : params.list("args"))
    steps.back().arguments.push_back(from_json(argument, &instance));
  const library::Value value = library::read_path(*root, steps);
  Json answer{{"value", to_json(value)}};
  if (params.given("args")) answer["args"] = to_json(library::Value(steps.back().arguments));
  return answer;
}

constexpr Method rows[] = {{"object", object}};

}  // namespace

std::span<const Method> object_methods() { return rows; }

}  // namespace tvx::automation
