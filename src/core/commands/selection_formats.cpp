#include "tvx/core/commands/selection_formats.h"

#include "tvx/base/error.h"
#include "tvx/browser/browser.h"
#include "tvx/browser/input/writer_command.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/format_block.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/writer_state.h"
#include "tvx/editing/inline/links.h"

namespace tvx::core {
namespace {

constexpr std::u16string_view quotation = u"blockquote", paragraph = u"p";

/// The innermost element of these kinds around a position, within what may be edited.
dom::Element* around(const dom::Boundary& position, auto&& is_wanted) {
  for (dom::Node* node = position.node; node && !node->is(dom::Tag::Body); node = node->parent())
    if (auto* element = dom::as<dom::Element>(node); element && is_wanted(*element)) return element;
  return nullptr;
}

bool is_quoted(const dom::Boundary& position) {
  return around(position, [](const dom::Element& each) { return each.is(dom::Tag::Blockquote); });
}

bool is_listed(const dom::Boundary& position) {
  return around(position, [](const dom::Element& each) { return each.is(dom::Tag::Li); });
}

std::optional<dom::style::Color> colour_of(editing::Editor& editor, std::u16string_view command) {
  const auto colour = dom::style::parse_color(editing::value_as_writer(editor, command));
  return colour && colour->alpha > 0 ? colour : std::nullopt;
}

}  // namespace

SelectionFormats::Asked SelectionFormats::asked_now() const {
  browser::HTMLDocument& shown = document();
  const editing::Selection& selection = shown.editor().selection();
  const dom::Boundary anchor = selection.anchor(), focus = selection.focus();
  return {&shown, anchor.node, focus.node, anchor.offset, focus.offset, shown.tree().version()};
}

const std::u16string& SelectionFormats::paragraph_style() {
  attempt([&] {
    const Asked now = asked_now();
    if (now == asked_) return;
    asked_ = now;
    read_paragraph_style();
  });
  return paragraph_style_;
}

void SelectionFormats::read_paragraph_style() {
  editing::Editor& editor = document().editor();
  paragraph_style_.clear();
  several_ = false;
  if (editor.selection().type() != editing::SelectionType::Text) return;
  const std::optional<std::u16string> style = editing::format_of_lines(editor);
  several_ = !style;
  if (several_) return;
  paragraph_style_ = *style;
  const bool is_text =
      paragraph_style_.empty() || paragraph_style_ == paragraph || paragraph_style_ == u"div";
  if (is_text && is_quoted(editor.selection().range().start)) paragraph_style_ = quotation;
}

SelectionFormat SelectionFormats::current() {
  SelectionFormat format;
  attempt([&] {
    editing::Editor& editor = document().editor();
    if (editor.selection().type() == editing::SelectionType::None) return;
    format.paragraph_style = paragraph_style();
    format.several_paragraph_styles = several_;
    if (dom::Element* named = around(editor.selection().range().start, [](const dom::Element& each) {
          return each.has_attribute(dom::Name(u"class"));
        }))
      format.style_class = named->attribute_or_empty(dom::Name(u"class"));
    if (editor.selection().type() != editing::SelectionType::Text) return;
    format.font = editing::value_as_writer(editor, u"FontName");
    const std::u16string size = editing::value_as_writer(editor, u"FontSize");
    if (size.size() == 1 && size[0] >= u'1' && size[0] <= u'7') format.size = size[0] - u'0';
    format.colour = colour_of(editor, u"ForeColor");
    format.highlight = colour_of(editor, u"HiliteColor");
  });
  return format;
}

void SelectionFormats::set_paragraph_style(std::u16string_view style) {
  const KeepAlive alive(context_);
  const auto kept = browser().Document();
  attempt([&] {
    browser::HTMLDocument& shown = browser_document();
    const bool quoted = paragraph_style() == quotation;
    if (style == quotation && (quoted || !can_be_quotation())) return;
    const dom::UndoStep step(shown.tree().journal(), u"Paragraph style");
    if (style == quotation) return void(browser::press_command(shown, u"Indent"));
    if (quoted && style == paragraph) browser::press_command(shown, u"Outdent");
    browser::press_command(shown, u"FormatBlock", style);
  });
  mark_changed();
}

bool SelectionFormats::can_be_quotation() {
  bool possible = false;
  attempt([&] {
    const editing::Selection& selection = document().editor().selection();
    possible = selection.type() == editing::SelectionType::Text && !is_listed(selection.range().start);
  });
  return possible;
}

bool SelectionFormats::has_link() {
  bool found = false;
  attempt([&] { found = !editing::link_address(document().editor()).empty(); });
  return found;
}

void SelectionFormats::set(std::u16string_view command, std::u16string_view value) {
  const KeepAlive alive(context_);
  const auto kept = browser().Document();
  attempt([&] { browser::press_command(browser_document(), command, value); });
  mark_changed();
}

}  // namespace tvx::core
