#include "text.h"
#include "writers.h"

/// What the control itself is made of: its properties, their store, its events.

std::string core_type(const Interface& interface, const std::string& type) {
  static const std::map<std::string, std::string> plain = {
      {"boolean", "bool"}, {"int16", "std::int16_t"},    {"int32", "std::int32_t"},
      {"date", "double"},  {"string", "std::u16string"}, {"shared text", "SharedText"}};
  const auto found = plain.find(type);
  return found != plain.end() ? found->second : interface.is_object(type) ? "Object" : type;
}

std::string core_value(const Interface& interface, const std::string& type, const std::string& value) {
  if (interface.is_enumeration(type)) return type + "::" + value;
  return starts_with(value, "\"") ? "u" + value : value;
}

std::string event_parameters(const Interface& interface, const Entry& event, const std::string& object_type,
                             bool named) {
  std::vector<std::string> list;
  for (const Parameter& parameter : event.parameters) {
    const bool is_object = interface.is_object(parameter.type);
    const std::string type = is_object ? object_type : core_type(interface, parameter.type);
    list.push_back(type + "& " + (named ? parameter.name : "/*" + parameter.name + "*/"));
  }
  return joined(list);
}

namespace {

/// How the control keeps a property: "string = \"Dashed\"" as a type and a value.
struct Kept {
  std::string type, initial;
};
Kept kept(const Entry& entry) {
  const std::string fact = entry.fact("kept");
  if (fact.empty()) return {entry.type, entry.initial};
  const std::size_t equals = fact.find('=');
  if (equals == fact.npos) return {fact, entry.initial};
  return {trimmed(fact.substr(0, equals)), trimmed(fact.substr(equals + 1))};
}

std::string fields(const Interface& interface) {
  std::string code;
  for (const Entry& entry : interface.entries) {
    if (!entry.is_stored() || interface.is_object(entry.type)) continue;
    const Kept as = kept(entry);
    const std::string value =
        as.type == "shared text" ? "share(u" + as.initial + ")" : core_value(interface, as.type, as.initial);
    code +=
        core_type(interface, as.type) + " " + entry.name + (value == "u\"\"" ? "" : " = " + value) + ";\n";
  }
  return code;
}

/// The default that the store knows. Stores that are around tell "true unless told otherwise" as a 16-bit
/// number.
std::string standard_value(const Interface& interface, const Entry& entry) {
  const std::string& other = entry.store.initial;
  if (!other.empty()) return (entry.type == "boolean" ? "std::int16_t(" : "std::int32_t(") + other + ")";
  const Kept as = kept(entry);
  if (interface.is_enumeration(as.type)) return "std::int32_t(" + as.type + "::" + as.initial + ")";
  if (as.type == "boolean") return as.initial;
  if (as.type == "int32") return "std::int32_t(" + as.initial + ")";
  return "std::u16string(u" + as.initial + ")";
}

std::string store_keys(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.in_reading_order()) {
    const std::string member =
        interface.is_object(entry->type) ? "std::monostate{}" : "&Properties::" + entry->name;
    code += "{u\"" + entry->name + "\", " + member + ", " + standard_value(interface, *entry) + ", " +
            (entry->store.unless_default ? "true" : "false") + "},\n";
  }
  return code;
}

std::string writing_order(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.in_writing_order()) code += "u\"" + entry->name + "\",\n";
  return code;
}

std::string getter(const std::string& type, const Entry& property) {
  const bool by_reference = type == "std::u16string";
  const std::string head =
      (by_reference ? "const std::u16string& " : type + " ") + property.name + "() const";
  return head +
         (property.fact("getter").empty() ? " { return properties_." + property.name + "; }\n" : ";\n");
}

std::string setter(const std::string& type, const Entry& property) {
  const std::string name = "set_" + property.name;
  const std::string parameter = type == "std::u16string" ? "std::u16string_view" : type;
  if (property.fact("access") == "refused")
    return "[[noreturn]] void " + name + "(" + parameter + ") { refuse_read_only(); }\n";
  if (property.fact("setter") == "rule") return "void " + name + "(" + parameter + " value);\n";
  std::string code = "void " + name + "(" + parameter + " value) {\n";
  if (property.fact("access") == "design time") code += "  refuse_at_run_time();\n";
  return code + "  store(&Properties::" + property.name + ", value, u\"" + property.name + "\");\n}\n";
}

std::string property_members(const Interface& interface) {
  std::string code;
  for (const Entry* property : interface.all(Kind::Property)) {
    if (property->fact("getter") == "control") continue;
    const std::string type = core_type(interface, property->type);
    code += comment({property->summary}, "") + getter(type, *property);
    if (property->fact("setter") != "control") code += setter(type, *property);
  }
  return code;
}

std::string events(const Interface& interface, const std::string& object_type) {
  std::string code;
  for (const Entry* event : interface.all(Kind::Event)) {
    std::vector<std::string> text = {std::to_string(event->number) + ". " + event->summary};
    text.insert(text.end(), event->prose.begin(), event->prose.end());
    code += comment(text, "  ") +
            broken("  virtual void " + event->name + "(" +
                   event_parameters(interface, *event, object_type, false) + ") {}") +
            "\n";
  }
  return code;
}

std::string class_fields(const Interface& interface, const Entry& described) {
  std::string code;
  for (const Entry& field : described.members)
    if (field.kind == Kind::Property)
      code += core_type(interface, field.type) + " " + field.name +
              (field.type == "string"    ? ""
               : field.type == "boolean" ? " = false"
                                         : " = 0") +
              ";\n";
  return code;
}

}  // namespace

void write_core(const Interface& interface, Pieces& pieces) {
  pieces["property_fields.inc"] = fields(interface);
  pieces["property_members.inc"] = property_members(interface);
  pieces["store_keys.inc"] = store_keys(interface);
  pieces["writing_order.inc"] = writing_order(interface);
  pieces["control_events.inc"] = events(interface, "dom::Ref<dom::Element>");
  pieces["host_events"] = events(interface, "Object");
  for (const Entry* described : interface.all(Kind::Class)) {
    const std::string code = class_fields(interface, *described);
    if (!code.empty()) pieces[described->name + "_fields.inc"] = code;
  }
}
