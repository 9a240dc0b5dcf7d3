#include "tvx/library/objects/range_object.h"

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::library {

namespace {

using editing::ControlRange;
using editing::TextRange;

class TextRangeObject final : public Object {
 public:
  TextRangeObject(TextRange range, DocumentHandle document)
      : document_(std::move(document)), range_(std::move(range)) {}
  std::u16string_view kind() const override { return u"textRange"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"text", range_.text()}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  bool is_operation(std::u16string_view name) const override;
  void set(std::u16string_view name, const Value& value) override;

  TextRange& operator*() { return range_; }
  TextRange* operator->() { return &range_; }
  const DocumentHandle& document() const { return document_; }
  /// What changes the selection is one gesture: the document tells of it once.
  template <class Act>
  Value change(Act&& act) {
    document_->select([&](editing::Selection&) { act(); });
    return {};
  }

 private:
  DocumentHandle document_;  // outlives the range, which stands on its editor
  TextRange range_;
};

TextRange& other_range(const Values& arguments, std::size_t number) {
  const ObjectHandle object = arguments[number].to_object();
  auto* other = dynamic_cast<TextRangeObject*>(object.get());
  if (!other) type_mismatch();
  return **other;
}

std::u16string unit_of(const Values& arguments) { return arguments[0].to_text(); }
int count_of(const Values& arguments) { return arguments.size() > 1 ? arguments[1].to_integer32() : 1; }

Value paste_html(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return self.change([&] { self->paste_html(arguments[0].to_text()); });
}

Value expand(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return self->expand(unit_of(arguments));
}

Value collapse(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 1);
  self->collapse(arguments.empty() || arguments[0].to_boolean());
  return {};
}

Value select(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  return self.change([&] { self->select(); });
}

template <auto Move>
Value move(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  return std::int32_t{((*self).*Move)(unit_of(arguments), count_of(arguments))};
}

Value duplicate(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  return range_object(self->duplicate(), self.document());
}

Value find_text(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return self->find_text(arguments[0].to_text());
}

Value move_to_element_text(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  const dom::Ref<dom::Element> element = element_of(arguments[0]);
  if (!element) type_mismatch();
  self->move_to_element_text(*element);
  return {};
}

Value set_end_point(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  self->set_end_point(unit_of(arguments), other_range(arguments, 1));
  return {};
}

Value compare_end_points(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  return std::int32_t{self->compare_end_points(unit_of(arguments), other_range(arguments, 1))};
}

template <auto Question>
Value ask(TextRangeObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return ((*self).*Question)(other_range(arguments, 0));
}

// What a host reads here it will write again: the border of the current element is no part of it.
Value html_text(TextRangeObject& self) {
  const dom::WithoutOverlay bare(self.document()->tree());
  return self->html_text();
}

constexpr MemberOf<TextRangeObject> text_rows[] = {
    {u"htmlText", html_text},
    {u"text", [](TextRangeObject& self) -> Value { return self->text(); },
     [](TextRangeObject& self, const Value& value) {
       self.change([&] { self->set_text(value.to_text()); });
     }},
    {.name = u"parentElement",
     .call =
         [](TextRangeObject& self, Values& arguments) {
           expect_arguments(arguments, 0, 0);
           return element_object(self->parent_element(), self.document());
         }},
    {.name = u"pasteHTML", .call = paste_html},
    {.name = u"expand", .call = expand},
    {.name = u"collapse", .call = collapse},
    {.name = u"select", .call = select},
    {.name = u"move", .call = move<&TextRange::move>},
    {.name = u"moveStart", .call = move<&TextRange::move_start>},
    {.name = u"moveEnd", .call = move<&TextRange::move_end>},
    {.name = u"moveToElementText", .call = move_to_element_text},
    {.name = u"findText", .call = find_text},
    {.name = u"duplicate", .call = duplicate},
    {.name = u"setEndPoint", .call = set_end_point},
    {.name = u"compareEndPoints", .call = compare_end_points},
    {.name = u"inRange", .call = ask<&TextRange::in_range>},
    {.name = u"isEqual", .call = ask<&TextRange::is_equal>},
};

bool TextRangeObject::is_operation(std::u16string_view name) const {
  return is_operation_named<TextRangeObject>(text_rows, name);
}

Value TextRangeObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<TextRangeObject>(text_rows, name, *this, arguments);
}
void TextRangeObject::set(std::u16string_view name, const Value& value) {
  set_named<TextRangeObject>(text_rows, name, *this, value);
}

/// Has no member of a text range: asking for one fails as any unknown name does.
class ControlRangeObject final : public Object {
 public:
  ControlRangeObject(ControlRange range, DocumentHandle document)
      : document_(std::move(document)), range_(std::move(range)) {}
  std::u16string_view kind() const override { return u"controlRange"; }
  std::vector<std::pair<std::string, Value>> description() const override { return {{"length", length()}}; }

  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    const std::int32_t index = arguments[0].to_integer32();
    // A negative index becomes one that no list reaches.
    return element_object(&range_.item(static_cast<std::size_t>(index)), document_);
  }

  bool is_operation(std::u16string_view name) const override {
    return equals_ignoring_ascii_case(name, u"select");
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"item")) return item(arguments);
    if (equals_ignoring_ascii_case(name, u"execCommand")) {
      expect_arguments(arguments, 1, 3);
      bool done = false;
      document_->select([&](editing::Selection&) {
        done = range_.execute(arguments[0].to_text(),
                              arguments.size() > 2 ? arguments[2].to_text() : std::u16string());
      });
      return done;
    }
    expect_arguments(arguments, 0, 0);
    if (equals_ignoring_ascii_case(name, u"length")) return length();
    if (!equals_ignoring_ascii_case(name, u"select")) unknown_member(name);
    document_->select([&](editing::Selection&) { range_.select(); });
    return {};
  }

 private:
  std::int32_t length() const { return static_cast<std::int32_t>(range_.length()); }
  DocumentHandle document_;
  ControlRange range_;
};

}  // namespace

Value range_object(editing::AnyRange range, const DocumentHandle& document) {
  if (auto* text = std::get_if<TextRange>(&range))
    return ObjectHandle(std::make_shared<TextRangeObject>(std::move(*text), document));
  return ObjectHandle(
      std::make_shared<ControlRangeObject>(std::move(std::get<ControlRange>(range)), document));
}

}  // namespace tvx::library
