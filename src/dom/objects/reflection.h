#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"

/// How properties of elements read and write attributes (HTML standard, section 2.6 "reflecting content
/// attributes in IDL attributes"), with this system's refusals. Writing an equal value is no mutation.
namespace tvx::dom {

// --- attributes by their names in the object model: "className" is `class`, "htmlFor" is `for`; letters
//     count for nothing ---

Name attribute_named(std::u16string_view name);
/// The same, with the letters that the element has it in: foreign elements have attributes like `viewBox`.
Name attribute_named(const Element& element, std::u16string_view name);
/// The text as written, nothing when absent.
std::optional<std::u16string> get_attribute(const Element& element, std::u16string_view name);
/// Whether it was there.
bool remove_attribute_named(Element& element, std::u16string_view name);

// --- properties ---

/// The attribute's text, "" when absent.
std::u16string reflected_text(const Element& element, Name name);
/// "" where there is no attribute makes none.
void set_reflected_text(Element& element, Name name, std::u16string_view value);
/// Of colours and sizes: "" (or null) removes the attribute.
void set_or_remove(Element& element, Name name, std::u16string_view value);

/// One of a few words. Compared without regard to case, written as given; "" removes the attribute. Throws
/// RuntimeError(380) for any other.
void set_enumerated(Element& element, Name name, std::u16string_view value,
                    std::initializer_list<std::u16string_view> allowed);
/// The word as the standard spells it, `missing` for none or a wrong one.
std::u16string reflected_enumerated(const Element& element, Name name,
                                    std::initializer_list<std::u16string_view> allowed,
                                    std::u16string_view missing);

/// A number that is at least `least`: the leading digits of the text; `missing` where there are none or they
/// are below it.
std::int32_t reflected_number(const Element& element, Name name, std::int32_t least, std::int32_t missing);
/// Throws RuntimeError(380) below `least`.
void set_reflected_number(Element& element, Name name, std::int32_t value, std::int32_t least);

/// An attribute that is there or not.
bool reflected_flag(const Element& element, Name name);
void set_reflected_flag(Element& element, Name name, bool on);

}  // namespace tvx::dom
