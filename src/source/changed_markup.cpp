#include "tvx/source/changed_markup.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/source/piece_map.h"
#include "tvx/source/text_differences.h"

namespace tvx::source {
namespace {

using View = std::u16string_view;

bool has_line_break(View text) { return text.find(u'\n') != text.npos; }

/// What stands before the first line break of some white space, and after the last.
View line_end(View space) { return space.substr(0, space.find_first_of(u"\r\n")); }
View line_start(View space) { return space.substr(space.rfind(u'\n') + 1); }
View through_first_break(View space) { return space.substr(0, space.find(u'\n') + 1); }
View through_last_break(View space) { return space.substr(0, space.rfind(u'\n') + 1); }
View after_first_break(View space) { return space.substr(through_first_break(space).size()); }

/// A text cut into what it says and the white space on both sides.
struct Cut {
  View lead, core, trail;

  explicit Cut(View text) : lead(text), core(trimmed(text)) {
    if (core.empty()) return;
    lead = text.substr(0, static_cast<Offset>(core.data() - text.data()));
    trail = text.substr(lead.size() + core.size());
  }
};

/// White space in a text.
struct Space {
  Offset begin, end;

  bool is_none() const { return begin == View::npos; }
  View before(View text) const { return text.substr(0, begin); }
  View in(View text) const { return text.substr(begin, end - begin); }
  View after(View text) const { return text.substr(end); }
};

Space space_around(View text, Offset at) {
  Space space{at, at};
  while (space.begin > 0 && is_ascii_space(text[space.begin - 1])) --space.begin;
  while (space.end < text.size() && is_ascii_space(text[space.end])) ++space.end;
  return space;
}

/// The last white space of a text that breaks a line. The end of all is such a line break even without one.
Space last_line_break(View text, bool at_end) {
  const Offset at = text.rfind(u'\n');
  if (at_end && (at == text.npos || !trimmed(text.substr(at)).empty()))
    return space_around(text, text.size());
  return at == text.npos ? Space{at, at} : space_around(text, at);
}

/// White space of a text that is `wanted`, best at its end: what is typed goes on with the word before it.
Space equal_space(View text, View wanted) {
  for (const Offset at : {text.size(), Offset{0}})
    if (const Space space = space_around(text, at); space.in(text) == wanted) return space;
  for (Offset at = text.find(wanted); at != text.npos; at = text.find(wanted, at + 1))
    if (const Space space = space_around(text, at); space.in(text) == wanted) return space;
  return {text.npos, text.npos};
}

std::u16string joined(std::initializer_list<View> parts) {
  std::u16string result;
  for (const View part : parts) result += part;
  return result;
}

/// What a user has typed, as it stands in markup.
std::u16string typed(View text) {
  std::u16string result;
  for (const char16_t c : text)
    if (c != u'\r') result += c;
  return result;
}

// --- white space that was there, after it has become other white space ---

/// Where it stays, the markup's own stays; blanks beside it are put beside it.
std::u16string text_space(const InBoth& was, View now) {
  if (now == was.code) return std::u16string(was.markup);
  if (!was.code.empty() && now.starts_with(was.code))
    return joined({was.markup, typed(now.substr(was.code.size()))});
  return typed(now);
}

/// Of the text at a line's end, where that line now ends with `now`.
std::u16string space_at_line_end(const SpaceRun& run, View now) { return text_space(run.before, now); }

/// Of the text at a line's start: the drawn indentation is none, nor is what the user adds to it.
std::u16string space_at_line_start(const SpaceRun& run, View now) {
  const View drawn = line_start(run.gap.code);
  if (now.size() >= drawn.size() + run.after.code.size()) return std::u16string(run.after.markup);
  return now.size() > drawn.size() ? typed(now.substr(drawn.size())) : std::u16string();
}

/// Where a line still ends and another starts.
std::u16string line_break(const SpaceRun& run, View now) {
  return joined(
      {space_at_line_end(run, line_end(now)), run.gap.markup, space_at_line_start(run, line_start(now))});
}

/// Where lines were between two others, of which nothing is left. If they stood in lines of their own in the
/// markup too, these go, with indentation and line break; else nothing but what they showed.
std::u16string without_lines(std::u16string before, std::u16string after, bool at_start, bool at_end) {
  if ((at_start || has_line_break(before)) && (at_end || has_line_break(after))) {
    before.resize(through_last_break(before).size());
    after = has_line_break(after) ? after_first_break(after) : View();
  }
  return before.append(after);
}

// --- changes ---

/// The user has changed the white space between two letters.
std::u16string changed_space(const SpaceRun& run, View now) {
  if (run.is_text() || !run.has_gap) return text_space(run.before, now);
  if (!run.is_drawn())
    return run.belongs_before ? joined({run.gap.markup, typed(now)}) : joined({typed(now), run.gap.markup});
  if (has_line_break(now) || run.at_end) return line_break(run, now);
  // The user has joined two lines.
  if (now.empty() || run.gap.markup.empty()) return typed(now);
  return std::u16string(run.whole().markup);
}

/// The user has typed something between two letters. The line break that was drawn there is the last one now:
/// lines of the user's own bring theirs along in front of them.
std::u16string with_typed(const SpaceRun& run, View now) {
  const InBoth all = run.whole();
  if (!run.is_drawn() && all.code.empty())
    return joined(
        {run.belongs_before ? all.markup : View(), typed(now), run.belongs_before ? View() : all.markup});
  const Space own = run.is_drawn() ? last_line_break(now, run.at_end) : equal_space(now, all.code);
  if (own.is_none()) return typed(now);
  // The text at the end of the line before is in front of the line break, or in front of what is new.
  const View front = own.before(now), space = own.in(now);
  const bool is_text_in_front = run.is_drawn() && line_end(space) != run.before.code;
  return joined({is_text_in_front ? text_space(run.before, front) : typed(front), changed_space(run, space),
                 typed(own.after(now))});
}

/// The user has taken something out between two letters; `before` and `after` are the runs on its sides.
class TakenOut {
 public:
  TakenOut(const SpaceRun& before, const SpaceRun& after, View now)
      : before_(before), after_(after), now_(now) {}

