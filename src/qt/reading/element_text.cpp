// The text of an element for reading programs: the caret, the selection, letters, words and lines, and edits.

#include <QWidget>
#include <algorithm>

#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/browser/view/messages.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/reading/text_attributes.h"
#include "tvx/qt/reading/attribute_text.h"
#include "tvx/qt/reading/element_accessible.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::qt {

using editing::AccessibleContent;

namespace {

bool is_line(QAccessible::TextBoundaryType type) {
  return type == QAccessible::LineBoundary || type == QAccessible::ParagraphBoundary;
}

}  // namespace

std::pair<Offset, Offset> ElementAccessible::clamped(int start, int end) const {
  const AccessibleContent* read = content();
  const int size = read ? static_cast<int>(read->text().size()) : 0;
  const int last = end < 0 ? size : std::min(end, size);
  return {static_cast<Offset>(std::clamp(start, 0, last)), static_cast<Offset>(last)};
}

int ElementAccessible::characterCount() const {
  return content() ? static_cast<int>(content()->text().size()) : 0;
}

QString ElementAccessible::text(int start, int end) const {
  const auto [from, to] = clamped(start, end);
  return content() ? to_qt(std::u16string_view(content()->text()).substr(from, to - from)) : QString();
}

// --- words and lines ---

/// The window's own line where the caret stands; what is before and after it, up to a break, is one each.
std::pair<Offset, Offset> ElementAccessible::line_around(int offset) const {
  const Offset at = clamped(offset < 0 ? characterCount() : offset, -1).first;
  const auto whole = content()->line_at(at);
  const auto known = page_->caret_line().of(*page_->tree(), *element());
  if (!known || known->first < whole.first || known->second > whole.second) return whole;
  if (at < known->first) return {whole.first, known->first};
  // The blank or the break that ends it is part of it.
  Offset end = known->second;
  if (end < whole.second && (content()->text()[end] == u' ' || content()->text()[end] == u'\n')) ++end;
  return at < end || end >= whole.second ? std::pair(known->first, end) : std::pair(end, whole.second);
}

QString ElementAccessible::line(Offset from, Offset to, int* start, int* end) const {
  *start = static_cast<int>(from);
  *end = static_cast<int>(to);
  return text(*start, *end);
}

QString ElementAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                        int* end) const {
  if (!is_line(type)) return QAccessibleTextInterface::textAtOffset(offset, type, start, end);
  *start = *end = -1;
  if (!content()) return {};
  const auto [from, to] = line_around(offset);
  return line(from, to, start, end);
}

QString ElementAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                            int* end) const {
  if (!is_line(type)) return QAccessibleTextInterface::textBeforeOffset(offset, type, start, end);
  *start = *end = -1;
  if (!content()) return {};
  const Offset here = line_around(offset).first;
  if (here == 0) return {};
  const auto [from, to] = line_around(static_cast<int>(here) - 1);
  return line(from, to, start, end);
}

QString ElementAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                           int* end) const {
  if (!is_line(type)) return QAccessibleTextInterface::textAfterOffset(offset, type, start, end);
  *start = *end = -1;
  if (!content()) return {};
  const Offset here = line_around(offset).second;
  if (here >= content()->text().size()) return {};
  const auto [from, to] = line_around(static_cast<int>(here));
  return line(from, to, start, end);
}

QString ElementAccessible::attributes(int offset, int* start, int* end) const {
  *start = *end = -1;
  const AccessibleContent* read = content();
  if (!read) return {};
  const Offset at = clamped(offset < 0 ? page_->caret().offset : offset, -1).first;
  const auto wrong_words = [this](const dom::Text& text) {
    std::vector<std::pair<Offset, Offset>> stretches;
    for (const auto& [from, to] : page_->document_view().marked(browser::MarkKind::WrongWord, text))
      stretches.emplace_back(from, to);
    return stretches;
  };
  const editing::AttributeRun run = editing::attributes_at(*element(), *read, at, wrong_words);
  *start = static_cast<int>(run.from);
  *end = static_cast<int>(run.to);
  return attribute_text(run.attributes);
}

// --- the caret and the selection ---

int ElementAccessible::cursorPosition() const {
  const editing::AccessibleTree::Place caret = page_->caret();
  if (!caret.element || !element()) return -1;
  if (caret.element == element()) return static_cast<int>(caret.offset);
  // A link is part of the line that the caret stands in.
  const editing::Selection& selection = page_->document()->editor().selection();
  const bool within = selection.type() == editing::SelectionType::Text && role() == QAccessible::Link &&
                      dom::is_inclusive_ancestor(*element_, *selection.focus().node);
  return within ? static_cast<int>(content()->offset_of(selection.focus())) : -1;
}

void ElementAccessible::setCursorPosition(int position) {
  if (!content()) return;
  const dom::Boundary place = content()->position(clamped(position, -1).first);
  page_->select({place, place});
}

std::pair<Offset, Offset> ElementAccessible::selected() const {
  const editing::Selection& selection = page_->document()->editor().selection();
  if (!content() || selection.type() != editing::SelectionType::Text || selection.collapsed()) return {0, 0};
  const dom::Range range = selection.range();
  return {content()->offset_of(range.start), content()->offset_of(range.end)};
}

int ElementAccessible::selectionCount() const {
  const auto [from, to] = selected();
  return from < to ? 1 : 0;
}

void ElementAccessible::selection(int index, int* start, int* end) const {
  const auto [from, to] = selected();
  const bool is_one = index == 0 && from < to;
  *start = is_one ? static_cast<int>(from) : -1;
  *end = is_one ? static_cast<int>(to) : -1;
}

void ElementAccessible::setSelection(int index, int start, int end) {
  // There is one selection; another instead of it is what asking for a second comes to.
  if (index < 0 || !content()) return;
  const auto [from, to] = clamped(std::min(start, end), std::max(start, end));
  page_->select(content()->range_of(from, to));
}

void ElementAccessible::addSelection(int start, int end) { setSelection(0, start, end); }

void ElementAccessible::removeSelection(int index) {
  const auto [from, to] = selected();
  if (index == 0 && from < to) setCursorPosition(static_cast<int>(to));
}

// --- on the screen ---

/// Where the caret is, is known. For all else the page would have to be waited for.
QRect ElementAccessible::characterRect(int offset) const {
  if (!page_ || offset != cursorPosition()) return {};
  const browser::ViewFacts& facts = page_->document_view().facts();
  const QWidget* widget = page_->view().input_widget();
  if (!widget) return {};
  const QPoint top = page_->view().in_widget({facts.caret_left, facts.caret_top});
  const QPoint bottom = page_->view().in_widget({facts.caret_left, facts.caret_top + facts.caret_height});
  return {widget->mapToGlobal(top), QSize(1, bottom.y() - top.y())};
}

int ElementAccessible::offsetAtPoint(const QPoint&) const { return -1; }

void ElementAccessible::scrollToSubstring(int, int) {
  if (dom::Element* const whole = element()) page_->document_view().scroll_into_view(*whole, true);
}

// --- edits ---

void ElementAccessible::deleteText(int start, int end) { replaceText(start, end, {}); }

void ElementAccessible::insertText(int offset, const QString& text) { replaceText(offset, offset, text); }

void ElementAccessible::replaceText(int start, int end, const QString& text) {
  if (!element()) return;
  const auto [from, to] = clamped(start, end);
  page_->write(*element(), from, to, text);
}

}  // namespace tvx::qt
