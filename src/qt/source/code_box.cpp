#include "tvx/qt/source/code_box.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "tvx/base/line_ends.h"
#include "tvx/qt/source/code_assistance.h"
#include "tvx/qt/source/code_layout.h"
#include "tvx/qt/source/code_text.h"
#include "tvx/qt/support/keys.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/twips.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

using platform::SendMessage;

QFont code_font() {
  QFont font(QStringLiteral("Courier New"));
  font.setPointSizeF(9.75);
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

std::int16_t shift_of(Qt::KeyboardModifiers modifiers) {
  return static_cast<std::int16_t>((modifiers & Qt::ShiftModifier ? 1 : 0) |
                                   (modifiers & Qt::ControlModifier ? 2 : 0) |
                                   (modifiers & Qt::AltModifier ? 4 : 0));
}

std::int16_t button_of(Qt::MouseButtons buttons) {
  return static_cast<std::int16_t>((buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) |
                                   (buttons & Qt::MiddleButton ? 4 : 0));
}

}  // namespace

class CodeBox::Edit final : public QPlainTextEdit {
 public:
  Edit(CodeBox& box, QWidget* parent) : QPlainTextEdit(parent), box_(box) {
    setLineWrapMode(NoWrap);
    setWordWrapMode(QTextOption::NoWrap);
    setFrameShape(NoFrame);
    setFont(code_font());
    set_tabs();
    setAccessibleName(translated(u"Source"));
    setLayoutDirection(Qt::LeftToRight);  // a source reads from left to right in every interface
    setCursorWidth(2);
    put({});
  }

  std::size_t first_visible_line() const {
    const QTextBlock block = firstVisibleBlock();
    return block.isValid() ? text.line_of(block.position()) : 0;
  }
  int top_of(const QTextBlock& block) const {
    return qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
  }
  // A document filled before anybody listens: lines by the hundred thousand are put in, not announced one by
  // one.
  void put(std::u16string with) {
    setExtraSelections({});  // they stand in the document that goes
    auto* fresh = new QTextDocument(this);
    fresh->setUndoRedoEnabled(false);
    fresh->setDefaultFont(font());
    fresh->setDefaultTextOption(document()->defaultTextOption());
    fresh->setPlainText(text.put(std::move(with)));
    fresh->setDocumentLayout(new CodeLayout(fresh));
    const QPointer<QTextDocument> old = document();  // the first one goes with its successor
    setDocument(fresh);
    delete old;
    text.follow(*fresh);
    assistance.document_changed();
  }
  void set_tabs() { setTabStopDistance(tab_width * QFontMetricsF(font()).horizontalAdvance(u' ')); }
  // What stands in the lines in sight goes on standing there. Much is put in faster with a fresh document.
  void follow(std::size_t start, std::size_t length, const std::u16string& with) {
    constexpr std::size_t much = 100'000;
    const auto along = [&](std::size_t place) {
      if (place <= start) return place;
      return place >= start + length ? place - length + with.size()
                                     : start + std::min(place - start, with.size());
    };
    const std::size_t anchor = along(text.to_text(textCursor().anchor())),
                      caret = along(text.to_text(textCursor().position()));
    const QTextBlock top = firstVisibleBlock();
    const int into_top = verticalScrollBar()->value() - top.firstLineNumber(),
              sideways = horizontalScrollBar()->value();
    const std::size_t seen = along(text.to_text(top.position()));
    if (length + with.size() > much)
      put(std::u16string(text.text()).replace(start, length, with));
    else
      replace_beside_caret(start, length, with);
    text.forget_edits();
    QTextCursor cursor = textCursor();
    cursor.setPosition(text.to_shown(anchor));
    cursor.setPosition(text.to_shown(caret), QTextCursor::KeepAnchor);
    if (cursor != textCursor() || cursor.anchor() != textCursor().anchor()) setTextCursor(cursor);
    verticalScrollBar()->setValue(document()->findBlock(text.to_shown(seen)).firstLineNumber() + into_top);
    horizontalScrollBar()->setValue(sideways);
  }
  // Breaks within a line are no characters: no key takes one away, or has the caret stand on both sides of
  // it.
  void native_key(QKeyEvent* event) {
    QTextCursor cursor = textCursor();
    int at = cursor.position();
    if (!cursor.hasSelection()) {
      while (event->key() == Qt::Key_Backspace && text.is_break(at - 1)) --at;
      while (event->key() == Qt::Key_Delete && text.is_break(at)) ++at;
      if (at != cursor.position()) cursor.setPosition(at), setTextCursor(cursor);
    }
    const std::size_t before = text.to_text(at);
    const bool steps = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    for (int last = -1; last != at && text.to_text(at) == before;) {
      last = at;
      QPlainTextEdit::keyPressEvent(event);
      at = textCursor().position();
      if (!steps) break;
    }
  }
  // The box itself would hold on to the focus, as Tab types in it.
  void go_back() { QWidget::focusNextPrevChild(false); }

