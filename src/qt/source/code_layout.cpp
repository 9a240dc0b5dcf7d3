#include "tvx/qt/source/code_layout.h"

#include <QTextBlock>
#include <QTextDocument>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

using source::LineState;
using source::TokenKind;

/// A longer line stays as it is: to lay out so many pieces would take longer than anybody waits for a key.
constexpr int longest_coloured = 20'000;

/// What a line begins in; what it ends in is the block's own state.
struct LineStart final : QTextBlockUserData {
  explicit LineStart(LineState known) : state(known) {}
  LineState state;
};

constexpr QRgb light_colours[] = {0x5F6B7A, 0x9B1C31, 0x9A4A00, 0x0B6638, 0x66707D, 0x66707D,
                                  0x7430C9, 0x1D4ED8, 0x0B6638, 0x8A2BC0, 0x9B1C31, 0x9A4A00};
constexpr QRgb dark_colours[] = {0x9AA4B2, 0x7CC0FF, 0xF0C674, 0x9ED28A, 0x8E98A7, 0x8E98A7,
                                 0xD0A9F5, 0x82AAFF, 0x9ED28A, 0xF5A97F, 0x7CC0FF, 0xF0C674};

// As they stand in the document: nothing of them is copied.
std::u16string text_of(const QTextBlock& block) { return from_qt(block.text()); }

void remember(QTextBlock& block, LineState begin, LineState end) {
  block.setUserData(new LineStart(begin));
  block.setUserState(end);
}

}  // namespace

CodeLayout::CodeLayout(QTextDocument* document)
    : QPlainTextDocumentLayout(document), count_(document->blockCount()) {
  connect(document, &QTextDocument::contentsChange, this,
          [this](int at, int, int added) { changed(at, added); });
}

void CodeLayout::set_coloured(bool coloured) {
  if (coloured_ == coloured) return;
  coloured_ = coloured;
  forget_colours();
}

void CodeLayout::set_dark(bool dark) {
  if (dark_ == dark) return;
  dark_ = dark;
  forget_colours();
}

void CodeLayout::forget_colours() {
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (block.layout()->lineCount() == 0) continue;
    block.layout()->clearFormats();
    block.clearLayout();
  }
  requestUpdate();
}

QRectF CodeLayout::blockBoundingRect(const QTextBlock& block) const {
  if (coloured_ && block.isValid() && block.layout()->lineCount() == 0) {
    know_up_to(block.blockNumber());  // itself included: what is coloured is known
    colour(block);
  }
  return QPlainTextDocumentLayout::blockBoundingRect(block);
}

void CodeLayout::settle() {
  settling_ = true;
  document()->markContentsDirty(0, 0);
  settling_ = false;
}

void CodeLayout::documentChanged(int from, int removed, int added) {
  if (!settling_) QPlainTextDocumentLayout::documentChanged(from, removed, added);
}

LineState CodeLayout::state_before(const QTextBlock& block) const {
  const QTextBlock before = block.previous();
  return before.isValid() ? before.userState() : 0;
}

void CodeLayout::know_up_to(int number) const {
  if (known_ > number) return;
  QTextBlock block = document()->findBlockByNumber(known_);
  for (LineState state = state_before(block); block.isValid() && known_ <= number;
       block = block.next(), ++known_) {
    const LineState begin = state;
    source::pass_line(text_of(block), state);
    remember(block, begin, state);
  }
}

void CodeLayout::colour(QTextBlock block) const {
  QList<QTextLayout::FormatRange> formats;
  if (block.length() <= longest_coloured) {
    LineState state = state_before(block);
    for (const source::Token& token : source::tokens_of_line(text_of(block), state))
      formats.append({int(token.from), int(token.length), format_of(token.kind)});
  }
  block.layout()->setFormats(formats);
}

QTextCharFormat CodeLayout::format_of(TokenKind kind) const {
  QTextCharFormat format;
  const auto index = static_cast<std::size_t>(kind);
  format.setForeground(QColor(dark_ ? dark_colours[index] : light_colours[index]));
  return format;
}

void CodeLayout::changed(int at, int added) {
  const int more = document()->blockCount() - std::exchange(count_, document()->blockCount());
  if (!coloured_) {
    known_ = 0;
    return;
  }
  const QTextBlock first = document()->findBlock(at);
  if (!first.isValid() || first.blockNumber() >= known_) return;
  const QTextBlock found = document()->findBlock(at + added);
  const int last = found.isValid() ? found.blockNumber() : document()->blockCount() - 1;
  LineState state = state_before(first);
  bool others = false;
  QTextBlock block = first;
  for (;; block = block.next()) {
    if (!block.isValid()) {
      known_ = document()->blockCount();
      break;
    }
    const int number = block.blockNumber();
    if (number > last) {
      if (number - more >= known_) {
        known_ = number;
        break;
      }
      const auto* start = static_cast<const LineStart*>(block.userData());
      if (start && start->state == state) {
        known_ += more;
        break;
      }
      block.clearLayout();
      others = true;
    }
    const LineState begin = state;
    source::pass_line(text_of(block), state);
    remember(block, begin, state);
    // A single line that changes is laid out again with the formats that it has.
    if (number <= last && last - first.blockNumber() < 3) colour(block);
  }
  if (others) requestUpdate();
}

}  // namespace tvx::qt
