#include "htmled/find_bar.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QToolBar>
#include <QToolButton>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/interruption.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/core/search/finder.h"
#include "tvx/core/views/side_source.h"
#include "tvx/dom/inner_text.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {

using qt::from_qt;
using qt::to_qt;

namespace {

/// A selection that is longer is what to look in, not what to look for.
constexpr qsizetype longest_taken = 200;

// What the control says of a pattern, so that it is translated.
[[maybe_unused]] constexpr const char* failures[] = {
    QT_TRANSLATE_NOOP("FindBar", "This is no regular expression"),
    QT_TRANSLATE_NOOP("FindBar", "The regular expression takes too long"),
    QT_TRANSLATE_NOOP("FindBar", "The replacement names a group that the expression doesn't have")};

}  // namespace

FindBar::FindBar(QWidget* parent)
    : QFrame(parent),
      sought_(new QLineEdit(this)),
      replacement_(new QLineEdit(this)),
      count_(new QLabel(this)),
      message_(new QLabel(this)),
      more_(add_button("more", [this] { show_replacement(!replacement_->isVisibleTo(this)); })),
      case_(add_toggle("matchCase", QStringLiteral("Aa"))),
      words_(add_toggle("wholeWords", QStringLiteral("\u201Cab\u201D"))),
      expression_(add_toggle("regularExpression", QStringLiteral("\u200E.*"))),
      selection_(add_toggle("inSelection", QStringLiteral("[\u2026]"))),
      previous_(add_button("previous", [this] { step(false); })),
      next_(add_button("next", [this] { step(true); })),
      close_(add_button("close", [this] { close_bar(); })),
      replace_(new QPushButton(this)),
      replace_all_(new QPushButton(this)) {
  setObjectName(QStringLiteral("findBar"));
  setFrameStyle(QFrame::NoFrame);
  sought_->setObjectName(QStringLiteral("sought"));
  replacement_->setObjectName(QStringLiteral("replacement"));
  count_->setObjectName(QStringLiteral("count"));
  message_->setObjectName(QStringLiteral("message"));
  replace_->setObjectName(QStringLiteral("replace"));
  replace_all_->setObjectName(QStringLiteral("replaceAll"));
  more_->setArrowType(Qt::RightArrow);
  previous_->setArrowType(Qt::UpArrow);
  next_->setArrowType(Qt::DownArrow);
  close_->setText(QStringLiteral("\u00D7"));
  for (QLineEdit* edit : {sought_, replacement_}) edit->installEventFilter(this);
  connect(sought_, &QLineEdit::textChanged, this, &FindBar::search);
  connect(replace_, &QPushButton::clicked, this, &FindBar::replace_one);
  connect(replace_all_, &QPushButton::clicked, this, &FindBar::replace_all);
  lay_out();
  show_replacement(false);
  show_words();
}

QToolButton* FindBar::add_button(const char* name, const std::function<void()>& act) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoRaise(true);
  connect(button, &QToolButton::clicked, this, act);
  return button;
}

QToolButton* FindBar::add_toggle(const char* name, const QString& sign) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setText(sign);
  button->setCheckable(true);
  button->setAutoRaise(true);
  connect(button, &QToolButton::toggled, this, &FindBar::search);
  return button;
}

void FindBar::lay_out() {
  count_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000 / 00000")));
  sought_->setMinimumWidth(180);
  sought_->setMaximumWidth(420);
  replacement_->setMaximumWidth(420);
  auto* first = new QHBoxLayout;
  for (QWidget* each :
       std::initializer_list<QWidget*>{case_, words_, expression_, selection_, previous_, next_})
    first->addWidget(each);
  first->addWidget(count_);
  first->addStretch(1);
  first->addWidget(close_);
  auto* second = new QHBoxLayout;
  second->addWidget(replace_);
  second->addWidget(replace_all_);
  second->addWidget(message_);
  second->addStretch(1);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(6, 3, 6, 3);
  grid->setVerticalSpacing(3);
  grid->addWidget(more_, 0, 0);
  grid->addWidget(sought_, 0, 1);
  grid->addLayout(first, 0, 2);
  grid->addWidget(replacement_, 1, 1);
  grid->addLayout(second, 1, 2);
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(2, 3);
  QWidget* last = more_;
  for (QWidget* each :
       std::initializer_list<QWidget*>{sought_, replacement_, case_, words_, expression_, selection_,
                                       previous_, next_, replace_, replace_all_, close_}) {
    setTabOrder(last, each);
    last = each;
  }
}