  std::u16string run() const {
    if (before_.at_start && after_.at_end) return {};
    if (before_.is_text() && after_.is_text()) return text_between_texts();
    if (!has_line_break(now_)) return on_one_line();
    if (before_.is_text()) return after_text();
    if (after_.is_text()) return before_text();
    return without_lines(joined({space_at_line_end(before_, line_end(now_)), before_.gap.markup}),
                         joined({after_.gap.markup, space_at_line_start(after_, line_start(now_))}),
                         before_.at_start, after_.at_end);
  }

 private:
  std::u16string text_between_texts() const {
    if (now_ == before_.before.code) return std::u16string(before_.before.markup);
    return text_space(after_.before, now_);
  }

  // Up to a line's end, or the start of another line, from within a line.
  std::u16string after_text() const {
    const std::u16string rest = joined({after_.gap.markup, space_at_line_start(after_, line_start(now_))});
    const InBoth& text = before_.before;
    if (!has_line_break(text.code)) return text_space(text, line_end(now_)) + rest;
    // Its line breaks are text: the last one that is left is the end of the line before.
    const View own = through_last_break(now_);
    return own == through_last_break(text.code)
               ? without_lines(std::u16string(through_last_break(text.markup)), rest, false, after_.at_end)
               : without_lines(typed(own), rest, false, after_.at_end);
  }

  // From a line's end or start, to somewhere within a line.
  std::u16string before_text() const {
    std::u16string rest = joined({space_at_line_end(before_, line_end(now_)), before_.gap.markup});
    const InBoth& text = after_.before;
    if (!has_line_break(text.code)) {
      const View left = line_start(now_);
      const std::size_t drawn = line_start(before_.gap.code).size();
      return rest + text_space(text, left.substr(std::min(drawn, left.size())));
    }
    if (has_line_break(rest)) rest.resize(through_last_break(rest).size());
    const View left = after_first_break(now_), own = after_first_break(text.code);
    return rest.append(left.ends_with(own) ? std::u16string(after_first_break(text.markup)) : typed(left));
  }

  // The letters on both sides stand on one line now.
  std::u16string on_one_line() const {
    const View hidden_before = hidden(before_), hidden_after = hidden(after_);
    if (before_.is_text()) return joined({text_space(before_.before, now_), hidden_after});
    if (after_.is_text()) return joined({hidden_before, text_space(after_.before, now_)});
    if (now_.empty())
      return without_lines(std::u16string(hidden_before), std::u16string(hidden_after), false, false);
    const std::u16string own =
        without_lines(std::u16string(before_.gap.markup), std::u16string(after_.gap.markup), false, false);
    return own.empty() ? typed(now_) : own;
  }
  /// White space that the user doesn't see, and so doesn't take out.
  static View hidden(const SpaceRun& run) { return run.is_drawn() ? View() : run.gap.markup; }

