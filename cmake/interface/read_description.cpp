#include <algorithm>
#include <fstream>
#include <set>
#include <stdexcept>

#include "description.h"
#include "text.h"

namespace {

class Reader {
 public:
  explicit Reader(const std::string& path) : path_(path), file_(path) {
    if (!file_) throw std::runtime_error(path + ": can't be read");
  }

  Interface read() {
    for (std::string line; std::getline(file_, line);) {
      ++line_;
      if (starts_with(line, "#")) continue;
      if (line.empty())
        paragraph_ended_ = true;
      else if (line[0] != ' ')
        begin(line);
      else if (!starts_with(line, "    ") || !continue_fact(trimmed(line)))
        add(trimmed(line));
    }
    return std::move(interface_);
  }

  [[noreturn]] void fail(const std::string& what) const { fail(line_, what); }
  [[noreturn]] void fail(int line, const std::string& what) const {
    throw std::runtime_error(path_ + ":" + std::to_string(line) + ": " + what);
  }

 private:
  void begin(const std::string& line) {
    const std::string word = line.substr(0, line.find(' '));
    const std::string rest = trimmed(line.substr(word.size()));
    if (word == "group") {
      group_ = rest;
      return;
    }
    static const std::map<std::string, Kind> kinds = {
        {"property", Kind::Property}, {"operation", Kind::Operation},     {"event", Kind::Event},
        {"key", Kind::Key},           {"enumeration", Kind::Enumeration}, {"class", Kind::Class},
        {"service", Kind::Service}};
    const auto kind = kinds.find(word);
    if (kind == kinds.end()) fail("no description starts with \"" + word + "\"");
    Entry entry;
    entry.kind = kind->second;
    entry.group = group_;
    read_head(entry, rest);
    list_of(entry).push_back(std::move(entry));
    paragraph_ended_ = false;
  }

  /// Where a description goes: one of SERVICE.MEMBER, which keeps the second name alone, to the service above
  /// it.
  std::vector<Entry>& list_of(Entry& entry) {
    const std::size_t dot = entry.name.find('.');
    belongs_to_service_ = dot != entry.name.npos;
    if (!belongs_to_service_) return interface_.entries;
    const std::string owner = entry.name.substr(0, dot);
    Entry* service = interface_.entries.empty() ? nullptr : &interface_.entries.back();
    if (!service || service->kind != Kind::Service || service->name != owner)
      fail("the service " + owner + " isn't described just before");
    entry.name = entry.name.substr(dot + 1);
    if (!is_name(entry.name)) fail("\"" + entry.name + "\" is no name");
    return service->members;
  }

  Entry& current() {
    if (interface_.entries.empty()) fail("this belongs to no description");
    Entry& last = interface_.entries.back();
    return belongs_to_service_ ? last.members.back() : last;
  }

  /// "NUMBER NAME: TYPE = DEFAULT", "NUMBER NAME(PARAMETERS): RESULT", or a part of these.
  void read_head(Entry& entry, std::string text) {
    entry.line = line_;
    if (entry.kind == Kind::Property || entry.kind == Kind::Operation || entry.kind == Kind::Event) {
      const std::size_t end = text.find(' ');
      if (end == text.npos || text.find_first_not_of("0123456789") != end)
        fail("a number comes before the name");
      entry.number = std::stoi(text.substr(0, end));
      text = text.substr(end + 1);
    }
    const std::size_t end = std::min(text.find_first_of(":("), text.size());
    entry.name = trimmed(text.substr(0, end));
    if (!is_name(entry.name.substr(0, entry.name.find('.')))) fail("\"" + entry.name + "\" is no name");
    text = text.substr(end);
    if (starts_with(text, "(")) {
      const std::size_t close = text.rfind(')');
      if (close == text.npos) fail("a bracket isn't closed");
      read_parameters(entry, text.substr(1, close - 1));
      text = text.substr(close + 1);
    }
    if (starts_with(text, ":")) {
      const std::size_t equals = text.find('=');
      entry.type = trimmed(text.substr(1, equals == text.npos ? equals : equals - 1));
      if (equals != text.npos) entry.initial = trimmed(text.substr(equals + 1));
    } else if (!text.empty()) {
      fail("\"" + text + "\" isn't expected here");
    }
  }

  void read_parameters(Entry& entry, const std::string& list) {
    for (std::string text : split(list, ',')) {
      Parameter parameter;
      if (starts_with(text, "[") && text.back() == ']') {
        parameter.optional = true;
        text = trimmed(text.substr(1, text.size() - 2));
      }
      if (starts_with(text, "out ")) {
        parameter.out = true;
        text = trimmed(text.substr(4));
      }
      const std::size_t colon = text.find(':');
      if (colon == text.npos) fail("a parameter is NAME: TYPE, not \"" + text + "\"");
      parameter.name = trimmed(text.substr(0, colon));
      const std::size_t equals = text.find('=');
      parameter.type = trimmed(text.substr(colon + 1, equals == text.npos ? equals : equals - colon - 1));
      if (equals != text.npos) parameter.initial = trimmed(text.substr(equals + 1));
      if (!parameter.type.empty() && parameter.type.back() == '&') {
        parameter.by_reference = true;
        parameter.type.pop_back();
      }
      entry.parameters.push_back(std::move(parameter));
    }
  }

