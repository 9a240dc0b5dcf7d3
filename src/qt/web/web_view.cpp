#include "tvx/qt/web/web_view.h"

#include <signal.h>
#include <unistd.h>

#include <QFile>
#include <QGuiApplication>
#include <QInputMethod>
#include <QLabel>
#include <QPushButton>
#include <QStyleHints>
#include <QVBoxLayout>
#include <QWebChannel>
#include <QWebEngineScript>
#include <cassert>
#include <iostream>

#include "tvx/qt/print/sheet_jobs.h"
#include "tvx/qt/support/words.h"
#include "tvx/qt/web/view_codec.h"
#include "tvx/qt/web/web_view_private.h"

// Outside the namespace, as the macro wants it.
static void load_view_resources() { Q_INIT_RESOURCE(view); }

namespace tvx::qt {
namespace {

// The engine is asked now and then whether it lives; one that says nothing for too long is ended (Watchdog),
// and the document sent to a new one.
constexpr int heartbeat_milliseconds = 4000;

QString resource(const QByteArray& path) {
  QFile file(QString::fromLatin1(path));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll());
}

QString quoted(const QString& text) {
  CommandWriter writer(0, "");
  writer.add(std::u16string_view(text.toStdU16String()));
  return writer.finish().section(QStringLiteral("[0,\"\","), 1).chopped(1);
}

}  // namespace

// --- the parts ---

WebView::Private::Private(platform::MessageLoop& loop, QWidget* parent) : loop_(loop) {
  load_view_resources();
  stack_ = new QStackedWidget(parent);
  guard_ = new ResourceGuard(this);
  connect(guard_, &ResourceGuard::withheld, this, [this] { put(browser::ViewWithheld{}); });
  connect(QGuiApplication::styleHints(), &QStyleHints::cursorFlashTimeChanged, this, [this] {
    if (page_stands_) send_focus();
  });
  set_heartbeat(heartbeat_milliseconds);
  connect(&heartbeat_, &QTimer::timeout, this, [this] { beat(); });
  heartbeat_.start();
}

void WebView::Private::bring_engine() {
  if (page_) return;
  view_ = new QWebEngineView(stack_);
  view_->setObjectName(QStringLiteral("page"));
  page_ = new WebPage(view_profile(), view_);
  guard_->setParent(page_);  // which may outlive this
  page_->setUrlRequestInterceptor(guard_);
  bridge_ = new ViewBridge(this);
  channel_ = new QWebChannel(this);
  channel_->registerObject(QStringLiteral("bridge"), bridge_);
  page_->setWebChannel(channel_, QWebEngineScript::ApplicationWorld);
  if (zoom_ != 1) page_->setZoomFactor(zoom_);
  if (dark_) show_dark();
  view_->setPage(page_);
  view_->setContextMenuPolicy(Qt::NoContextMenu);
  view_->setAcceptDrops(true);
  stack_->addWidget(view_);
  stack_->setFocusProxy(view_);
  make_notice();

  connect(bridge_, &ViewBridge::came_up, this, [this](const QString& text) { came_up(text); });
  connect(page_, &QWebEnginePage::loadFinished, this, [this](bool loaded) {
    if (loaded) start_script();
  });
  connect(page_, &QWebEnginePage::renderProcessTerminated, this, [this] { process_ended(); });
  view_->installEventFilter(this);
  watch_input_widget();
  // The page's process comes up beside what this one has still to do; left to itself the engine starts it
  // when it is idle.
  page_->runJavaScript(QString(), QWebEngineScript::ApplicationWorld);
}

WebView::Private::~Private() {
  *alive_ = false;
  if (view_) view_->removeEventFilter(this);
  if (input_widget_) input_widget_->removeEventFilter(this);
  // The page goes before the profile, whatever becomes of the widgets.
  let_go(page_);
  delete stack_;
}

