#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/style/property_values.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::library {

namespace {

namespace style = dom::style;

/// Every CSS property is a member, by its CSS name or the object model's.
class InlineStyleObject final : public Object {
 public:
  explicit InlineStyleObject(dom::Element& element) : style_(element) {}
  std::u16string_view kind() const override { return u"style"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"cssText", style_.css_text()}};
  }

  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"removeAttribute")) {
      expect_arguments(arguments, 1, 2);
      style_.remove(arguments[0].to_text());
      return {};
    }
    expect_arguments(arguments, 0, 0);
    return equals_ignoring_ascii_case(name, u"cssText") ? style_.css_text() : style_.get(name);
  }

  void set(std::u16string_view name, const Value& value) override {
    const std::u16string text = value.is_null() ? std::u16string() : value.to_text();
    if (equals_ignoring_ascii_case(name, u"cssText")) return style_.set_css_text(text);
    style_.set(name, text);
  }

 private:
  style::InlineStyle style_;
};

/// The computed values that the document knows, by the names of their properties.
class CurrentStyleObject final : public Object {
 public:
  explicit CurrentStyleObject(dom::Element& element) : element_(element) {}
  std::u16string_view kind() const override { return u"currentStyle"; }

  Value invoke(std::u16string_view name, Values& arguments) override {
    expect_arguments(arguments, 0, 0);
    const std::optional<style::Property> property = style::property_of(style::css_name_of(name));
    if (!property) unknown_member(name);
    return style::computed_value(*element_, *property);
  }
  void set(std::u16string_view, const Value&) override { read_only_member(); }

 private:
  dom::Ref<dom::Element> element_;
};

/// Things of one kind in a row, counted from 0: `length`, `item(n)`.
class ListObject final : public Object {
 public:
  explicit ListObject(Values items) : items_(std::move(items)) {}
  std::u16string_view kind() const override { return u"collection"; }
  std::vector<std::pair<std::string, Value>> description() const override { return {{"length", length()}}; }

  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"item")) return item(arguments);
    if (!equals_ignoring_ascii_case(name, u"length")) unknown_member(name);
    expect_arguments(arguments, 0, 0);
    return length();
  }

  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    const std::int32_t index = arguments[0].to_integer32();
    if (index < 0 || index >= length())
      throw RuntimeError(errors::invalid_call, u"Invalid procedure call or argument");
    return items_[static_cast<std::size_t>(index)];
  }

 private:
  std::int32_t length() const { return static_cast<std::int32_t>(items_.size()); }
  Values items_;
};

class RuleObject final : public Object {
 public:
  explicit RuleObject(style::Rule rule) : rule_(std::move(rule)) {}
  std::u16string_view kind() const override { return u"rule"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"selectorText", rule_.selector_text}};
  }

  Value invoke(std::u16string_view name, Values& arguments) override {
    expect_arguments(arguments, 0, 0);
    if (equals_ignoring_ascii_case(name, u"selectorText")) return rule_.selector_text;
    if (equals_ignoring_ascii_case(name, u"cssText")) return rule_.css_text;
    unknown_member(name);
  }

 private:
  style::Rule rule_;
};

class StyleSheetObject final : public Object {
 public:
  explicit StyleSheetObject(style::StyleSheetHandle sheet) : sheet_(std::move(sheet)) {}
  std::u16string_view kind() const override { return u"styleSheet"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"href", sheet_->href()}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;

  style::StyleSheet& operator*() const { return *sheet_; }

 private:
  style::StyleSheetHandle sheet_;
};

Value rules_of(StyleSheetObject& self) {
  Values rules;
  for (const style::Rule& rule : (*self).rules())
    rules.push_back(ObjectHandle(std::make_shared<RuleObject>(rule)));
  return ObjectHandle(std::make_shared<ListObject>(std::move(rules)));
}

constexpr MemberOf<StyleSheetObject> sheet_rows[] = {
    {u"href", [](StyleSheetObject& self) -> Value { return (*self).href(); },
     [](StyleSheetObject& self, const Value& value) { (*self).set_href(value.to_text()); }},
    {u"cssText", [](StyleSheetObject& self) -> Value { return (*self).css_text(); },
     [](StyleSheetObject& self, const Value& value) { (*self).set_css_text(value.to_text()); }},
    {u"media", [](StyleSheetObject& self) -> Value { return (*self).media(); }},
    {u"rules", rules_of},
};

Value StyleSheetObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<StyleSheetObject>(sheet_rows, name, *this, arguments);
}

void StyleSheetObject::set(std::u16string_view name, const Value& value) {
  set_named<StyleSheetObject>(sheet_rows, name, *this, value);
}

}  // namespace

Value current_style_object(dom::Element& element) {
  return ObjectHandle(std::make_shared<CurrentStyleObject>(element));
}

Value inline_style_object(dom::Element& element) {
  return ObjectHandle(std::make_shared<InlineStyleObject>(element));
}

Value style_sheet_object(const style::StyleSheetHandle& sheet) {
  return ObjectHandle(std::make_shared<StyleSheetObject>(sheet));
}

Value style_sheets_object(const DocumentHandle& document) {
  Values sheets;
  for (const style::StyleSheetHandle& sheet : style::style_of(document->tree()).sheets())
    sheets.push_back(style_sheet_object(sheet));
  return ObjectHandle(std::make_shared<ListObject>(std::move(sheets)));
}

}  // namespace tvx::library
