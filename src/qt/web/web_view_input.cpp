#include <QChildEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QStyleHints>
#include <algorithm>
#include <utility>

#include "tvx/qt/support/clipboard.h"
#include "tvx/qt/support/keys.h"
#include "tvx/qt/web/view_codec.h"
#include "tvx/qt/web/web_view_private.h"

// What the engine's own widget would take goes through a filter before it: keys and text never reach the
// page.
namespace tvx::qt {
namespace {

browser::MouseButton button_of(Qt::MouseButton button) {
  if (button == Qt::RightButton) return browser::MouseButton::Right;
  return button == Qt::MiddleButton ? browser::MouseButton::Middle : browser::MouseButton::Left;
}

bool is_readable(const QMimeData& data) {
  return data.hasText() || data.hasHtml() || data.hasUrls() || data.hasImage();
}

}  // namespace

void WebView::Private::watch_input_widget() {
  QWidget* now = view_->focusProxy();
  if (now == input_widget_) return;
  if (input_widget_) input_widget_->removeEventFilter(this);
  input_widget_ = now;
  if (!now) return;
  now->installEventFilter(this);
  now->setAttribute(Qt::WA_InputMethodEnabled);
  // By Tab it is reached as a part of the editor, which says when.
  now->setFocusPolicy(Qt::ClickFocus);
  // What was given the focus before it was there has it now. In a window that is active already the engine
  // has handed it on before anything was heard of it.
  if (now->hasFocus())
    focus_changed(true);
  else if (view_->window()->focusWidget() == view_)
    now->setFocus();
}

bool WebView::Private::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_) {
    const auto type = event->type();
    // The engine makes another widget for each process: it comes as a child.
    if (type == QEvent::ChildAdded || type == QEvent::ChildPolished || type == QEvent::ChildRemoved ||
        type == QEvent::Show || type == QEvent::FocusIn) {
      QTimer::singleShot(0, this, [this] {
        if (view_) watch_input_widget();
      });
    }
    if (type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::DragLeave ||
        type == QEvent::Drop) {
      return filter_drop(event);
    }
    return filter_input(event);
  }
  return watched == input_widget_ && filter_input(event);
}