// The engine's own injection of scripts now and then misses a process that follows a dead one; a page that
// has loaded is there to be spoken to.
void WebView::Private::start_script() {
  static const QString source = [] {
    QString sheets;
    for (const char* name : {"editing", "overlay", "rooms", "divided"})
      sheets += QStringLiteral("%1:%2,").arg(QLatin1String(name),
                                             quoted(resource(":/tvx/view/" + QByteArray(name) + ".css")));
    sheets = QStringLiteral("const TVX_SHEETS={%1};").arg(sheets);
    // All in one function: the isolated world's global object shows the page's ids as names. And once a page:
    // the host may speak to one page twice when loads overtake each other.
    return QStringLiteral(
               "(function(){if(Object.prototype.hasOwnProperty.call(globalThis,'tvxView'))return;\n") +
           resource(":/qtwebchannel/qwebchannel.js") + QStringLiteral("\n") + sheets +
           QStringLiteral("(function(){") + resource(":/tvx/view/view.js") + QStringLiteral("})();})();");
  }();
  page_->runJavaScript(source, QWebEngineScript::ApplicationWorld);
}

void WebView::Private::make_notice() {
  auto* panel = new QWidget(stack_);
  auto* layout = new QVBoxLayout(panel);
  notice_ = new QLabel(panel);
  notice_->setWordWrap(true);
  notice_->setAlignment(Qt::AlignCenter);
  again_ = new QPushButton(panel);
  layout->addStretch();
  layout->addWidget(notice_);
  layout->addWidget(again_, 0, Qt::AlignHCenter);
  layout->addStretch();
  stack_->addWidget(panel);
  connect(again_, &QPushButton::clicked, this, [this] { put(browser::ViewReady{}); });
}

// --- down ---

void WebView::Private::send(const QString& command) {
  waiting_.push_back(command);
  if (!page_stands_ || std::exchange(send_posted_, true)) return;
  loop_.post([this, alive = alive_] {
    if (!*alive) return;
    send_posted_ = false;
    if (page_stands_) send_waiting();
  });
}

/// All commands of a turn are one message: the page does them in one task, and lays itself out once.
void WebView::Private::send_waiting() {
  if (!waiting_.isEmpty()) emit bridge_->down(u'[' + std::exchange(waiting_, {}).join(u',') + u']');
}

void WebView::Private::begin_page(const browser::Patch& patch) {
  bring_engine();
  ++page_number_;
  page_stands_ = false;
  waiting_.clear();
  mode_ = patch.compatibility_mode;
  base_ = QString::fromStdU16String(patch.base);
  if (watchdog_.waits() && page_->renderProcessPid() > 0) {
    // The process is still lost in what it was given before: it would not get to this page for as long.
    ended_for_page_ = true;
    page_wanted_ = true;
    end_process();
    return;
  }
  load_page();
}

void WebView::Private::end_process() {
  watchdog_.heard();
  wanted_since_.start();
  ::kill(static_cast<pid_t>(page_->renderProcessPid()), SIGKILL);
}

void WebView::Private::load_page() {
  page_wanted_ = true;
  wanted_since_.start();
  guard_->begin_page();
  page_->load_skeleton(page_number_, mode_, base_);
}

void WebView::Private::beat() {
  if (!page_stands_ && !page_wanted_) return;
  const qint64 process = page_->renderProcessPid();
  if (watchdog_.check(sample_process(process)) && process > 0) {
    std::clog << "htmled: the view says nothing any more and is ended\n";
    ended_by_us_ = true;
    return end_process();
  }
  // Seldom, a page that is asked for while the engine ends a process never comes: it is asked for again.
  if (!page_stands_ && wanted_since_.elapsed() > heartbeat_milliseconds) load_page();
  if (page_stands_) send(CommandWriter(page_number_, "beat").finish());
}

// --- up ---

