#include "tvx/browser/events.h"
#include "tvx/browser/html_document.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::library {

namespace {

class EventObject final : public Object {
 public:
  EventObject(const browser::Event& event, DocumentHandle document)
      : event_(event), document_(std::move(document)) {}

  std::u16string_view kind() const override { return u"event"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"type", event_.type}, {"keyCode", std::int32_t{event_.key_code}}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;

  browser::Event& operator*() { return event_; }
  const DocumentHandle& document() const { return document_; }

 private:
  browser::Event event_;
  DocumentHandle document_;
};

/// Takes a key away (0), or makes it another, while it is being delivered.
void set_key_code(EventObject& self, const Value& value) {
  (*self).key_code = value.to_integer32();
  if (self.document() && self.document()->event()) self.document()->set_event_key_code((*self).key_code);
}

template <auto Member>
Value field(EventObject& self) {
  return (*self).*Member;
}

constexpr MemberOf<EventObject> rows[] = {
    {u"type", field<&browser::Event::type>},
    {u"clientX", field<&browser::Event::client_x>},
    {u"clientY", field<&browser::Event::client_y>},
    {u"x", field<&browser::Event::client_x>},
    {u"y", field<&browser::Event::client_y>},
    {u"button", [](EventObject& self) -> Value { return static_cast<std::int32_t>((*self).button); }},
    {u"keyCode", field<&browser::Event::key_code>, set_key_code},
    {u"shiftKey", field<&browser::Event::shift>},
    {u"ctrlKey", field<&browser::Event::control>},
    {u"altKey", field<&browser::Event::alt>},
    {u"srcElement", [](EventObject& self) { return element_object((*self).target.get(), self.document()); }},
    {u"fromElement", [](EventObject&) { return Value(); }},
};

Value EventObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<EventObject>(rows, name, *this, arguments);
}

void EventObject::set(std::u16string_view name, const Value& value) {
  set_named<EventObject>(rows, name, *this, value);
}

}  // namespace

Value event_object(const browser::Event& event, const DocumentHandle& document) {
  return ObjectHandle(std::make_shared<EventObject>(event, document));
}

}  // namespace tvx::library
