#include "tvx/qt/source/code_text.h"

#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

/// A longer line stands in pieces, which are no longer than that; they may grow to the double while somebody
/// types.
constexpr std::size_t longest_line = 10'000, longest_piece = 1000;

/// Where a long line is broken: after a tag or a blank, where there is one in the second half of a piece.
std::size_t next_break(std::u16string_view line, std::size_t from) {
  const std::size_t most = from + longest_piece;
  for (std::size_t at = most; at > from + longest_piece / 2; --at)
    if (line[at - 1] == u'>' || line[at - 1] == u' ') return at;
  return is_low_surrogate(line[most]) ? most + 1 : most;
}

std::u16string text_between(QTextDocument& document, int from, int to) {
  QTextCursor cursor(&document);
  cursor.setPosition(from);
  cursor.setPosition(to, QTextCursor::KeepAnchor);
  std::u16string text = from_qt(cursor.selectedText());
  std::ranges::replace(text, u'\u2029', u'\n');
  return text;
}

/// A text as it is shown, and where it has breaks that are no part of it.
std::u16string in_pieces(std::u16string_view text, std::vector<int>& breaks) {
  std::u16string shown;
  shown.reserve(text.size() + text.size() / longest_piece);
  for (std::size_t line = 0; line <= text.size();) {
    const std::size_t end = std::min(text.find(u'\n', line), text.size());
    std::size_t at = line;
    while (end - line > longest_line && end - at > longest_piece) {
      const std::size_t next = next_break(text, at);
      shown += text.substr(at, next - at);
      breaks.push_back(static_cast<int>(shown.size()));
      shown += u'\n';
      at = next;
    }
    shown += text.substr(at, end - at);
    if (end < text.size()) shown += u'\n';
    line = end + 1;
  }
  return shown;
}

/// What ends a line for the toolkit does so in the text.
std::u16string in_lines(const QString& text) {
  std::u16string lines;
  lines.reserve(static_cast<std::size_t>(text.size()));
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i].unicode();
    if (unit == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
    const bool ends = unit == u'\r' || unit == u'\u2029' || unit == 0xFDD0 || unit == 0xFDD1;
    lines += ends ? u'\n' : unit;
  }
  return lines;
}

}  // namespace

QString CodeText::put(std::u16string text) {
  // The toolkit ends a line there too.
  std::ranges::replace(text, u'\u2029', u'\n');
  text_ = std::move(text);
  breaks_.clear();
  done_.clear();
  undone_.clear();
  shown_ = in_pieces(text_, breaks_);
  return to_qt(shown_);
}

void CodeText::follow(QTextDocument& document) {
  connect(&document, &QTextDocument::contentsChange, this,
          [this](int at, int removed, int added) { changed(at, removed, added); });
}

// --- positions ---

std::size_t CodeText::breaks_before(int shown) const {
  return static_cast<std::size_t>(std::ranges::lower_bound(breaks_, shown) - breaks_.begin());
}

std::size_t CodeText::to_text(int shown) const {
  return static_cast<std::size_t>(shown) - breaks_before(shown);
}

int CodeText::to_shown(std::size_t place, bool after_break) const {
  std::size_t low = 0, high = breaks_.size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2, at = static_cast<std::size_t>(breaks_[middle]) - middle;
    if (after_break ? at <= place : at < place)
      low = middle + 1;
    else
      high = middle;
  }
  return static_cast<int>(place + low);
}

bool CodeText::is_break(int shown) const { return std::ranges::binary_search(breaks_, shown); }

std::size_t CodeText::line_count() const {
  return static_cast<std::size_t>(edit_.document()->blockCount()) - breaks_.size();
}

std::size_t CodeText::line_of(int shown) const {
  const QTextBlock block = edit_.document()->findBlock(shown);
  return static_cast<std::size_t>(block.blockNumber()) - breaks_before(block.position());
}

