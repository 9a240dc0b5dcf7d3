#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The interface of the control, as src/library/tvxhtml.interface describes it.
struct Parameter {
  std::string name, type;
  std::string initial;  // what C++ gives where it is left out
  bool by_reference = false;
  bool optional = false;
  bool out = false;
};

/// Where a property stands in the store.
struct StorePlace {
  int read = 0, written = 0;  // counted from 1; 0: it isn't stored
  std::string initial;        // the default that the store knows, where it is another one
  bool unless_default = false;
};

enum class Kind { Property, Operation, Event, Key, Enumeration, Class, Service };

/// One description.
struct Entry {
  Kind kind = Kind::Property;
  int line = 0;
  int number = 0;
  std::string name, type, initial;  // of an operation the type is its result's, "" where there is none
  std::vector<Parameter> parameters;
  std::vector<Entry> members;  // of an enumeration, of a class and of a service
  std::map<std::string, std::string> facts;
  StorePlace store;
  std::string summary;
  std::vector<std::string> prose;
  std::string group;

  std::string fact(const std::string& name) const {
    const auto found = facts.find(name);
    return found == facts.end() ? "" : found->second;
  }
  bool is_stored() const { return store.read != 0; }
  /// Whether late binding knows a setter.
  bool has_setter() const { return fact("access") != "read only"; }
  /// Whether a host in C++ is offered one.
  bool can_be_set() const { return fact("access").empty() || fact("access") == "design time"; }
};

struct Interface {
  std::vector<Entry> entries;

  std::vector<const Entry*> all(Kind kind) const;
  /// The enumerations of services.
  std::vector<const Entry*> service_enumerations() const;
  bool is_enumeration(const std::string& type) const;
  bool is_service_enumeration(const std::string& type) const;
  /// Null: there is no service of this name.
  const Entry* service(const std::string& name) const;
  /// An object of a class or of any.
  bool is_object(const std::string& type) const;
  /// The number that a name of an enumeration stands for.
  int number_of(const std::string& enumeration, const std::string& name) const;
  /// The stored properties and keys, in the order of reading or of writing.
  std::vector<const Entry*> in_reading_order() const;
  std::vector<const Entry*> in_writing_order() const;
};

/// Throws std::runtime_error, with the line, for what isn't written as the file's own first lines say.
Interface read_interface(const std::string& path);
