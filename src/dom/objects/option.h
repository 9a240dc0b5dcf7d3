#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/ref.h"

/// Lists and what can be chosen in them (HTML standard, sections 4.10.7 and 4.10.10), with the members' names
/// of that object model.
namespace tvx::dom {

class OptionObject {
 public:
  /// Throws RuntimeError(13) for anything but an OPTION.
  explicit OptionObject(Element& option);

  /// Its text with single blanks; setting replaces the content.
  std::u16string text() const;
  void set_text(std::u16string_view text);
  /// As written, else the text.
  std::u16string value() const;
  void set_value(std::u16string_view value);
  /// Its place in its list, 0 outside any.
  std::int32_t index() const;
  /// Whether it is chosen. In a list that shows one, choosing it takes the choice from the others.
  bool selected() const;
  void set_selected(bool on);
  bool disabled() const;
  void set_disabled(bool on);

 private:
  Ref<Element> element_;
};

class SelectObject {
 public:
  /// Throws RuntimeError(13) for anything but a SELECT.
  explicit SelectObject(Element& list);

  std::vector<Element*> options() const;
  std::int32_t length() const { return static_cast<std::int32_t>(options().size()); }
  bool multiple() const;
  void set_multiple(bool on);
  /// The chosen option: the last that says so, else the first of a list that shows one; null if none.
  Element* selected() const;
  /// -1: none. A number that no option has takes the choice from all.
  std::int32_t selectedIndex() const;
  void set_selectedIndex(std::int32_t index);

  /// Makes it the only chosen one (null: none), in one undo step.
  void choose(const Element* option);

 private:
  bool shows_one() const;
  Ref<Element> element_;
};

}  // namespace tvx::dom
