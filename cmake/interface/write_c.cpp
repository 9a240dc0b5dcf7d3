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

std::string enumerations(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.all(Kind::Enumeration)) {
    std::string rows;
    for (const Entry& member : entry->members) rows += number_row("TVX_" + member.name, member.number);
    code +=
        c_comment(entry->name + ". " + entry->summary, "") + "enum {\n" + without_last_comma(rows) + "};\n\n";
  }
  return code;
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

void write_c(const Interface& interface, Pieces& pieces) {
  pieces["c_members"] = members(interface);
  pieces["c_member_list"] = member_list(interface);
  pieces["c_events"] = events(interface);
  pieces["c_event_list"] = event_list(interface);
  pieces["c_enumerations"] = enumerations(interface);
  // The library's own knowledge of what goes through it.
  pieces["date_members.inc"] = date_members(interface);
}