  const SpaceRun &before_, &after_;
  const View now_;
};

/// At one end of something that stands where something else stood.
std::u16string beside_new(const SpaceRun& run, View now) {
  if (run.is_text()) return text_space(run.before, now);
  if (has_line_break(now) || (run.is_drawn() && run.at_end)) return line_break(run, now);
  return now.empty() || run.gap.markup.empty() ? typed(now) : std::u16string(run.gap.markup);
}

/// What stands in the markup for a difference where letters have gone.
class Replaced {
 public:
  Replaced(const PieceMap& map, const Difference& part, View was, View now)
      : map_(map),
        old_(was),
        old_begin_(part.begin + old_.lead.size()),
        before_(map.run(part.begin, old_begin_)),
        after_(map.run(part.end - old_.trail.size(), part.end)),
        now_(now) {
    // A text starts where a line ended, and ends where one starts.
    if (before_.at_start) now_.insert(0, u"\r\n");
    if (after_.at_end && (now.empty() || !has_line_break(space_around(now_, now_.size()).in(now_))))
      now_ += u"\r\n";
  }

  std::u16string run() const {
    if (trimmed(now_).empty()) return taken_out();
    const Cut cut(now_);
    const Space last = last_line_break(now_, false);
    // Lines are gone, and what is new stands in a line that is left.
    if (before_.breaks_line() && after_.breaks_line() && !last.is_none() &&
        !(has_line_break(cut.lead) && has_line_break(cut.trail))) {
      const std::u16string front = typed(last.before(now_));
      return joined({View(front).substr(before_.at_start && !front.empty() ? 1 : 0),
                     TakenOut(before_, after_, last.in(now_)).run(), typed(last.after(now_))});
    }
    const bool keeps_before = before_.is_hidden() && before_.belongs_before,
               keeps_after = after_.is_hidden() && !after_.belongs_before;
    return joined({keeps_before ? before_.gap.markup : View(),
                   before_.is_hidden() ? typed(cut.lead) : beside_new(before_, cut.lead), typed(cut.core),
                   after_.is_hidden() ? typed(cut.trail) : beside_new(after_, cut.trail),
                   keeps_after ? after_.gap.markup : View()});
  }

 private:
  // From within a line to within another one: the first line's end and the last one's start by themselves,
  // and whole lines between the two.
  std::u16string taken_out() const {
    if (!has_line_break(now_) || !has_line_break(old_.core)) return TakenOut(before_, after_, now_).run();
    View space = now_;
    std::u16string front, back;
    const Space first = old_break(old_.core.find(u'\n')), last = old_break(old_.core.rfind(u'\n'));
    if (!before_.breaks_line()) {
      front = text_and_hidden(before_, line_end(space));
      space.remove_prefix(line_end(space).size());
    }
    const SpaceRun left = before_.breaks_line() ? before_ : run_of(first);
    const SpaceRun right = after_.breaks_line() ? after_ : run_of(last);
    if (!after_.breaks_line()) {
      const View start = line_start(space), indent = line_start(right.whole().code);
      const View rest = start.substr(std::min(start.size(), indent.size()));
      back = text_and_hidden(after_, rest);
      space.remove_suffix(rest.size());
    }
    const bool is_one_break = !before_.breaks_line() && !after_.breaks_line() && first.begin == last.begin;
    return joined(
        {front, is_one_break ? changed_space(left, space) : TakenOut(left, right, space).run(), back});
  }
  Space old_break(Offset at) const { return space_around(old_.core, at); }
  SpaceRun run_of(const Space& space) const {
    return map_.run(old_begin_ + space.begin, old_begin_ + space.end);
  }
  static std::u16string text_and_hidden(const SpaceRun& run, View now) {
    return run.is_hidden() ? changed_space(run, now) : text_space(run.before, now);
  }

  const PieceMap& map_;
  const Cut old_;
  const Offset old_begin_;
  const SpaceRun before_, after_;
  std::u16string now_;
};

/// What stands in the markup for a difference.
std::u16string carried(const PieceMap& map, const Difference& part, View was, View now) {
  if (!trimmed(was).empty()) return Replaced(map, part, was, now).run();
  const SpaceRun run = map.run(part.begin, part.end);
  return trimmed(now).empty() ? changed_space(run, now) : with_typed(run, now);
}

}  // namespace

std::u16string changed_markup(View markup, View code, const std::vector<MappedPiece>& pieces, View left) {
  const PieceMap map(markup, code, pieces);
  std::u16string result;
  result.reserve(markup.size() + left.size() - std::min(left.size(), code.size()));
  Offset done = 0;
  for (const Difference& part : text_differences(code, left)) {
    result += markup.substr(done, map.end_of_letter(part.begin) - done);
    result += carried(map, part, code.substr(part.begin, part.end - part.begin),
                      left.substr(part.new_begin, part.new_end - part.new_begin));
    done = map.start_of_letter(part.end);
  }
  return result += markup.substr(done);
}

}  // namespace tvx::source
