#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::dom::style {

/// A declaration as written.
struct Declaration {
  std::u16string name;   // in small letters; custom properties ("--x") as written
  std::u16string value;  // trimmed, without "!important"
  bool important = false;
};

enum class Important : bool { No, Yes };

/// The declarations of a style attribute or of a rule, as an object over their own text.
///
/// What nobody touches keeps its letters and its position: unknown properties, comments, odd spacing, broken
/// parts. Setting one property rewrites that one, and a shorthand that holds it only in the one component.
/// Shorthands and longhands are two views of the same values: "border: 1px solid red" answers "solid" for
/// "border-style" and for "border-left-style". Names are CSS names ("border-style"), without regard to case.
class Declarations {
 public:
  Declarations() = default;
  explicit Declarations(std::u16string_view text) { parse(text); }

  /// The text as it stands now.
  std::u16string css_text() const;
  void set_css_text(std::u16string_view text) { *this = Declarations(text); }

  /// How many declarations are written; broken parts don't count.
  std::size_t length() const;
  /// The declaration at a position, in writing order.
  const Declaration& item(std::size_t index) const;
  bool empty() const { return length() == 0; }
  /// All of them. Valid until the next change.
  std::vector<const Declaration*> list() const;

  /// The value in force, "" if none is. A shorthand whose parts are not all set, or that cannot say them
  /// in one, is "".
  std::u16string get(std::u16string_view name) const;
  /// Whether the value in force is "!important".
  bool is_important(std::u16string_view name) const;

  /// Sets a property; "" removes it. Returns whether the declarations changed. A value that can't be one (a
  /// stray ";" or bracket, a border style that is none) is ignored; so is the value that get() gives now,
  /// also
  /// "" where the parts of a shorthand say different things.
  bool set(std::u16string_view name, std::u16string_view value, Important important = Important::No);
  /// Removes a property, also out of the shorthands that hold it. Returns whether there was anything.
  bool remove(std::u16string_view name);

 private:
  /// A stretch of the text up to a ";" that ends it. Parts without a declaration are kept as they are.
  struct Part {
    std::u16string before, text, after;  // white space and comments stand before and after
    std::optional<Declaration> declaration;
    bool terminated = false;  // a ";" follows
    bool open = false;        // it would swallow whatever came after it
  };
  struct Winner {
    const Part* part = nullptr;
    std::u16string value;
  };

  void parse(std::u16string_view text);
  Winner winner(std::u16string_view longhand, std::u16string_view without = {}) const;
  std::u16string value_of(std::u16string_view name, std::u16string_view without = {}) const;
  bool drop_if_said_elsewhere(std::u16string_view name, std::u16string_view value, Important important);
  bool set_in_place(std::u16string_view name, std::u16string_view value, Important important);
  bool set_in_shorthand(std::u16string_view name, std::u16string_view value, Important important);
  void append(std::u16string_view name, std::u16string_view value, Important important);
  void erase(std::size_t index);
  bool take_out(std::size_t& index, const std::vector<std::u16string_view>& longhands);

  std::vector<Part> parts_;
};

/// The longhands of a shorthand, or the name itself.
std::vector<std::u16string_view> longhands_of(std::u16string_view name);

/// A value with a unit after each bare number, for properties that take lengths: "1" is "1px" there.
std::u16string with_units(std::u16string_view name, std::u16string_view value);

}  // namespace tvx::dom::style
