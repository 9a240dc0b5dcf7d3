#include <sstream>

#include "text.h"
#include "writers.h"

/// The header of hosts in C: the numbers and names of members, events and enumerations, and each member's
/// parameters as late binding takes them.
namespace {

constexpr std::size_t width = 120;

/// A comment in lines of at most `width` characters.
std::string c_comment(const std::string& text, const std::string& indent) {
  std::string lines, line = indent + "/*";
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (line.size() + 1 + word.size() + 3 > width) {
      lines += line + "\n";
      line = indent + "  ";
    }
    line += " " + word;
  }
  return lines + line + " */\n";
}

std::string number_row(const std::string& name, int number) {
  return "  " + name + " = " + std::to_string(number) + ",\n";
}

/// The last row without its comma, as C99 had it before.
std::string without_last_comma(std::string rows) {
  const std::size_t comma = rows.rfind(',');
  return comma == rows.npos ? rows : rows.erase(comma, 1);
}

std::string members(const Interface& interface) {
  std::string rows;
  for (const Kind kind : {Kind::Property, Kind::Operation})
    for (const Entry* entry : interface.all(kind))
      rows += c_comment(c_signature(*entry) + ". " + entry->summary, "  ") +
              number_row("TVX_MEMBER_" + entry->name, entry->number);
  return without_last_comma(rows);
}

std::string events(const Interface& interface) {
  std::string rows;
  for (const Entry* event : interface.all(Kind::Event))
    rows += c_comment(c_signature(*event) + ". " + event->summary, "  ") +
            number_row("TVX_EVENT_" + event->name, event->number);
  return without_last_comma(rows);
}

/// The rows of a macro, all lines but the last with a backslash.
std::string macro_rows(const std::vector<std::string>& rows) {
  std::string code;
  for (const std::string& row : rows) code += (code.empty() ? "  " : " \\\n  ") + row;
  return code + "\n";
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string member_list(const Interface& interface) {
  std::vector<std::string> rows;
  for (const Kind kind : {Kind::Property, Kind::Operation})
    for (const Entry* entry : interface.all(kind))
      rows.push_back("M(" +
                     joined({std::to_string(entry->number), entry->name,
                             quoted(kind == Kind::Property ? "property" : "operation"), quoted(entry->type),
                             std::to_string(entry->parameters.size())}) +
                     ")");
  return macro_rows(rows);
}

std::string event_list(const Interface& interface) {
  std::vector<std::string> rows;
  for (const Entry* event : interface.all(Kind::Event))
    rows.push_back(
        "M(" +
        joined({std::to_string(event->number), event->name, std::to_string(event->parameters.size())}) + ")");
  return macro_rows(rows);
}

std::string enumeration(const Entry& described) {
  std::string rows;
  for (const Entry& member : described.members) rows += number_row("TVX_" + member.name, member.number);
  return c_comment(described.name + ". " + described.summary, "") + "enum {\n" + without_last_comma(rows) +
         "};\n\n";
}

std::string enumerations(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.all(Kind::Enumeration)) code += enumeration(*entry);
  return code;
}

// --- services ---

std::string c_name(const Entry& service) { return "tvx_" + service.fact("c"); }

/// "{00112233-...}" as the bytes of a tvx_id.
std::string id_bytes(const std::string& id) {
  std::vector<std::string> bytes;
  std::string digits;
  for (const char letter : id)
    if (letter != '{' && letter != '}' && letter != '-') digits += letter;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) bytes.push_back("0x" + digits.substr(i, 2));
  return "    {" + joined(bytes) + "}};\n";
}

std::string identifiers(const Interface& interface) {
  std::string code;
  for (const Entry* service : interface.all(Kind::Service)) {
    const bool is_class = !service->fact("class").empty();
    code += "/* " + c_name(*service) + (is_class ? "" : ", the host's") + ", " + service->fact("interface") +
            " */\nstatic const tvx_id tvx_id_" + service->fact("c") + " = {\n" +
            id_bytes(service->fact("interface"));
    if (is_class)
      code += "/* The class " + service->name + ", " + service->fact("class") +
              " */\nstatic const tvx_id tvx_class_" + service->fact("c") + " = {\n" +
              id_bytes(service->fact("class"));
  }
  return code;
}

std::string c_type(const Interface& interface, const std::string& type) {
  if (type == "pointer") return "intptr_t ";
  if (type == "variant") return "tvx_value ";
  if (const Entry* service = interface.service(type)) return c_name(*service) + " *";
  return "int32_t ";
}

/// A field of the table, in two lines where one is too long.
std::string c_function(const Entry& service, const std::string& name, const std::string& arguments) {
  const std::string start = "  tvx_result (*" + name + ")(", first = c_name(service) + " *self";
  if (arguments.empty()) return start + first + ");\n";
  const bool fits = start.size() + first.size() + arguments.size() + 4 <= width;
  return start + first + "," + (fits ? " " : "\n" + std::string(start.size(), ' ')) + arguments + ");\n";
}