  int tab_width = 4;  // in letters
  std::function<void()> on_lines_moved;
  CodeText text{*this};
  CodeAssistance assistance{*this, text};

 protected:
  // Keys that the box knows are not for the window's shortcuts.
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ShortcutOverride) {
      auto* key = static_cast<QKeyEvent*>(event);
      if (key->modifiers() == Qt::ControlModifier && key->key() == Qt::Key_Y) key->accept();
    }
    return QPlainTextEdit::event(event);
  }
  void paintEvent(QPaintEvent* event) override {
    QPlainTextEdit::paintEvent(event);
    if (auto* layout = dynamic_cast<CodeLayout*>(document()->documentLayout())) layout->settle();
  }
  void changeEvent(QEvent* event) override {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) setAccessibleName(translated(u"Source"));
    if (event->type() == QEvent::PaletteChange) assistance.colours_changed();
  }
  bool viewportEvent(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QPlainTextEdit::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString tip = assistance.tip_at(cursorForPosition(help->pos()).position());
    tip.isEmpty() ? QToolTip::hideText() : QToolTip::showText(help->globalPos(), tip, this);
    return true;
  }
  void keyPressEvent(QKeyEvent* event) override { box_.key_pressed(*event); }
  void keyReleaseEvent(QKeyEvent* event) override {
    QPlainTextEdit::keyReleaseEvent(event);
    box_.key_released(*event);
  }
  void mousePressEvent(QMouseEvent* event) override {
    QPlainTextEdit::mousePressEvent(event);
    if (box_.handler()) box_.handler()->MouseDown(mouse(*event, event->button()));
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    QPlainTextEdit::mouseMoveEvent(event);
    if (box_.handler()) box_.handler()->MouseMove(mouse(*event, event->buttons()));
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (!box_.handler()) return;
    box_.handler()->MouseUp(mouse(*event, event->button()));
    if (event->button() == Qt::LeftButton) box_.handler()->Click();
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    QPlainTextEdit::mouseDoubleClickEvent(event);
    if (box_.handler()) box_.handler()->DblClick();
  }
  void focusInEvent(QFocusEvent* event) override {
    QPlainTextEdit::focusInEvent(event);
    if (box_.handler()) box_.handler()->GotFocus();
  }
  void scrollContentsBy(int dx, int dy) override {
    QPlainTextEdit::scrollContentsBy(dx, dy);
    if (dy == 0) return;
    SendMessage(box_.TextBox::handle(), platform::WM_VSCROLL);
    if (on_lines_moved) on_lines_moved();
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    lead(*menu, "edit-cut", platform::WM_CUT);
    lead(*menu, "edit-copy", platform::WM_COPY);
    lead(*menu, "edit-paste", platform::WM_PASTE);
    platform::TextBoxHandler* handler = box_.handler();
    lead(*menu, "edit-undo", platform::EM_UNDO, text.can_undo() || (handler && handler->CanTakeBack(false)));
    lead(*menu, "edit-redo", platform::EM_REDO, text.can_redo() || (handler && handler->CanTakeBack(true)));
    menu->exec(event->globalPos());
  }
  // What is dragged, dropped or pasted by the middle button is plain text, too.
  QMimeData* createMimeDataFromSelection() const override {
    auto* copy = new QMimeData;
    copy->setText(to_qt(selected()));
    return copy;
  }
  bool canInsertFromMimeData(const QMimeData* source) const override { return source->hasText(); }
  void insertFromMimeData(const QMimeData* source) override { text.insert(textCursor(), source->text()); }
  // What is moved within the box is one edit.
  void dropEvent(QDropEvent* event) override {
    const bool moves = event->source() && (event->source() == this || event->source() == viewport()) &&
                       event->dropAction() == Qt::MoveAction && textCursor().hasSelection() && !isReadOnly();
    if (!moves) return QPlainTextEdit::dropEvent(event);
    const std::size_t to = text.to_text(cursorForPosition(event->position().toPoint()).position());
    const std::size_t from = text.to_text(textCursor().selectionStart()),
                      end = text.to_text(textCursor().selectionEnd());
    // The source of the drag would take out what it thinks is still there.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (to >= from && to <= end) return;
    const std::u16string moved = selected();
    if (to < from) {
      text.replace(to, end - to, moved + text.text().substr(to, from - to));
    } else {
      text.replace(from, to - from, text.text().substr(end, to - end) + moved);
    }
  }

 private:
  void replace_beside_caret(std::size_t start, std::size_t length, const std::u16string& with) {
    QTextCursor cursor(document());
    cursor.setPosition(text.to_shown(start));
    if (length > 0) cursor.setPosition(text.to_shown(start + length, false), QTextCursor::KeepAnchor);
    cursor.insertText(to_qt(with));
  }
  // The clipboard's items go the way of its keys.
  void lead(QMenu& menu, const char* name, platform::Message message, std::optional<bool> enabled = {}) {
    auto* action = menu.findChild<QAction*>(QString::fromLatin1(name));
    if (!action) return;
    if (enabled) action->setEnabled(*enabled && !isReadOnly());
    action->disconnect(SIGNAL(triggered(bool)));
    connect(action, &QAction::triggered, this,
            [this, message] { SendMessage(box_.TextBox::handle(), message); });
  }
  static platform::BoxMouse mouse(const QMouseEvent& event, Qt::MouseButtons buttons) {
    return {button_of(buttons), shift_of(event.modifiers()), to_twips(qRound(event.position().x())),
            to_twips(qRound(event.position().y()))};
  }

  std::u16string selected() const {
    const std::size_t from = text.to_text(textCursor().selectionStart());
    return text.text().substr(from, text.to_text(textCursor().selectionEnd()) - from);
  }

  friend class CodeBox;
  CodeBox& box_;
};

