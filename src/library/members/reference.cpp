#include "tvx/library/members/reference.h"

#include "tvx/base/strings.h"
#include "tvx/library/members/member_table.h"

namespace tvx::library {

namespace {

constexpr const char* introduction = R"(# Reference

Every member of `HTMLed` as a host sees it: the same names at `tvx/htmled.h`, at the Qt widget
(`tvx/htmled_widget.h`), and by name through `htmled-cli` ([automation.md](automation.md)). Names compare without
regard to case; numbers are for dispatch and never change.

This page is written by `htmled-cli --reference` from the table in `src/library`; a test holds them together.
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
Two more keys are in the store: `FullToolBar` (boolean, true), kept for hosts that know it, and
`FTPDirectoryItem`. `IsDirty`, `allHTML`, `DocumentText` and `FTPActionInProgress` are stored though they can't
be set; reading brings them back into the control without a setter.
)";

constexpr const char* about_operations = R"(
## Operations

Arguments marked with `&` come back as the operation left them. An operation that a build of the control doesn't
have raises error 445.

| No. | Operation | Result | |
|---|---|---|---|
)";

constexpr const char* about_events = R"(
## Events

All arguments go by reference. What a host writes into `cancel`, `CancelNavigate`, `CurrentDocumentHTML`, and in
`SpellCheckWord` into `Cancelled`, `newWord` and `AddThisWord`, counts; the rest is told. A host may call the
control from within every event, and may close it there; its exceptions end at the control.

| No. | Event | Arguments | |
|---|---|---|---|
)";

constexpr const char* about_enumerations = R"(
## Enumerations

All are 32 bits wide.

| Enumeration | Members |
|---|---|
)";

std::string code(std::u16string_view text) { return "`" + to_utf8(text) + "`"; }

std::string default_of(const Member& member) {
  switch (member.initial.kind) {
    case DefaultValue::Kind::None: return "";
    case DefaultValue::Kind::Boolean: return member.initial.number ? "true" : "false";
    case DefaultValue::Kind::Number: return std::to_string(member.initial.number);
    case DefaultValue::Kind::Text: return "`\"" + to_utf8(member.initial.text) + "\"`";
  }
  return "";
}

std::string_view access_of(const Member& member) {
  switch (member.access) {
    case Access::ReadWrite: return "yes";
    case Access::DesignTime: return "at design time; at run time 382";
    case Access::Refused: return "no: 382, at design time 387";
    case Access::RefusedDOM: return "no: 382, at design time 383";
    case Access::ReadOnly: return "no: 383";
  }
  return "";
}

std::string parameters_of(std::span<const Parameter> parameters, bool mark_references) {
  std::string list;
  for (const Parameter& parameter : parameters) {
    if (!list.empty()) list += ", ";
    std::string one = to_utf8(parameter.name);
    if (mark_references && parameter.by_reference == ByReference::Yes) one += "&";
    if (parameter.optional == Optional::Yes) one = "[" + one + "]";
    list += "`" + one + "` " + to_utf8(name_of(parameter.type));
  }
  return list;
}

std::string row(std::initializer_list<std::string> cells) {
  std::string line = "|";
  for (const std::string& cell : cells) line += " " + cell + (cell.empty() ? "|" : " |");
  return line + "\n";
}

std::string properties() {
  std::string rows;
  for (const Member& member : members())
    if (member.kind == MemberKind::Property)
      rows += row({std::to_string(member.number), code(member.name), to_utf8(name_of(member.type)),
                   default_of(member), member.key.empty() ? "" : code(member.key),
                   std::string(access_of(member)), to_utf8(member.description)});
  return rows;
}

std::string operations() {
  std::string rows;
  for (const Member& member : members()) {
    if (member.kind != MemberKind::Method) continue;
    const std::string arguments = parameters_of(member.parameters, true);
    rows += row(
        {std::to_string(member.number), code(member.name) + (arguments.empty() ? "" : " (" + arguments + ")"),
         member.type == Type::None ? "" : to_utf8(name_of(member.type)), to_utf8(member.description)});
  }
  return rows;
}

std::string event_rows() {
  std::string rows;
  for (const EventMember& event : events())
    rows += row({std::to_string(event.number), code(event.name), parameters_of(event.parameters, false),
                 to_utf8(event.description)});
  return rows;
}

std::string enumeration_rows() {
  std::string rows;
  for (const Enumeration& enumeration : enumerations()) {
    std::string list;
    for (const EnumerationMember& member : enumeration.members)
      list += (list.empty() ? "" : ", ") + code(member.name) + " = " + std::to_string(member.number);
    rows += row({code(enumeration.name), list});
  }
  return rows;
}

}  // namespace

std::string reference() {
  std::string page = introduction;
  for (const std::string& part : {std::string(about_properties), properties(), std::string(about_store),
                                  std::string(about_operations), operations(), std::string(about_events),
                                  event_rows(), std::string(about_enumerations), enumeration_rows()})
    page += part;
  return page;
}

}  // namespace tvx::library
