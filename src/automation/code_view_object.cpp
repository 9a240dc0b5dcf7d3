#include <algorithm>

#include "tvx/automation/control_object.h"
#include "tvx/automation/instance.h"
#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"

namespace tvx::automation {

using library::MemberOf;
using library::Value;
using library::Values;
using source::OrvelCV;

namespace {

class CodeViewObject final : public library::Object {
 public:
  explicit CodeViewObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"codeView"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;

  OrvelCV& operator*() const { return instance_.control().txtCode(); }
  Instance& instance() const { return instance_; }
  const core::Box& box() const { return instance_.control().layout().txtCode; }

 private:
  Instance& instance_;
};

template <auto Method>
Value call(CodeViewObject& self, Values& arguments) {
  library::expect_arguments(arguments, 0, 0);
  return library::result_of([&] { return ((*self).*Method)(); });
}

template <auto Getter>
Value get(CodeViewObject& self) {
  return std::int32_t{((*self).*Getter)()};
}

template <auto Getter>
Value flag(CodeViewObject& self) {
  return ((*self).*Getter)();
}

template <auto Setter>
void set_number(CodeViewObject& self, const Value& value) {
  ((*self).*Setter)(value.to_integer32());
}

template <auto Setter>
void set_small(CodeViewObject& self, const Value& value) {
  ((*self).*Setter)(value.to_integer16());
}

template <auto Setter>
void set_flag(CodeViewObject& self, const Value& value) {
  ((*self).*Setter)(value.to_boolean());
}

template <auto Field>
Value stored(CodeViewObject& self) {
  return std::int32_t{(*self).properties().*Field};
}

using source::CodeViewProperties;

/// What the user makes of the text, as one step; `Text` set puts a text in from outside.
Value edit(CodeViewObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 1);
  (*self).edit(arguments[0].to_text());
  return {};
}

Value line_for_character(CodeViewObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 1);
  return (*self).LineForCharacterIndex(arguments[0].to_integer32());
}

Value translate_colour(CodeViewObject&, Values& arguments) {
  library::expect_arguments(arguments, 1, 2);
  return OrvelCV::TranslateColor(
      static_cast<std::uint32_t>(static_cast<std::int64_t>(arguments[0].to_number())));
}

/// The numbers in the pane, each with its colour.
Value line_numbers(CodeViewObject& self, Values& arguments) {
  library::expect_arguments(arguments, 0, 0);
  Values rows;
  for (const source::LineNumber& row : (*self).line_numbers())
    rows.emplace_back(Values{row.number, static_cast<std::int64_t>(row.colour)});
  return rows;
}

/// The text box within, as its user has it.
class TextBoxObject final : public library::Object {
 public:
  explicit TextBoxObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"textBox"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  platform::TextBox& operator*() const { return instance_.control().txtCode().TextBox1(); }
  OrvelCV& code() const { return instance_.control().txtCode(); }

 private:
  Instance& instance_;
};

std::size_t place(const Value& value) { return static_cast<std::size_t>(std::max(value.to_integer32(), 0)); }

Value send_message(TextBoxObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 3);
  const auto number = [&](std::size_t i) { return i < arguments.size() ? arguments[i].to_integer32() : 0; };
  const auto message = static_cast<platform::Message>(number(0));
  // A text that is to be put in is given as that, and never as an address.
  if (message == platform::EM_REPLACESEL) {
    const std::u16string text = arguments.size() > 2 ? arguments[2].to_text() : std::u16string();
    return std::int64_t{platform::SendMessage((*self).handle(), message, number(1),
                                              reinterpret_cast<platform::Parameter>(text.c_str()))};
  }
  return std::int64_t{platform::SendMessage((*self).handle(), message, number(1), number(2))};
}

Value scroll_to(TextBoxObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 1);
  self.code().TextBox1();
  self.code().plain_box().scroll_to(place(arguments[0]));
  return {};
}

template <auto Length>
Value area(TextBoxObject& self) {
  return double{self.code().TextBox1_area().*Length};
}

constexpr MemberOf<TextBoxObject> box_rows[] = {
    {u"Text", [](TextBoxObject& self) -> Value { return (*self).Text(); }},
    {u"SelStart", [](TextBoxObject& self) -> Value { return static_cast<std::int64_t>((*self).SelStart()); },
     [](TextBoxObject& self, const Value& value) { (*self).select(place(value), 0); }},
    {u"SelLength",
     [](TextBoxObject& self) -> Value { return static_cast<std::int64_t>((*self).SelLength()); },
     [](TextBoxObject& self, const Value& value) { (*self).select((*self).SelStart(), place(value)); }},
    {u"SelText", [](TextBoxObject& self) -> Value { return (*self).SelText(); },
     [](TextBoxObject& self, const Value& value) { (*self).set_SelText(value.to_text()); }},
    {u"hWnd", [](TextBoxObject& self) -> Value { return platform::number_of((*self).handle()); }},
    {u"Enabled", [](TextBoxObject& self) -> Value { return (*self).Enabled(); }},
    {u"Locked", [](TextBoxObject& self) -> Value { return (*self).Locked(); }},
    {u"Left", area<&source::CodeViewBox::Left>},
    {u"Top", area<&source::CodeViewBox::Top>},
    {u"Width", area<&source::CodeViewBox::Width>},
    {u"Height", area<&source::CodeViewBox::Height>},
    {.name = u"SendMessage", .call = send_message},
    {.name = u"ScrollTo", .call = scroll_to},
};

