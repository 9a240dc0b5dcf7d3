#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QStackedWidget>
#include <QTimer>
#include <QWebEngineView>
#include <deque>

#include "tvx/page_setup.h"
#include "tvx/qt/support/clipboard.h"
#include "tvx/qt/web/watchdog.h"
#include "tvx/qt/web/web_page.h"
#include "tvx/qt/web/web_view.h"

class QInputMethodQueryEvent;
class QLabel;
class QPushButton;
class QWebChannel;

namespace tvx::qt {

struct PrintOrder;

/// The one thing that both sides of the web channel know: a slot up and a call down.
class ViewBridge final : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;
 public slots:
  void up(const QString& text) { emit came_up(text); }
 signals:
  void down(const QString& text);
  void came_up(const QString& text);
};

/// The working parts of a WebView: the widget, its page, and the inbox.
class WebView::Private final : public QObject {
  Q_OBJECT
 public:
  Private(platform::MessageLoop& loop, QWidget* parent);
  ~Private() override;

  void bring_engine();
  /// Sends a command to the present page with what else this turn of the loop brings, or keeps it until that
  /// stands.
  void send(const QString& command);
  void begin_page(const browser::Patch& patch);
  /// Appends to the inbox, which a task of the loop empties.
  void put(browser::ViewMessage message);
  void put(decltype(browser::ViewMessage::what) what) { put(browser::ViewMessage{seen_, std::move(what)}); }

  void set_heartbeat(int milliseconds) { heartbeat_.setInterval(milliseconds); }

  bool eventFilter(QObject* watched, QEvent* event) override;

  platform::MessageLoop& loop_;
  QPointer<QStackedWidget> stack_;
  QPointer<QWebEngineView> view_;
  QLabel* notice_ = nullptr;
  QPushButton* again_ = nullptr;
  WebPage* page_ = nullptr;
  ResourceGuard* guard_ = nullptr;
  QWebChannel* channel_ = nullptr;
  ViewBridge* bridge_ = nullptr;
  std::function<void(browser::ViewMessage)> receive_;
  int page_number_ = 0;
  double zoom_ = 1;
  PageSetup setup_;
  void print(const PrintOrder& order, std::function<void(bool)> done);
  bool dark_ = false;
  void show_dark();
  QString placeholder_;
  void send_placeholder();
  browser::InputContext context_;
  Clipboard desktop_selection_{QClipboard::Selection};
  const platform::TransferSource* mouse_selection_ = &desktop_selection_;

 private:
  void send_waiting();
  void load_page();
  void start_script();
  void make_notice();
  void came_up(const QString& text);
  void process_ended();
  void end_process();
  void drain();
  void watch_input_widget();
  bool filter_input(QEvent* event);
  bool filter_input_method(QEvent* event);
  bool filter_drop(QEvent* event);
  void answer_query(QInputMethodQueryEvent& query) const;
  void put_ticket(const QMouseEvent& mouse);
  void put_middle_press(const QMouseEvent& mouse);
  void focus_changed(bool focused);
  void send_focus();
  void beat();

  QStringList waiting_;  // for the turn to end, or for the page to stand
  bool send_posted_ = false;
  bool page_stands_ = false;
  bool page_wanted_ = false;
  QElapsedTimer wanted_since_;
  dom::CompatibilityMode mode_{};
  QString base_;
  std::deque<browser::ViewMessage> inbox_;
  bool drain_posted_ = false;
  int in_callback_ = 0;  // a callback of the engine is running: nothing else may
  browser::PatchNumber seen_{};
  browser::ViewFacts facts_;
  bool focused_ = false;
  QPointer<QWidget> input_widget_;
  QTimer heartbeat_;
  Watchdog watchdog_;
  bool ended_by_us_ = false;     // since it said nothing
  bool ended_for_page_ = false;  // another content is wanted than the one that it is lost in
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::qt