bool WebView::Private::filter_input(QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride: {
      auto* key = static_cast<QKeyEvent*>(event);
      if (belongs_to_the_editor(*key)) key->accept();
      return true;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      put(browser::ViewKey{key_input(*static_cast<QKeyEvent*>(event)), event->type() == QEvent::KeyPress});
      event->accept();
      return true;
    case QEvent::InputMethod:
    case QEvent::InputMethodQuery: return filter_input_method(event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
      put_ticket(*static_cast<QMouseEvent*>(event));
      put_middle_press(*static_cast<QMouseEvent*>(event));
      return false;
    case QEvent::FocusIn: focus_changed(true); return false;
    case QEvent::FocusOut: focus_changed(false); return false;
    default: return false;
  }
}

bool WebView::Private::filter_input_method(QEvent* event) {
  if (event->type() == QEvent::InputMethodQuery) {
    answer_query(*static_cast<QInputMethodQueryEvent*>(event));
    event->accept();
    return true;
  }
  const auto* input = static_cast<QInputMethodEvent*>(event);
  browser::ViewText text;
  text.text = input->commitString().toStdU16String();
  text.composing = input->preeditString().toStdU16String();
  text.cursor = static_cast<std::uint32_t>(text.composing.size());
  for (const QInputMethodEvent::Attribute& attribute : input->attributes()) {
    if (attribute.type == QInputMethodEvent::Cursor)
      text.cursor = static_cast<std::uint32_t>(attribute.start);
  }
  text.replaced_from = input->replacementStart();
  text.replaced_length = static_cast<std::uint32_t>(std::max<qsizetype>(input->replacementLength(), 0));
  put(text);
  event->accept();
  return true;
}

/// Input methods are answered from what the document told, never from the page.
void WebView::Private::answer_query(QInputMethodQueryEvent& query) const {
  const auto asked = query.queries();
  const auto set = [&](Qt::InputMethodQuery what, const QVariant& value) {
    if (asked & what) query.setValue(what, value);
  };
  set(Qt::ImEnabled, context_.enabled);
  const auto in_widget = [this](int length) { return qRound(length * zoom_); };
  set(Qt::ImCursorRectangle,
      QRect(in_widget(facts_.caret_left), in_widget(facts_.caret_top), 1, in_widget(facts_.caret_height)));
  set(Qt::ImSurroundingText, QString::fromStdU16String(context_.text));
  set(Qt::ImCursorPosition, context_.cursor);
  set(Qt::ImAnchorPosition, context_.anchor);
  const auto first = std::min(context_.cursor, context_.anchor),
             last = std::max(context_.cursor, context_.anchor);
  set(Qt::ImCurrentSelection, QString::fromStdU16String(context_.text.substr(first, last - first)));
  set(Qt::ImHints, static_cast<int>(Qt::ImhMultiLine));
}

/// What comes from other programs: the page shows where it would land, and never gets it.
bool WebView::Private::filter_drop(QEvent* event) {
  if (event->type() == QEvent::DragLeave) {
    send(CommandWriter(page_number_, "leave").finish());
    return true;
  }
  auto* drop = static_cast<QDropEvent*>(event);
  if (!page_stands_ || !context_.enabled || !is_readable(*drop->mimeData())) {
    drop->ignore();
    return true;
  }
  const QPoint at = (drop->position() / zoom_).toPoint();
  drop->setDropAction(Qt::CopyAction);
  drop->accept();
  if (event->type() == QEvent::Drop) {
    send(CommandWriter(page_number_, "leave").finish());
    put(browser::ViewDrop{at.x(), at.y(), platform::fetch(MimeSource(drop->mimeData())), {}});
  } else {
    send(CommandWriter(page_number_, "hover").add(std::int64_t(at.x())).add(std::int64_t(at.y())).finish());
  }
  return true;
}

void WebView::Private::put_ticket(const QMouseEvent& mouse) {
  // While no page stands there is nobody to tell of it.
  if (!page_stands_) return;
  browser::ViewTicket ticket;
  ticket.type = mouse.type() == QEvent::MouseButtonRelease ? browser::ViewTicket::Type::Release
                                                           : browser::ViewTicket::Type::Press;
  ticket.button = button_of(mouse.button());
  ticket.x = qRound(mouse.position().x() / zoom_);
  ticket.y = qRound(mouse.position().y() / zoom_);
  put(ticket);
}

/// What is selected with the mouse, here or in another program, goes where the middle button is pressed. It
/// is fetched now, as the press may take that selection away.
void WebView::Private::put_middle_press(const QMouseEvent& mouse) {
  if (mouse.type() == QEvent::MouseButtonRelease || mouse.button() != Qt::MiddleButton) return;
  if (!page_stands_ || !context_.enabled) return;
  platform::TransferData data = platform::fetch(*mouse_selection_);
  if (data.empty()) return;
  const QPoint at = (mouse.position() / zoom_).toPoint();
  put(browser::ViewDrop{at.x(), at.y(), std::move(data), browser::ViewDrop::Way::MiddlePress});
}

/// With the time that the desktop's carets take to go and come; none where they stay.
void WebView::Private::send_focus() {
  const std::int64_t flash = std::max(QGuiApplication::styleHints()->cursorFlashTime(), 0);
  send(CommandWriter(page_number_, "focus").add(focused_).add(flash).finish());
}

void WebView::Private::focus_changed(bool focused) {
  if (focused_ == focused) return;
  focused_ = focused;
  if (page_stands_) send_focus();
  put(browser::ViewFocus{focused});
}

}  // namespace tvx::qt
