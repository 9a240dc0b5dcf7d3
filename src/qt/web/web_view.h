#pragma once

#include <functional>
#include <memory>

#include "tvx/browser/view/view.h"
#include "tvx/platform/message_loop.h"

class QByteArray;
class QPoint;
class QString;
class QWidget;
class QWebEnginePage;

namespace tvx::qt {

struct PageSetup;

/// The view in Chromium, in a process of its own. Keys and input methods never reach it; mouse events do,
/// and the page tells what it made of them. Every message to the receiver comes from a task of the loop.
class WebView final : public browser::View {
 public:
  /// `parent` owns the widget; the loop outlives this.
  WebView(platform::MessageLoop& loop, QWidget* parent);
  ~WebView() override;

  QWidget* widget() const;
  /// Starts the engine. The first page does so, too: a view that never has one costs no process.
  void bring_engine();
  /// Brings the engine.
  QWebEnginePage* page() const;
  /// What a middle press pastes in place of the desktop's own selection. It outlives this.
  void set_mouse_selection(const platform::TransferSource& source);
  /// How often the engine is asked whether it lives. So many times more it may stay away (Watchdog).
  void set_heartbeat(int milliseconds);
  /// The widget that takes keys and mouse events; null while the engine has none, or isn't there.
  QWidget* input_widget() const;

  void set_receiver(std::function<void(browser::ViewMessage)> receive) override;
  void apply(const browser::Patch& patch) override;
  void select(const browser::ViewSelection& selection) override;
  void ask(const browser::ViewQuestion& question) override;
  void mark(const std::vector<browser::TextMarks>& marks) override;
  void set_policy(const browser::ResourcePolicy& policy) override;
  void set_mode(const browser::ViewMode& mode) override;
  void cancel_drag() override;
  void set_input_context(const browser::InputContext& context) override;
  void show_notice(std::u16string_view text) override;
  void scroll_to(int x, int y) override;
  /// Brings an element to the window's top. Nothing happens to one that the page doesn't know.
  void scroll_into_view(dom::NodeId element, bool at_top) override;
  /// To a printer or, with a dialog, into a file as well. What goes wrong is told to the user. It goes on if
  /// the view goes meanwhile: `done` must do without that.
  void print(bool with_dialog, std::function<void(bool)> done) override;
  /// Into a PDF file, and into a PDF; as before. An empty one: it couldn't be made.
  void print_into(const QString& path, std::function<void(bool)> done);
  void make_pdf(std::function<void(const QByteArray&)> done);
  /// How the page stands on paper.
  void set_page_setup(const PageSetup& setup);
  const PageSetup& page_setup() const;
  /// How much of it something else covers, from its upper and its lower edge on: what is selected is scrolled
  /// into the rest.
  void set_covered(int top, int bottom);
  /// How large the page is shown. What the page and the document tell each other is in the page's own pixels.
  void set_zoom(double factor);
  double zoom() const;
  /// Light on dark; pictures stay as they are, and so does what is printed.
  void set_dark(bool on);
  bool is_dark() const;
  /// What an empty page says; an empty text: nothing.
  void set_placeholder_text(const QString& text);
  const QString& placeholder_text() const;
  /// A position of the page in the widget's pixels.
  QPoint in_widget(QPoint in_page) const;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace tvx::qt
