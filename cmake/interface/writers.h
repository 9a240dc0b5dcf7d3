#pragma once

#include <map>
#include <string>

#include "description.h"

/// What is written from the description: pieces of code by the names of their files, included as
/// "tvx/interface/<name>", or put into a header in the place of a line "@<name>@".
using Pieces = std::map<std::string, std::string>;

void write_core(const Interface& interface, Pieces& pieces);
void write_library(const Interface& interface, Pieces& pieces);
void write_relays(const Interface& interface, Pieces& pieces);
void write_hosts(const Interface& interface, Pieces& pieces);
void write_c(const Interface& interface, Pieces& pieces);
void write_designer(const Interface& interface, Pieces& pieces);
void write_python(const Interface& interface, Pieces& pieces);
/// docs/reference.md.
std::string reference(const Interface& interface);

// --- what several of them need ---

/// As the control keeps and passes it: std::u16string.
std::string core_type(const Interface& interface, const std::string& type);
/// A default in C++, of the type that core_type names.
std::string core_value(const Interface& interface, const std::string& type, const std::string& value);
/// "std::int32_t& errNo, std::u16string& errDesc", the names as comments or not.
std::string event_parameters(const Interface& interface, const Entry& event, const std::string& object_type,
                             bool named);
/// The faces that C++ hosts see of the control.
enum class Face { Host, Qt };
std::string result_type(const Interface& interface, const Entry& entry, Face face);
std::string parameter_list(const Interface& interface, const Entry& entry, Face face, bool with_defaults);
std::string setter_parameter(const Interface& interface, const Entry& property, Face face);
std::string signal_parameters(const Interface& interface, const Entry& event);
/// A member as late binding has it: "Open_document(strURL: string&, openEntireDoc: boolean&)".
std::string c_signature(const Entry& entry);
/// The functions, or the event's number, of a service's member.
std::string c_service_declaration(const Interface& interface, const Entry& service, const Entry& member);
std::string python_service_declaration(const Interface& interface, const Entry& service, const Entry& member);
/// As a host in Python writes it.
std::string python_declaration(const Interface& interface, const Entry& entry);
/// The name of an operation's parameter that is its result in C++, "" where it is none.
std::string returned_parameter(const Entry& operation);
