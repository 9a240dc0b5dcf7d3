#include "tvx/htmled_widget.h"

#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QPointer>
#include <QPrinterInfo>
#include <QQuickWidget>
#include <QResizeEvent>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/browser/input/input_queue.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/core/views/side_source.h"
#include "tvx/platform/container.h"
#include "tvx/platform/empty_store.h"
#include "tvx/platform/message_loop.h"
#include "tvx/qt/bars/branch_face.h"
#include "tvx/qt/bars/menu_face.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "tvx/qt/dialogs/dialogs.h"
#include "tvx/qt/forms/form_face.h"
#include "tvx/qt/reading/page_reading.h"
#include "tvx/qt/source/code_assistance.h"
#include "tvx/qt/source/code_view_face.h"
#include "tvx/qt/support/clipboard.h"
#include "tvx/qt/support/escape_watch.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/twips.h"
#include "tvx/qt/web/web_view.h"
#include "tvx/qt/widget/button_keys.h"
#include "tvx/qt/widget/early_keys.h"
#include "tvx/qt/widget/first_caret.h"
#include "tvx/qt/widget/frame.h"
#include "tvx/qt/widget/host_bars.h"
#include "tvx/qt/widget/panes.h"
#include "tvx/qt/widget/split_view.h"
#include "tvx/qt/widget/substitutes.h"
#include "tvx/qt/widget/veil.h"
#include "tvx/qt/widget/widget_events.h"

