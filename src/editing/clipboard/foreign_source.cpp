#include "tvx/editing/clipboard/foreign_source.h"

#include <cstdlib>

#include "tvx/base/strings.h"
#include "tvx/dom/style/declarations.h"
#include "tvx/dom/tree.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Tag;

namespace {

/// What browsers write onto each element that they copy, whatever the page says.
bool is_computed_style(std::u16string_view style) {
  for (std::u16string_view name : {u"orphans:", u"-webkit-text-stroke-width:", u"font-variant-caps:",
                                   u"text-decoration-thickness:", u"caret-color:", u"white-space-collapse:"})
    if (contains(style, name)) return true;
  return false;
}

bool has_word(std::u16string_view words, std::u16string_view beginning) {
  for (std::u16string_view word : split_on_space(words))
    if (word.starts_with(beginning)) return true;
  return false;
}

std::u16string without_comments(std::u16string_view text) {
  std::u16string plain;
  for (std::size_t at = 0; at < text.size();) {
    const std::u16string_view rest = text.substr(at);
    if (rest.starts_with(u"/*")) {
      const std::size_t end = text.find(u"*/", at + 2);
      at = end == text.npos ? text.size() : end + 2;
    } else if (rest.starts_with(u"<!--")) {
      at += 4;
    } else if (rest.starts_with(u"-->")) {
      at += 3;
    } else {
      plain += text[at++];
    }
  }
  return plain;
}

bool is_usual_colour(std::u16string_view value) {
  return value == u"black" || value == u"windowtext" || value == u"#000000" || value == u"auto";
}

/// Whether a declaration of a class is seen on what it stands at, and meant: what each program sets for all
/// its text (font, size, margins) is its own page's matter.
bool is_shown(const dom::style::Declaration& declaration) {
  const std::u16string& name = declaration.name;
  const std::u16string value = ascii_lower(declaration.value);
  if (name == u"font-weight") return value == u"bold" || value == u"bolder" || value >= u"600";
  if (name == u"font-style") return value == u"italic" || value == u"oblique";
  if (name == u"text-decoration" || name == u"text-decoration-line") return value != u"none";
  if (name == u"color") return !is_usual_colour(value);
  if (name == u"background" || name == u"background-color")
    return value != u"none" && value != u"auto" && value != u"transparent" && value != u"white";
  if (name == u"text-align") return value == u"center" || value == u"right" || value == u"justify";
  if (name == u"vertical-align")
    return value == u"top" || value == u"middle" || value == u"sub" || value == u"super";
  return name.starts_with(u"border") && !name.ends_with(u"collapse") && value != u"none" && value != u"0";
}

std::u16string shown_of(std::u16string_view declarations) {
  std::u16string shown;
  const dom::style::Declarations all(declarations);
  for (const dom::style::Declaration* declaration : all.list()) {
    if (!is_shown(*declaration)) continue;
    if (!shown.empty()) shown += u"; ";
    shown += declaration->name + u": " + declaration->value;
  }
  return shown;
}

// The named styles that a word processor has by itself, of headings and links too: what these are like is the
// matter of the page that is pasted into. Styles of the user's own have other names.
bool is_named_style(std::u16string_view name) { return name.starts_with(u"Mso"); }

}  // namespace

double points_of(std::u16string_view length) {
  const std::string text = to_utf8(trimmed(length));
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  const std::string unit(end);
  if (unit == "pt") return number;
  if (unit == "px") return number * 0.75;
  if (unit == "in") return number * 72;
  if (unit == "cm") return number * 72 / 2.54;
  if (unit == "mm") return number * 72 / 25.4;
  return 0;
}

std::optional<double> indent_of(std::u16string_view style) {
  const std::u16string value = dom::style::Declarations(style).get(u"margin-left");
  if (value.empty()) return std::nullopt;
  return points_of(value);
}

ForeignSource::ForeignSource(const Node& content) {
  for (const Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content))
    if (const auto* element = dom::as<Element>(node)) read_element(*element);
}

