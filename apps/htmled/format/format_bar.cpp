#include "htmled/format/format_bar.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>

#include "htmled/format/colour_button.h"
#include "htmled/window.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/font_list.h"

namespace tvx::htmled {
namespace {

using qt::HTMLedWidget;

struct Style {
  const char* value;
  HTMLedWidget::Action action;  // which has its word
  double scale;
  bool bold, italic, fixed;
};
constexpr Style styles[] = {
    {"p", HTMLedWidget::Action::Paragraph, 1, false, false, false},
    {"h1", HTMLedWidget::Action::Heading1, 1.7, true, false, false},
    {"h2", HTMLedWidget::Action::Heading2, 1.45, true, false, false},
    {"h3", HTMLedWidget::Action::Heading3, 1.25, true, false, false},
    {"h4", HTMLedWidget::Action::Heading4, 1.1, true, false, false},
    {"h5", HTMLedWidget::Action::Heading5, 0.95, true, false, false},
    {"h6", HTMLedWidget::Action::Heading6, 0.85, true, false, false},
    {"pre", HTMLedWidget::Action::Preformatted, 1, false, false, true},
    {"blockquote", HTMLedWidget::Action::Quotation, 1, false, true, false},
};

/// What the seven sizes are on paper, in points.
constexpr const char* points[] = {"8", "10", "12", "14", "18", "24", "36"};

/// The first of a list of families, without its quotation marks.
QString first_family(const QString& families) {
  return families.section(u',', 0, 0).trimmed().remove(u'"').remove(u'\'');
}

QString word_of(HTMLedWidget& editor, HTMLedWidget::Action action) {
  return editor.action(action)->iconText();
}

}  // namespace

FormatBar::FormatBar(QWidget* parent)
    : QToolBar(parent),
      styles_(add_box("styles", 14)),
      fonts_(add_box("fonts", 16)),
      sizes_(add_box("sizes", 4)),
      classes_(nullptr),
      text_(new ColourButton(ColourButton::Of::Text, this)),
      highlight_(new ColourButton(ColourButton::Of::Highlight, this)) {
  setObjectName(QStringLiteral("format"));
  setMovable(false);
  setIconSize({20, 20});
  qt::show_in_their_fonts(*fonts_);
  for (const char* each : points) sizes_->addItem(QString::fromLatin1(each));
  addSeparator();
  addWidget(text_);
  addWidget(highlight_);
  before_classes_ = addSeparator();
  classes_ = add_box("classes", 12);
  classes_shown_ = actions().constLast();
  connect(styles_, &QComboBox::activated, this, [this](int index) {
    set([&](HTMLedWidget& editor) { editor.set_paragraph_style(QString::fromLatin1(styles[index].value)); });
  });
  connect(fonts_, &QComboBox::textActivated, this,
          [this](const QString& family) { set([&](HTMLedWidget& editor) { editor.set_font(family); }); });
  connect(sizes_, &QComboBox::activated, this,
          [this](int index) { set([&](HTMLedWidget& editor) { editor.set_font_size(index + 1); }); });
  connect(classes_, &QComboBox::activated, this, [this](int index) {
    set([&](HTMLedWidget& editor) {
      editor.set_style_class(index == 0 ? QString() : classes_->itemText(index));
    });
  });
  connect(text_, &ColourButton::chosen, this, [this](const QColor& colour) {
    set([&](HTMLedWidget& editor) { editor.set_text_colour(colour); });
  });
  connect(highlight_, &ColourButton::chosen, this,
          [this](const QColor& colour) { set([&](HTMLedWidget& editor) { editor.set_highlight(colour); }); });
  text_->installEventFilter(this);
  highlight_->installEventFilter(this);
}

QComboBox* FormatBar::add_box(const char* name, int letters) {
  auto* box = new QComboBox;
  box->setObjectName(QString::fromLatin1(name));
  box->setMinimumContentsLength(letters);
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setFocusPolicy(Qt::TabFocus);
  box->setMaxVisibleItems(18);
  box->installEventFilter(this);
  addWidget(box);
  return box;
}

void FormatBar::set_editor(HTMLedWidget& editor) {
  if (editor_ == &editor) return;
  if (editor_) {
    editor_->disconnect(this);
    for (const Style& style : styles) editor_->action(style.action)->disconnect(this);
  }
  if (clear_) removeAction(clear_);
  editor_ = &editor;
  clear_ = editor.action(HTMLedWidget::Action::ClearFormatting);
  insertAction(before_classes_, clear_);
  connect(&editor, &QObject::destroyed, this, [this] { clear_ = nullptr; });
  connect(&editor, &HTMLedWidget::formatChanged, this, &FormatBar::show_format);
  connect(&editor, &HTMLedWidget::documentLoaded, this, [this] {
    fill_classes();
    show_format();
  });
  // Where the page can't be formatted the whole bar is grey.
  const auto follow = [this] {
    if (!editor_) return;
    const bool can_act = editor_->action(HTMLedWidget::Action::Paragraph)->isEnabled();
    for (QWidget* each :
         std::initializer_list<QWidget*>{styles_, fonts_, sizes_, text_, highlight_, classes_})
      each->setEnabled(can_act);
    if (has_words_of_editor()) return;
    fill_styles();
    show_format();
  };
  // A new editor learns its language later than the program, one action after the other.
  for (const Style& style : styles) connect(editor.action(style.action), &QAction::changed, this, follow);
  follow();
  fill_classes();
  show_format();
}

// --- what can be chosen ---

bool FormatBar::has_words_of_editor() const {
  int index = 0;
  return std::ranges::all_of(styles, [&](const Style& style) {
    return styles_->itemText(index++) == word_of(*editor_, style.action);
  });
}

void FormatBar::fill_styles() {
  if (!editor_) return;
  styles_->clear();
  for (const Style& style : styles) {
    styles_->addItem(word_of(*editor_, style.action));
    QFont font = style.fixed ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : styles_->font();
    font.setPointSizeF(styles_->font().pointSizeF() * style.scale);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    styles_->setItemData(styles_->count() - 1, font, Qt::FontRole);
  }
}

// Asking for all fonts takes longer than all else that a start does: it waits until somebody opens the list.
void FormatBar::fill_fonts() {
  if (fonts_->property("filled").toBool()) return;
  fonts_->setProperty("filled", true);
  const QString shown = fonts_->currentText();
  fonts_->clear();
  fonts_->addItems(qt::font_families());
  for (int i = 0; i < fonts_->count(); ++i) qt::show_in_its_font(*fonts_, i);
  show_font(shown);
}

void FormatBar::fill_classes() {
  if (!editor_) return;
  const QStringList names = editor_->style_classes();
  classes_shown_->setVisible(!names.isEmpty());
  before_classes_->setVisible(!names.isEmpty());
  classes_->clear();
  classes_->addItem(Window::tr("(no class)"));
  classes_->addItems(names);
}

// --- following ---

void FormatBar::show_format() {
  if (!editor_) return;
  const HTMLedWidget::Format format = editor_->format();
  const auto style = std::ranges::find_if(
      styles, [&](const Style& each) { return format.paragraph_style == QLatin1String(each.value); });
  styles_->setCurrentIndex(style == std::end(styles) ? -1 : int(style - styles));
  const bool plain = style == std::end(styles) && !format.several_paragraph_styles;
  styles_->setPlaceholderText(plain ? Window::tr("Text without a style") : Window::tr("Several styles"));
  show_font(first_family(format.font));
  sizes_->setCurrentIndex(format.size - 1);
  text_->show_colour(format.colour);
  highlight_->show_colour(format.highlight);
  classes_->setCurrentIndex(format.style_class.isEmpty() ? 0 : classes_->findText(format.style_class));
}

void FormatBar::show_font(const QString& family) {
  int index = fonts_->findText(family, Qt::MatchFixedString);
  if (index < 0 && !family.isEmpty()) {
    fonts_->insertItem(0, family);
    index = 0;
  }
  fonts_->setCurrentIndex(family.isEmpty() ? -1 : index);
  fonts_->setPlaceholderText(family.isEmpty() ? Window::tr("Several fonts") : QString());
}

template <class Set>
void FormatBar::set(const Set& set) {
  const QPointer<HTMLedWidget> editor = editor_;
  if (!editor) return;
  editor->finish_input();
  if (editor) set(*editor);
  if (editor) editor->setFocus(Qt::OtherFocusReason);
  if (editor == editor_) show_format();
}

void FormatBar::show_words() {
  styles_->setToolTip(Window::tr("Paragraph style"));
  fonts_->setToolTip(Window::tr("Font"));
  sizes_->setToolTip(Window::tr("Font size in points"));
  classes_->setToolTip(Window::tr("Class of the style sheet"));
  for (QComboBox* box : {styles_, fonts_, sizes_, classes_}) box->setAccessibleName(box->toolTip());
  setWindowTitle(Window::tr("Format bar"));
  text_->show_words();
  highlight_->show_words();
  fill_styles();
  fill_classes();
  show_format();
}

// --- the keyboard ---

void FormatBar::take_focus() {
  show();
  styles_->setFocus(Qt::ShortcutFocusReason);
}

bool FormatBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == fonts_ && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusIn ||
                            event->type() == QEvent::KeyPress))
    fill_fonts();
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
      editor_) {
    editor_->setFocus(Qt::OtherFocusReason);
    return true;
  }
  // The wheel over a bar is meant for nothing in it.
  if (event->type() == QEvent::Wheel) return true;
  return QToolBar::eventFilter(watched, event);
}

}  // namespace tvx::htmled
