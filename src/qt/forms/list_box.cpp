#include "tvx/qt/forms/list_box.h"

#include <QMouseEvent>
#include <QPointer>
#include <utility>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {

ListBox::ListBox(platform::FormControl& control, QWidget* parent, UserAct act)
    : QListWidget(parent), control_(control), act_(std::move(act)) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  setUniformItemSizes(true);
  connect(this, &QListWidget::currentRowChanged, this, &ListBox::choose);
  connect(this, &QListWidget::itemDoubleClicked, this, [this] { act_([this] { control_.double_click(); }); });
}

void ListBox::choose(int row) {
  act_([this, row] { control_.choose(row); });
}

void ListBox::mousePressEvent(QMouseEvent* event) {
  const int before = currentRow();
  const QPointer<ListBox> alive(this);
  QListWidget::mousePressEvent(event);
  if (!alive || !isEnabled() || event->button() != Qt::LeftButton) return;
  const QListWidgetItem* item = itemAt(event->position().toPoint());
  if (item && row(item) == before) choose(before);
}

// The keyboard's coming chooses nothing by itself.
void ListBox::focusInEvent(QFocusEvent* event) {
  const QSignalBlocker silence(this);
  const bool chosen = currentRow() >= 0;
  QListWidget::focusInEvent(event);
  if (!chosen) setCurrentRow(-1);
}

void ListBox::show_items() {
  // The model says what is chosen; filling the list must not choose anything.
  const QSignalBlocker silence(this);
  while (count() > control_.ListCount()) delete takeItem(count() - 1);
  for (int i = 0; i < control_.ListCount(); ++i) {
    const QString text = to_qt(control_.List(i));
    if (i == count())
      addItem(text);
    else if (item(i)->text() != text)
      item(i)->setText(text);
  }
  if (currentRow() != control_.ListIndex()) setCurrentRow(control_.ListIndex());
  if (control_.ListIndex() < 0) clearSelection();
}

QSize ListBox::sizeHint() const {
  constexpr int rows = 6, letters = 20;
  const int edge = 2 * frameWidth();
  return {letters * fontMetrics().horizontalAdvance(u'x') + edge, rows * fontMetrics().lineSpacing() + edge};
}

}  // namespace tvx::qt