namespace tvx::qt {
namespace {

/// One loop serves all widgets that bring none of their own.
std::shared_ptr<MessageLoop> common_loop() {
  static std::weak_ptr<MessageLoop> common;
  std::shared_ptr<MessageLoop> loop = common.lock();
  if (!loop) common = loop = std::make_shared<MessageLoop>();
  return loop;
}

static_assert(int(HTMLedWidget::Solid) == int(core::EdBorderStyle::Solid));
static_assert(int(HTMLedWidget::edOutset) == int(core::EdHighLightStyle::edOutset));
static_assert(int(HTMLedWidget::ov_Binary) == int(core::ed_FTPTransferType::ov_Binary));
static_assert(int(HTMLedWidget::ed_InsertAfterSelection) ==
              int(core::ed_InsertType::ed_InsertAfterSelection));

QRect pixels(const core::Box& box) {
  return {to_pixels(box.Left), to_pixels(box.Top), to_pixels(box.Width), to_pixels(box.Height)};
}

}  // namespace

/// What stands around the control and hears of it.
class HTMLedWidget::Parts final : public platform::Container,
                                  public browser::BrowserWindow,
                                  public core::HTMLedObserver {
 public:
  Parts(HTMLedWidget& widget, platform::MessageLoop& loop, std::shared_ptr<MessageLoop> own_loop,
        const Substitutes& substitutes)
      : widget_(&widget),
        loop_(loop),
        own_loop_(std::move(own_loop)),
        events_(widget),
        dialogs_(widget),
        popups_(widget),
        forms_(widget),
        view_(loop, &widget),
        document_view_(view_, loop),
        print_(substitutes.print) {
    EscapeWatch::install();
    platform::CommonDialogs& dialogs = substitutes.dialogs ? *substitutes.dialogs : dialogs_;
    core::Surroundings surroundings{loop, *this, dialogs};
    surroundings.geometry = &document_view_;
    surroundings.popups = substitutes.popups ? substitutes.popups : &popups_;
    popups_.set_default_place([this] { return place_of_last_event(); });
    surroundings.forms = substitutes.forms ? substitutes.forms : &forms_;
    surroundings.window = this;
    surroundings.clipboard = substitutes.clipboard ? substitutes.clipboard : &clipboard_;
    control_ = core::HTMLed::create(surroundings);
    control_->set_events(&events_);
    control_->add_observer(*this);
    make_faces();
    new Veil(*view_.widget());
    forms_.set_page(*view_.widget(), [this](int top, int bottom) { view_.set_covered(top, bottom); });
    document_view_.set_on_focus([this](bool focused) {
      reading_.focus_changed(focused);
      first_caret_->view_focused(focused);
      if (focused) control_->WBrowser_GotFocus();
      if (focused) first_caret_->set_later();
    });
  }

  ~Parts() override {
    host_bars_.reset();
    reading_.show(nullptr);
    document_view_.show(nullptr);
    // While the control still lives, whose models they draw.
    delete toolbar1_;
    delete toolbar2_;
    delete branch_;
    delete code_;
    split_.reset();
    delete frame_;
    control_->remove_observer(*this);
    control_->UserControl_Terminate();
  }

  // platform::Container
  // Until the start, properties are what a designer sets: kept, and used then.
  bool user_mode() const override { return started_; }
  void property_changed(std::u16string_view key) override {
    if (widget_) emit widget_->property_changed(to_qt(key));
    if (key == u"DocumentHTML" && first_caret_) first_caret_->set_later();
    if (host_bars_) host_bars_->look_later();
  }

  // browser::BrowserWindow
  void focus() override {
    QWidget* const input = view_.input_widget();
    (input ? input : view_.widget())->setFocus();
  }
  void scroll_to(int x, int y) override { view_.scroll_to(x, y); }
  void scroll_into_view(dom::Element& element) override { document_view_.scroll_into_view(element, true); }
  // A dialog can print into a file; who asks for none wants a printer, or has named the file.
  bool can_print() override {
    return !print_file_.isEmpty() || pdf_wanted_ || print_ ||
           !QPrinterInfo::availablePrinterNames().isEmpty() ||
           QGuiApplication::platformName() != QStringLiteral("offscreen");
  }
  void print(bool with_dialog) override;

  // core::HTMLedObserver
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override {
    document_view_.show(document);
    reading_.show(document);
    if (widget_) emit widget_->document_replaced();
  }
  void layout_changed(const core::Layout& layout) override { apply(layout); }
  void editor_enabled_changed(bool enabled) override { document_view_.set_editable(enabled); }
  void mouse_pointer_changed(int pointer) override {
    constexpr int usual = 0, arrow = 1;
    if (!widget_) return;
    if (pointer == usual) return widget_->unsetCursor();
    widget_->setCursor(pointer == arrow ? Qt::ArrowCursor : Qt::BusyCursor);
  }
  void border_changed(core::EdBorderStyle) override {
    if (widget_) resize(widget_->size());
  }

  // Mostly within the show of the host's window, so the host's own events wait.
  void show_control() {
    std::optional<MessageLoop::TasksFirst> undisturbed;
    if (auto* loop = dynamic_cast<MessageLoop*>(&loop_)) undisturbed.emplace(*loop);
    control_->UserControl_Show();
  }

  void resize(QSize size) {
    size = frame_->lay_around(size, control_->BorderStyle() == core::EdBorderStyle::Solid);
    if (!started_ && !design_mode_)
      return control_->set_size(to_twips(size.width()), to_twips(size.height()));
    toolbar1_->measure(size.width());
    toolbar2_->measure(size.width());
    control_->set_size(to_twips(size.width()), to_twips(size.height()));
    control_->UserControl_Resize();
    apply(control_->layout());
  }

  void apply(const core::Layout& layout) {
    toolbar1_->show_in(inside(layout.Picture1), layout.Picture1.Visible);
    toolbar2_->show_in(inside(layout.Picture2), layout.Picture2.Visible);
    branch_->show_in(within(inside(layout.Picture3)), layout.Picture3.Visible);
    const QRect room = inside(layout.WBrowser);
    view_.widget()->setGeometry(split_ ? split_->arrange(room) : room);
    code_->setGeometry(inside(layout.txtCode));
    code_->setVisible(layout.txtCode.Visible);
    const bool covered = control_->txtCode().in_front();
    covered ? code_->raise() : code_->lower();
    if (std::exchange(page_covered_, covered) != covered) reading_.cover_changed();
    frame_->lower();
  }

  /// Where the user goes on after a start or a new document. A program that has given the focus to another
  /// widget of its window meant that one. Asked before the start as well as after it: meanwhile the window
  /// comes to the front, and one that nobody has given the focus hands it to its first field.
  void take_first_focus() {
    const QWidget* chosen = widget_->window()->focusWidget();
    if (!chosen || widget_->isAncestorOf(chosen)) widget_->setFocus(Qt::OtherFocusReason);
  }

  QPointer<HTMLedWidget> widget_;
  platform::MessageLoop& loop_;
  std::shared_ptr<MessageLoop> own_loop_;
  WidgetEvents events_;
  Dialogs dialogs_;
  PopupMenus popups_;
  Forms forms_;
  Clipboard clipboard_;
  WebView view_;
  browser::DocumentView document_view_;
  std::shared_ptr<core::HTMLed> control_;
  PageReading reading_{{view_, document_view_, loop_, [this] { return page_covered_; }}};
  bool page_covered_ = false;
  bool started_ = false;
  bool design_mode_ = false;
  bool has_focus_ = false;
  std::optional<FirstCaret> first_caret_;
  EarlyKeys early_keys_{
      {[this] { return widget_ && first_caret_->is_awaited(); },
       [this](const QWidget& part) { return view_.widget() == &part || view_.widget()->isAncestorOf(&part); },
       [this] { return view_.input_widget(); }}};
  std::optional<Panes> panes_;
  std::optional<HostBars> host_bars_;  // once somebody may listen
  QString print_file_;
  const std::function<void(bool)> print_;              // in the printer's place
  std::function<void(const QByteArray&)> pdf_wanted_;  // by make_pdf, in place of printing
  std::function<void(bool)> file_wanted_;              // by write_pdf, likewise
  std::optional<SplitView> split_;                     // once it was wanted
  double split_share_ = 0.5;                           // before that
  CodeViewFace& code_face() { return *code_; }
  void for_each_code(const std::function<void(CodeViewFace&)>& act) {
    act(*code_);
    if (split_) act(split_->face());
  }

  void set_split_view(bool on) {
    if (on && !split_) {
      split_.emplace(*widget_, control_->side_source(),
                     SplitView::Ways{[this] { apply(control_->layout()); },
                                     [this](double share) {
                                       if (widget_) emit widget_->splitShareChanged(share);
                                     }});
      panes_->set_side(split_->face());
      const CodeBox& box = code_->box();
      split_->face().set_code_font(box.widget()->font());
      split_->face().box().set_tab_width(box.tab_width());
      split_->face().box().set_wrapped(box.widget()->lineWrapMode() != QPlainTextEdit::NoWrap);
      split_->face().box().assistance().set_on(code_->box().assistance().is_on());
      split_->set_share(split_share_);
    }
    if (split_) control_->side_source().set_wanted(on);
  }

 private:
  void make_faces() {
    toolbar1_ = new ToolbarFace(control_->Toolbar1(), widget_);
    toolbar2_ = new ToolbarFace(control_->Toolbar2(), widget_);
    toolbar1_->set_keys([widget = widget_](const platform::Button& button) {
      return widget ? keys_of_button(*widget, button.Key()) : QKeySequence();
    });
    branch_ = new BranchFace(control_->tlbDOM(), widget_);
    code_ = new CodeViewFace(control_->txtCode(), widget_);
    code_->setObjectName(QStringLiteral("txtCode"));
    for (ToolbarFace* bar : {toolbar1_, toolbar2_})
      bar->set_before_press([widget = widget_] {
        if (widget) widget->finish_page_input();
      });
    toolbar2_->show_in({}, false);
    frame_ = new Frame(widget_);
    first_caret_.emplace(*widget_, *control_);
    panes_.emplace(
        *widget_, *control_, Panes::Widgets{toolbar1_, toolbar2_, view_.widget(), code_, branch_},
        Panes::Ways{[this] { focus(); }, [this](bool next) { return widget_->focusNextPrevChild(next); },
                    [this](bool next) { return widget_->QWidget::focusNextPrevChild(next); }});
  }

  QRect inside(const core::Box& box) const {
    return pixels(box).translated(frame_->thickness(), frame_->thickness());
  }

  // The layout makes the holder of the element path wider than the control; what is beyond can't be seen.
  QRect within(QRect box) const {
    if (widget_) box.setRight(std::min(box.right(), widget_->width() - 1 - frame_->thickness()));
    return box;
  }

  /// Where a context menu appears: at the press that asked for it, or at the caret.
  QPoint place_of_last_event() {
    const browser::Event* event = control_->lastEvent();
    return event ? view_.widget()->mapToGlobal(view_.in_widget({event->client_x, event->client_y}))
                 : QCursor::pos();
  }

  ToolbarFace* toolbar1_ = nullptr;
  ToolbarFace* toolbar2_ = nullptr;
  BranchFace* branch_ = nullptr;
  CodeViewFace* code_ = nullptr;
  Frame* frame_ = nullptr;
};

// What is printed is what the view shows, so it must have been told of everything: the border of the current
// element came off just now. A file is written even if the widget goes meanwhile: its parts stay as long.
void HTMLedWidget::Parts::print(bool with_dialog) {
  constexpr std::int64_t longest_wait = 30'000;
  const auto alive = control_;
  const QString file = print_file_;
  const std::int64_t end = loop_.now() + longest_wait;
  while (!document_view_.settled() && loop_.now() < end) loop_.pump(5);
  if (file_wanted_) return view_.print_into(file, std::exchange(file_wanted_, nullptr));
  if (!widget_ && (with_dialog || pdf_wanted_ || file.isEmpty())) return;
  if (pdf_wanted_) return view_.make_pdf(std::exchange(pdf_wanted_, nullptr));
  if (print_ && file.isEmpty()) return print_(with_dialog);
  if (with_dialog || file.isEmpty()) {
    if (!with_dialog && QPrinterInfo::defaultPrinter().isNull())
      throw RuntimeError(errors::invalid_call, u"There is no printer");
    return view_.print(with_dialog, [widget = widget_](bool done) {
      if (widget) emit widget->print_finished(done);
    });
  }
  view_.print_into(file, [widget = widget_](bool done) {
    if (widget) emit widget->print_finished(done);
  });
}

HTMLedWidget::HTMLedWidget(QWidget* parent) : QWidget(parent) {
  const std::shared_ptr<MessageLoop> loop = common_loop();
  begin(std::make_shared<Parts>(*this, *loop, loop, Substitutes()));
}

HTMLedWidget::HTMLedWidget(platform::MessageLoop& loop, QWidget* parent)
    : HTMLedWidget(loop, parent, Substitutes()) {}

HTMLedWidget::HTMLedWidget(platform::MessageLoop& loop, QWidget* parent, const Substitutes& substitutes)
    : QWidget(parent) {
  begin(std::make_shared<Parts>(*this, loop, nullptr, substitutes));
}

// Reading an empty store gives a control more than the defaults: the captions of its own.
void HTMLedWidget::begin(std::shared_ptr<Parts> parts) {
  // Qt makes a shown window anew when the first part comes into it that is drawn as the page is, and the new
  // one of a dialog isn't modal. This one is there from the start, and nobody sees it.
  (new QQuickWidget(this))->hide();
  parts_ = std::move(parts);
  parts_->control_->UserControl_Initialize();
  parts_->control_->UserControl_ReadProperties(platform::EmptyStore());
  parts_->host_bars_.emplace(*this);
  connect(qApp, &QApplication::focusChanged, this, &HTMLedWidget::focus_moved);
}

// A host may delete the widget within an event, with routines of the control still open around it. What they
// stand on then goes when they have returned: the parts first, and the widgets that those use after them.
HTMLedWidget::~HTMLedWidget() {
  parts_->host_bars_.reset();
  disconnect(qApp, nullptr, this, nullptr);
  if (parts_->control_.use_count() == 1) return;
  // Routines that wait for a dialog wait for nothing now, the innermost first.
  const QList<QDialog*> open = findChildren<QDialog*>();
  std::for_each(open.rbegin(), open.rend(), [](QDialog* dialog) { dialog->done(QDialog::Rejected); });
  auto* remains = new QWidget;
  for (QWidget* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
    child->setParent(remains);
  parts_->control_->UserControl_Terminate();
  bury(std::exchange(parts_, nullptr), remains, 0);
}

void HTMLedWidget::bury(std::shared_ptr<Parts> parts, QWidget* remains, int milliseconds) {
  constexpr int later = 20;
  QTimer::singleShot(milliseconds, qApp, [parts = std::move(parts), remains]() mutable {
    if (parts->control_.use_count() > 1) return bury(std::move(parts), remains, later);
    parts.reset();
    delete remains;
  });
}

core::HTMLed& HTMLedWidget::control() const { return *parts_->control_; }
browser::DocumentView& HTMLedWidget::document_view() { return parts_->document_view_; }
WebView& HTMLedWidget::view() const { return parts_->view_; }
platform::MessageLoop& HTMLedWidget::message_loop() const { return parts_->loop_; }
HostBars& HTMLedWidget::host_bars() const { return *parts_->host_bars_; }

// --- the code, in its view and beside the page ---

void HTMLedWidget::set_code_assistance(bool on) {
  parts_->for_each_code([&](CodeViewFace& face) { face.box().assistance().set_on(on); });
}
bool HTMLedWidget::code_assistance() const { return parts_->code_face().box().assistance().is_on(); }

void HTMLedWidget::set_code_wrapped(bool wrapped) {
  parts_->for_each_code([&](CodeViewFace& face) { face.box().set_wrapped(wrapped); });
}
bool HTMLedWidget::code_wrapped() const {
  return parts_->code_face().text_box()->lineWrapMode() != QPlainTextEdit::NoWrap;
}

void HTMLedWidget::set_code_font(const QFont& font) {
  parts_->for_each_code([&](CodeViewFace& face) { face.set_code_font(font); });
}
QFont HTMLedWidget::code_font() const { return parts_->code_face().text_box()->font(); }

void HTMLedWidget::set_code_tab_width(int letters) {
  parts_->for_each_code([&](CodeViewFace& face) { face.box().set_tab_width(letters); });
}
int HTMLedWidget::code_tab_width() const { return parts_->code_face().box().tab_width(); }

CodeBox* HTMLedWidget::code_in_hand() const {
  if (control().InCodeView()) return &parts_->code_face().box();
  return parts_->split_ && control().side_source().shows() ? &parts_->split_->face().box() : nullptr;
}

void HTMLedWidget::go_to_code_line(int line) {
  if (CodeBox* box = code_in_hand()) box->go_to_line(static_cast<std::size_t>(std::max(line, 1)) - 1);
}
int HTMLedWidget::code_line() const {
  const CodeBox* box = code_in_hand();
  return box ? static_cast<int>(box->line_of(box->SelStart())) + 1 : 0;
}
int HTMLedWidget::code_line_count() const {
  const CodeBox* box = code_in_hand();
  return box ? static_cast<int>(box->line_count()) : 0;
}

void HTMLedWidget::set_split_view(bool on) {
  if (split_view() == on) return;
  parts_->set_split_view(on);
  emit splitViewChanged(on);
}
bool HTMLedWidget::split_view() const { return control().side_source().wanted(); }

void HTMLedWidget::set_split_share(double share) {
  parts_->split_share_ = share;
  if (parts_->split_) parts_->split_->set_share(share);
}
double HTMLedWidget::split_share() const {
  return parts_->split_ ? parts_->split_->share() : parts_->split_share_;
}

QString HTMLedWidget::waiting_source() const {
  core::SideSource& side = control().side_source();
  return side.waits() ? to_qt(side.box().Text()) : QString();
}

void HTMLedWidget::set_placeholder_text(const QString& text) { parts_->view_.set_placeholder_text(text); }
QString HTMLedWidget::placeholder_text() const { return parts_->view_.placeholder_text(); }

void HTMLedWidget::set_design_mode(bool on) { parts_->design_mode_ = on; }
void HTMLedWidget::set_print_file(const QString& path) { parts_->print_file_ = path; }
void HTMLedWidget::set_page_setup(const PageSetup& setup) { parts_->view_.set_page_setup(setup); }
PageSetup HTMLedWidget::page_setup() const { return parts_->view_.page_setup(); }

// On the way of printing, which takes what is for the screen alone from the page.
void HTMLedWidget::make_pdf(std::function<void(const QByteArray&)> done) {
  const auto parts = parts_;
  parts->pdf_wanted_ = [widget = QPointer(this), done](const QByteArray& pdf) {
    if (widget) done(pdf);
  };
  control().print_Document(true);
  if (!std::exchange(parts->pdf_wanted_, nullptr)) return;
  QTimer::singleShot(0, this, [done] { done({}); });
}

void HTMLedWidget::write_pdf(const QString& path, std::function<void(bool)> done) {
  const auto parts = parts_;
  const QString before = std::exchange(parts->print_file_, path);
  parts->file_wanted_ = done;
  control().print_Document(true);
  parts->print_file_ = before;
  if (!std::exchange(parts->file_wanted_, nullptr)) return;
  QTimer::singleShot(0, qApp, [done] { done(false); });
}

bool HTMLedWidget::started() const { return parts_->started_; }

void HTMLedWidget::read_properties(const platform::PropertyBag& store) {
  control().UserControl_ReadProperties(store);
}
void HTMLedWidget::write_properties(platform::PropertyBag& store) const {
  control().UserControl_WriteProperties(store);
}

void HTMLedWidget::start() {
  if (parts_->design_mode_ || std::exchange(parts_->started_, true)) return;
  const auto parts = parts_;
  const QPointer<HTMLedWidget> alive(this);
  parts->view_.bring_engine();
  parts->first_caret_->start();
  parts->early_keys_.start();
  parts->take_first_focus();
  parts->resize(size());
  parts->show_control();
  if (!alive) return;
  parts->resize(size());
  parts->take_first_focus();
  parts->first_caret_->set_later();
}

void HTMLedWidget::finish_page_input() {
  constexpr std::int64_t longest = browser::InputQueue::patience + browser::InputQueue::deadline;
  platform::MessageLoop& loop = message_loop();
  const QPointer<HTMLedWidget> alive(this);
  // What was pressed before the page had a caret belongs to it as well.
  while (alive && parts_->early_keys_.has_keys()) MessageLoop::pump_without_input(5);
  const std::int64_t end = loop.now() + longest;
  // A key that the view has got stands in its inbox for a turn of the loop, where nobody else sees it.
  const auto read = std::make_shared<bool>(false);
  loop.post([read] { *read = true; });
  while (alive && !*read && loop.now() < end) MessageLoop::pump_without_input(5);
  while (alive && document_view().input_waits() && loop.now() < end) MessageLoop::pump_without_input(5);
}

void HTMLedWidget::resizeEvent(QResizeEvent* event) { parts_->resize(event->size()); }

void HTMLedWidget::showEvent(QShowEvent*) {
  if (parts_->started_ || parts_->design_mode_)
    parts_->show_control();
  else
    start();
}

// --- focus ---

bool HTMLedWidget::focusNextPrevChild(bool next) { return parts_->panes_->step(next); }

/// Whether a widget is within this one, or within a dialog or popup that belongs to it.
bool HTMLedWidget::holds(const QWidget* widget) const {
  while (widget && widget != this) widget = widget->parentWidget();
  return widget == this;
}

void HTMLedWidget::focus_moved(QWidget* from, QWidget* to) {
  // The application in the background, a menu in front: the focus comes back to where it was.
  if (!to || !parts_->started_) return;
  const bool inside = holds(to);
  parts_->panes_->follow_focus(to);
  if (inside && from) parts_->panes_->tell_lost_focus(from);
  if (inside == parts_->has_focus_) return;
  parts_->has_focus_ = inside;
  if (!inside) return control().UserControl_ExitFocus();
  // The control gives the focus to its document. Who came with Tab goes on from where that led to.
  const QPointer<QWidget> reached = to;
  const std::shared_ptr<Parts> parts = parts_;
  control().UserControl_EnterFocus();
  if (parts->widget_ && reached && parts->panes_->is_bar(reached)) reached->setFocus(Qt::TabFocusReason);
}

}  // namespace tvx::qt
