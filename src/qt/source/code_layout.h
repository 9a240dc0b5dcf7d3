#pragma once

#include <QPlainTextDocumentLayout>
#include <QTextLayout>

#include "tvx/source/line_tokens.h"

namespace tvx::qt {

/// The layout of a source whose lines are coloured when they are laid out, which is when they come into
/// sight. What a line begins in is known from the start on as far as somebody has looked; after an edit it is
/// worked out again as far as it is another one.
class CodeLayout final : public QPlainTextDocumentLayout {
 public:
  explicit CodeLayout(QTextDocument* document);

  void set_coloured(bool coloured);
  /// Whether the letters are bright.
  void set_dark(bool dark);

  QRectF blockBoundingRect(const QTextBlock& block) const override;
  /// For the document a line that gets its colours has changed, and it says so with the next edit, which
  /// would have all lines in sight laid out anew. They need not be. Not within an edit.
  void settle();

 protected:
  void documentChanged(int from, int removed, int added) override;

 private:
  void changed(int at, int added);
  void forget_colours();
  void know_up_to(int number) const;
  source::LineState state_before(const QTextBlock& block) const;
  void colour(QTextBlock block) const;
  QTextCharFormat format_of(source::TokenKind kind) const;

  bool coloured_ = false, dark_ = false;
  mutable int known_ = 0;  // lines whose states are known
  int count_ = 1;
  bool settling_ = false;
};

}  // namespace tvx::qt
