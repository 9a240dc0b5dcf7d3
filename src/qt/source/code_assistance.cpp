#include "tvx/qt/source/code_assistance.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextBlock>
#include <algorithm>

#include "tvx/qt/source/code_layout.h"
#include "tvx/qt/source/code_text.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"
#include "tvx/source/code_completion.h"
#include "tvx/source/line_comments.h"

namespace tvx::qt {
namespace {

using source::SourceTag;
using source::TagTrouble;

/// So long nobody types before the tags are read anew.
constexpr int pause_milliseconds = 300;
/// More underlined tags than these help nobody, and each is drawn.
constexpr int most_troubles = 500;
constexpr qsizetype longest_read = 20'000'000;

QTextCharFormat ground(QRgb colour) {
  QTextCharFormat format;
  format.setBackground(QColor::fromRgb(colour));
  return format;
}

std::u16string_view view_of(const QString& text) {
  return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

bool types_name(const QKeyEvent& event) {
  const QString text = event.text();
  return text.size() == 1 && (text.at(0).isLetterOrNumber() || text.at(0) == u'<' || text.at(0) == u'-');
}

/// How far a line's words have gone to the right when it became a comment, or an end of being one.
std::ptrdiff_t shift_of_words(std::u16string_view before, std::u16string_view after) {
  const auto position = [](std::u16string_view line, std::u16string_view words) {
    return std::ptrdiff_t(line.find(words));
  };
  const std::u16string_view old = trimmed(before), words = trimmed(after);
  return after.find(old) != after.npos ? position(after, old) - position(before, old)
                                       : position(after, words) - position(before, words);
}

}  // namespace

CodeAssistance::CodeAssistance(QPlainTextEdit& edit, CodeText& code)
    : QObject(&edit),
      edit_(edit),
      code_(code),
      completer_(new QCompleter(this)),
      names_(new QStringListModel(this)) {
  completer_->setModel(names_);
  completer_->setWidget(&edit_);
  completer_->setCompletionMode(QCompleter::PopupCompletion);
  completer_->setCaseSensitivity(Qt::CaseInsensitive);
  connect(completer_, qOverload<const QString&>(&QCompleter::activated), this, &CodeAssistance::complete);
  read_later_.setSingleShot(true);
  read_later_.setInterval(pause_milliseconds);
  connect(&read_later_, &QTimer::timeout, this, &CodeAssistance::read_tags);
  mark_later_.setSingleShot(true);
  mark_later_.setInterval(0);
  connect(&mark_later_, &QTimer::timeout, this, &CodeAssistance::mark);
  connect(&edit_, &QPlainTextEdit::cursorPositionChanged, this, &CodeAssistance::mark_later);
}

CodeAssistance::~CodeAssistance() = default;

void CodeAssistance::set_on(bool on) {
  if (on_ == on) return;
  on_ = on;
  document_changed();
}

void CodeAssistance::set_line_marked(bool marked) {
  line_marked_ = marked;
  mark_later_.start();
}

void CodeAssistance::document_changed() {
  tags_.reset();
  text_.clear();
  hits_.clear();
  end_tag_rest_.clear();
  end_quote_ = QTextCursor();
  edit_.setExtraSelections({});
  if (auto* layout = dynamic_cast<CodeLayout*>(edit_.document()->documentLayout())) {
    layout->set_dark(is_dark());
    layout->set_coloured(on_);
  }
  mark_later();
  if (!on_) return;
  connect(edit_.document(), &QTextDocument::contentsChange, this, [this](int, int removed, int added) {
    if (removed == 0 && added == 0) return;
    tags_.reset();
    read_later_.start();
  });
  read_later_.start(0);
}

void CodeAssistance::colours_changed() {
  if (auto* layout = dynamic_cast<CodeLayout*>(edit_.document()->documentLayout()))
    layout->set_dark(is_dark());
  mark_later();
}

bool CodeAssistance::is_dark() const { return edit_.palette().color(QPalette::Base).lightness() < 128; }

// --- marks ---

void CodeAssistance::show_hits(const QList<QTextEdit::ExtraSelection>& hits) {
  hits_ = hits;
  mark();
}

void CodeAssistance::read_tags() {
  read_later_.setInterval(pause_milliseconds);
  if (!on_ || edit_.document()->characterCount() > longest_read) return;
  text_ = edit_.document()->toRawText();
  text_.replace(QChar::ParagraphSeparator, u'\n');
  tags_.emplace(view_of(text_));
  mark();
}

void CodeAssistance::mark_later() {
  if (on_ || line_marked_) mark_later_.start();
}

void CodeAssistance::mark() {
  QList<QTextEdit::ExtraSelection> marks;
  if (line_marked_) mark_line(marks);
  if (on_) {
    mark_troubles(marks);
    mark_tags(marks);
    mark_brackets(marks);
  }
  edit_.setExtraSelections(marks + hits_);
}

QTextEdit::ExtraSelection CodeAssistance::stretch(std::size_t from, std::size_t to,
                                                  const QTextCharFormat& format) const {
  QTextEdit::ExtraSelection mark;
  mark.cursor = QTextCursor(edit_.document());
  mark.cursor.setPosition(int(from));
  mark.cursor.setPosition(int(to), QTextCursor::KeepAnchor);
  mark.format = format;
  return mark;
}

void CodeAssistance::mark_line(QList<QTextEdit::ExtraSelection>& marks) const {
  QTextEdit::ExtraSelection mark;
  mark.cursor = edit_.textCursor();
  mark.cursor.clearSelection();
  mark.format = ground(is_dark() ? 0x26323F : 0xEAF2FC);
  mark.format.setProperty(QTextFormat::FullWidthSelection, true);
  marks.append(mark);
}

void CodeAssistance::mark_tags(QList<QTextEdit::ExtraSelection>& marks) const {
  if (!tags_ || edit_.textCursor().hasSelection()) return;
  const SourceTag* tag = tags_->at(std::size_t(edit_.textCursor().position()));
  const SourceTag* partner = tag ? tags_->partner_of(*tag) : nullptr;
  if (!partner) return;
  const QTextCharFormat format = ground(is_dark() ? 0x2F4A66 : 0xCFE3FA);
  for (const SourceTag* each : {tag, partner}) marks.append(stretch(each->name, each->name_end, format));
}

void CodeAssistance::mark_brackets(QList<QTextEdit::ExtraSelection>& marks) const {
  constexpr QStringView openers = u"([{", closers = u")]}";
  constexpr int reach = 20'000;  // further away nobody looks
  const int place = edit_.textCursor().position();
  if (edit_.textCursor().hasSelection()) return;
  const QTextDocument* document = edit_.document();
  const auto match = [&](int at) {
    const QChar here = document->characterAt(at);
    const bool opens = openers.contains(here);
    if (!opens && !closers.contains(here)) return false;
    const QChar other = opens ? closers.at(openers.indexOf(here)) : openers.at(closers.indexOf(here));
    int depth = 0;
    for (int i = at, steps = 0; i >= 0 && i < document->characterCount() && steps < reach;
         i += opens ? 1 : -1, ++steps) {
      const QChar c = document->characterAt(i);
      depth += c == here ? 1 : c == other ? -1 : 0;
      if (depth != 0) continue;
      const QTextCharFormat format = ground(is_dark() ? 0x4A4A1E : 0xF3E9A8);
      marks.append(stretch(std::size_t(at), std::size_t(at) + 1, format));
      marks.append(stretch(std::size_t(i), std::size_t(i) + 1, format));
      return true;
    }
    return false;
  };
  if (!match(place) && place > 0) match(place - 1);
}

void CodeAssistance::mark_troubles(QList<QTextEdit::ExtraSelection>& marks) const {
  if (!tags_) return;
  QTextCharFormat format;
  format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
  format.setUnderlineColor(is_dark() ? QColor(0xFFB454) : QColor(0xC77700));
  for (const SourceTag& tag : tags_->tags()) {
    if (tag.trouble == TagTrouble::None) continue;
    if (marks.size() >= most_troubles) return;
    marks.append(stretch(tag.begin, tag.end, format));
  }
}

QString CodeAssistance::name_of(const SourceTag& tag) const {
  return text_.mid(qsizetype(tag.name), qsizetype(tag.name_end - tag.name));
}

QString CodeAssistance::trouble_of(const SourceTag& tag) const {
  switch (tag.trouble) {
    case TagTrouble::None: return {};
    case TagTrouble::NeverClosed:
      return translated(u"<%1> is never closed: it ends with the element around it").arg(name_of(tag));
    case TagTrouble::GoesOn:
      return translated(u"<%1> is never closed: its format goes on into what follows").arg(name_of(tag));
    case TagTrouble::ClosesNothing:
      return translated(u"</%1> closes nothing: it is passed over").arg(name_of(tag));
    case TagTrouble::EmptyParagraph:
      return translated(u"</%1> closes nothing: it makes an empty paragraph").arg(name_of(tag));
    case TagTrouble::LineBreak: return translated(u"</%1> is read as a line break").arg(name_of(tag));
    case TagTrouble::ClosedByAnother:
      return translated(u"<%1> has no end tag: it ends where the element around it ends").arg(name_of(tag));
    case TagTrouble::OpensAgain:
      return translated(u"<%1> is closed by another end tag, and opened again after it").arg(name_of(tag));
  }
  return {};
}

QString CodeAssistance::tip_at(int place) const {
  const SourceTag* tag = on_ && tags_ ? tags_->at(std::size_t(place)) : nullptr;
  return tag ? trouble_of(*tag) : QString();
}

// --- keys ---

bool CodeAssistance::key(QKeyEvent& event) {
  if (!on_ || edit_.isReadOnly()) return false;
  if (completer_->popup()->isVisible()) {
    switch (event.key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_Tab: {
        const QString chosen = completer_->popup()->currentIndex().data().toString();
        completer_->popup()->hide();
        complete(chosen.isEmpty() ? completer_->currentCompletion() : chosen);
        return true;
      }
      case Qt::Key_Escape: completer_->popup()->hide(); return true;
      default: break;
    }
  }
  const bool tab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
  const QTextCursor cursor = edit_.textCursor();
  if (tab && code_.line_of(cursor.selectionStart()) != code_.line_of(cursor.selectionEnd())) {
    move_lines(event.key() == Qt::Key_Tab);
    return true;
  }
  if (event.key() == Qt::Key_Space && event.modifiers() == Qt::ControlModifier) {
    offer(true);
    return true;
  }
  // Where the slash stands on another key's upper half, as on many keyboards, Shift is held with it.
  if (event.key() == Qt::Key_Slash &&
      (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::ControlModifier) {
    toggle_comment();
    return true;
  }
  if (event.text() == QStringLiteral("\"") && step_over_quote()) return true;
  return event.text() == QStringLiteral("/") && close_element();
}

void CodeAssistance::key_done(const QKeyEvent& event) {
  if (!on_ || edit_.isReadOnly()) return;
  if (event.text() == QStringLiteral(">")) take_back_end_tag();
  const bool goes_on = completer_->popup()->isVisible();
  if (types_name(event) && !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
    offer(false);
  else if (goes_on && event.key() == Qt::Key_Backspace)
    offer(true);
  else if (goes_on && !event.text().isEmpty())
    completer_->popup()->hide();
}

// Not one at whose start the selection ends.
std::pair<std::size_t, std::size_t> CodeAssistance::selected_lines() const {
  const std::u16string& text = code_.text();
  const std::size_t start = code_.to_text(edit_.textCursor().selectionStart());
  std::size_t end = code_.to_text(edit_.textCursor().selectionEnd());
  if (end > start && text[end - 1] == u'\n') --end;
  const std::size_t before = start == 0 ? text.npos : text.rfind(u'\n', start - 1);
  return {before == text.npos ? 0 : before + 1, std::min(text.find(u'\n', end), text.size())};
}

void CodeAssistance::replace_lines(std::size_t first, std::size_t end, const std::u16string& lines) {
  code_.replace(first, end - first, lines);
  QTextCursor cursor = edit_.textCursor();
  cursor.setPosition(code_.to_shown(first));
  cursor.setPosition(code_.to_shown(first + lines.size(), false), QTextCursor::KeepAnchor);
  edit_.setTextCursor(cursor);
}

void CodeAssistance::move_lines(bool in) {
  const std::u16string& text = code_.text();
  const auto [first, end] = selected_lines();
  std::u16string moved;
  for (std::size_t line = first; line <= end;) {
    const std::size_t line_end = std::min(text.find(u'\n', line), end);
    std::size_t from = line;
    if (in) {
      if (line_end > line) moved += u'\t';
    } else if (from < line_end && text[from] == u'\t') {
      ++from;
    } else {
      while (from < line_end && from < line + 2 && text[from] == u' ') ++from;
    }
    moved.append(text, from, line_end - from);
    if (line_end < end) moved += u'\n';
    line = line_end + 1;
  }
  replace_lines(first, end, moved);
}

// A caret without a selection stays on the letter that it stands on.
void CodeAssistance::toggle_comment() {
  const bool selected = edit_.textCursor().hasSelection();
  const auto [first, end] = selected_lines();
  const std::u16string old = code_.text().substr(first, end - first);
  const auto column = std::ptrdiff_t(code_.to_text(edit_.textCursor().position()) - first);
  const std::u16string lines = source::with_comments_toggled(code_.text(), first, end);
  if (lines == old) return;
  replace_lines(first, end, lines);
  if (selected) return;
  const std::ptrdiff_t moved =
      std::clamp<std::ptrdiff_t>(column + shift_of_words(old, lines), 0, std::ptrdiff_t(lines.size()));
  QTextCursor cursor = edit_.textCursor();
  cursor.setPosition(code_.to_shown(first + std::size_t(moved)));
  edit_.setTextCursor(cursor);
}

void CodeAssistance::offer(bool asked) {
  const QTextCursor cursor = edit_.textCursor();
  const QTextBlock block = cursor.block();
  // A tag that begins in an earlier line goes on here.
  constexpr int lines_back = 10;
  QTextBlock from = block;
  for (int i = 0; i < lines_back && from.previous().isValid(); ++i) from = from.previous();
  QTextCursor before(edit_.document());
  before.setPosition(std::max(from.position(), cursor.position() - 5000));
  before.setPosition(cursor.position(), QTextCursor::KeepAnchor);
  QString text = before.selectedText();
  const source::Completion completion = source::completion_at(view_of(text), std::size_t(text.size()));
  const QString written = text.mid(qsizetype(completion.from));
  if (completion.names.empty() || cursor.hasSelection() ||
      (written.isEmpty() && !asked && !text.endsWith(u'<')))
    return completer_->popup()->hide();
  QStringList names;
  for (const std::u16string_view name : completion.names) names.append(to_qt(name));
  names_->setStringList(names);
  names_of_attributes_ = completion.of_attributes;
  completer_->setCompletionPrefix(written);
  if (completer_->completionCount() == 0 ||
      (completer_->completionCount() == 1 && completer_->currentCompletion() == written))
    return completer_->popup()->hide();
  completer_->popup()->setCurrentIndex(completer_->completionModel()->index(0, 0));
  QRect place = edit_.cursorRect();
  place.setWidth(completer_->popup()->sizeHintForColumn(0) +
                 completer_->popup()->verticalScrollBar()->sizeHint().width() + 8);
  completer_->complete(place);
}

// An attribute comes with the quotes of its value, and the caret between them.
void CodeAssistance::complete(const QString& name) {
  QTextCursor cursor = edit_.textCursor();
  const bool valued = names_of_attributes_ && source::wants_value(view_of(name)) &&
                      edit_.document()->characterAt(cursor.position()) != u'=';
  cursor.beginEditBlock();
  cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, int(completer_->completionPrefix().size()));
  cursor.insertText(valued ? name + QStringLiteral("=\"\"") : name);
  cursor.endEditBlock();
  if (valued) cursor.movePosition(QTextCursor::Left);
  edit_.setTextCursor(cursor);
  if (valued) end_quote_ = cursor;
}

// Who types the quote after the value as well has it once.
bool CodeAssistance::step_over_quote() {
  QTextCursor cursor = edit_.textCursor();
  if (end_quote_.isNull() || cursor.hasSelection() || cursor.position() != end_quote_.position() ||
      edit_.document()->characterAt(cursor.position()) != u'"')
    return false;
  end_quote_ = QTextCursor();
  cursor.movePosition(QTextCursor::Right);
  edit_.setTextCursor(cursor);
  return true;
}

// "</" closes the innermost element that is open.
bool CodeAssistance::close_element() {
  QTextCursor cursor = edit_.textCursor();
  const int place = cursor.position();
  if (cursor.hasSelection() || edit_.document()->characterAt(place - 1) != u'<') return false;
  QTextCursor before(edit_.document());
  before.setPosition(place - 1, QTextCursor::KeepAnchor);
  QString text = before.selectedText();
  text.replace(QChar::ParagraphSeparator, u'\n');
  const source::TagStructure open(view_of(text));
  const std::u16string_view name = open.open_at(std::size_t(text.size()), view_of(text));
  if (name.empty()) return false;
  completer_->popup()->hide();
  end_tag_rest_ = to_qt(name) + u'>';
  cursor.insertText(u'/' + end_tag_rest_);
  edit_.setTextCursor(cursor);
  end_tag_ = cursor;
  end_tag_.setKeepPositionOnInsert(true);
  return true;
}

// Who doesn't know that it is completed, or doesn't look, types the whole end tag: it stands there once.
void CodeAssistance::take_back_end_tag() {
  if (end_tag_rest_.isEmpty()) return;
  QTextCursor typed = edit_.textCursor();
  const int length = typed.position() - end_tag_.position();
  if (typed.hasSelection() || length != end_tag_rest_.size()) return;
  typed.setPosition(end_tag_.position(), QTextCursor::KeepAnchor);
  if (typed.selectedText().compare(end_tag_rest_, Qt::CaseInsensitive) != 0) return;
  end_tag_rest_.clear();
  typed.joinPreviousEditBlock();
  typed.removeSelectedText();
  typed.endEditBlock();
}

}  // namespace tvx::qt
