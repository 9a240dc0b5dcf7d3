#include <algorithm>
#include <sstream>

#include "text.h"
#include "writers.h"

/// The Python module: the tables that its class is made of, and the stub that says their types.
namespace {

constexpr std::size_t width = 118;

std::string quoted(const std::string& text) {
  std::string literal = "\"";
  for (const char letter : text) {
    if (letter == '"' || letter == '\\') literal += '\\';
    literal += letter == '\n' ? "\\n" : std::string(1, letter);
  }
  return literal + "\"";
}

/// What the language has a word of its own for gets a stroke.
std::string python_name(const std::string& name) { return name == "None" ? "None_" : name; }

std::string wrapped(const std::string& text, const std::string& indent) {
  std::string lines, line = indent;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (line.size() > indent.size() && line.size() + 1 + word.size() > width) {
      lines += line + "\n";
      line = indent;
    }
    line += (line.size() > indent.size() ? " " : "") + word;
  }
  return lines + line + "\n";
}

std::vector<std::string> paragraphs(const Entry& entry) {
  std::vector<std::string> text = {entry.summary};
  text.insert(text.end(), entry.prose.begin(), entry.prose.end());
  if (!entry.fact("unit").empty()) text.push_back("Unit: " + entry.fact("unit") + ".");
  if (!entry.fact("errors").empty()) text.push_back("Errors: " + entry.fact("errors"));
  return text;
}

std::string doc(const Entry& entry) { return quoted(joined(paragraphs(entry), "\n\n")); }

/// A docstring below a line that ends in a colon.
std::string docstring(const Entry& entry, const std::string& indent) {
  std::string lines;
  for (const std::string& paragraph : paragraphs(entry))
    lines += (lines.empty() ? "" : "\n") + wrapped(paragraph, indent);
  std::replace(lines.begin(), lines.end(), '\\', '/');
  const bool is_one = lines.find('\n') == lines.size() - 1 && lines.size() < width;
  if (is_one) lines.pop_back();
  return indent + "\"\"\"" + lines.substr(indent.size()) + (is_one ? "" : indent) + "\"\"\"\n";
}

std::string value(const Interface& interface, const std::string& type, const std::string& initial) {
  if (initial == "true" || initial == "false") return initial == "true" ? "True" : "False";
  if (interface.is_enumeration(type)) return type + "." + python_name(initial);
  return initial;
}

std::string flag(bool holds) { return holds ? "True" : "False"; }

/// A tuple of rows, one a line.
std::string table(const std::string& name, const std::vector<std::string>& rows) {
  std::string text = "\n" + name + " = (\n";
  for (const std::string& row : rows) text += "    (" + row + "),\n";
  return text + ")\n";
}

std::string tuple(const std::vector<std::string>& rows) {
  std::string text = "(";
  for (const std::string& row : rows) text += "(" + row + "), ";
  if (rows.size() > 0) text.erase(text.size() - (rows.size() > 1 ? 2 : 1));
  return text + ")";
}

bool is_settable(const Parameter& parameter) { return parameter.by_reference; }

/// The control's and those of services.
std::vector<const Entry*> all_enumerations(const Interface& interface) {
  std::vector<const Entry*> all = interface.all(Kind::Enumeration);
  const std::vector<const Entry*> others = interface.service_enumerations();
  all.insert(all.end(), others.begin(), others.end());
  return all;
}

// --- the tables ---

std::string enumerations(const Interface& interface) {
  std::string text;
  std::vector<std::string> names;
  for (const Entry* entry : all_enumerations(interface)) {
    text += "\n\nclass " + entry->name + "(IntEnum):\n" + docstring(*entry, "    ") + "\n";
    for (const Entry& member : entry->members)
      text += "    " + python_name(member.name) + " = " + std::to_string(member.number) + "\n";
    names.push_back(entry->name);
  }
  return text + "\n\nENUMERATIONS = (" + joined(names) + ",)\n";
}

std::string parameters(const Interface& interface, const Entry& operation) {
  std::vector<std::string> rows;
  for (const Parameter& parameter : operation.parameters) {
    const std::string initial = parameter.optional ? "None"
                                : parameter.initial.empty()
                                    ? "REQUIRED"
                                    : value(interface, parameter.type, parameter.initial);
    rows.push_back(joined({quoted(parameter.name), quoted(parameter.type), flag(parameter.by_reference),
                           flag(parameter.out), initial}));
  }
  return tuple(rows);
}

/// Which argument is the result, "None" where it is the call's own.
std::string returned_index(const Entry& operation) {
  const std::string returned = returned_parameter(operation);
  for (std::size_t i = 0; i < operation.parameters.size(); ++i)
    if (operation.parameters[i].name == returned) return std::to_string(i);
  return "None";
}

