#include "qt/htmled_widget.h"

#include <QResizeEvent>

#include "browser/document_view.h"
#include "core/htmled.h"
#include "platform/container.h"
#include "platform/message_loop.h"
#include "platform/property_bag.h"
#include "qt/clipboard.h"
#include "qt/code_view_face.h"
#include "qt/dialogs.h"
#include "qt/toolbar_face.h"
#include "qt/twips.h"
#include "qt/web_view.h"

namespace tvx::qt {
namespace {

/// A store with nothing in it: every property has its default.
class EmptyStore final : public platform::PropertyBag {
 public:
  platform::PropertyValue ReadProperty(std::u16string_view,
                                       const platform::PropertyValue& otherwise) const override {
    return otherwise;
  }
  void WriteProperty(std::u16string_view, const platform::PropertyValue&,
                     const platform::PropertyValue&) override {}
};

QRect pixels(const core::Box& box) {
  return {to_pixels(box.Left), to_pixels(box.Top), to_pixels(box.Width), to_pixels(box.Height)};
}

}  // namespace

/// What stands around the control and hears of it.
class HTMLedWidget::Parts final : public platform::Container,
                                  public browser::BrowserWindow,
                                  public core::HTMLedObserver {
 public:
  Parts(HTMLedWidget& widget, platform::MessageLoop& loop)
      : widget_(widget), dialogs_(widget), view_(loop, &widget), document_view_(view_, loop) {
    core::Surroundings surroundings{loop, *this, dialogs_};
    surroundings.geometry = &document_view_;
    surroundings.window = this;
    surroundings.clipboard = &clipboard_;
    control_ = core::HTMLed::create(surroundings);
    control_->add_observer(*this);
    make_faces();
    document_view_.set_on_focus([this](bool focused) {
      if (focused) control_->WBrowser_GotFocus();
    });
  }

  ~Parts() override {
    document_view_.show(nullptr);
    delete code_;  // while its control still lives
    control_->remove_observer(*this);
    control_->UserControl_Terminate();
  }

  // platform::Container
  bool user_mode() const override { return true; }
  void property_changed(std::u16string_view key) override {
    emit widget_.property_changed(QString::fromUtf16(key.data(), static_cast<qsizetype>(key.size())));
  }

  // browser::BrowserWindow
  void focus() override {
    if (QWidget* input = view_.input_widget()) input->setFocus();
  }
  void scroll_to(int x, int y) override { view_.scroll_to(x, y); }
  void scroll_into_view(dom::Element& element) override { view_.scroll_into_view(element.id()); }
  bool can_print() override { return true; }
  void print(bool with_dialog) override { view_.print(with_dialog, nullptr); }

  // core::HTMLedObserver
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override {
    document_view_.show(document);
    emit widget_.document_replaced();
  }
  void layout_changed(const core::Layout& layout) override { apply(layout); }
  void editor_enabled_changed(bool enabled) override { document_view_.set_editable(enabled); }
  void view_switched(bool) override { apply(control_->layout()); }

  void resize(QSize size) {
    toolbar1_->measure(size.width());
    toolbar2_->measure(size.width());
    branch_->measure(size.width());
    control_->set_size(to_twips(size.width()), to_twips(size.height()));
    control_->UserControl_Resize();
    apply(control_->layout());
  }

  void apply(const core::Layout& layout) {
    show(toolbar1_, layout.Picture1);
    show(toolbar2_, layout.Picture2);
    show(branch_, layout.Picture3);
    view_.widget()->setGeometry(pixels(layout.WBrowser));
    show(code_, layout.txtCode);
    control_->txtCode().in_front() ? code_->raise() : code_->lower();
  }

  HTMLedWidget& widget_;
  Dialogs dialogs_;
  Clipboard clipboard_;
  WebView view_;
  browser::DocumentView document_view_;
  std::shared_ptr<core::HTMLed> control_;
  bool started_ = false;

 private:
  void make_faces() {
    toolbar1_ = new ToolbarFace(control_->Toolbar1(), &widget_);
    toolbar2_ = new ToolbarFace(control_->Toolbar2(), &widget_);
    branch_ = new ToolbarFace(control_->tlbDOM(), &widget_);
    for (ToolbarFace* bar : {toolbar1_, toolbar2_, branch_}) bar->set_on_leave([this] { focus(); });
    code_ = new CodeViewFace(control_->txtCode(), &widget_);
    toolbar2_->hide();
  }

  static void show(QWidget* widget, const core::Box& box) {
    widget->setGeometry(pixels(box));
    widget->setVisible(box.Visible);
  }

  ToolbarFace* toolbar1_ = nullptr;
  ToolbarFace* toolbar2_ = nullptr;
  ToolbarFace* branch_ = nullptr;
  CodeViewFace* code_ = nullptr;
};

HTMLedWidget::HTMLedWidget(platform::MessageLoop& loop, QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(*this, loop)) {
  parts_->control_->UserControl_Initialize();
}

HTMLedWidget::~HTMLedWidget() = default;

core::HTMLed& HTMLedWidget::control() { return *parts_->control_; }
browser::DocumentView& HTMLedWidget::document_view() { return parts_->document_view_; }
WebView& HTMLedWidget::view() { return parts_->view_; }

void HTMLedWidget::start() {
  if (std::exchange(parts_->started_, true)) return;
  parts_->resize(size());
  parts_->control_->UserControl_ReadProperties(EmptyStore());
  parts_->resize(size());
  parts_->control_->UserControl_Show();
}

void HTMLedWidget::resizeEvent(QResizeEvent* event) { parts_->resize(event->size()); }

void HTMLedWidget::showEvent(QShowEvent*) {
  if (parts_->started_) parts_->control_->UserControl_Show();
}

}  // namespace tvx::qt
