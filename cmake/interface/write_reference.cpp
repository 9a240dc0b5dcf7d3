#include "text.h"
#include "writers.h"

/// docs/reference.md.
namespace {

constexpr const char* introduction = R"(# Reference

Every member of `HTMLed` as a host sees it: the same names at `tvx/htmled.h`, at the Qt widget
(`tvx/htmled_widget.h`), and by name through `htmled-cli` ([automation.md](automation.md)). Names compare without
regard to case; numbers are for dispatch and never change.

This page is written from `src/library/tvxhtml.interface`: `htmled-cli --reference` prints it, and a test holds the two
together. First the tables, to find a member; then [each member](#each-member) with its declarations and what there is to
know of it.
)";

constexpr const char* about_properties = R"(
## Properties

A property with a key is in the store of a saved control under that key; a value equal to its default is not
stored. What can't be set raises the error that the table names. A failing conversion is error 13 ("Type
mismatch") or 6 ("Overflow").

| No. | Property | Type | Default | Key | Can be set | |
|---|---|---|---|---|---|---|
)";

constexpr const char* about_store = R"(
`IsDirty`, `allHTML`, `DocumentText` and `FTPActionInProgress` are stored though they can't be set; reading brings them
back into the control without a setter. Two more keys are in the store:

)";

constexpr const char* about_operations = R"(
## Operations

Arguments marked with `&` come back as the operation left them; what stands in brackets may be left out. An operation
that a build of the control doesn't have raises error 445, a wrong number of arguments 450.

| No. | Operation | Result | |
|---|---|---|---|
)";

constexpr const char* about_events = R"(
## Events

All arguments go by reference. What a host writes into those marked with `&` counts; the rest is told. A host may call
the control from within every event, and may close it there; its exceptions end at the control.

| No. | Event | Arguments | |
|---|---|---|---|
)";

constexpr const char* about_enumerations = R"(
## Enumerations

All are 32 bits wide. `Solid` is `tvx::EdBorderStyle::Solid` beside `tvx::HTMLed`, `HTMLedWidget::Solid` at the Qt widget,
`TVX_Solid` in C and `tvxhtml.EdBorderStyle.Solid` in Python, where `None` is `None_`.

| Enumeration | Members | |
|---|---|---|
)";

constexpr const char* about_classes = R"(
## Helper classes

)";

constexpr const char* about_services = R"(
## Services

What `libtvxHTML.so` has beside the control, for programs in C (`tvx/tvxhtml.h`) and Python. A class is created by its name,
"tvxHTML.CTimer", or by its identifier, as `HTMLed` is; what it fails with is named by a number into which 0x80040000 is ORed,
and comes from "tvxHTML.WindowProc".
)";

constexpr const char* about_members = R"(
## Each member

First in C++: of two declarations the first is that of `tvx::HTMLed`, the second that of `tvx::qt::HTMLedWidget`, whose
setters and operations are slots. Then in C: the number for `Invoke` (`tvx/tvxhtml.h`), and what late binding takes and
gives. Then in Python, where `editor` is a `tvxhtml.HTMLed` ([embedding.md](embedding.md)).
)";

std::string code(const std::string& text) { return "`" + text + "`"; }

std::string type_text(const std::string& type) {
  return type == "int16" ? "16-bit number" : type == "int32" ? "32-bit number" : type;
}

std::string row(const std::vector<std::string>& cells) {
  std::string line = "|";
  for (const std::string& cell : cells) line += " " + cell + (cell.empty() ? "|" : " |");
  return line + "\n";
}

std::string parameter_texts(const Entry& entry) {
  std::vector<std::string> list;
  for (const Parameter& parameter : entry.parameters) {
    std::string name = parameter.name + (parameter.by_reference || parameter.out ? "&" : "");
    list.push_back(code(parameter.optional ? "[" + name + "]" : name) + " " + type_text(parameter.type));
  }
  return joined(list);
}

std::string default_text(const Interface& interface, const Entry& entry) {
  if (interface.is_enumeration(entry.type) && !entry.initial.empty())
    return entry.initial + " (" + std::to_string(interface.number_of(entry.type, entry.initial)) + ")";
  return starts_with(entry.initial, "\"") ? code(entry.initial) : entry.initial;
}

std::string access_text(const Entry& property) {
  static const std::map<std::string, std::string> texts = {{"", "yes"},
                                                           {"design time", "at design time; at run time 382"},
                                                           {"refused", "no: 382, at design time 387"},
                                                           {"refused object", "no: 382, at design time 383"},
                                                           {"read only", "no: 383"}};
  return texts.at(property.fact("access"));
}

std::string properties(const Interface& interface) {
  std::string rows;
  for (const Entry* property : interface.all(Kind::Property))
    rows += row({std::to_string(property->number), code(property->name), type_text(property->type),
                 default_text(interface, *property), property->is_stored() ? code(property->name) : "",
                 access_text(*property), property->summary});
  return rows;
}

std::string wrapped(const std::string& text) {
  std::string lines;
  std::size_t at = 0;
  while (text.size() - at > 118) {
    const std::size_t blank = text.rfind(' ', at + 118);
    lines += text.substr(at, blank - at) + "\n";
    at = blank + 1;
  }
  return lines + text.substr(at) + "\n";
}

std::string names_in(const std::vector<const Entry*>& order) {
  std::vector<std::string> names;
  for (const Entry* entry : order) names.push_back(code(entry->name));
  return joined(names);
}

