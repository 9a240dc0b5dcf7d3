#pragma once

#include <gtest/gtest.h>

#include <QEvent>
#include <QPoint>
#include <QRect>
#include <QString>
#include <functional>
#include <memory>
#include <string>

#include "htmled/window.h"
#include "tvx/browser/html_document.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {

/// A person at htmled's window, off screen. Keys, the mouse, the input method and the toolbars arrive as the
/// platform's own events; what comes out is the document's HTML.
///
/// Texts are UTF-8. Places are named by the words that stand there, so a scene reads like what it does. Keys
/// are posted without waiting, as fast fingers give them; whoever looks waits until the view has caught up.
/// All scenes have one window, each begins a document of its own.
class Scene : public testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();

  /// The document that the scene begins with, the caret where a click below its last line puts it.
  void begin(const std::string& html);
  /// The document must be this; then everything is undone, down to what the scene began with, and redone.
  void ends_with(const std::string& html);
  /// The document must be this now.
  void shows(const std::string& html);

  // --- the keyboard ---
  void type(const std::string& text);
  /// Keys by their names: "Ctrl+B", "Shift+Left", "Return".
  void press(const char* keys, int times = 1);
  /// Text that an input method composes, and what it leaves in the end.
  void compose(const std::string& text);
  void commit(const std::string& text);

  // --- the mouse ---
  void click_before(const std::string& words) { click(before(words)); }
  void click_after(const std::string& words) { click(after(words)); }
  void click_on(const std::string& selector) { click(box_of(selector).center()); }
  void double_click(const std::string& words) { click_often(words, 2); }
  void triple_click(const std::string& words) { click_often(words, 3); }
  void drag_over(const std::string& first_words, const std::string& last_words);
  /// A press on the button with that key, where it stands in the window.
  void click_button(std::u16string_view key);
  /// Ctrl+K, and in the dialog that comes the address, by its keys, and Return.
  void make_link(const std::string& address);
  /// The table's button, and in the dialog that comes both numbers, by its keys, and Return.
  void make_table(const std::string& rows, const std::string& columns);

  // --- what the host does for the user, for lack of a button ---
  void command(std::u16string_view name, std::u16string_view value = {});
  void insert_html(const QString& html);

  std::string html();
  browser::HTMLDocument& document();
  bool settle();

 private:
  QPoint before(const std::string& words) { return place(words, false); }
  QPoint after(const std::string& words) { return place(words, true); }
  QPoint place(const std::string& words, bool behind);
  QRect box_of(const std::string& selector);
  void click(QPoint point);
  void click_often(const std::string& words, int times);
  void post_click(QPoint point, QEvent::Type pressed, quint64 at);
  void post_mouse(QEvent::Type type, QPoint point, Qt::MouseButton button, Qt::MouseButtons held, quint64 at);
  void type_into(QWidget* widget, const std::string& text);
  void press_in(QWidget* widget, Qt::Key key);
  /// Opens a dialog, which has a loop of its own, and gives it to who answers it.
  void in_dialog(const std::function<void()>& open, const std::function<void(QWidget&)>& answer);
  quint64 now() const;
  void post_composition(const QString& composed, const QString& committed);
  QWidget* input();
  std::string in_page(const std::string& script);
  bool wait_for(const std::function<bool()>& condition);
  void agree();
  void come_to_front();
  void take_picture();

  struct Stage;
  static std::unique_ptr<Stage> stage_;
  std::string first_;
};

}  // namespace tvx::htmled