void WebView::Private::came_up(const QString& text) {
  ++in_callback_;
  watchdog_.heard();
  if (const auto report = read_report(text); report && report->page == page_number_) {
    for (const browser::ViewMessage& message : report->messages) {
      seen_ = message.seen;
      if (const auto* facts = std::get_if<browser::ViewFacts>(&message.what)) facts_ = *facts;
      put(message);
    }
    if (report->ready && !page_stands_) {
      page_stands_ = true;
      page_->setZoomFactor(zoom_);  // the engine keeps it by address, and forgets
      if (dark_) show_dark();
      send_waiting();
      send_focus();
      send_placeholder();
    }
  }
  --in_callback_;
}

void WebView::Private::process_ended() {
  watchdog_.heard();
  const bool silent = std::exchange(ended_by_us_, false);
  if (std::exchange(ended_for_page_, false) && !page_stands_) return load_page();
  ++in_callback_;
  page_stands_ = page_wanted_ = false;
  waiting_.clear();
  ++page_number_;  // what it may still have said is of the past
  put(browser::ViewDied{silent});
  --in_callback_;
}

void WebView::Private::put(browser::ViewMessage message) {
  inbox_.push_back(std::move(message));
  if (std::exchange(drain_posted_, true)) return;
  loop_.post([this, alive = alive_] {
    if (*alive) drain();
  });
}

/// A receiver may spin a loop of its own: each message is taken out first, and a further task is posted for
/// those after it.
void WebView::Private::drain() {
  assert(in_callback_ == 0);
  drain_posted_ = false;
  const auto alive = alive_;
  for (std::size_t count = inbox_.size(); count > 0 && !inbox_.empty(); --count) {
    const browser::ViewMessage message = std::move(inbox_.front());
    inbox_.pop_front();
    if (!inbox_.empty() && !std::exchange(drain_posted_, true)) {
      loop_.post([this, alive] {
        if (*alive) drain();
      });
    }
    if (receive_) receive_(message);
    if (!*alive) return;
  }
}

// --- the interface ---

WebView::WebView(platform::MessageLoop& loop, QWidget* parent)
    : d_(std::make_unique<Private>(loop, parent)) {}

WebView::~WebView() = default;

QWidget* WebView::widget() const { return d_->stack_; }
void WebView::bring_engine() { d_->bring_engine(); }
QWebEnginePage* WebView::page() const {
  d_->bring_engine();
  return d_->page_;
}
QWidget* WebView::input_widget() const { return d_->view_ ? d_->view_->focusProxy() : nullptr; }
void WebView::set_mouse_selection(const platform::TransferSource& source) { d_->mouse_selection_ = &source; }
void WebView::set_heartbeat(int milliseconds) { d_->set_heartbeat(milliseconds); }
void WebView::set_policy(const browser::ResourcePolicy& policy) { d_->guard_->set_policy(policy); }

void WebView::set_receiver(std::function<void(browser::ViewMessage)> receive) {
  d_->receive_ = std::move(receive);
}

void WebView::apply(const browser::Patch& patch) {
  if (patch.reset) d_->begin_page(patch);
  d_->send(patch_command(d_->page_number_, patch));
}

void WebView::select(const browser::ViewSelection& selection) {
  d_->send(select_command(d_->page_number_, selection));
}

void WebView::ask(const browser::ViewQuestion& question) {
  d_->send(ask_command(d_->page_number_, question));
}

void WebView::mark(const std::vector<browser::TextMarks>& marks) {
  CommandWriter writer(d_->page_number_, "mark");
  writer.open();
  for (const browser::TextMarks& text : marks) {
    writer.open().add(static_cast<std::int64_t>(text.text)).add(static_cast<std::int64_t>(text.kind));
    for (const browser::MarkedStretch& stretch : text.stretches)
      writer.add(static_cast<std::int64_t>(stretch.from)).add(static_cast<std::int64_t>(stretch.to));
    writer.close();
  }
  d_->send(writer.close().finish());
}