std::string store(const Interface& interface) {
  std::string text = about_store;
  for (const Entry* key : interface.all(Kind::Key))
    text += "- " + code(key->name) + " (" + type_text(key->type) +
            (key->initial.empty() ? "" : ", " + key->initial) + "): " + key->summary + "\n";
  text += "\nContainers are handed the keys in two orders, which never change. Reading goes:\n\n" +
          wrapped(names_in(interface.in_reading_order()) + ".") + "\nWriting goes:\n\n" +
          wrapped(names_in(interface.in_writing_order()) + ".");
  std::vector<const Entry*> young;
  for (const Entry* entry : interface.in_writing_order())
    if (entry->store.unless_default) young.push_back(entry);
  return text + "\n" +
         wrapped("Those at the end, " + names_in(young) +
                 ", are written only where they aren't the default: a container that knows nothing of "
                 "them gets what it always got.");
}

std::string operations(const Interface& interface) {
  std::string rows;
  for (const Entry* operation : interface.all(Kind::Operation)) {
    const std::string arguments = parameter_texts(*operation);
    rows += row({std::to_string(operation->number),
                 code(operation->name) + (arguments.empty() ? "" : " (" + arguments + ")"),
                 type_text(operation->type), operation->summary});
  }
  return rows;
}

std::string events(const Interface& interface) {
  std::string rows;
  for (const Entry* event : interface.all(Kind::Event))
    rows += row({std::to_string(event->number), code(event->name), parameter_texts(*event), event->summary});
  return rows;
}

std::string enumerations(const Interface& interface) {
  std::string rows;
  for (const Entry* enumeration : interface.all(Kind::Enumeration)) {
    std::vector<std::string> members;
    for (const Entry& member : enumeration->members)
      members.push_back(code(member.name) + " = " + std::to_string(member.number));
    rows += row({code(enumeration->name), joined(members), enumeration->summary});
  }
  return rows;
}

std::string prose_of(const Entry& entry) {
  std::string text = wrapped(entry.summary);
  for (const std::string& paragraph : entry.prose) text += "\n" + wrapped(paragraph);
  if (!entry.fact("unit").empty()) text += "\n" + wrapped("Unit: " + entry.fact("unit") + ".");
  if (!entry.fact("errors").empty()) text += "\n" + wrapped("Errors: " + entry.fact("errors"));
  return text;
}

std::string classes(const Interface& interface) {
  std::string text = about_classes;
  for (const Entry* described : interface.all(Kind::Class)) {
    text += "### `" + described->name + "`\n\n" + prose_of(*described) + "\n| Member | Type |\n|---|---|\n";
    for (const Entry& member : described->members) {
      const std::string arguments = parameter_texts(member);
      text += row(
          {code(member.name) + (arguments.empty() ? "" : " (" + arguments + ")"), type_text(member.type)});
    }
    text += "\n";
  }
  text.pop_back();
  return text;
}

std::string service_member(const Interface& interface, const Entry& service, const Entry& member) {
  return "\n#### `" + service.name + "." + member.name + "`\n\n```c\n" +
         c_service_declaration(interface, service, member) + "```\n```python\n" +
         python_service_declaration(interface, service, member) + "```\n\n" + prose_of(member);
}

std::string services(const Interface& interface) {
  std::string text = about_services;
  for (const Entry* service : interface.all(Kind::Service)) {
    text += "\n### `" + service->name + "`\n\n" + prose_of(*service);
    for (const Entry& member : service->members) {
      if (member.kind != Kind::Enumeration) {
        text += service_member(interface, *service, member);
        continue;
      }
      std::vector<std::string> names;
      for (const Entry& each : member.members)
        names.push_back(code(each.name) + " = " + std::to_string(each.number));
      text += "\n#### `" + member.name + "`\n\n" + wrapped(joined(names) + ".") + "\n" + prose_of(member);
    }
  }
  return text;
}

std::string declarations(const Interface& interface, const Entry& entry) {
  std::string lines;
  for (const Face face : {Face::Host, Face::Qt}) {
    if (entry.kind == Kind::Event) {
      lines += broken("void " + entry.name + "(" +
                      (face == Face::Host ? event_parameters(interface, entry, "Object", true)
                                          : signal_parameters(interface, entry)) +
                      ");") +
               "\n";
      continue;
    }
    lines += broken(result_type(interface, entry, face) + " " + entry.name + "(" +
                    parameter_list(interface, entry, face, true) + ")" +
                    (entry.kind == Kind::Property ? " const;" : ";")) +
             "\n";
    if (entry.kind == Kind::Property && entry.can_be_set())
      lines += "void set_" + entry.name + "(" + setter_parameter(interface, entry, face) + " value);\n";
  }
  return "```cpp\n" + lines + "```\n" + "```c\n" +
         (entry.kind == Kind::Event ? "TVX_EVENT_" : "TVX_MEMBER_") + entry.name + "  /* " +
         c_signature(entry) + " */\n```\n```python\n" + python_declaration(interface, entry) + "```\n";
}

std::string each_member(const Interface& interface) {
  std::string text = about_members, group;
  for (const Entry& entry : interface.entries) {
    if (entry.kind != Kind::Property && entry.kind != Kind::Operation && entry.kind != Kind::Event) continue;
    if (entry.group != group) text += "\n### " + (group = entry.group) + "\n";
    text += "\n#### `" + entry.name + "`\n\n" + declarations(interface, entry) + "\n" + prose_of(entry);
  }
  return text;
}

}  // namespace

std::string reference(const Interface& interface) {
  return introduction + (about_properties + properties(interface)) + store(interface) + about_operations +
         operations(interface) + about_events + events(interface) + about_enumerations +
         enumerations(interface) + classes(interface) + services(interface) + each_member(interface);
}