/// Rows of (name, ((argument, type, brought back), ...)): the functions of a service's table after the first
/// three.
std::string service_table(const Entry& service) {
  std::vector<std::string> functions;
  const auto add = [&](const std::string& name, const std::vector<std::string>& arguments) {
    functions.push_back(joined({quoted(name), tuple(arguments)}));
  };
  const auto argument = [](const std::string& name, const std::string& type, bool out) {
    return joined({quoted(name), quoted(type), flag(out)});
  };
  for (const Entry& member : service.members) {
    if (member.kind == Kind::Property) {
      std::string name = member.name;
      if (name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<char>(name[0] - 'a' + 'A');
      add("Get" + name, {argument("value", member.type, true)});
      if (member.has_setter()) add("Set" + name, {argument("value", member.type, false)});
    } else if (member.kind == Kind::Operation) {
      std::vector<std::string> arguments;
      for (const Parameter& parameter : member.parameters)
        arguments.push_back(argument(parameter.name, parameter.type, false));
      if (!member.type.empty()) arguments.push_back(argument("result", member.type, true));
      add(member.name, arguments);
    }
  }
  return tuple(functions);
}

std::string service_docs(const Entry& service) {
  std::vector<std::string> docs;
  for (const Entry& member : service.members)
    if (member.kind != Kind::Enumeration) docs.push_back(quoted(member.name) + ": " + doc(member));
  return "{" + joined(docs) + "}";
}

std::vector<std::string> services(const Interface& interface) {
  std::vector<std::string> rows;
  for (const Entry* service : interface.all(Kind::Service)) {
    const std::string id = service->fact("class");
    rows.push_back(
        joined({quoted(service->name), quoted(service->fact("interface")), id.empty() ? "None" : quoted(id),
                service_table(*service), doc(*service), service_docs(*service)}));
  }
  return rows;
}

std::string members(const Interface& interface) {
  std::vector<std::string> properties, operations, events, classes;
  for (const Entry* entry : interface.all(Kind::Property))
    properties.push_back(joined({std::to_string(entry->number), quoted(entry->name), quoted(entry->type),
                                 flag(entry->can_be_set()), doc(*entry)}));
  for (const Entry* entry : interface.all(Kind::Operation))
    operations.push_back(
        joined({std::to_string(entry->number), quoted(entry->name), parameters(interface, *entry),
                quoted(entry->fact("returns") == "nothing" ? "" : entry->type), returned_index(*entry),
                doc(*entry)}));
  for (const Entry* entry : interface.all(Kind::Event)) {
    std::vector<std::string> rows;
    for (const Parameter& parameter : entry->parameters)
      rows.push_back(joined({quoted(parameter.name), quoted(parameter.type), flag(is_settable(parameter))}));
    events.push_back(joined({std::to_string(entry->number), quoted(entry->name), tuple(rows), doc(*entry)}));
  }
  for (const Entry* entry : interface.all(Kind::Class))
    classes.push_back(joined({quoted(entry->name), doc(*entry)}));
  return "\"\"\"Written from src/library/tvxhtml.interface: what the control has.\"\"\"\n\nfrom enum import "
         "IntEnum"
         "\n\nREQUIRED = object()  # of an argument without a default\n" +
         enumerations(interface) + "\n# number, name, type, whether it can be set, what it is" +
         table("PROPERTIES", properties) +
         "\n# number, name, parameters (name, type, by reference, only brings back, default), type of the "
         "result,"
         "\n# which argument is the result, what it does" +
         table("OPERATIONS", operations) +
         "\n# number, name, parameters (name, type, can be set), what it tells" + table("EVENTS", events) +
         "\n# name, what it is" + table("CLASSES", classes) +
         "\n# name, interface, class, functions (name, arguments (name, type, brought back)), what it is, "
         "what its members are" +
         table("SERVICES", services(interface)) +
         "\nEVENTS_BY_NUMBER = {number: (name, parameters) for number, name, parameters, _ in EVENTS}\n";
}

// --- the stub ---

std::string type(const Interface& interface, const std::string& described) {
  if (described == "boolean") return "bool";
  if (described == "int16" || described == "int32") return "int";
  if (described == "string") return "str";
  if (described == "date") return "datetime.datetime";
  if (described == "variant") return "str | None";
  if (described == "object") return "Object | None";
  if (described == "pointer") return "int";
  if (interface.is_enumeration(described) || interface.is_service_enumeration(described)) return described;
  if (interface.service(described)) return described;
  return described + " | None";
}

std::string operation_result(const Interface& interface, const Entry& operation) {
  const std::string returned = returned_parameter(operation);
  for (const Parameter& parameter : operation.parameters)
    if (parameter.name == returned) return type(interface, parameter.type);
  if (operation.type.empty() || operation.fact("returns") == "nothing") return "None";
  return type(interface, operation.type);
}

std::string operation_parameters(const Interface& interface, const Entry& operation) {
  std::vector<std::string> list;
  for (const Parameter& parameter : operation.parameters) {
    if (parameter.out) continue;
    std::string text = parameter.name + ": " + type(interface, parameter.type);
    if (parameter.optional) text += " = None";
    if (!parameter.initial.empty()) text += " = " + value(interface, parameter.type, parameter.initial);
    list.push_back(text);
  }
  return joined(list);
}

std::string stub_property(const Interface& interface, const Entry& property) {
  const std::string kind = type(interface, property.type);
  std::string text = "    @property\n    def " + property.name + "(self) -> " + kind + ":\n" +
                     docstring(property, "        ");
  if (property.can_be_set())
    text += "    @" + property.name + ".setter\n    def " + property.name + "(self, value: " + kind +
            ") -> None: ...\n";
  return text;
}

std::string stub_operation(const Interface& interface, const Entry& operation) {
  const std::string given = operation_parameters(interface, operation);
  return "    def " + operation.name + "(self" + (given.empty() ? "" : ", " + given) + ") -> " +
         operation_result(interface, operation) + ":\n" + docstring(operation, "        ");
}

std::string arguments_class(const Interface& interface, const Entry& event) {
  std::string text = "class " + event.name + "Arguments(EventArguments):\n" + docstring(event, "    ");
  for (const Parameter& parameter : event.parameters) {
    const std::string kind = type(interface, parameter.type);
    if (is_settable(parameter))
      text += "    " + parameter.name + ": " + kind + "\n";
    else
      text += "    @property\n    def " + parameter.name + "(self) -> " + kind + ": ...\n";
  }
  return text;
}

std::string stub_classes(const Interface& interface) {
  std::string text;
  for (const Entry* entry : all_enumerations(interface)) {
    text += "\nclass " + entry->name + "(IntEnum):\n" + docstring(*entry, "    ");
    for (const Entry& member : entry->members)
      text += "    " + python_name(member.name) + " = " + std::to_string(member.number) + "\n";
  }
  for (const Entry* entry : interface.all(Kind::Class)) {
    text += "\nclass " + entry->name + "(Object):\n" + docstring(*entry, "    ");
    for (const Entry& member : entry->members) {
      if (member.type.empty() || member.parameters.empty())
        text += "    " + member.name + ": " + type(interface, member.type) + "\n";
      else
        text += stub_operation(interface, member).substr(0, stub_operation(interface, member).find(":\n")) +
                ": ...\n";
    }
  }
  for (const Entry* entry : interface.all(Kind::Event)) text += "\n" + arguments_class(interface, *entry);
  return text;
}

/// The described members of a service; its form in the stub has the rest.
std::string stub_service(const Interface& interface, const Entry& service) {
  std::string text;
  for (const Entry& member : service.members) {
    if (member.kind == Kind::Property && member.type == "variant")
      text += "    " + member.name + ": Any\n    " + docstring(member, "    ").substr(4);
    else if (member.kind == Kind::Property)
      text += stub_property(interface, member);
    else if (member.kind == Kind::Operation)
      text += stub_operation(interface, member);
    else if (member.kind == Kind::Event)
      text += "    @property\n    def " + member.name + "(self) -> Event[EventArguments]:\n" +
              docstring(member, "        ");
  }
  return text;
}

std::string stub_members(const Interface& interface) {
  std::string text;
  for (const Entry* entry : interface.all(Kind::Property)) text += "\n" + stub_property(interface, *entry);
  for (const Entry* entry : interface.all(Kind::Operation)) text += "\n" + stub_operation(interface, *entry);
  for (const Entry* entry : interface.all(Kind::Event))
    text += "\n    @property\n    def " + entry->name + "(self) -> Event[" + entry->name + "Arguments]:\n" +
            docstring(*entry, "        ");
  return text;
}

}  // namespace

