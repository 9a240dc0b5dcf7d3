#include <stdexcept>

#include "text.h"
#include "writers.h"

/// The control's faces in C++: tvx::HTMLed, and the widget with its Qt properties, slots and signals.

std::string returned_parameter(const Entry& operation) {
  for (const Parameter& parameter : operation.parameters)
    if (parameter.out) return parameter.name;
  const std::string returns = operation.fact("returns");
  return returns == "nothing" ? "" : returns;
}

namespace {

std::string value_type(const Interface& interface, const std::string& type, Face face) {
  if (interface.is_object(type)) return face == Face::Qt ? "tvx::Object" : "Object";
  if (face == Face::Host) return core_type(interface, type);
  return type == "string"                     ? "QString"
         : type == "boolean"                  ? "bool"
         : type == "int32" || type == "int16" ? "int"
                                              : type;
}

/// As a parameter; an operation's slot names an enumeration in full, for Qt compares the texts.
std::string passed_type(const Interface& interface, const std::string& type, Face face) {
  if (type == "string" || type == "variant")
    return face == Face::Qt ? "const QString&" : "std::u16string_view";
  if (interface.is_enumeration(type) && face == Face::Qt) return "tvx::qt::HTMLedWidget::" + type;
  return value_type(interface, type, face);
}

std::string default_value(const Interface& interface, const Parameter& parameter, Face face) {
  if (parameter.optional || parameter.initial == "\"\"") return " = {}";
  if (parameter.initial.empty()) return "";
  if (interface.is_enumeration(parameter.type) && face == Face::Host)
    return " = " + parameter.type + "::" + parameter.initial;
  return " = " + parameter.initial;
}

/// A value of late binding from an argument in C++, and the other way round.
std::string to_late(const Interface& interface, const std::string& type, const std::string& name, Face face) {
  if (interface.is_enumeration(type)) return "std::int32_t(" + name + ")";
  if (face == Face::Qt && (type == "string" || type == "variant")) return "value_of(" + name + ")";
  return name;
}

std::string from_late(const Interface& interface, const std::string& type, const std::string& value) {
  if (interface.is_object(type)) return "Object(" + value + ".to_object())";
  if (type == "boolean") return "flag_of(" + value + ")";
  if (type == "int32") return "number_of(" + value + ")";
  if (interface.is_enumeration(type)) return type + "(number_of(" + value + "))";
  return (type == "variant" ? "text_or_nothing(" : "text_of(") + value + ")";
}

std::vector<std::string> documentation(const Entry& entry) {
  std::vector<std::string> text = {entry.summary};
  text.insert(text.end(), entry.prose.begin(), entry.prose.end());
  if (!entry.fact("unit").empty()) text.push_back("In " + entry.fact("unit") + ".");
  if (!entry.fact("errors").empty()) text.push_back("Errors: " + entry.fact("errors"));
  return text;
}

std::string owner(Face face) { return face == Face::Qt ? "HTMLedWidget" : "HTMLed"; }

bool is_const(const Entry& operation) {
  return operation.parameters.size() == 1 && operation.parameters[0].out;
}

// --- properties ---

std::string getter_declaration(const Interface& interface, const Entry& property, Face face) {
  return "  " + value_type(interface, property.type, face) + " " + property.name + "() const;\n";
}

std::string setter_declaration(const Interface& interface, const Entry& property, Face face) {
  return "  void set_" + property.name + "(" + setter_parameter(interface, property, face) + " value);\n";
}

std::string property_definitions(const Interface& interface, Face face) {
  std::string code;
  for (const Entry* property : interface.all(Kind::Property)) {
    const std::string type = value_type(interface, property->type, face), name = property->name;
    const bool is_own = interface.is_enumeration(property->type) && face == Face::Qt;
    code += (is_own ? "HTMLedWidget::" : "") + type + " " + owner(face) + "::" + name +
            "() const {\n  return " + from_late(interface, property->type, "get(u\"" + name + "\")") +
            ";\n}\n";
    if (property->can_be_set())
      code += "void " + owner(face) + "::set_" + name + "(" + setter_parameter(interface, *property, face) +
              " value) {\n  put(u\"" + name + "\", " + to_late(interface, property->type, "value", face) +
              ");\n}\n";
  }
  return code;
}

std::string host_properties(const Interface& interface) {
  std::string code;
  for (const Entry* property : interface.all(Kind::Property)) {
    code += comment(documentation(*property), "  ") + getter_declaration(interface, *property, Face::Host);
    if (property->fact("access") == "design time") code += "  /// Raises 382 after the start.\n";
    if (property->can_be_set()) code += setter_declaration(interface, *property, Face::Host);
  }
  return code;
}

std::string qt_properties(const Interface& interface) {
  std::string code;
  for (const Entry* property : interface.all(Kind::Property)) {
    if (interface.is_object(property->type)) continue;
    std::string line = "  Q_PROPERTY(" + value_type(interface, property->type, Face::Qt) + " " +
                       property->name + " READ " + property->name;
    line += property->can_be_set() ? " WRITE set_" + property->name : " STORED false";
    code += line + (property->name == "DocumentHTML" ? " USER true" : "") + ")\n";
  }
  return code;
}

std::string qt_getters(const Interface& interface) {
  std::string code;
  for (const Entry* property : interface.all(Kind::Property))
    code += comment(documentation(*property), "  ") + getter_declaration(interface, *property, Face::Qt);
  return code;
}

std::string qt_setters(const Interface& interface) {
  std::string code;
  for (const Entry* property : interface.all(Kind::Property))
    if (property->can_be_set()) code += setter_declaration(interface, *property, Face::Qt);
  return code;
}

// --- operations ---

std::string operation_declarations(const Interface& interface, Face face) {
  std::string code;
  for (const Entry* operation : interface.all(Kind::Operation))
    code += comment(documentation(*operation), "  ") +
            broken("  " + result_type(interface, *operation, face) + " " + operation->name + "(" +
                   parameter_list(interface, *operation, face, true) + ")" +
                   (is_const(*operation) ? " const;" : ";")) +
            "\n";
  return code;
}

/// What goes into the call; a parameter that only brings something back starts as its type's nothing.
std::string arguments(const Interface& interface, const Entry& operation, Face face) {
  std::vector<std::string> list;
  for (const Parameter& parameter : operation.parameters) {
    if (parameter.optional && operation.parameters.size() > 1)
      throw std::runtime_error(operation.name + ": an argument that may be left out stands alone");
    if (parameter.optional) return "given(" + parameter.name + ")";
    list.push_back(parameter.out ? (parameter.type == "boolean" ? "false" : "0")
                                 : to_late(interface, parameter.type, parameter.name, face));
  }
  return "{" + joined(list) + "}";
}

std::string operation_body(const Interface& interface, const Entry& operation, Face face) {
  const std::string passed = arguments(interface, operation, face);
  const std::string returned = returned_parameter(operation);
  for (std::size_t i = 0; i < operation.parameters.size(); ++i)
    if (operation.parameters[i].name == returned)
      return "  Values arguments" + passed + ";\n  call(u\"" + operation.name + "\", arguments);\n  return " +
             from_late(interface, operation.parameters[i].type, "arguments[" + std::to_string(i) + "]") +
             ";\n";
  const std::string prepared = "  Values arguments" + (passed[0] == '{' ? passed : " = " + passed) + ";\n";
  const std::string call = "call(u\"" + operation.name + "\", arguments)";
  const bool has_result = result_type(interface, operation, face) != "void";
  return prepared + "  " + (has_result ? "return " + from_late(interface, operation.type, call) : call) +
         ";\n";
}

std::string operation_definitions(const Interface& interface, Face face) {
  std::string code;
  for (const Entry* operation : interface.all(Kind::Operation))
    code += broken(result_type(interface, *operation, face) + " " + owner(face) + "::" + operation->name +
                   "(" + parameter_list(interface, *operation, face, false) + ")" +
                   (is_const(*operation) ? " const {" : " {")) +
            "\n" + operation_body(interface, *operation, face) + "}\n";
  return code;
}

// --- enumerations and events ---

/// Those that a property or an operation takes.
bool is_taken(const Interface& interface, const Entry& enumeration) {
  for (const Entry& entry : interface.entries) {
    if (entry.type == enumeration.name) return true;
    for (const Parameter& parameter : entry.parameters)
      if (parameter.type == enumeration.name) return true;
  }
  return false;
}

std::string enumerators(const Entry& enumeration, const std::string& indent) {
  std::vector<std::string> rows;
  for (const Entry& member : enumeration.members)
    rows.push_back(indent + member.name + " = " + std::to_string(member.number));
  return " {\n" + joined(rows, ",\n");
}

std::string host_enumerations(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.all(Kind::Enumeration))
    code += comment(documentation(*entry), "") + "enum class " + entry->name + " : std::int32_t" +
            enumerators(*entry, "  ") + "\n};\n\n";
  return code;
}

