#include "tvx/exported/off_screen_stage.h"

#include <optional>

#include "tvx/core/htmled.h"
#include "tvx/core/views/shown_document.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/page_window.h"
#include "tvx/platform/container.h"
#include "tvx/platform/empty_store.h"

namespace tvx::exported {

namespace {

class OffScreenStage final : public Stage, private platform::Container {
 public:
  OffScreenStage(StageOwner& owner, platform::MessageLoop& loop)
      : owner_(&owner),
        page_(loop),
        control_(core::HTMLed::create({.loop = loop,
                                       .container = *this,
                                       .dialogs = dialogs_,
                                       .geometry = &page_.geometry(),
                                       .window = &page_,
                                       .clipboard = &clipboard_})) {
    shown_.emplace(*control_, page_.document_view());
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
    if (owner_) owner_->resized(box.width, box.height);
  }
  void take_focus() override {
    if (user_mode_) control_->UserControl_EnterFocus();
    if (owner_) owner_->focus_changed(true);
  }
  void set_title(std::u16string_view) override {}
  std::uint64_t window() override { return 0; }

  void end() override {
    if (!owner_) return;
    owner_ = nullptr;
    control_->set_events(nullptr);
    control_->UserControl_Terminate();
    shown_.reset();
  }

 private:
  // platform::Container
  // Until the start, properties are what a designer sets: kept, and used then.
  bool user_mode() const override { return user_mode_; }
  void property_changed(std::u16string_view key) override {
    if (owner_) owner_->property_changed(key);
  }

  StageOwner* owner_;
  bool user_mode_ = false;
  bool laid_out_ = false;
  headless::Dialogs dialogs_;
  headless::Clipboard clipboard_;
  headless::PageWindow page_;
  std::shared_ptr<core::HTMLed> control_;
  std::optional<core::ShownDocument> shown_;  // until the end
};

}  // namespace

std::unique_ptr<Stage> make_off_screen_stage(StageOwner& owner, platform::MessageLoop& loop) {
  return std::make_unique<OffScreenStage>(owner, loop);
}

}  // namespace tvx::exported