QTextBlock CodeText::block_of_line(std::size_t line) const {
  const QTextDocument& document = *edit_.document();
  std::size_t low = 0, high = breaks_.size();  // breaks of the lines before
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (line_of(breaks_[middle]) < line)
      low = middle + 1;
    else
      high = middle;
  }
  return document.findBlockByNumber(static_cast<int>(line + low));
}

// --- edits ---

void CodeText::replace(std::size_t start, std::size_t length, std::u16string_view with) {
  QTextCursor cursor = edit_.textCursor();
  cursor.setPosition(to_shown(start));
  cursor.setPosition(length == 0 ? cursor.position() : to_shown(start + length, false),
                     QTextCursor::KeepAnchor);
  insert(cursor, to_qt(with));
}

// A long line comes in pieces: the toolkit lays out what is put into a line, all of it.
void CodeText::insert(QTextCursor cursor, const QString& text) {
  std::u16string lines = in_lines(text);
  std::vector<int> breaks;
  const std::u16string shown = in_pieces(lines, breaks);
  if (breaks.empty()) {
    cursor.insertText(text);
  } else {
    const int from = cursor.selectionStart(), to = cursor.selectionEnd();
    for (int& each : breaks) each += from;
    const std::size_t place = to_text(from);
    Edit edit{place, text_.substr(place, to_text(to) - place), std::move(lines)};
    text_.replace(place, edit.removed.size(), edit.inserted);
    put_shown(from, to, shown);
    breaks_.insert(std::ranges::lower_bound(breaks_, from), breaks.begin(), breaks.end());
    if (!replaying_) record(std::move(edit));
    const QScopedValueRollback known(known_, true);
    cursor.insertText(to_qt(shown));
    break_later(from, from + static_cast<int>(shown.size()));
  }
  edit_.setTextCursor(cursor);
}

/// Another stretch in what is shown; the breaks in the one before are gone.
void CodeText::put_shown(int from, int to, std::u16string_view with) {
  const int more = static_cast<int>(with.size()) - (to - from);
  shown_.replace(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from), with);
  const auto first = std::ranges::lower_bound(breaks_, from), last = std::ranges::lower_bound(breaks_, to);
  for (auto each = last; each != breaks_.end(); ++each) *each += more;
  breaks_.erase(first, last);
}

// Not from within: the document is in the midst of telling of its change.
void CodeText::break_later(int from, int to) {
  QMetaObject::invokeMethod(
      this, [this, from, to] { break_blocks(from, to); }, Qt::QueuedConnection);
}

void CodeText::forget_edits() {
  done_.clear();
  undone_.clear();
}

// The toolkit may name more than what has changed: what is laid out anew counts for it too. What is alike on
// both sides stays, breaks included; a line's end that comes in is the user's.
void CodeText::changed(int at, int removed, int added) {
  if (breaking_ || known_) return;
  QTextDocument& document = *edit_.document();
  const auto begin = static_cast<std::size_t>(at);
  const std::size_t old_end = std::min(begin + static_cast<std::size_t>(removed), shown_.size());
  const int new_end = std::min(at + added, document.characterCount() - 1);
  const std::u16string now = text_between(document, at, new_end);
  const std::u16string_view before = std::u16string_view(shown_).substr(begin, old_end - begin);
  const auto same = std::ranges::mismatch(before, now);
  const auto head = static_cast<std::size_t>(same.in1 - before.begin());
  std::size_t tail = 0;
  while (tail < before.size() - head && tail < now.size() - head &&
         before[before.size() - 1 - tail] == now[now.size() - 1 - tail])
    ++tail;
  const int from = at + static_cast<int>(head), to = static_cast<int>(old_end - tail);
  const std::u16string inserted = now.substr(head, now.size() - head - tail);
  if (from == to && inserted.empty()) return;
  const std::size_t place = to_text(from), end = to_text(to);
  Edit edit{place, text_.substr(place, end - place), inserted};
  text_.replace(place, end - place, inserted);
  put_shown(from, to, inserted);
  if (!replaying_ && !(edit.removed.empty() && edit.inserted.empty())) record(std::move(edit));
  break_later(from, from + static_cast<int>(inserted.size()));
}