std::string with_capital(std::string name) {
  if (name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<char>(name[0] - 'a' + 'A');
  return name;
}

struct Signature {
  std::string name, arguments;
};

/// A member as functions of its service's table.
std::vector<Signature> service_signatures(const Interface& interface, const Entry& member) {
  std::vector<Signature> list;
  if (member.kind == Kind::Property) {
    const std::string type = c_type(interface, member.type), name = with_capital(member.name);
    list.push_back({"Get" + name, type + "*value"});
    if (member.has_setter())
      list.push_back({"Set" + name, (member.type == "variant" ? "const tvx_value *" : type) + "value"});
    return list;
  }
  std::vector<std::string> arguments;
  for (const Parameter& parameter : member.parameters)
    arguments.push_back(c_type(interface, parameter.type) + parameter.name);
  if (!member.type.empty()) arguments.push_back(c_type(interface, member.type) + "*result");
  return {{member.name, joined(arguments)}};
}

std::string service_functions(const Interface& interface, const Entry& service, const Entry& member) {
  std::string text = joined({member.summary, joined(member.prose, " ")}, " ");
  if (!member.fact("unit").empty()) text += " In " + member.fact("unit") + ".";
  if (!member.fact("errors").empty()) text += " Errors: " + member.fact("errors");
  std::string code = c_comment(text, "  ");
  for (const Signature& signature : service_signatures(interface, member))
    code += c_function(service, signature.name, signature.arguments);
  return code;
}

std::string service_structure(const Interface& interface, const Entry& service) {
  const std::string name = c_name(service);
  std::string code = c_comment(service.name + ". " + service.summary + " " + joined(service.prose, " "), "") +
                     "typedef struct " + name + " " + name + ";\ntypedef struct " + name + "_functions {\n" +
                     "  tvx_result (*QueryInterface)(" + name +
                     " *self, const tvx_id *id, void **object);\n" + "  uint32_t (*AddRef)(" + name +
                     " *self);\n  uint32_t (*Release)(" + name + " *self);\n\n";
  for (const Entry& member : service.members)
    if (member.kind == Kind::Property || member.kind == Kind::Operation)
      code += service_functions(interface, service, member);
  return code + "} " + name + "_functions;\nstruct " + name + " {\n  const " + name +
         "_functions *functions;\n};\n\n";
}

/// Numbers of members and events, for those that are reached by late binding.
std::string service_numbers(const Entry& service) {
  if (service.fact("binding") != "late") return {};
  std::string rows;
  for (const Entry& member : service.members) {
    if (member.kind == Kind::Enumeration) continue;
    rows += number_row(
        "TVX_" + service.name + (member.kind == Kind::Event ? "_EVENT_" : "_MEMBER_") + member.name,
        member.number);
  }
  return "enum {\n" + without_last_comma(rows) + "};\n\n";
}

std::string services(const Interface& interface) {
  std::string code;
  for (const Entry* service : interface.all(Kind::Service)) {
    for (const Entry& member : service->members)
      if (member.kind == Kind::Enumeration) code += enumeration(member);
    code += service_structure(interface, *service) + service_numbers(*service);
  }
  return code;
}

/// The classes beside HTMLed: name, identifier as text and as a constant of the header.
std::string service_classes(const Interface& interface) {
  std::string rows;
  for (const Entry* service : interface.all(Kind::Service))
    if (!service->fact("class").empty())
      rows += "{" +
              joined({quoted("tvxHTML." + service->name), quoted(service->fact("class")),
                      "tvx_class_" + service->fact("c"), "make_" + service->fact("c")}) +
              "},\n";
  return rows;
}

/// "clsDirectoryItem" is of the kind "directoryItem".
std::string kind_of(const Entry& described) {
  std::string kind = described.name.substr(starts_with(described.name, "cls") ? 3 : 0);
  kind[0] = lower(kind.substr(0, 1))[0];
  return kind;
}

std::string date_members(const Interface& interface) {
  std::string rows;
  for (const Entry* described : interface.all(Kind::Class))
    for (const Entry& member : described->members)
      if (member.type == "date")
        rows += "{" + literal(kind_of(*described)) + ", " + literal(member.name) + "},\n";
  return rows;
}

}  // namespace

std::string c_signature(const Entry& entry) {
  if (entry.kind == Kind::Property) return entry.name + ": " + entry.type;
  std::vector<std::string> list;
  for (const Parameter& parameter : entry.parameters) {
    const std::string text =
        parameter.name + ": " + parameter.type + (parameter.by_reference || parameter.out ? "&" : "");
    list.push_back(parameter.optional ? "[" + text + "]" : text);
  }
  return entry.name + "(" + joined(list) + ")" + (entry.type.empty() ? "" : ": " + entry.type);
}

std::string c_service_declaration(const Interface& interface, const Entry& service, const Entry& member) {
  if (member.kind == Kind::Event) return "TVX_" + service.name + "_EVENT_" + member.name + "\n";
  std::string lines;
  for (const Signature& signature : service_signatures(interface, member))
    lines += c_function(service, signature.name, signature.arguments).substr(2);
  return lines;
}

void write_c(const Interface& interface, Pieces& pieces) {
  pieces["c_members"] = members(interface);
  pieces["c_member_list"] = member_list(interface);
  pieces["c_events"] = events(interface);
  pieces["c_event_list"] = event_list(interface);
  pieces["c_enumerations"] = enumerations(interface);
  pieces["c_identifiers"] = identifiers(interface);
  pieces["c_services"] = services(interface);
  pieces["service_classes.inc"] = service_classes(interface);
  // The library's own knowledge of what goes through it.
  pieces["date_members.inc"] = date_members(interface);
}