void WebView::set_mode(const browser::ViewMode& mode) {
  std::u16string under_way;
  for (const dom::NodeId node : mode.under_way) under_way += to_text(static_cast<std::int64_t>(node)) + u' ';
  d_->send(CommandWriter(d_->page_number_, "mode")
               .add(mode.editable)
               .add(mode.free_placement)
               .add(under_way)
               .finish());
}

void WebView::cancel_drag() { d_->send(CommandWriter(d_->page_number_, "endDrag").finish()); }

void WebView::set_input_context(const browser::InputContext& context) {
  const bool interrupted = context.interruptions != d_->context_.interruptions;
  d_->context_ = context;
  if (interrupted) QGuiApplication::inputMethod()->reset();
  if (QWidget* input = input_widget(); input && input->hasFocus()) {
    QGuiApplication::inputMethod()->update(Qt::ImQueryInput);
  }
}

void WebView::show_notice(std::u16string_view text) {
  if (!d_->notice_) return;
  d_->notice_->setText(translated(text));
  d_->again_->setText(translated(u"Try again"));
  d_->stack_->setCurrentIndex(text.empty() ? 0 : 1);
}

void WebView::scroll_to(int x, int y) {
  d_->send(CommandWriter(d_->page_number_, "scroll").add(std::int64_t(x)).add(std::int64_t(y)).finish());
}

void WebView::scroll_into_view(dom::NodeId element, bool at_top) {
  CommandWriter out(d_->page_number_, "reveal");
  d_->send(out.add(static_cast<std::int64_t>(element)).add(at_top).finish());
}

void WebView::set_covered(int top, int bottom) {
  CommandWriter out(d_->page_number_, "cover");
  d_->send(out.add(std::int64_t(top / d_->zoom_)).add(std::int64_t(bottom / d_->zoom_)).finish());
}

void WebView::set_zoom(double factor) {
  d_->zoom_ = factor;
  if (d_->page_) d_->page_->setZoomFactor(factor);
}
void WebView::set_dark(bool on) {
  if (d_->dark_ == on) return;
  d_->dark_ = on;
  d_->show_dark();
}
bool WebView::is_dark() const { return d_->dark_; }

// A sheet of the view's own, which is in no tree. What the page leaves unpainted isn't turned round: that is
// the engine's own ground.
void WebView::Private::show_dark() {
  if (!page_) return;
  page_->setBackgroundColor(dark_ ? QColor(0x1e, 0x1e, 0x1e) : QColor(Qt::white));
  if (!page_stands_) return;
  page_->runJavaScript(QStringLiteral(R"js((() => {
    const own = globalThis.tvxDarkSheet || (globalThis.tvxDarkSheet = new CSSStyleSheet());
    own.replaceSync('@media screen { html { filter: invert(0.9) hue-rotate(180deg) !important } ' +
      'img, video, iframe, object, embed { filter: invert(1) hue-rotate(180deg) } }');
    const others = document.adoptedStyleSheets.filter((each) => each !== own);
    document.adoptedStyleSheets = %1 ? [...others, own] : others;
  })())js")
                           .arg(dark_ ? QStringLiteral("true") : QStringLiteral("false")),
                       QWebEngineScript::ApplicationWorld);
}

void WebView::set_placeholder_text(const QString& text) {
  if (d_->placeholder_ == text) return;
  d_->placeholder_ = text;
  d_->send_placeholder();
}
const QString& WebView::placeholder_text() const { return d_->placeholder_; }

void WebView::Private::send_placeholder() {
  if (!page_stands_) return;  // each page that comes is told
  send(CommandWriter(page_number_, "hint").add(std::u16string_view(placeholder_.toStdU16String())).finish());
}

double WebView::zoom() const { return d_->zoom_; }
QPoint WebView::in_widget(QPoint in_page) const { return in_page * d_->zoom_; }

}  // namespace tvx::qt
