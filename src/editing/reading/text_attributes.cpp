#include "tvx/editing/reading/text_attributes.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/editing/reading/accessible_kind.h"

namespace tvx::editing {
namespace {

namespace style = dom::style;
using Run = AccessibleContent::Run;

TextAttributes::Align align_of(const style::ComputedValues& values) {
  using Align = TextAttributes::Align;
  const bool right_to_left = values.line_direction == style::Direction::RightToLeft;
  switch (values.line_align) {
    case style::TextAlign::Right: return Align::Right;
    case style::TextAlign::Center: return Align::Centre;
    case style::TextAlign::Justify: return Align::Justified;
    case style::TextAlign::Start: return right_to_left ? Align::Right : Align::Left;
    case style::TextAlign::End: return right_to_left ? Align::Left : Align::Right;
    default: return Align::Left;
  }
}

std::u16string first_family(std::u16string_view families) {
  std::u16string_view first = trimmed(families.substr(0, families.find(u',')));
  if (first.size() >= 2 && (first.front() == u'"' || first.front() == u'\''))
    first = first.substr(1, first.size() - 2);
  return std::u16string(first);
}

TextAttributes attributes_of(const dom::Element& element) {
  TextAttributes attributes;
  style::StyleEngine& engine = style::style_of(dom::document_of(element));
  const style::ComputedValues values = engine.values(element);
  attributes.font_family = first_family(engine.font_family(values));
  attributes.language = language_of(element);
  attributes.font_size = values.font_size;
  attributes.font_weight = values.font_weight;
  attributes.italic = values.font_style != style::FontStyle::Normal;
  attributes.underlined = values.lines_drawn & style::text_decoration::underline;
  attributes.struck_through = values.lines_drawn & style::text_decoration::line_through;
  attributes.lowered = values.scripts & style::script::lowered;
  attributes.raised = values.scripts & style::script::raised;
  attributes.right_to_left = values.direction == style::Direction::RightToLeft;
  attributes.align = align_of(values);
  attributes.colour = values.color;
  attributes.background = values.shown_background;
  return attributes;
}

TextAttributes attributes_of(const Run& run) {
  const auto* element = run.is_text() ? run.node->parent_element() : dom::as<dom::Element>(run.node);
  return attributes_of(*element);
}

/// Where the marks of a text divide the stretch around a unit, and whether one is on it.
struct Marked {
  bool wrong = false;
  Offset from = 0, to = 0;
};
Marked marked_at(const Run& run, Offset offset, const WrongWords& wrong_words) {
  Marked marked{false, run.start, run.start + run.length};
  const auto* text = run.is_text() ? static_cast<const dom::Text*>(run.node) : nullptr;
  if (!text || !wrong_words) return marked;
  for (const auto& [from, to] : wrong_words(*text)) {
    // As units of the content; what is before or after the run stays there.
    const Offset first = run.start + std::clamp(from, run.from, run.from + run.length) - run.from;
    const Offset last = run.start + std::clamp(to, run.from, run.from + run.length) - run.from;
    if (first >= last) continue;
    if (last <= offset) {
      marked.from = std::max(marked.from, last);
    } else if (first > offset) {
      marked.to = std::min(marked.to, first);
    } else {
      return {true, first, last};
    }
  }
  return marked;
}

}  // namespace

AttributeRun attributes_at(const dom::Element& top, const AccessibleContent& content, Offset offset,
                           const WrongWords& wrong_words) {
  const std::vector<Run>& runs = content.runs();
  if (runs.empty()) return {attributes_of(top), 0, content.text().size()};
  offset = std::min(offset, content.text().size() - 1);
  const auto here = std::prev(std::ranges::upper_bound(runs, offset, {}, &Run::start));
  const Marked marked = marked_at(*here, offset, wrong_words);
  AttributeRun found{attributes_of(*here), marked.from, marked.to};
  const auto joins = [&](const Run& other, Offset unit) {
    return attributes_of(other) == found.attributes &&
           marked_at(other, unit, wrong_words).wrong == marked.wrong;
  };
  for (auto run = here;
       found.from == run->start && run != runs.begin() && joins(*std::prev(run), run->start - 1);) {
    --run;
    found.from = marked_at(*run, run->start + run->length - 1, wrong_words).from;
  }
  for (auto run = here; found.to == run->start + run->length && std::next(run) != runs.end() &&
                        joins(*std::next(run), std::next(run)->start);) {
    ++run;
    found.to = marked_at(*run, run->start, wrong_words).to;
  }
  found.attributes.wrong = marked.wrong;
  return found;
}

}  // namespace tvx::editing
