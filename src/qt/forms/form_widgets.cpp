#include "tvx/qt/forms/form_widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>

#include "tvx/qt/forms/colour_button.h"
#include "tvx/qt/forms/colour_palette.h"
#include "tvx/qt/forms/form_colours.h"
#include "tvx/qt/forms/key_reporter.h"
#include "tvx/qt/forms/list_box.h"
#include "tvx/qt/forms/list_view_box.h"
#include "tvx/qt/forms/text_boxes.h"
#include "tvx/qt/support/caption_label.h"
#include "tvx/qt/support/font_list.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

using platform::ControlKind;
using platform::FormControl;

// --- making: what the user does goes to the model ---

constexpr int letters_of_a_passage = 60;

QWidget* make_passage(QWidget* parent) {
  auto* passage = new QLabel(parent);
  passage->setTextFormat(Qt::RichText);
  passage->setWordWrap(true);
  passage->setMinimumWidth(letters_of_a_passage * passage->fontMetrics().averageCharWidth());
  return passage;
}

QWidget* make_text_box(FormControl& control, QWidget* parent, const UserAct& act) {
  if (control.is_passage()) return make_passage(parent);
  QWidget* box = nullptr;
  if (control.number()) {
    auto* number = new NumberBox(control, parent, act);
    follow_line(control, *number->line(), act);
    box = number;
  } else {
    auto* text = new TextBox(control.columns(), parent);
    follow_line(control, *text, act);
    if (!control.offered().empty()) add_palette(control, *text);
    box = text;
  }
  if (control.reports_keys()) new KeyReporter(control, *box, act);
  return box;
}

QWidget* make_combo_box(FormControl& control, QWidget* parent, const UserAct& act) {
  auto* box = new QComboBox(parent);
  box->setLineEdit(new TextBox(std::nullopt, box));
  box->setInsertPolicy(QComboBox::NoInsert);
  // It is as wide as its row; one that adjusts to what comes later would be narrow for a moment each time.
  box->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
  box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  // Names of fonts are many: what is typed finds them. Elsewhere what is typed is what is meant.
  if (control.shows_fonts()) {
    box->completer()->setCompletionMode(QCompleter::PopupCompletion);
    box->completer()->setFilterMode(Qt::MatchContains);
    show_in_their_fonts(*box);
  } else {
    box->setCompleter(nullptr);
  }
  follow_line(control, *box->lineEdit(), act);
  if (control.reports_keys()) new KeyReporter(control, *box, act);
  return box;
}

QWidget* make_list(FormControl& control, QWidget* parent, const UserAct& act) {
  if (control.takes_text()) return make_combo_box(control, parent, act);
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
    case ControlKind::ListBox: return new ListBox(control, parent, act);
    case ControlKind::ListView: return new ListViewBox(control.list_view(), parent, act);
    case ControlKind::CheckBox: return make_check_box(control, parent, act);
    case ControlKind::CommandButton: return make_button(control, parent, act);
    case ControlKind::Frame: return new QGroupBox(parent);
    case ControlKind::PictureBox: break;
  }
  return make_picture(parent);
}

// --- showing: what the model says is seen ---

/// What is selected is said by more than a colour, which not everybody sees.
void show_passage(const FormControl& control, QLabel& passage) {
  const QString text = to_qt(control.Text());
  const int from = control.SelStart(), to = from + control.SelLength();
  passage.setText(text.left(from).toHtmlEscaped() + QStringLiteral("<b><u>") +
                  text.mid(from, to - from).toHtmlEscaped() + QStringLiteral("</u></b>") +
                  text.mid(to).toHtmlEscaped());
}

void show_text(const FormControl& control, QWidget& widget) {
  if (control.is_passage()) return show_passage(control, static_cast<QLabel&>(widget));
  auto* number = dynamic_cast<NumberBox*>(&widget);
  show_line(control, number ? *number->line() : static_cast<QLineEdit&>(widget));
  if (number) number->update();  // its arrows may have come to an end
}