  /// A line below a description: a fact, a member, or a piece of its text.
  void add(const std::string& line) {
    Entry& entry = current();
    if (entry.summary.empty() && add_member(entry, line)) return;
    if (entry.summary.empty() && add_fact(entry, line)) return;
    if (entry.summary.empty() || (!paragraph_ended_ && entry.prose.empty()))
      append(entry.summary, line);
    else if (paragraph_ended_)
      entry.prose.push_back(line);
    else
      append(entry.prose.back(), line);
    paragraph_ended_ = false;
  }

  static void append(std::string& text, const std::string& line) { text += (text.empty() ? "" : " ") + line; }

  bool add_member(Entry& entry, const std::string& line) {
    const std::string name = line.substr(0, line.find_first_of(" :("));
    const std::string after = trimmed(line.substr(name.size()));
    Entry member;
    if (entry.kind == Kind::Enumeration && is_name(name) && starts_with(after, "= ")) {
      member.name = name;
      member.number = std::stoi(after.substr(2));
    } else if (entry.kind == Kind::Class && is_name(name) &&
               (starts_with(after, ":") || starts_with(after, "("))) {
      member.kind = after[0] == '(' ? Kind::Operation : Kind::Property;
      // The number that a description has is the member's place.
      read_head(member, std::to_string(entry.members.size() + 1) + " " + line);
    } else {
      return false;
    }
    entry.members.push_back(std::move(member));
    return true;
  }

  bool add_fact(Entry& entry, const std::string& line) {
    static const std::set<std::string> known = {"store", "access",    "kept",    "getter",  "setter",
                                                "unit",  "errors",    "returns", "binding", "text",
                                                "c",     "interface", "class"};
    const std::size_t colon = line.find(':');
    if (colon == line.npos || !is_name(line.substr(0, colon))) return false;
    const std::string name = line.substr(0, colon);
    if (!known.count(name)) fail("there is no fact \"" + name + "\"");
    const std::string value = trimmed(line.substr(colon + 1));
    if (!entry.facts.emplace(name, value).second) fail("told twice: " + name);
    last_fact_ = name;
    if (name == "store") read_place(entry.store, value);
    return true;
  }

  /// A line that stands further in goes on with the fact above it.
  bool continue_fact(const std::string& line) {
    Entry& entry = current();
    const auto fact = entry.facts.find(last_fact_);
    if (!entry.summary.empty() || fact == entry.facts.end()) return false;
    append(fact->second, line);
    return true;
  }

  void read_place(StorePlace& place, const std::string& text) {
    const std::vector<std::string> parts = split(text, ',');
    if (parts.size() < 2) fail("a place in the store is READ, WRITTEN");
    place.read = std::stoi(parts[0]);
    place.written = std::stoi(parts[1]);
    for (std::size_t i = 2; i < parts.size(); ++i) {
      if (starts_with(parts[i], "default "))
        place.initial = parts[i].substr(8);
      else if (parts[i] == "unless default")
        place.unless_default = true;
      else
        fail("\"" + parts[i] + "\" says nothing of the store");
    }
  }

  std::string path_;
  std::ifstream file_;
  int line_ = 0;
  std::string group_;
  bool paragraph_ended_ = false;
  std::string last_fact_;
  bool belongs_to_service_ = false;  // the description that is being read
  Interface interface_;
};

/// What holds beyond a single line.
class Check {
 public:
  Check(const Interface& interface, const Reader& reader) : interface_(interface), reader_(reader) {}

  void run() {
    for (const Entry& entry : interface_.entries) check(entry);
    check_order(interface_.in_reading_order(), &StorePlace::read, "reading");
    check_order(interface_.in_writing_order(), &StorePlace::written, "writing");
  }