std::string qt_enumerations(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.all(Kind::Enumeration))
    if (is_taken(interface, *entry))
      code += comment(documentation(*entry), "  ") + "  enum " + entry->name + enumerators(*entry, "    ") +
              "\n  };\n  Q_ENUM(" + entry->name + ")\n";
  return code;
}

std::string qt_signals(const Interface& interface) {
  std::string code;
  for (const Entry* event : interface.all(Kind::Event))
    code += comment(documentation(*event), "  ") +
            broken("  void " + event->name + "(" + signal_parameters(interface, *event) + ");") + "\n";
  return code;
}

}  // namespace

std::string result_type(const Interface& interface, const Entry& entry, Face face) {
  const std::string returned = returned_parameter(entry);
  for (const Parameter& parameter : entry.parameters)
    if (parameter.name == returned) return value_type(interface, parameter.type, face);
  if (entry.type.empty() || entry.fact("returns") == "nothing") return "void";
  if (entry.type == "variant") return face == Face::Qt ? "QString" : "std::optional<std::u16string>";
  return value_type(interface, entry.type, face);
}

std::string parameter_list(const Interface& interface, const Entry& entry, Face face, bool with_defaults) {
  std::vector<std::string> list;
  for (const Parameter& parameter : entry.parameters)
    if (!parameter.out)
      list.push_back(passed_type(interface, parameter.type, face) + " " + parameter.name +
                     (with_defaults ? default_value(interface, parameter, face) : ""));
  return joined(list);
}