void FindBar::show_words() {
  if (auto* strip = qobject_cast<QToolBar*>(parentWidget())) strip->setAccessibleName(tr("Find"));
  sought_->setPlaceholderText(tr("Find"));
  sought_->setAccessibleName(tr("Find"));
  replacement_->setPlaceholderText(tr("Replace with"));
  replacement_->setAccessibleName(tr("Replace with"));
  replace_->setText(tr("Replace"));
  replace_all_->setText(tr("Replace all"));
  const auto tip = [](QToolButton* button, const QString& text, const QString& keys = {}) {
    button->setToolTip(keys.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, keys));
    button->setAccessibleName(text);
  };
  tip(more_, tr("Replace"), QKeySequence(Qt::CTRL | Qt::Key_H).toString(QKeySequence::NativeText));
  tip(case_, tr("Match case"));
  tip(words_, tr("Whole words"));
  tip(expression_, tr("Regular expression"));
  tip(selection_, tr("In the selection"));
  tip(previous_, tr("Previous hit"), QKeySequence(Qt::SHIFT | Qt::Key_F3).toString(QKeySequence::NativeText));
  tip(next_, tr("Next hit"), QKeySequence(Qt::Key_F3).toString(QKeySequence::NativeText));
  tip(close_, tr("Close"), QKeySequence(Qt::Key_Escape).toString(QKeySequence::NativeText));
  show_count();
}

void FindBar::set_editor(qt::HTMLedWidget* editor, std::function<void()> settle) {
  if (editor_) {
    disconnect(editor_, nullptr, this, nullptr);
    if (open_) editor_->control().FindEnd();
  }
  editor_ = editor;
  settle_ = std::move(settle);
  if (!editor_) return;
  // The text has changed meanwhile, or another view has come to the front.
  connect(editor_, &qt::HTMLedWidget::property_changed, this, [this](const QString& key) {
    if (key == QStringLiteral("FindCount") && open_) show_count();
  });
  if (open_) search();
}

// --- opening and closing ---

void FindBar::open(bool with_replacement) {
  if (!editor_) return;
  if (settle_) settle_();
  const bool came = !std::exchange(open_, true);
  sought_->setClearButtonEnabled(true);  // its icon is looked for all over the system: not at the start
  // A search that is on its way has selected what it found.
  if (came || !isAncestorOf(QApplication::focusWidget())) take_selection();
  if (with_replacement) show_replacement(true);
  if (came) emit wanted(true);
  sought_->setFocus(Qt::ShortcutFocusReason);
  sought_->selectAll();
  search();
}

bool FindBar::take_selection() {
  core::HTMLed& control = editor_->control();
  QString text;
  if (control.InCodeView()) {
    text = to_qt(control.txtCode().TextBox1().SelText());
  } else if (control.side_source().in_hand()) {
    text = to_qt(control.side_source().box().TextBox1().SelText());
  } else {
    const auto document = control.DOM();
    if (!document || document->editor().selection().type() != editing::SelectionType::Text) return false;
    text = to_qt(dom::inner_text(document->editor().selection().range()));
  }
  text = text.trimmed();
  if (text.isEmpty()) return false;
  const QScopedValueRollback quiet(quiet_, true);
  const bool lines = text.contains(u'\n') || text.contains(u'\r') || text.size() > longest_taken;
  selection_->setChecked(lines);
  if (!lines) sought_->setText(text);
  return true;
}

void FindBar::close_bar() {
  open_ = false;
  emit wanted(false);
  if (editor_) {
    editor_->control().FindEnd();
    editor_->setFocus(Qt::OtherFocusReason);
  }
  {
    const QScopedValueRollback quiet(quiet_, true);
    selection_->setChecked(false);
  }
}

