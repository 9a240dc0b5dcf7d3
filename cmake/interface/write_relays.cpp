#include "text.h"
#include "writers.h"

/// Who hands the control's events on: to scripts, to hosts in C++, to Qt's signals.
namespace {

constexpr const char* element = "dom::Ref<dom::Element>";

std::string declarations(const Interface& interface) {
  std::string code;
  for (const Entry* event : interface.all(Kind::Event))
    code += broken("  void " + event->name + "(" + event_parameters(interface, *event, element, true) +
                   ") override;") +
            "\n";
  return code;
}

std::string head_of(const Interface& interface, const std::string& owner, const Entry& event) {
  return broken("void " + owner + "::" + event.name + "(" +
                event_parameters(interface, event, element, true) + ") {") +
         "\n";
}

std::string to_scripts(const Interface& interface) {
  std::string code;
  for (const Entry* event : interface.all(Kind::Event)) {
    std::vector<std::string> arguments = {std::to_string(event->number)};
    for (const Parameter& parameter : event->parameters) arguments.push_back(parameter.name);
    code += head_of(interface, "EventRelay", *event) + "  relay(" + joined(arguments) + ");\n}\n";
  }
  return code;
}

/// An element becomes an object of the host's; what the host puts in its place counts for nobody.
std::string to_hosts(const Interface& interface) {
  std::string code;
  for (const Entry* event : interface.all(Kind::Event)) {
    std::vector<std::string> arguments;
    std::string objects;
    for (const Parameter& parameter : event->parameters) {
      const bool is_object = interface.is_object(parameter.type);
      if (is_object)
        objects += "  Object " + parameter.name + "_object = object_of(" + parameter.name + ");\n";
      arguments.push_back(parameter.name + (is_object ? "_object" : ""));
    }
    code += head_of(interface, "HostEvents", *event) + "  if (!host_) return;\n" + objects + "  host_->" +
            event->name + "(" + joined(arguments) + ");\n}\n";
  }
  return code;
}

std::string to_signals(const Interface& interface) {
  std::string code;
  for (const Entry* event : interface.all(Kind::Event)) {
    std::vector<std::string> arguments;
    std::string texts;
    for (const Parameter& parameter : event->parameters) {
      if (parameter.type == "string" && parameter.by_reference) {
        texts += "  WrittenText " + parameter.name + "_text(" + parameter.name + ");\n";
        arguments.push_back(parameter.name + "_text.text");
      } else if (parameter.type == "string") {
        arguments.push_back("to_qt(" + parameter.name + ")");
      } else if (interface.is_object(parameter.type)) {
        arguments.push_back("object_of(widget, " + parameter.name + ")");
      } else {
        arguments.push_back(parameter.name);
      }
    }
    code += head_of(interface, "WidgetEvents", *event) + texts +
            "  tell([&](HTMLedWidget& widget) { emit widget." + event->name + "(" + joined(arguments) +
            "); });\n}\n";
  }
  return code;
}

}  // namespace

void write_relays(const Interface& interface, Pieces& pieces) {
  pieces["relay_declarations.inc"] = declarations(interface);
  pieces["event_relay.inc"] = to_scripts(interface);
  pieces["host_events.inc"] = to_hosts(interface);
  pieces["widget_events.inc"] = to_signals(interface);
}
