#include "demo.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QPixmap>
#include <algorithm>
#include <functional>
#include <iostream>

#include "browser/document_view.h"
#include "core/htmled.h"
#include "dom/tree.h"
#include "platform/message_loop.h"
#include "qt/htmled_widget.h"
#include "qt/web_view.h"
#include "window.h"

namespace tvx::htmled {
namespace {

bool wait_for(platform::MessageLoop& loop, const std::function<bool()>& condition,
              std::int64_t milliseconds = 30'000) {
  const std::int64_t end = loop.now() + milliseconds;
  while (!condition()) {
    if (loop.now() > end) return false;
    loop.pump(10);
  }
  return true;
}

bool settle(Window& window, platform::MessageLoop& loop) {
  for (int i = 0; i < 3; ++i) loop.pump(0);
  return wait_for(loop, [&] { return window.editor().document_view().settled(); });
}

void post_key(Window& window, int key, const QString& text, Qt::KeyboardModifiers held = Qt::NoModifier) {
  QWidget* target = window.editor().view().input_widget();
  if (!target) return;
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, key, held, text));
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, key, held, text));
}

/// The first text in the body that shows something.
dom::Text* first_text(browser::HTMLDocument& document) {
  for (dom::Node* node = document.body(); node; node = dom::next_in_order(*node, document.body())) {
    auto* text = dom::as<dom::Text>(node);
    if (text && !trimmed(text->data()).empty() && text->parent()->is(dom::Tag::P)) return text;
  }
  return nullptr;
}

void place_caret(browser::HTMLDocument& document) {
  editing::Selection& selection = document.editor().selection();
  if (dom::Text* text = first_text(document)) {
    selection.collapse({text, text->length()});
  } else if (dom::Element* body = document.body()) {
    selection.collapse({body, 0});
  }
}

std::int64_t type_one(Window& window, platform::MessageLoop& loop) {
  const std::int64_t begin = loop.now();
  post_key(window, Qt::Key_X, QStringLiteral("x"));
  settle(window, loop);
  return loop.now() - begin;
}

}  // namespace

int run_demo(Window& window, platform::MessageLoop& loop, const QString& folder) {
  if (!QDir().mkpath(folder) || !settle(window, loop)) return 1;
  const auto document = window.editor().control().DOM();
  if (!document) return 1;
  place_caret(*document);
  if (QWidget* input = window.editor().view().input_widget()) input->setFocus();
  // A sentence in bold, as a user types it: Control+B, the words, Control+B.
  post_key(window, Qt::Key_Space, QStringLiteral(" "));
  post_key(window, Qt::Key_B, {}, Qt::ControlModifier);
  for (const QChar c : QStringLiteral("This sentence was typed off screen.")) {
    post_key(window, c == u' ' ? int(Qt::Key_Space) : int(c.toUpper().unicode()), QString(c));
  }
  post_key(window, Qt::Key_B, {}, Qt::ControlModifier);
  if (!settle(window, loop)) return 1;
  // The engine paints a frame behind the layout.
  wait_for(
      loop, [] { return false; }, 300);
  const QDir out(folder);
  const bool painted = window.grab().save(out.filePath(QStringLiteral("screenshot.png")));
  return window.save_to(out.filePath(QStringLiteral("edited.html"))) && painted ? 0 : 1;
}

int run_measures(Window& window, platform::MessageLoop& loop, const QString& file,
                 std::int64_t program_start) {
  browser::DocumentView& view = window.editor().document_view();
  settle(window, loop);
  std::cout << "start to first paint: " << loop.now() - program_start << " ms\n";
  if (!window.open(file)) return 1;
  const std::int64_t begin = loop.now();
  std::int64_t filled = 0, stall = 0, last = loop.now();
  wait_for(loop, [&] {
    const std::int64_t now = loop.now();
    stall = std::max(stall, now - last);
    last = now;
    if (!filled && view.filled()) filled = now;
    return view.settled();
  });
  std::cout << "parsed, to the window filled: " << filled - begin << " ms\n"
            << "parsed, to the whole document: " << loop.now() - begin << " ms\n"
            << "longest stall of the loop meanwhile: " << stall << " ms\n";
  place_caret(*window.editor().control().DOM());
  if (QWidget* input = window.editor().view().input_widget()) input->setFocus();
  settle(window, loop);
  const std::int64_t keys_begin = loop.now();
  for (int i = 0; i < 100; ++i) type_one(window, loop);
  std::cout << "key to flushed layout, tight loop: " << double(loop.now() - keys_begin) / 100 << " ms\n";
  std::int64_t paced = 0;
  for (int i = 0; i < 20; ++i) {
    wait_for(
        loop, [] { return false; }, 100);
    paced += type_one(window, loop);
  }
  std::cout << "key to flushed layout, typing pace: " << double(paced) / 20 << " ms\n";
  return 0;
}

}  // namespace tvx::htmled
