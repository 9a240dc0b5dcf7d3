#include "tvx/qt/forms/text_boxes.h"

#include <QEvent>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>
#include <algorithm>
#include <limits>
#include <utility>

#include "tvx/base/numbers.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

constexpr int usual_letters = 20, letters_of_a_number = 6;

// The model knows no end; a box that cut a text off would change it.
void take_any_length(QLineEdit& line) { line.setMaxLength(std::numeric_limits<int>::max()); }

// Numbers and colours read from the left everywhere; they start where the form does.
Qt::Alignment start_of(const QWidget& box) {
  return box.layoutDirection() == Qt::RightToLeft ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeft;
}

struct Selected {
  int start, length;
  bool operator==(const Selected&) const = default;
};

Selected selected_in(const QLineEdit& line) {
  if (line.hasSelectedText()) return {line.selectionStart(), line.selectionLength()};
  return {line.cursorPosition(), 0};
}

}  // namespace

// --- of text ---

TextBox::TextBox(std::optional<int> letters, QWidget* parent)
    : QLineEdit(parent), letters_(letters.value_or(usual_letters)) {
  take_any_length(*this);
  setSizePolicy(letters ? QSizePolicy::Fixed : QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize TextBox::sizeHint() const {
  constexpr int letters_of_qt = 17;
  const QSize usual = QLineEdit::sizeHint();
  return {usual.width() + (letters_ - letters_of_qt) * fontMetrics().horizontalAdvance(u'x'), usual.height()};
}

void TextBox::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutDirectionChange) setAlignment(start_of(*this));
  QLineEdit::changeEvent(event);
}

// --- of numbers ---

NumberBox::NumberBox(platform::FormControl& control, QWidget* parent, UserAct act)
    : QAbstractSpinBox(parent), control_(control), act_(std::move(act)) {
  take_any_length(*lineEdit());
  lineEdit()->setObjectName(to_qt(control.Name()));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void NumberBox::stepBy(int steps) {
  act_([this, steps] { control_.step(steps); });
}

QAbstractSpinBox::StepEnabled NumberBox::stepEnabled() const {
  const double number = typed_number(control_.Text());
  StepEnabled enabled = StepNone;
  if (number < control_.number()->most) enabled |= StepUpEnabled;
  if (number > control_.number()->least) enabled |= StepDownEnabled;
  return enabled;
}

QSize NumberBox::sizeHint() const {
  QStyleOptionSpinBox option;
  initStyleOption(&option);
  const int letters = std::max(control_.columns().value_or(letters_of_a_number), letters_of_a_number);
  const QSize text(letters * fontMetrics().horizontalAdvance(u'0'), lineEdit()->sizeHint().height());
  return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text, this);
}

void NumberBox::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutDirectionChange) setAlignment(start_of(*this));
  QAbstractSpinBox::changeEvent(event);
}

// A wheel that scrolls the form over a box must not change what stands in it.
void NumberBox::wheelEvent(QWheelEvent* event) {
  hasFocus() ? QAbstractSpinBox::wheelEvent(event) : event->ignore();
}

// --- both ways ---

void follow_line(platform::FormControl& control, QLineEdit& line, const UserAct& act) {
  // Not only what is typed: a reading or dictating program sets the text as a whole.
  QObject::connect(&line, &QLineEdit::textChanged, &line, [&control, &line, act](const QString& text) {
    const Selected selected = selected_in(line);
    act([&] { control.edit(from_qt(text), selected.start, selected.length); });
  });
  const auto tell_selection = [&control, &line] {
    if (line.text() != to_qt(control.Text())) return;  // its change is told first
    const Selected selected = selected_in(line);
    control.edit(control.Text(), selected.start, selected.length);
  };
  QObject::connect(&line, &QLineEdit::selectionChanged, &line, tell_selection);
  QObject::connect(&line, &QLineEdit::cursorPositionChanged, &line, tell_selection);
}

void show_line(const platform::FormControl& control, QLineEdit& line) {
  const QString text = to_qt(control.Text());
  const Selected selected{control.SelStart(), control.SelLength()};
  if (line.text() == text && selected_in(line) == selected) return;
  const QSignalBlocker silence(line);
  if (line.text() != text) line.setText(text);
  selected.length > 0 ? line.setSelection(selected.start, selected.length)
                      : line.setCursorPosition(selected.start);
}

}  // namespace tvx::qt
