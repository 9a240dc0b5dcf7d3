#include <stdexcept>

#include "text.h"
#include "writers.h"

/// The table of late binding.
namespace {

std::string type_name(const Interface& interface, const std::string& type) {
  static const std::map<std::string, std::string> plain = {{"", "None"},           {"boolean", "Boolean"},
                                                           {"int16", "Integer16"}, {"int32", "Integer32"},
                                                           {"string", "String"},   {"variant", "Variant"}};
  const auto found = plain.find(type);
  return "Type::" + (found != plain.end() ? found->second : interface.is_object(type) ? "Object" : type);
}

std::string parameters_name(const Entry& entry) {
  return entry.parameters.empty() ? "{}" : entry.name + "_parameters";
}

/// `all_by_reference`: what an event tells always goes so.
std::string parameters(const Interface& interface, const Entry& entry, bool all_by_reference) {
  if (entry.parameters.empty()) return {};
  std::vector<std::string> rows;
  for (const Parameter& parameter : entry.parameters) {
    const bool by_reference = parameter.by_reference || parameter.out || all_by_reference;
    rows.push_back("    {u\"" + parameter.name + "\", " + type_name(interface, parameter.type) +
                   (by_reference ? ", ByReference::Yes" : ", ByReference::No") +
                   (parameter.optional ? ", Optional::Yes}" : "}"));
  }
  return "constexpr Parameter " + parameters_name(entry) + "[] = {\n" + joined(rows, ",\n") + "};\n";
}

std::string access(const Entry& property) {
  static const std::map<std::string, std::string> names = {{"", "ReadWrite"},
                                                           {"design time", "DesignTime"},
                                                           {"refused", "Refused"},
                                                           {"refused object", "RefusedDOM"},
                                                           {"read only", "ReadOnly"}};
  const auto found = names.find(property.fact("access"));
  if (found == names.end()) throw std::runtime_error(property.name + ": no such access");
  return "Access::" + found->second;
}

std::string initial(const Interface& interface, const Entry& property) {
  const std::string& value = property.initial;
  if (value.empty()) return "{}";
  if (interface.is_enumeration(property.type))
    return "std::int32_t{" + std::to_string(interface.number_of(property.type, value)) + "}";
  return property.type == "string" ? "u" + value : value;
}

std::string property_row(const Interface& interface, const Entry& property) {
  const std::string& name = property.name;
  const bool by_hand = property.fact("binding") == "hand";
  std::string row = "    {.kind = MemberKind::Property,\n     .number = " + std::to_string(property.number) +
                    ",\n     .name = u\"" + name +
                    "\",\n     .type = " + type_name(interface, property.type) +
                    ",\n     .description = " + literal(property.summary) + ",\n";
  if (property.is_stored()) row += "     .key = u\"" + name + "\",\n";
  row += "     .initial = " + initial(interface, property) + ",\n     .access = " + access(property) +
         ",\n     .get = " + (by_hand ? "hand::get_" + name : "get_of<&HTMLed::" + name + ">") + ",\n";
  if (property.has_setter())
    row += "     .set = " + (by_hand ? "hand::set_" + name : "set_of<&HTMLed::set_" + name + ">") + ",\n";
  return row + "    },\n";
}

std::string operation_row(const Interface& interface, const Entry& operation) {
  const std::string& name = operation.name;
  const bool by_hand = operation.fact("binding") == "hand";
  return "    {.kind = MemberKind::Method,\n     .number = " + std::to_string(operation.number) +
         ",\n     .name = u\"" + name + "\",\n     .type = " + type_name(interface, operation.type) +
         ",\n     .description = " + literal(operation.summary) +
         ",\n     .parameters = " + parameters_name(operation) +
         ",\n     .call = " + (by_hand ? "hand::call_" + name : "call_of<&HTMLed::" + name + ">") + "},\n";
}

std::string member_rows(const Interface& interface) {
  std::string lists, rows;
  for (const Entry* property : interface.all(Kind::Property)) rows += property_row(interface, *property);
  for (const Entry* operation : interface.all(Kind::Operation)) {
    lists += parameters(interface, *operation, false);
    rows += operation_row(interface, *operation);
  }
  return lists + "\nconstexpr Member member_rows[] = {\n" + rows + "};\n";
}

std::string event_rows(const Interface& interface) {
  std::string lists, rows;
  for (const Entry* event : interface.all(Kind::Event)) {
    lists += parameters(interface, *event, true);
    rows += "    {" + std::to_string(event->number) + ", u\"" + event->name + "\", " +
            literal(event->summary) + ", " + parameters_name(*event) + "},\n";
  }
  return lists + "\nconstexpr EventMember event_rows[] = {\n" + rows + "};\n";
}

std::string enumeration_rows(const Interface& interface) {
  std::string lists, rows;
  for (const Entry* entry : interface.all(Kind::Enumeration)) {
    lists += "constexpr EnumerationMember " + entry->name + "_members[] = {\n";
    for (const Entry& member : entry->members)
      lists += "    {u\"" + member.name + "\", " + std::to_string(member.number) + "},\n";
    lists += "};\n";
    rows += "    {u\"" + entry->name + "\", " + entry->name + "_members},\n";
  }
  return lists + "\nconstexpr Enumeration enumeration_rows[] = {\n" + rows + "};\n";
}

std::string type_enumerators(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.all(Kind::Enumeration)) code += entry->name + ",\n";
  return code;
}

std::string type_names(const Interface& interface) {
  std::string code;
  for (const Entry* entry : interface.all(Kind::Enumeration))
    code += "case Type::" + entry->name + ": return u\"" + entry->name + "\";\n";
  return code;
}

/// The reference as a constant; compilers take texts of any length in pieces.
std::string reference_text(const std::string& page) {
  std::string code;
  for (std::size_t at = 0; at < page.size(); at += 8000)
    code += "R\"reference(" + page.substr(at, 8000) + ")reference\"\n";
  return code;
}

}  // namespace

void write_library(const Interface& interface, Pieces& pieces) {
  pieces["member_rows.inc"] = member_rows(interface);
  pieces["event_rows.inc"] = event_rows(interface);
  pieces["enumeration_rows.inc"] = enumeration_rows(interface);
  pieces["type_enumerators.inc"] = type_enumerators(interface);
  pieces["type_names.inc"] = type_names(interface);
  pieces["reference_text.inc"] = reference_text(reference(interface));
  for (const Entry* described : interface.all(Kind::Class)) {
    std::string rows;
    for (const Entry& field : described->members)
      if (field.kind == Kind::Property)
        rows += "field<&" + described->name + "::" + field.name + ">(u\"" + field.name + "\"),\n";
    if (!rows.empty()) pieces[described->name + "_rows.inc"] = rows;
  }
}
