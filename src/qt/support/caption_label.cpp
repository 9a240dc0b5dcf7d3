#include "tvx/qt/support/caption_label.h"

#include <algorithm>

#include "tvx/qt/forms/form_widgets.h"

namespace tvx::qt {
namespace {

constexpr int letters_of_a_caption = 26;

}  // namespace

CaptionLabel::CaptionLabel(QWidget* parent) : QLabel(parent), letters_(letters_of_a_caption) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void CaptionLabel::show_caption(const QString& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  show_text();
}

void CaptionLabel::name_field(QWidget* field) {
  setBuddy(field);
  show_text();
}

// Only a label that names a field reads "&" as a mark; the others would show it.
void CaptionLabel::show_text() { setText(buddy() ? caption_ : without_marks(caption_)); }

void CaptionLabel::set_line(int letters) {
  letters_ = letters;
  updateGeometry();
}

QSize CaptionLabel::sizeHint() const {
  const int flags = Qt::TextWordWrap | (buddy() ? Qt::TextShowMnemonic : 0);
  const QRect line(0, 0, letters_ * fontMetrics().averageCharWidth(), 1 << 20);
  const QSize text = fontMetrics().boundingRect(line, flags, this->text()).size();
  const QMargins edges = contentsMargins();
  // A pixel beyond what the text takes: letters lean out of their boxes.
  return {text.width() + 1 + edges.left() + edges.right() + 2 * margin(),
          text.height() + edges.top() + edges.bottom() + 2 * margin()};
}

}  // namespace tvx::qt
