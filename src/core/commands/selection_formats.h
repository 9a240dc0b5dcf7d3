#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/core/part.h"
#include "tvx/dom/style/color.h"

namespace tvx::core {

/// How the selection is formatted, as a bar shows it: what all of it has.
struct SelectionFormat {
  /// "p", "h1" to "h6", "pre", "blockquote", or another block's name. Empty: several, or no block at all.
  std::u16string paragraph_style;
  bool several_paragraph_styles = false;
  std::u16string font;                                 // a list of families as CSS has it; empty: several
  int size = 0;                                        // 1 to 7; 0: several
  std::optional<dom::style::Color> colour, highlight;  // none: several, or no highlight
  std::u16string style_class;                          // the innermost around the selection's start

  friend bool operator==(const SelectionFormat&, const SelectionFormat&) = default;
};

/// What a host's format bar asks of the selection, and what it sets. Setting is one undo step.
class SelectionFormats final : public Part {
 public:
  explicit SelectionFormats(Context& context) : Part(context) {}

  SelectionFormat current();
  /// That of all lines; a paragraph in a quotation has the quotation's. Asked again, nothing is looked up
  /// while neither the document nor the selection has changed.
  const std::u16string& paragraph_style();

  /// A quotation gives the lines one around them; "p" takes them out of it, all others leave it as it is.
  void set_paragraph_style(std::u16string_view style);
  /// Nothing but a paragraph of a list can't be one: lists are indented by quoting them.
  bool can_be_quotation();
  /// Whether the selection touches a link.
  bool has_link();
  /// A command of the document with its value: "FontName", "FontSize", "ForeColor", "HiliteColor".
  void set(std::u16string_view command, std::u16string_view value);

 private:
  struct Asked {
    const void *document = nullptr, *anchor = nullptr, *focus = nullptr;
    std::size_t anchor_offset = 0, focus_offset = 0;
    std::uint64_t version = 0;
    friend bool operator==(const Asked&, const Asked&) = default;
  };
  Asked asked_now() const;
  void read_paragraph_style();

  Asked asked_;
  std::u16string paragraph_style_;
  bool several_ = false;
};

}  // namespace tvx::core