std::string setter_parameter(const Interface& interface, const Entry& property, Face face) {
  if (interface.is_enumeration(property.type)) return property.type;
  return passed_type(interface, property.type, face);
}

std::string signal_parameters(const Interface& interface, const Entry& event) {
  std::vector<std::string> list;
  for (const Parameter& parameter : event.parameters) {
    const std::string type = value_type(interface, parameter.type, Face::Qt);
    const bool is_large = type == "QString" || type == "tvx::Object";
    list.push_back((parameter.by_reference ? type + "&"
                    : is_large             ? "const " + type + "&"
                                           : type) +
                   " " + parameter.name);
  }
  return joined(list);
}

void write_hosts(const Interface& interface, Pieces& pieces) {
  pieces["enumerations"] = host_enumerations(interface);
  pieces["host_properties"] = host_properties(interface);
  pieces["host_operations"] = operation_declarations(interface, Face::Host);
  pieces["host_members.inc"] =
      property_definitions(interface, Face::Host) + operation_definitions(interface, Face::Host);
  pieces["widget_properties"] = qt_properties(interface);
  pieces["widget_enumerations"] = qt_enumerations(interface);
  pieces["widget_getters"] = qt_getters(interface);
  pieces["widget_setters"] = qt_setters(interface);
  pieces["widget_operations"] = operation_declarations(interface, Face::Qt);
  pieces["widget_signals"] = qt_signals(interface);
  pieces["widget_members.inc"] =
      property_definitions(interface, Face::Qt) + operation_definitions(interface, Face::Qt);
}
