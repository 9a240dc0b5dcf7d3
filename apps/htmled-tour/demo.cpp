#include "htmled-tour/demo.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QPixmap>
#include <functional>
#include <iostream>
#include <memory>

#include "htmled/window.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"
#include "tvx/htmled_widget.h"
#include "tvx/platform/message_loop.h"
#include "tvx/qt/web/web_view.h"

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

/// After the first text, or in the paragraph of a page that has none. Whether there is text before it.
bool place_caret(browser::HTMLDocument& document) {
  editing::Selection& selection = document.editor().selection();
  if (dom::Text* text = first_text(document)) {
    selection.collapse({text, text->length()});
    return true;
  }
  dom::Element* body = document.body();
  dom::Element* paragraph = body ? dom::first_child_element(*body) : nullptr;
  if (body) selection.collapse({paragraph ? paragraph : body, 0});
  return false;
}

}  // namespace

namespace {

constexpr std::u16string_view sentence = u"This sentence was typed with no display.", bold_word = u"typed";

/// One visit of the demonstration to the editor: what it does is what a user does, and after each act it
/// looks whether the document agrees.
class Demonstration {
 public:
  Demonstration(Window& window, platform::MessageLoop& loop)
      : window_(window), loop_(loop), control_(window.editor().control()), document_(control_.DOM()) {}

  bool run() {
    return expect(document_ != nullptr, "there is no document") && type_sentence() && make_bold() &&
           take_back();
  }

 private:
  static bool expect(bool holds, const char* otherwise) {
    if (!holds) std::cerr << "htmled-tour: " << otherwise << '\n';
    return holds;
  }

  bool settled() { return expect(settle(window_, loop_), "the view doesn't settle"); }

  bool type_sentence() {
    const bool follows = place_caret(*document_);
    QWidget* input = window_.editor().view().input_widget();
    if (!expect(input != nullptr, "the view takes no keys")) return false;
    input->setFocus();
    if (follows) post_key(window_, Qt::Key_Space, QStringLiteral(" "));
    for (const char16_t c : sentence)
      post_key(window_, c == u' ' ? int(Qt::Key_Space) : int(ascii_upper(c)), QString(QChar(c)));
    return settled() && expect(contains(text(), sentence), "the sentence didn't arrive") &&
           expect(window_.isWindowModified(), "the title doesn't show the change");
  }

  bool make_bold() {
    dom::Text* node = nullptr;
    Offset at = 0;
    for (dom::Node* n = document_->body(); n; n = dom::next_in_order(*n, document_->body())) {
      auto* candidate = dom::as<dom::Text>(n);
      if (candidate && (at = candidate->data().rfind(bold_word)) != std::u16string::npos &&
          contains(candidate->data(), sentence)) {
        node = candidate;
        break;
      }
    }
    if (!expect(node != nullptr, "the word isn't there")) return false;
    document_->select([&](editing::Selection& selection) {
      selection.set({node, at}, {node, at + bold_word.size()});
    });
    return press(u"Bold") && expect(is_bold(), "the word isn't bold");
  }

  bool take_back() {
    return press(u"Undo") && expect(!is_bold(), "undo left the word bold") && press(u"Redo") &&
           expect(is_bold(), "redo didn't bring the bold back");
  }

  bool press(std::u16string_view key) {
    return expect(control_.press(control_.Toolbar1(), key), "a button doesn't answer") && settled();
  }

  std::u16string text() const { return dom::text_content(*document_->body()); }

  /// Whether the word stands in an element of its own that makes it bold.
  bool is_bold() const {
    for (dom::Node* n = document_->body(); n; n = dom::next_in_order(*n, document_->body()))
      if ((n->is(dom::Tag::B) || n->is(dom::Tag::Strong)) && dom::text_content(*n) == bold_word) return true;
    return false;
  }

  Window& window_;
  platform::MessageLoop& loop_;
  core::HTMLed& control_;
  std::shared_ptr<browser::HTMLDocument> document_;
};

}  // namespace

int run_demo(Window& window, platform::MessageLoop& loop, const QString& folder) {
  if (!QDir().mkpath(folder)) {
    std::cerr << "htmled-tour: can't make the folder " << folder.toStdString() << '\n';
    return 1;
  }
  if (!settle(window, loop) || !Demonstration(window, loop).run()) return 1;
  // The engine paints a frame after the layout.
  wait_for(
      loop, [] { return false; }, 300);
  const QDir out(folder);
  const QString page = out.filePath(QStringLiteral("edited.html")),
                picture = out.filePath(QStringLiteral("screenshot.png"));
  if (!window.grab().save(picture) || !window.save_copy(page)) {
    std::cerr << "htmled-tour: can't write into " << folder.toStdString() << '\n';
    return 1;
  }
  std::cout << page.toStdString() << '\n' << picture.toStdString() << '\n';
  return 0;
}

}  // namespace tvx::htmled