void FindBar::show_replacement(bool wanted) {
  more_->setArrowType(wanted                                 ? Qt::DownArrow
                      : layoutDirection() == Qt::RightToLeft ? Qt::LeftArrow
                                                             : Qt::RightArrow);
  for (QWidget* each : std::initializer_list<QWidget*>{replacement_, replace_, replace_all_})
    each->setVisible(wanted);
}

void FindBar::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutDirectionChange) show_replacement(replacement_->isVisibleTo(this));
  QFrame::changeEvent(event);
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QFrame::keyPressEvent(event);
  close_bar();
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
  auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() == Qt::Key_Escape) return close_bar(), true;
  if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) return false;
  if (watched == replacement_)
    replace_one();
  else
    step(!(key->modifiers() & Qt::ShiftModifier));
  return true;
}

// --- searching ---

int FindBar::options() const {
  return (case_->isChecked() ? core::find_match_case : 0) |
         (words_->isChecked() ? core::find_whole_words : 0) |
         (expression_->isChecked() ? core::find_regular_expression : 0) |
         (selection_->isChecked() ? core::find_in_selection : 0);
}

void FindBar::attempt(const std::function<void()>& act) {
  try {
    act();
  } catch (const RuntimeError& error) {
    count_->clear();
    say(tr(to_qt(error.text()).toUtf8().constData()), true);
  }
}

void FindBar::search() {
  if (quiet_ || !editor_) return;
  say({});
  attempt([this] {
    editor_->control().FindText(from_qt(sought_->text()), options());
    show_count();
  });
}

void FindBar::step(bool forward) {
  if (!editor_ || sought_->text().isEmpty()) return open(false);
  core::HTMLed& control = editor_->control();
  attempt([&] {
    const bool searching = open_;
    if (!searching) control.FindText(from_qt(sought_->text()), options() & ~core::find_in_selection);
    forward ? control.FindNext() : control.FindPrevious();
    searching ? show_count() : control.FindEnd();
  });
}

void FindBar::replace_one() {
  if (!editor_) return;
  if (settle_) settle_();
  attempt([this] {
    core::HTMLed& control = editor_->control();
    const bool on_hit = control.FindPosition() > 0;
    const bool replaced = control.ReplaceText(from_qt(replacement_->text()));
    show_count();
    say(on_hit && !replaced ? tr("That hit may not be edited") : QString());
  });
}

void FindBar::replace_all() {
  if (!editor_) return;
  if (settle_) settle_();
  attempt([this] {
    core::HTMLed& control = editor_->control();
    const int locked = control.FindLocked();
    int replaced = 0;
    const bool done =
        run_interruptible([&] { replaced = control.ReplaceAllText(from_qt(replacement_->text())); });
    show_count();
    if (!done) return say({});
    say(locked > 0 ? tr("Replaced: %1. Left, because they may not be edited: %2").arg(replaced).arg(locked)
                   : tr("Replaced: %1").arg(replaced));
  });
}

// --- telling ---

void FindBar::show_count() {
  if (!editor_ || !open_ || sought_->text().isEmpty()) return count_->clear();
  core::HTMLed& control = editor_->control();
  const int count = control.FindCount(), position = control.FindPosition();
  if (count == 0)
    count_->setText(tr("No hits"));
  else if (position == 0)
    count_->setText(tr("Hits: %1").arg(count));
  else
    count_->setText(tr("%1 of %2").arg(position).arg(count));
}

void FindBar::say(const QString& text, bool wrong) {
  message_->setText(text);
  message_->setVisible(!text.isEmpty());
  QPalette colours;
  // Legible in the light and in the dark.
  if (wrong) {
    const bool dark = colours.color(QPalette::Base).lightness() < 128;
    colours.setColor(QPalette::WindowText, dark ? QColor(0xFF8A80) : QColor(0xB3261E));
  }
  message_->setPalette(colours);
}

}  // namespace tvx::htmled