void ForeignSource::read_element(const Element& element) {
  if (element.is(Tag::Style)) {
    const std::u16string text = dom::text_content(element);
    office_ = office_ || contains(text, u"mso-");
    read_sheet(without_comments(text));
    return;
  }
  if (element.is(Tag::Meta)) {
    office_ =
        office_ || (equals_ignoring_ascii_case(element.attribute_or_empty(dom::names::name), u"generator") &&
                    contains(element.attribute_or_empty(dom::names::content), u"Office"));
    return;
  }
  if (contains(element.name().text(), u"sheets-html-origin")) sheet_ = true;
  for (const dom::Attribute& attribute : element.attributes()) {
    const std::u16string& name = attribute.name.text();
    if (name == u"style") {
      office_ = office_ || contains(attribute.value, u"mso-");
      computed_ = computed_ || is_computed_style(attribute.value);
    } else if (name == u"class") {
      office_ = office_ || has_word(attribute.value, u"Mso");
    } else if (name == u"id") {
      web_word_processor_ = web_word_processor_ || attribute.value.starts_with(u"docs-internal-guid");
    } else if (name == u"data-ccp-props" || name == u"data-contrast" || name == u"paraeid") {
      web_word_processor_ = true;
    } else if (name == u"sdnum" || name == u"sdval" || name.starts_with(u"data-sheets-")) {
      sheet_ = true;
    }
  }
}

void ForeignSource::read_sheet(std::u16string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t open = text.find(u'{', at);
    if (open == text.npos) return;
    std::size_t end = open + 1;
    for (int depth = 1; end < text.size(); ++end) {
      if (text[end] == u'{') ++depth;
      if (text[end] == u'}' && --depth == 0) break;
    }
    read_rule(trimmed(text.substr(at, open - at)), text.substr(open + 1, end - open - 1));
    at = end + 1;
  }
}

void ForeignSource::read_rule(std::u16string_view selectors, std::u16string_view declarations) {
  if (selectors.starts_with(u"@list")) return read_list_rule(trimmed(selectors.substr(5)), declarations);
  if (selectors.starts_with(u'@')) return;
  if (contains(selectors, u"p.MsoNormal")) {
    const dom::style::Declarations all(declarations);
    text_family_ = all.get(u"font-family");
    text_size_ = points_of(all.get(u"font-size"));
  }
  std::optional<ClassRule> rule;
  for (std::u16string_view selector : split(selectors, u',')) {
    selector = trimmed(selector);
    const std::size_t dot = selector.find(u'.');
    if (dot == selector.npos || selector.find_first_of(u" >+~:[#\t\r\n") != selector.npos ||
        selector.find(u'.', dot + 1) != selector.npos)
      continue;
    const std::u16string_view name = selector.substr(dot + 1);
    if (!rule) rule = ClassRule{{}, shown_of(declarations), indent_of(declarations).value_or(0)};
    if (rule->shown.empty() && rule->indent == 0) return;
    rule->tag = ascii_lower(selector.substr(0, dot));
    classes_[std::u16string(name)].push_back(*rule);
    if (is_named_style(name)) classes_[std::u16string(name)].back().shown.clear();
  }
}

void ForeignSource::read_list_rule(std::u16string_view selector, std::u16string_view declarations) {
  if (!contains(selector, u":level")) return;
  ListLevel level;
  const dom::style::Declarations all(declarations);
  for (const dom::style::Declaration* declaration : all.list()) {
    if (declaration->name == u"mso-level-number-format") level.format = ascii_lower(declaration->value);
    if (declaration->name == u"margin-left") level.indent = points_of(declaration->value);
  }
  levels_[std::u16string(selector)] = level;
}

std::u16string ForeignSource::class_style(const Element& element) const {
  std::u16string style;
  if (classes_.empty()) return style;
  const std::u16string_view tag = element.name().text();
  for (std::u16string_view name : split_on_space(element.attribute_or_empty(dom::names::class_))) {
    const auto rules = classes_.find(name);
    if (rules == classes_.end()) continue;
    for (const ClassRule& rule : rules->second) {
      if (rule.shown.empty() || (!rule.tag.empty() && rule.tag != tag)) continue;
      if (!style.empty()) style += u"; ";
      style += rule.shown;
    }
  }
  return style;
}

double ForeignSource::class_indent(const Element& element) const {
  double indent = 0;
  if (classes_.empty()) return indent;
  const std::u16string_view tag = element.name().text();
  for (std::u16string_view name : split_on_space(element.attribute_or_empty(dom::names::class_))) {
    const auto rules = classes_.find(name);
    if (rules == classes_.end()) continue;
    for (const ClassRule& rule : rules->second)
      if (rule.indent != 0 && (rule.tag.empty() || rule.tag == tag)) indent = rule.indent;
  }
  return indent;
}

const ListLevel* ForeignSource::list_level(std::u16string_view list, int level) const {
  const auto found = levels_.find(std::u16string(list) + u":level" + to_text(level));
  return found == levels_.end() ? nullptr : &found->second;
}

}  // namespace tvx::editing