bool has_items_of(const QComboBox& list, const FormControl& control) {
  if (list.count() != control.ListCount()) return false;
  for (int i = 0; i < list.count(); ++i)
    if (list.itemText(i) != to_qt(control.List(i))) return false;
  return true;
}

void show_list(const FormControl& control, QComboBox& list) {
  // The model says what is chosen; filling the list must not choose anything.
  const QSignalBlocker silence(list), silent_line(list.lineEdit());
  if (!has_items_of(list, control)) {
    list.clear();
    for (int i = 0; i < control.ListCount(); ++i) {
      list.addItem(to_qt(control.List(i)));
      if (control.shows_fonts()) show_in_its_font(list, i);
    }
  }
  if (QLineEdit* line = list.lineEdit()) return show_line(control, *line);
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

// A caption that has stayed keeps the letter that the form's layout has marked in it.
void show_own_caption(const FormControl& control, QWidget& widget) {
  const QString caption = to_qt(control.Caption());
  if (widget.property("caption") == caption) return;
  widget.setProperty("caption", caption);
  show_caption(control, caption, widget);
}

void show_button(const FormControl& control, QPushButton& button) {
  show_own_caption(control, button);
  if (const FormControl* field = control.colour_field())
    static_cast<ColourButton&>(button).show_colour(to_qt(field->Text()));
}

// Sizes of letters as browsers show those of documents.
void show_sample(const platform::TextSample& sample, CaptionLabel& label) {
  constexpr int pixels[] = {10, 13, 16, 18, 24, 32, 48}, usual = 3, tallest = 64;
  const int size = sample.size >= 1 && sample.size <= 7 ? sample.size : usual;
  QFont font = sample.font.empty() ? QFont() : QFont(to_qt(sample.font));
  font.setPixelSize(pixels[size - 1]);
  const QColor colour = document_colour(to_qt(sample.colour)),
               background = document_colour(to_qt(sample.background));
  QPalette palette;
  palette.setColor(QPalette::WindowText, colour.isValid() ? colour : QColor(Qt::black));
  palette.setColor(QPalette::Window, background.isValid() ? background : QColor(Qt::white));
  label.setFont(font);
  label.setPalette(palette);
  label.setAutoFillBackground(true);
  label.setAlignment(Qt::AlignCenter);
  label.setMinimumHeight(tallest);
}

void show_label(const FormControl& control, CaptionLabel& label) {
  show_own_caption(control, label);
  if (control.sample()) show_sample(*control.sample(), label);
}

void show_content(const FormControl& control, QWidget& widget) {
  switch (control.kind()) {
    case ControlKind::Label: show_label(control, static_cast<CaptionLabel&>(widget)); break;
    case ControlKind::TextBox: show_text(control, widget); break;
    case ControlKind::ComboBox: show_list(control, static_cast<QComboBox&>(widget)); break;
    case ControlKind::ListBox: static_cast<ListBox&>(widget).show_items(); break;
    case ControlKind::ListView: break;  // it watches its own model
    case ControlKind::CheckBox: {
      auto& box = static_cast<QCheckBox&>(widget);
      show_own_caption(control, box);
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
  const QString tip = translated(control.ToolTipText()), fault = translated(control.fault());
  widget.setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
  // What is wrong is more urgent than what would be right.
  widget.setAccessibleDescription(fault.isEmpty() ? tip : fault);
  if (!control.sample()) show_back_colour(control, widget);  // a sample has colours of its own
}

void show_caption(const FormControl& control, const QString& caption, QWidget& widget) {
  switch (control.kind()) {
    case ControlKind::Label: return static_cast<CaptionLabel&>(widget).show_caption(caption);
    case ControlKind::CheckBox:
    case ControlKind::CommandButton: return static_cast<QAbstractButton&>(widget).setText(caption);
    default: return;
  }
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