CodeBox::CodeBox(QWidget* parent) : edit_(new Edit(*this, parent)) {
  QObject::connect(edit_, &QPlainTextEdit::textChanged, edit_, [this] {
    if (!quiet_ && !edit_->text.is_breaking() && handler()) handler()->Change();
  });
  const auto moved = [this] {
    if (!quiet_ && !edit_->text.is_breaking() && handler()) handler()->SelChange();
  };
  QObject::connect(edit_, &QPlainTextEdit::selectionChanged, edit_, moved);
  QObject::connect(edit_, &QPlainTextEdit::cursorPositionChanged, edit_, moved);
}

CodeBox::~CodeBox() {
  set_handler(nullptr);
  destroy();
  delete edit_;
}

QPlainTextEdit* CodeBox::widget() const { return edit_; }
CodeAssistance& CodeBox::assistance() { return edit_->assistance; }

void CodeBox::set_wrapped(bool wrapped) {
  edit_->setLineWrapMode(wrapped ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
  edit_->setWordWrapMode(wrapped ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
}

void CodeBox::set_font(const QFont& font) {
  edit_->setFont(font);
  edit_->document()->setDefaultFont(font);
  edit_->set_tabs();
}

void CodeBox::set_tab_width(int letters) {
  edit_->tab_width = letters;
  edit_->set_tabs();
}
int CodeBox::tab_width() const { return edit_->tab_width; }

void CodeBox::go_to_line(std::size_t line) {
  QTextCursor cursor(edit_->text.block_of_line(std::min(line, line_count() - 1)));
  edit_->setTextCursor(cursor);
  edit_->centerCursor();
}

int CodeBox::top_of_line(std::size_t line) const { return edit_->top_of(edit_->text.block_of_line(line)); }

void CodeBox::set_on_lines_moved(std::function<void()> moved) { edit_->on_lines_moved = std::move(moved); }

// --- text and selection ---

std::u16string CodeBox::Text() const { return with_crlf(edit_->text.text()); }

void CodeBox::set_Text(std::u16string_view text) {
  const QScopedValueRollback quiet(quiet_, true);
  edit_->put(with_lf(text));
}

std::size_t CodeBox::length() const { return edit_->text.text().size(); }

std::size_t CodeBox::SelStart() const { return edit_->text.to_text(edit_->textCursor().selectionStart()); }

std::size_t CodeBox::SelLength() const {
  return edit_->text.to_text(edit_->textCursor().selectionEnd()) - SelStart();
}

void CodeBox::select(std::size_t start, std::size_t count) {
  const std::size_t all = length();
  start = std::min(start, all);
  const std::size_t end = start + std::min(count, all - start);
  if (start == 0 && end == all) return edit_->selectAll();  // which leaves the view where it is
  QTextCursor cursor = edit_->textCursor();
  cursor.setPosition(edit_->text.to_shown(start));
  if (end > start) cursor.setPosition(edit_->text.to_shown(end, false), QTextCursor::KeepAnchor);
  edit_->setTextCursor(cursor);
}

std::u16string CodeBox::SelText() const { return with_crlf(edit_->selected()); }

void CodeBox::set_SelText(std::u16string_view text) {
  QTextCursor cursor = edit_->textCursor();
  cursor.insertText(to_qt(with_lf(text)));
  edit_->setTextCursor(cursor);
}

// An empty stretch ends the history, and has nothing laid out anew.
void CodeBox::follow(std::size_t start, std::size_t length, std::u16string_view text) {
  if (length == 0 && text.empty()) return edit_->text.forget_edits();
  const QScopedValueRollback quiet(quiet_, true);
  edit_->follow(start, length, with_lf(text));
}

bool CodeBox::can_undo() const { return edit_->text.can_undo(); }
bool CodeBox::can_redo() const { return edit_->text.can_redo(); }
void CodeBox::Undo() { edit_->text.undo(); }
void CodeBox::Redo() { edit_->text.redo(); }

// From the first one's start to the last one's end it is one edit.
void CodeBox::replace(const std::vector<Replacement>& replacements) {
  if (replacements.empty()) return;
  const std::u16string_view all = edit_->text.text();
  const std::size_t start = replacements.front().start;
  std::size_t at = start;
  std::u16string text;
  for (const Replacement& each : replacements) {
    text += all.substr(at, each.start - at);
    text += with_lf(each.text);
    at = each.start + each.length;
  }
  edit_->text.replace(start, at - start, text);
}

// Black on a bright ground is legible in the light and in the dark.
void CodeBox::show_hits(const std::vector<Stretch>& hits, std::size_t present) {
  QList<QTextEdit::ExtraSelection> marks;
  marks.reserve(static_cast<qsizetype>(hits.size()));
  for (std::size_t i = 0; i < hits.size(); ++i) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(edit_->document());
    mark.cursor.setPosition(edit_->text.to_shown(hits[i].start));
    mark.cursor.setPosition(edit_->text.to_shown(hits[i].start + hits[i].length, false),
                            QTextCursor::KeepAnchor);
    mark.format.setBackground(i == present ? QColor(0xFF9632) : QColor(0xFFE66B));
    mark.format.setForeground(QColor(Qt::black));
    marks.append(mark);
  }
  edit_->assistance.show_hits(marks);
}

// --- lines ---

std::size_t CodeBox::line_count() const { return edit_->text.line_count(); }

std::size_t CodeBox::line_of(std::size_t place) const {
  return edit_->text.line_of(edit_->text.to_shown(std::min(place, length())));
}

std::size_t CodeBox::first_visible_line() const { return edit_->first_visible_line(); }

// --- state ---

bool CodeBox::Enabled() const { return edit_->isEnabledTo(edit_->parentWidget()); }
void CodeBox::set_Enabled(bool enabled) { edit_->setEnabled(enabled); }
bool CodeBox::Locked() const { return edit_->isReadOnly(); }
// The caret still goes through a locked text: what can be read can be selected without the mouse, too.
void CodeBox::set_Locked(bool locked) {
  edit_->setReadOnly(locked);
  if (locked) edit_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}
bool CodeBox::has_focus() const { return edit_->hasFocus(); }
void CodeBox::SetFocus() {
  // Qt gives the keyboard also to what stands in something hidden.
  if (edit_->isVisibleTo(edit_->window())) edit_->setFocus(Qt::OtherFocusReason);
}
void CodeBox::Refresh() { edit_->viewport()->update(); }

// --- keys ---

void CodeBox::key_pressed(QKeyEvent& event) {
  event.accept();
  if (edit_->assistance.key(event)) return;
  {
    const QScopedValueRollback key(key_, &event);
    send_key_down(static_cast<std::int16_t>(key_input(event).key_code), shift_of(event.modifiers()));
  }
  edit_->assistance.key_done(event);
}

void CodeBox::key_released(QKeyEvent& event) {
  auto code = static_cast<std::int16_t>(key_input(event).key_code);
  if (handler()) handler()->KeyUp(code, shift_of(event.modifiers()));
}

void CodeBox::on_key(std::int16_t, std::int16_t) {
  if (!key_ || edit_key(*key_)) return;
  if (key_->key() == Qt::Key_Backtab) return edit_->go_back();
  const QString text = key_->text();
  const bool types = !text.isEmpty() && text.at(0) != QChar(0x7F);  // which the Delete key is said to type
  if (types && !(key_->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) && handler()) {
    auto character = static_cast<std::int16_t>(text.at(0).unicode());
    handler()->KeyPress(character);
    if (character == 0) return;
  }
  edit_->native_key(key_);
}

bool CodeBox::edit_key(const QKeyEvent& event) {
  const auto tell = [this](platform::Message message) { SendMessage(handle(), message); };
  if (event.matches(QKeySequence::Copy)) return tell(platform::WM_COPY), true;
  if (event.matches(QKeySequence::Cut)) return tell(platform::WM_CUT), true;
  if (event.matches(QKeySequence::Paste)) return tell(platform::WM_PASTE), true;
  const bool again = event.matches(QKeySequence::Redo) ||
                     (event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier);
  if (!again && !event.matches(QKeySequence::Undo)) return false;
  tell(again ? platform::EM_REDO : platform::EM_UNDO);
  return true;
}

}  // namespace tvx::qt
