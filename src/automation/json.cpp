#include "tvx/automation/json.h"

#include <cmath>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/library/objects/object.h"

template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace tvx::automation {

namespace {

/// Lists within lists of a request; nobody means more.
constexpr int deepest_list = 64;

[[noreturn]] void wrong_param(const char* name, const char* wanted) {
  throw ProtocolError(ProtocolError::invalid_params,
                      std::string("Invalid params: \"") + name + "\" must be " + wanted);
}

library::Value from_json_at(const Json& json, const ObjectResolver* resolver, int depth) {
  switch (json.type()) {
    case Json::value_t::null: return {};
    case Json::value_t::boolean: return json.get<bool>();
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned: {
      const auto number = json.get<std::int64_t>();
      if (number == static_cast<std::int32_t>(number)) return static_cast<std::int32_t>(number);
      return number;
    }
    case Json::value_t::number_float: return json.get<double>();
    case Json::value_t::string: return text_of(json);
    case Json::value_t::array: {
      if (depth == deepest_list) library::type_mismatch();
      library::Values values;
      for (const Json& item : json) values.push_back(from_json_at(item, resolver, depth + 1));
      return values;
    }
    default: break;
  }
  if (json.is_object() && resolver) return resolver->resolve(json);
  library::type_mismatch();
}

struct ToJson {
  Json operator()(std::monostate) const { return nullptr; }
  Json operator()(bool flag) const { return flag; }
  Json operator()(std::int32_t number) const { return number; }
  Json operator()(std::int64_t number) const { return number; }
  Json operator()(double number) const {
    if (number == std::floor(number) && std::abs(number) < 1e15) return static_cast<std::int64_t>(number);
    return number;
  }
  Json operator()(const std::u16string& text) const { return json_text(text); }
  Json operator()(const library::ObjectHandle& object) const {
    Json json{{"object", to_utf8(object->kind())}};
    for (const auto& [name, value] : object->description()) json[name] = to_json(value);
    return json;
  }
  Json operator()(const library::Values& values) const {
    Json list = Json::array();
    for (const library::Value& value : values) list.push_back(to_json(value));
    return list;
  }
};

}  // namespace

Json json_text(std::u16string_view text) { return to_utf8(text); }

std::u16string text_of(const Json& json) {
  if (!json.is_string()) library::type_mismatch();
  return from_utf8(json.get_ref<const std::string&>());
}

Json to_json(const library::Value& value) { return std::visit(ToJson{}, value.data()); }

library::Value from_json(const Json& json, const ObjectResolver* resolver) {
  return from_json_at(json, resolver, 0);
}

const Json& Params::raw(const char* name) const {
  static const Json nothing;
  const auto found = object_.find(name);
  return found == object_.end() ? nothing : *found;
}

std::u16string Params::text(const char* name) const {
  const Json& value = raw(name);
  if (!value.is_string()) wrong_param(name, "a string");
  return text_of(value);
}

std::u16string Params::text_or(const char* name, std::u16string_view otherwise) const {
  return given(name) ? text(name) : std::u16string(otherwise);
}

bool Params::flag_or(const char* name, bool otherwise) const {
  if (!given(name)) return otherwise;
  if (!raw(name).is_boolean()) wrong_param(name, "true or false");
  return raw(name).get<bool>();
}

int Params::number(const char* name) const {
  const Json& value = raw(name);
  if (!value.is_number_integer()) wrong_param(name, "a whole number");
  const auto number = value.get<std::int64_t>();
  if (number != static_cast<int>(number)) wrong_param(name, "a 32-bit number");
  return static_cast<int>(number);
}

int Params::number_or(const char* name, int otherwise) const {
  return given(name) ? number(name) : otherwise;
}

const std::vector<Json>& Params::list(const char* name) const {
  static const std::vector<Json> nothing;
  if (!given(name)) return nothing;
  if (!raw(name).is_array()) wrong_param(name, "a list");
  return raw(name).get_ref<const Json::array_t&>();
}

Params Params::part(const char* name) const {
  if (!given(name)) return Params(Json::object());
  if (!raw(name).is_object()) wrong_param(name, "an object");
  return Params(raw(name));
}

}  // namespace tvx::automation
