#include "tvx/dom/objects/reflection.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"

namespace tvx::dom {

namespace {

const std::u16string_view* find_word(std::initializer_list<std::u16string_view> words,
                                     std::u16string_view word) {
  const auto found = std::find_if(words.begin(), words.end(), [word](std::u16string_view candidate) {
    return equals_ignoring_ascii_case(candidate, word);
  });
  return found == words.end() ? nullptr : found;
}

[[noreturn]] void refuse_value() {
  throw RuntimeError(errors::invalid_property_value, u"Invalid property value");
}

}  // namespace

Name attribute_named(std::u16string_view name) {
  if (equals_ignoring_ascii_case(name, u"className")) return names::class_;
  if (equals_ignoring_ascii_case(name, u"htmlFor")) return names::for_;
  if (equals_ignoring_ascii_case(name, u"httpEquiv")) return names::http_equiv;
  return Name(ascii_lower(name));
}

Name attribute_named(const Element& element, std::u16string_view name) {
  const Name usual = attribute_named(name);
  if (element.is_html() || element.has_attribute(usual)) return usual;
  for (const Attribute& attribute : element.attributes())
    if (equals_ignoring_ascii_case(attribute.name.text(), usual.text())) return attribute.name;
  return usual;
}

std::optional<std::u16string> get_attribute(const Element& element, std::u16string_view name) {
  const std::u16string* value = element.attribute(attribute_named(element, name));
  return value ? std::optional(*value) : std::nullopt;
}

bool remove_attribute_named(Element& element, std::u16string_view name) {
  const Name attribute = attribute_named(element, name);
  const bool had = element.has_attribute(attribute);
  remove_attribute(element, attribute);
  return had;
}

std::u16string reflected_text(const Element& element, Name name) {
  return std::u16string(element.attribute_or_empty(name));
}

void set_reflected_text(Element& element, Name name, std::u16string_view value) {
  if (value.empty() && !element.has_attribute(name)) return;
  set_attribute(element, name, value);
}

void set_or_remove(Element& element, Name name, std::u16string_view value) {
  if (value.empty()) return remove_attribute(element, name);
  set_attribute(element, name, value);
}

void set_enumerated(Element& element, Name name, std::u16string_view value,
                    std::initializer_list<std::u16string_view> allowed) {
  if (!value.empty() && !find_word(allowed, value)) refuse_value();
  set_or_remove(element, name, value);
}

std::u16string reflected_enumerated(const Element& element, Name name,
                                    std::initializer_list<std::u16string_view> allowed,
                                    std::u16string_view missing) {
  const std::u16string_view* word = find_word(allowed, trimmed(element.attribute_or_empty(name)));
  return std::u16string(word ? *word : missing);
}

std::int32_t reflected_number(const Element& element, Name name, std::int32_t least, std::int32_t missing) {
  const std::u16string_view text = trimmed(element.attribute_or_empty(name));
  std::size_t at = text.starts_with(u'+') ? 1 : 0;
  std::int64_t number = 0;
  const std::size_t first = at;
  for (; at < text.size() && is_ascii_digit(text[at]) && number < INT32_MAX; ++at) {
    number = number * 10 + (text[at] - u'0');
  }
  if (at == first || number < least || number > INT32_MAX) return missing;
  return static_cast<std::int32_t>(number);
}

void set_reflected_number(Element& element, Name name, std::int32_t value, std::int32_t least) {
  if (value < least) refuse_value();
  set_attribute(element, name, to_text(value));
}

bool reflected_flag(const Element& element, Name name) { return element.has_attribute(name); }

void set_reflected_flag(Element& element, Name name, bool on) {
  if (!on) return remove_attribute(element, name);
  if (!element.has_attribute(name)) set_attribute(element, name, u"");
}

}  // namespace tvx::dom
