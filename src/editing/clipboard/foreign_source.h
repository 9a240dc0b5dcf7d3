#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/node.h"

namespace tvx::editing {

/// How a word processor draws the items of one level of a list: its own style sheet says so.
struct ListLevel {
  std::u16string format;  // "bullet", "image", "alpha-lower", "roman-upper"...; empty: decimal
  double indent = 0;      // in points; 0: not said
};

/// What program the content comes from, as far as its markup tells, and what that program's style sheet says.
///
/// Only content of programs whose habits are known is rebuilt: a page that a user copies from this editor
/// comes back as it went.
class ForeignSource {
 public:
  /// Reads the whole of what came, with the sheets beside it, in one walk.
  explicit ForeignSource(const dom::Node& content);

  /// A program that writes its own classes and layout, which mean nothing elsewhere.
  bool is_known() const { return office_ || web_word_processor_ || sheet_ || computed_; }
  bool is_office() const { return office_; }
  bool is_web_word_processor() const { return web_word_processor_; }

  /// What the classes of an element show: bold, colours, alignment, borders. Declarations, "" if nothing.
  std::u16string class_style(const dom::Element& element) const;
  /// The font that a word processor's style sheet gives all paragraphs; empty if it doesn't say.
  const std::u16string& text_family() const { return text_family_; }
  /// And its size in points; 0 if it doesn't say.
  double text_size() const { return text_size_; }
  /// The left margin that its classes give it, in points.
  double class_indent(const dom::Element& element) const;
  /// A level of a list, "l0" and 1 for the first; null where the sheet doesn't say.
  const ListLevel* list_level(std::u16string_view list, int level) const;

 private:
  struct ClassRule {
    std::u16string tag;    // empty: any
    std::u16string shown;  // declarations
    double indent = 0;
  };
  void read_element(const dom::Element& element);
  void read_sheet(std::u16string_view text);
  void read_rule(std::u16string_view selectors, std::u16string_view declarations);
  void read_list_rule(std::u16string_view selector, std::u16string_view declarations);

  bool office_ = false, web_word_processor_ = false, sheet_ = false, computed_ = false;
  std::u16string text_family_;
  double text_size_ = 0;
  std::map<std::u16string, std::vector<ClassRule>, std::less<>> classes_;
  std::map<std::u16string, ListLevel, std::less<>> levels_;
};

/// A length in points: "18.0pt", "0.5in", "1cm", "24px"; 0 for what is none.
double points_of(std::u16string_view length);
/// The left margin of declarations in points; none if they don't say.
std::optional<double> indent_of(std::u16string_view style);

}  // namespace tvx::editing
