#include "htmled/unsaved/differences_view.h"

#include <QFontDatabase>
#include <QTextBlock>
#include <QTextCursor>

#include "tvx/files/line_differences.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using files::ComparedLine;

/// More lines than anybody reads cost time to lay out.
constexpr std::size_t most_lines = 2000;

QColor tint(const QPalette& palette, ComparedLine::Kind kind) {
  const bool dark = palette.color(QPalette::Base).lightness() < 128;
  switch (kind) {
    case ComparedLine::Kind::Removed: return dark ? QColor(0x5a, 0x26, 0x26) : QColor(0xff, 0xdf, 0xdc);
    case ComparedLine::Kind::Added: return dark ? QColor(0x1f, 0x4a, 0x2b) : QColor(0xda, 0xf5, 0xdc);
    default: return {};
  }
}

}  // namespace

DifferencesView::DifferencesView(QWidget* parent) : QTextBrowser(parent) {
  setObjectName(QStringLiteral("differences"));
  setOpenLinks(false);
  setLayoutDirection(Qt::LeftToRight);  // it is source
  setMinimumSize(520, 180);
}

void DifferencesView::show_differences(std::u16string_view before, std::u16string_view after) {
  clear();
  document()->setDefaultFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  const auto lines = files::line_differences(before, after);
  if (lines.empty()) return setPlainText(tr("There is no difference."));
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  for (std::size_t i = 0; i < lines.size() && i < most_lines; ++i) {
    const ComparedLine& line = lines[i];
    if (i > 0) cursor.insertBlock();
    QTextBlockFormat block;
    QTextCharFormat letters;
    if (const QColor colour = tint(palette(), line.kind); colour.isValid()) block.setBackground(colour);
    const QString text = qt::to_qt(line.text);
    if (line.kind == ComparedLine::Kind::LeftOut) letters.setForeground(palette().placeholderText());
    cursor.setBlockFormat(block);
    switch (line.kind) {
      case ComparedLine::Kind::LeftOut: cursor.insertText(tr("… %1 lines …").arg(text), letters); break;
      case ComparedLine::Kind::Removed: cursor.insertText(QStringLiteral("− ") + text, letters); break;
      case ComparedLine::Kind::Added: cursor.insertText(QStringLiteral("+ ") + text, letters); break;
      case ComparedLine::Kind::Same: cursor.insertText(QStringLiteral("  ") + text, letters); break;
    }
  }
  if (lines.size() > most_lines) {
    cursor.insertBlock(QTextBlockFormat());
    cursor.insertText(QStringLiteral("…"));
  }
  cursor.endEditBlock();
  moveCursor(QTextCursor::Start);
}

}  // namespace tvx::htmled