 private:
  void check(const Entry& entry) {
    if (entry.summary.empty()) reader_.fail(entry.line, entry.name + " isn't described");
    if (entry.summary.back() != '.')
      reader_.fail(entry.line, "the first sentence of " + entry.name + " has no end");
    if (!names_.insert(lower(entry.name)).second) reader_.fail(entry.line, "described twice: " + entry.name);
    const bool is_member = entry.kind == Kind::Property || entry.kind == Kind::Operation;
    if (is_member && !numbers_.insert(entry.number).second)
      reader_.fail(entry.line, entry.name + " has the number of another member");
    if (entry.kind == Kind::Event && entry.number != ++events_)
      reader_.fail(entry.line, "events stand in the order of their numbers");
    if (entry.kind == Kind::Property || entry.kind == Kind::Key || !entry.type.empty())
      check_type(entry, entry.type);
    for (const Parameter& parameter : entry.parameters) check_type(entry, parameter.type);
    if (entry.kind == Kind::Service) return check_service(entry);
    for (const Entry& member : entry.members)
      if (!member.type.empty()) check_type(entry, member.type);
    if (interface_.is_enumeration(entry.type) && !entry.initial.empty())
      if (interface_.number_of(entry.type, entry.initial) < 0)
        reader_.fail(entry.line, entry.initial + " is no " + entry.type);
  }

  void check_service(const Entry& service) {
    for (const char* fact : {"c", "interface"})
      if (service.fact(fact).empty()) reader_.fail(service.line, service.name + " has no \"" + fact + ":\"");
    int members = 0, events = 0;
    for (const Entry& member : service.members) {
      if (member.summary.empty())
        reader_.fail(member.line, service.name + "." + member.name + " isn't described");
      if (member.kind == Kind::Enumeration) continue;
      if (member.number != ++(member.kind == Kind::Event ? events : members))
        reader_.fail(member.line, service.name + "." + member.name + " isn't in the order of the numbers");
      if (!member.type.empty()) check_service_type(member, member.type);
      for (const Parameter& parameter : member.parameters) check_service_type(member, parameter.type);
    }
  }

  void check_service_type(const Entry& entry, const std::string& type) {
    if (type != "pointer" && !interface_.is_service_enumeration(type) && !interface_.service(type))
      check_type(entry, type);
  }

  void check_type(const Entry& entry, const std::string& type) {
    static const std::set<std::string> plain = {"boolean", "int16",  "int32",  "string",
                                                "date",    "object", "variant"};
    if (!plain.count(type) && !interface_.is_enumeration(type) && !interface_.is_object(type))
      reader_.fail(entry.line, entry.name + ": there is no type \"" + type + "\"");
  }

  void check_order(const std::vector<const Entry*>& entries, int StorePlace::*place,
                   const std::string& what) {
    int expected = 0;
    for (const Entry* entry : entries)
      if (entry->store.*place != ++expected)
        reader_.fail(entry->line,
                     entry->name + ": the order of " + what + " wants a " + std::to_string(expected));
  }

  const Interface& interface_;
  const Reader& reader_;
  std::set<std::string> names_;
  std::set<int> numbers_;
  int events_ = 0;
};

std::vector<const Entry*> in_order(const Interface& interface, int StorePlace::*place) {
  std::vector<const Entry*> stored;
  for (const Entry& entry : interface.entries)
    if (entry.is_stored()) stored.push_back(&entry);
  std::sort(stored.begin(), stored.end(),
            [&](const Entry* a, const Entry* b) { return a->store.*place < b->store.*place; });
  return stored;
}

}  // namespace

std::vector<const Entry*> Interface::all(Kind kind) const {
  std::vector<const Entry*> found;
  for (const Entry& entry : entries)
    if (entry.kind == kind) found.push_back(&entry);
  return found;
}

const Entry* Interface::service(const std::string& name) const {
  for (const Entry* entry : all(Kind::Service))
    if (entry->name == name) return entry;
  return nullptr;
}

std::vector<const Entry*> Interface::service_enumerations() const {
  std::vector<const Entry*> found;
  for (const Entry* service : all(Kind::Service))
    for (const Entry& member : service->members)
      if (member.kind == Kind::Enumeration) found.push_back(&member);
  return found;
}

bool Interface::is_service_enumeration(const std::string& type) const {
  for (const Entry* entry : service_enumerations())
    if (entry->name == type) return true;
  return false;
}

bool Interface::is_enumeration(const std::string& type) const {
  for (const Entry* entry : all(Kind::Enumeration))
    if (entry->name == type) return true;
  return false;
}

bool Interface::is_object(const std::string& type) const {
  if (type == "object") return true;
  for (const Entry* entry : all(Kind::Class))
    if (entry->name == type) return true;
  return false;
}

int Interface::number_of(const std::string& enumeration, const std::string& name) const {
  for (const Entry* entry : all(Kind::Enumeration))
    if (entry->name == enumeration)
      for (const Entry& member : entry->members)
        if (member.name == name) return member.number;
  return -1;
}

std::vector<const Entry*> Interface::in_reading_order() const { return in_order(*this, &StorePlace::read); }
std::vector<const Entry*> Interface::in_writing_order() const {
  return in_order(*this, &StorePlace::written);
}

Interface read_interface(const std::string& path) {
  Reader reader(path);
  Interface interface = reader.read();
  Check(interface, reader).run();
  return interface;
}
