#include "tvx/qt/forms/form_widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <limits>

#include "tvx/qt/forms/colour_button.h"
#include "tvx/qt/forms/form_colours.h"
#include "tvx/qt/support/caption_label.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

using platform::ControlKind;
using platform::FormControl;

/// A text box as wide as the letters that it is for, and as wide as there is room where no number is given.
class TextBox final : public QLineEdit {
 public:
  explicit TextBox(std::optional<int> letters, QWidget* parent)
      : QLineEdit(parent), letters_(letters.value_or(usual_letters)) {
    // The model knows no end; a box that cut a text off would change it.
    setMaxLength(std::numeric_limits<int>::max());
    setSizePolicy(letters ? QSizePolicy::Fixed : QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

  QSize sizeHint() const override {
    constexpr int letters_of_qt = 17;
    const QSize usual = QLineEdit::sizeHint();
    const int letter = fontMetrics().horizontalAdvance(u'x');
    return {usual.width() + (letters_ - letters_of_qt) * letter, usual.height()};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  // Numbers and colours read from the left everywhere; they start where the form does.
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::LayoutDirectionChange)
      setAlignment(layoutDirection() == Qt::RightToLeft ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeft);
    QLineEdit::changeEvent(event);
  }

  static constexpr int usual_letters = 20;
  int letters_;
};

// --- making: what the user does goes to the model ---

QWidget* make_text_box(FormControl& control, QWidget* parent, const UserAct& act) {
  auto* box = new TextBox(control.columns(), parent);
  // Not only what is typed: a reading or dictating program sets the text as a whole.
  QObject::connect(box, &QLineEdit::textChanged, box, [&control, act](const QString& text) {
    act([&control, &text] { control.set_Text(from_qt(text)); });
  });
  return box;
}

QWidget* make_list(FormControl& control, QWidget* parent, const UserAct& act) {
  auto* list = new QComboBox(parent);
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  QObject::connect(list, &QComboBox::currentIndexChanged, list, [&control, act](int index) {
    if (index >= 0) act([&control, index] { control.set_ListIndex(index); });
  });
  return list;
}

QWidget* make_check_box(FormControl& control, QWidget* parent, const UserAct& act) {
  auto* box = new QCheckBox(parent);
  // The model turns the tick; should its handler fail, both still say the same.
  QObject::connect(box, &QCheckBox::clicked, box, [&control, act, box] {
    const QPointer<QCheckBox> alive(box);
    act([&control] { control.click(); });
    if (alive) show_state(control, *alive);
  });
  return box;
}

QWidget* make_button(FormControl& control, QWidget* parent, const UserAct& act) {
  QPushButton* button = control.colour_field() ? new ColourButton(parent) : new QPushButton(parent);
  QObject::connect(button, &QPushButton::clicked, button,
                   [&control, act] { act([&control] { control.click(); }); });
  return button;
}

QWidget* make_picture(QWidget* parent) {
  auto* picture = new QLabel(parent);
  picture->setAlignment(Qt::AlignCenter);
  return picture;
}

QWidget* make_bare_widget(FormControl& control, QWidget* parent, const UserAct& act) {
  switch (control.kind()) {
    case ControlKind::Label: return new CaptionLabel(parent);
    case ControlKind::TextBox: return make_text_box(control, parent, act);
    case ControlKind::ComboBox: return make_list(control, parent, act);
    case ControlKind::CheckBox: return make_check_box(control, parent, act);
    case ControlKind::CommandButton: return make_button(control, parent, act);
    case ControlKind::Frame: return new QGroupBox(parent);
    case ControlKind::PictureBox: break;
  }
  return make_picture(parent);
}

// --- showing: what the model says is seen ---

void show_text(const FormControl& control, QLineEdit& box) {
  const QString text = to_qt(control.Text());
  if (box.text() == text) return;
  box.setText(text);
  // A text that came as a whole is read from its beginning.
  box.setCursorPosition(0);
}

bool has_items_of(const QComboBox& list, const FormControl& control) {
  if (list.count() != control.ListCount()) return false;
  for (int i = 0; i < list.count(); ++i)
    if (list.itemText(i) != to_qt(control.List(i))) return false;
  return true;
}

void show_list(const FormControl& control, QComboBox& list) {
  // The model says what is chosen; filling the list must not choose anything.
  const QSignalBlocker silence(list);
  if (!has_items_of(list, control)) {
    list.clear();
    for (int i = 0; i < control.ListCount(); ++i) list.addItem(to_qt(control.List(i)));
  }
  if (to_qt(control.Text()) != list.currentText() || control.ListIndex() < 0)
    list.setCurrentIndex(control.ListIndex());
}

void show_picture(const FormControl& control, QLabel& picture) {
  constexpr QSize largest(320, 240);
  QPixmap image(to_qt(control.Picture()));
  const qreal scale = picture.devicePixelRatioF();
  if (image.width() > largest.width() * scale || image.height() > largest.height() * scale)
    image = image.scaled(largest * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  image.setDevicePixelRatio(scale);
  picture.setPixmap(image);
}

void show_button(const FormControl& control, QPushButton& button) {
  button.setText(to_qt(control.Caption()));
  if (const FormControl* field = control.colour_field())
    static_cast<ColourButton&>(button).show_colour(to_qt(field->Text()));
}

void show_content(const FormControl& control, QWidget& widget) {
  switch (control.kind()) {
    case ControlKind::Label: static_cast<CaptionLabel&>(widget).show_caption(to_qt(control.Caption())); break;
    case ControlKind::TextBox: show_text(control, static_cast<QLineEdit&>(widget)); break;
    case ControlKind::ComboBox: show_list(control, static_cast<QComboBox&>(widget)); break;
    case ControlKind::CheckBox: {
      auto& box = static_cast<QCheckBox&>(widget);
      box.setText(to_qt(control.Caption()));
      box.setChecked(control.Value());
      break;
    }
    case ControlKind::CommandButton: show_button(control, static_cast<QPushButton&>(widget)); break;
    case ControlKind::Frame: static_cast<QGroupBox&>(widget).setTitle(to_qt(control.Caption())); break;
    case ControlKind::PictureBox: show_picture(control, static_cast<QLabel&>(widget)); break;
  }
}

}  // namespace

QWidget* make_widget(FormControl& control, QWidget* parent, const UserAct& act) {
  QWidget* widget = make_bare_widget(control, parent, act);
  widget->setObjectName(to_qt(control.Name()));
  show_state(control, *widget);
  return widget;
}

void show_state(const FormControl& control, QWidget& widget) {
  show_content(control, widget);
  widget.setEnabled(control.Enabled());
  // One that has never been shown is made visible by its window.
  if (widget.isHidden() == control.Visible()) widget.setVisible(control.Visible());
  const QString tip = to_qt(control.ToolTipText());
  widget.setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
  show_back_colour(control, widget);
}

QString without_marks(const QString& caption) {
  QString bare;
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && ++i == caption.size()) break;
    bare += caption[i];
  }
  return bare;
}

}  // namespace tvx::qt