std::string python_declaration(const Interface& interface, const Entry& entry) {
  if (entry.kind == Kind::Property)
    return "editor." + entry.name + ": " + type(interface, entry.type) +
           (entry.can_be_set() ? "\n" : "  # only read\n");
  if (entry.kind == Kind::Operation)
    return "editor." + entry.name + "(" + operation_parameters(interface, entry) + ") -> " +
           operation_result(interface, entry) + "\n";
  std::vector<std::string> told, answers;
  for (const Parameter& parameter : entry.parameters)
    (is_settable(parameter) ? answers : told)
        .push_back("event." + parameter.name + ": " + type(interface, parameter.type));
  return "@editor." + entry.name + "\ndef hear(event): ...\n" +
         (told.empty() ? "" : "# told: " + joined(told) + "\n") +
         (answers.empty() ? "" : "# can be set: " + joined(answers) + "\n");
}

std::string python_service_declaration(const Interface& interface, const Entry& service,
                                       const Entry& member) {
  const std::string object = service.fact("c") + ".";
  if (member.kind == Kind::Event) return "@" + object + member.name + "\ndef hear(event): ...\n";
  if (member.kind == Kind::Property)
    return object + member.name + ": " + (member.type == "variant" ? "Any" : type(interface, member.type)) +
           (member.can_be_set() ? "\n" : "  # only read\n");
  return object + member.name + "(" + operation_parameters(interface, member) + ") -> " +
         operation_result(interface, member) + "\n";
}

void write_python(const Interface& interface, Pieces& pieces) {
  for (const Entry* service : interface.all(Kind::Service))
    pieces["python_" + service->name] = stub_service(interface, *service);
  pieces["_members.py"] = members(interface);
  pieces["python_classes"] = stub_classes(interface);
  pieces["python_members"] = stub_members(interface);
}