// Letters typed one after the other are one step, and so are those taken back one after the other.
void CodeText::record(Edit edit) {
  undone_.clear();
  Edit* last = done_.empty() ? nullptr : &done_.back();
  const bool types = edit.removed.empty() && edit.inserted.size() == 1 && edit.inserted != u"\n";
  if (types && last && last->removed.empty() && !last->inserted.ends_with(u'\n') &&
      last->place + last->inserted.size() == edit.place) {
    last->inserted += edit.inserted;
    return;
  }
  const bool takes_back = edit.inserted.empty() && edit.removed.size() == 1 && edit.removed != u"\n";
  if (takes_back && last && last->inserted.empty() && !last->removed.starts_with(u'\n') &&
      edit.place + 1 == last->place) {
    last->removed.insert(0, edit.removed);
    last->place = edit.place;
    return;
  }
  done_.push_back(std::move(edit));
}

void CodeText::replay(std::vector<Edit>& from, std::vector<Edit>& to) {
  if (from.empty()) return;
  Edit edit = std::move(from.back());
  from.pop_back();
  const QScopedValueRollback replaying(replaying_, true);
  std::swap(edit.removed, edit.inserted);
  to.push_back(edit);
  replace(edit.place, edit.removed.size(), edit.inserted);
}

/// Where lines that are too long by now are to be parted, in what is shown.
std::vector<int> CodeText::wanted_breaks(int from, int to) const {
  const QTextDocument& document = *edit_.document();
  std::vector<int> wanted;
  QTextBlock block = document.findBlock(std::min(from, document.characterCount() - 1));
  for (; block.isValid() && block.position() <= to; block = block.next()) {
    const bool is_piece = is_break(block.position() - 1) || is_break(block.position() + block.length() - 1);
    const auto size = static_cast<std::size_t>(block.length() - 1);
    if (size <= (is_piece ? 2 * longest_piece : longest_line)) continue;
    const std::u16string line = from_qt(block.text());
    for (std::size_t at = 0; line.size() - at > 2 * longest_piece;) {
      at = next_break(line, at);
      wanted.push_back(block.position() + static_cast<int>(at));
    }
  }
  return wanted;
}

// All at once, as one line of a megabyte has a thousand pieces.
void CodeText::break_blocks(int from, int to) {
  const std::vector<int> wanted = wanted_breaks(from, to);
  if (wanted.empty()) return;
  const QScopedValueRollback breaking(breaking_, true);
  QTextCursor cursor(edit_.document());
  cursor.beginEditBlock();
  // From the end on, so that the positions before hold.
  for (auto at = wanted.rbegin(); at != wanted.rend(); ++at) {
    cursor.setPosition(*at);
    cursor.insertBlock();
  }
  cursor.endEditBlock();
  std::u16string shown;
  std::vector<int> breaks;
  shown.reserve(shown_.size() + wanted.size());
  breaks.reserve(breaks_.size() + wanted.size());
  std::size_t copied = 0;
  auto known = breaks_.begin();
  int more = 0;
  for (const int at : wanted) {
    for (; known != breaks_.end() && *known < at; ++known) breaks.push_back(*known + more);
    breaks.push_back(at + more++);
    shown += std::u16string_view(shown_).substr(copied, static_cast<std::size_t>(at) - copied);
    shown += u'\n';
    copied = static_cast<std::size_t>(at);
  }
  for (; known != breaks_.end(); ++known) breaks.push_back(*known + more);
  shown += std::u16string_view(shown_).substr(copied);
  shown_ = std::move(shown);
  breaks_ = std::move(breaks);
}

}  // namespace tvx::qt
