#include "tvx/exported/off_screen_stage.h"

#include "tvx/browser/browser.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/view.h"
#include "tvx/platform/container.h"
#include "tvx/platform/empty_store.h"

namespace tvx::exported {

namespace {

class OffScreenStage final : public Stage,
                             private platform::Container,
                             private browser::BrowserWindow,
                             private core::HTMLedObserver {
 public:
  OffScreenStage(StageOwner& owner, platform::MessageLoop& loop)
      : owner_(&owner),
        view_(loop),
        document_view_(view_, loop),
        control_(core::HTMLed::create({.loop = loop,
                                       .container = *this,
                                       .dialogs = dialogs_,
                                       .geometry = &geometry_,
                                       .window = this,
                                       .clipboard = &clipboard_})) {
    control_->add_observer(*this);
    control_->UserControl_Initialize();
    resize(Position().box);
    // Reading an empty store gives a control more than the defaults: the captions of its own.
    control_->UserControl_ReadProperties(platform::EmptyStore());
  }
  ~OffScreenStage() override { end(); }

  core::HTMLed& control() override { return *control_; }

  void start(bool user_mode) override {
    user_mode_ = user_mode;
    control_->UserControl_Resize();
    control_->UserControl_Show();
    laid_out_ = true;
  }
  void show() override { control_->UserControl_Show(); }
  void hide() override {}
  void resize(const tvx_box& box) override {
    constexpr float twips = 15;
    control_->set_size(static_cast<float>(box.width) * twips, static_cast<float>(box.height) * twips);
    if (laid_out_) control_->UserControl_Resize();
  }
  void take_focus() override {
    if (user_mode_) control_->UserControl_EnterFocus();
  }
  std::uint64_t window() override { return 0; }

  void end() override {
    if (!owner_) return;
    owner_ = nullptr;
    control_->set_events(nullptr);
    control_->UserControl_Terminate();
    control_->remove_observer(*this);
    document_view_.show(nullptr);
  }

 private:
  // platform::Container
  // Until the start, properties are what a designer sets: kept, and used then.
  bool user_mode() const override { return user_mode_; }
  void property_changed(std::u16string_view key) override {
    if (owner_) owner_->property_changed(key);
  }

  // browser::BrowserWindow
  bool can_print() override { return false; }
  void print(bool) override {}
  void scroll_to(int x, int y) override { view_.scroll_to(x, y); }

  // core::HTMLedObserver
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override {
    document_view_.show(document);
  }
  void editor_enabled_changed(bool enabled) override { document_view_.set_editable(enabled); }

  StageOwner* owner_;
  bool user_mode_ = false;
  bool laid_out_ = false;
  headless::Dialogs dialogs_;
  headless::Clipboard clipboard_;
  headless::View view_;
  browser::DocumentView document_view_;
  headless::FixedGeometry geometry_;
  std::shared_ptr<core::HTMLed> control_;
};

}  // namespace

std::unique_ptr<Stage> make_off_screen_stage(StageOwner& owner, platform::MessageLoop& loop) {
  return std::make_unique<OffScreenStage>(owner, loop);
}

}  // namespace tvx::exported