Value TextBoxObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<TextBoxObject>(box_rows, name, *this, arguments);
}
void TextBoxObject::set(std::u16string_view name, const Value& value) {
  library::set_named<TextBoxObject>(box_rows, name, *this, value);
}

core::Box box_of(const source::CodeViewBox& area) {
  return {area.Left, area.Top, area.Width, area.Height, true};
}

/// What holds the two, and fills the code view.
Value container(CodeViewObject& self) {
  return library::box_object(u"Container", {0, 0, self.box().Width, self.box().Height, true});
}

Value line_pane(CodeViewObject& self) { return library::box_object(u"picLines", box_of((*self).picLines())); }

constexpr MemberOf<CodeViewObject> rows[] = {
    {u"Text", [](CodeViewObject& self) -> Value { return (*self).Text(); },
     [](CodeViewObject& self, const Value& value) { (*self).set_Text(value.to_text()); }},
    {u"TextBox1",
     [](CodeViewObject& self) -> Value {
       return library::ObjectHandle(std::make_shared<TextBoxObject>(self.instance()));
     }},
    {u"Container", container},
    {u"picLines", line_pane},
    {u"Enabled", flag<&OrvelCV::Enabled>, set_flag<&OrvelCV::set_Enabled>},
    {u"Locked", flag<&OrvelCV::Locked>, set_flag<&OrvelCV::set_Locked>},
    {u"Visible", flag<&OrvelCV::Visible>, set_flag<&OrvelCV::set_Visible>},
    {u"TabStop", flag<&OrvelCV::TabStop>},
    {u"InFront", flag<&OrvelCV::in_front>},
    {u"Attached", flag<&OrvelCV::attached>},
    {u"BackColor", stored<&CodeViewProperties::BackColor>, set_number<&OrvelCV::set_BackColor>},
    {u"ForeColor", stored<&CodeViewProperties::ForeColor>, set_number<&OrvelCV::set_ForeColor>},
    {u"BackStyle", stored<&CodeViewProperties::BackStyle>, set_small<&OrvelCV::set_BackStyle>},
    {u"BorderStyle", stored<&CodeViewProperties::BorderStyle>, set_small<&OrvelCV::set_BorderStyle>},
    {u"SelStart", get<&OrvelCV::SelStart>, set_number<&OrvelCV::set_SelStart>},
    {u"SelLength", get<&OrvelCV::SelLength>, set_number<&OrvelCV::set_SelLength>},
    {u"hWnd", [](CodeViewObject& self) -> Value { return platform::number_of((*self).hwnd()); }},
    {u"LineCount", get<&OrvelCV::LineCount>},
    {u"FirstVisibleLine", get<&OrvelCV::FirstVisibleLine>},
    {u"Left", [](CodeViewObject& self) -> Value { return double{self.box().Left}; }},
    {u"Top", [](CodeViewObject& self) -> Value { return double{self.box().Top}; }},
    {u"Width", [](CodeViewObject& self) -> Value { return double{self.box().Width}; }},
    {u"Height", [](CodeViewObject& self) -> Value { return double{self.box().Height}; }},
    {u"HasFocus", flag<&OrvelCV::has_focus>},
    {.name = u"LineForCharacterIndex", .call = line_for_character},
    {.name = u"LineNumbers", .call = line_numbers},
    {.name = u"TranslateColor", .call = translate_colour},
    {.name = u"Cut", .call = call<&OrvelCV::Cut>},
    {.name = u"Copy", .call = call<&OrvelCV::Copy>},
    {.name = u"Paste", .call = call<&OrvelCV::Paste>},
    {.name = u"Undo", .call = call<&OrvelCV::Undo>},
    {.name = u"Redo", .call = call<&OrvelCV::Redo>},
    {.name = u"Refresh", .call = call<&OrvelCV::Refresh>},
    {.name = u"DrawLineNumbers", .call = call<&OrvelCV::DrawLineNumbers>},
    {.name = u"SetFocus", .call = call<&OrvelCV::SetFocus>},
    {.name = u"attachMessages", .call = call<&OrvelCV::attachMessages>},
    {.name = u"DetachAllMessages", .call = call<&OrvelCV::DetachAllMessages>},
    {.name = u"Edit", .call = edit},
};

Value CodeViewObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<CodeViewObject>(rows, name, *this, arguments);
}
void CodeViewObject::set(std::u16string_view name, const Value& value) {
  library::set_named<CodeViewObject>(rows, name, *this, value);
}

}  // namespace

library::ObjectHandle code_view_object(Instance& instance) {
  return std::make_shared<CodeViewObject>(instance);
}

}  // namespace tvx::automation
