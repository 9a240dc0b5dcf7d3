#include <optional>

#include "tvx/automation/stage.h"
#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/shown_document.h"
#include "tvx/headless/container.h"
#include "tvx/headless/page_window.h"

namespace tvx::automation {

namespace {

class HeadlessStage final : public Stage, private headless::PageWindow {
 public:
  HeadlessStage(StageParts parts, const InstanceOptions& options)
      : PageWindow(parts.loop), print_(std::move(parts.print)), container_(!options.design_mode) {
    container_.on_property_changed(parts.property_changed);
    control_ = core::HTMLed::create({.loop = parts.loop,
                                     .container = container_,
                                     .dialogs = parts.dialogs,
                                     .hwnd = options.hwnd,
                                     .geometry = &geometry(),
                                     .window = this,
                                     .clipboard = options.clipboard,
                                     .popups = &parts.popups,
                                     .forms = &parts.forms});
    shown_.emplace(*control_, document_view());
  }

  const std::shared_ptr<core::HTMLed>& control() const override { return control_; }

  void begin(const InstanceOptions& options) override {
    control_->UserControl_Initialize();
    control_->set_size(options.width, options.height);
    if (options.store)
      control_->UserControl_ReadProperties(*options.store);
    else
      control_->UserControl_InitProperties();
    control_->UserControl_Resize();
  }

  void end() override { shown_.reset(); }

  void resize(float width, float height) override {
    control_->set_size(width, height);
    control_->UserControl_Resize();
  }

  void key(browser::KeyInput key, bool down) override {
    if (control_->InCodeView()) return key_in_code_view(key, down);
    if (!control_->DOM()) throw RuntimeError(errors::object_not_set, u"There is no document");
    view().tell({.seen = {}, .what = browser::ViewKey{std::move(key), down}});
  }

  bool settled() const override { return document_view().settled(); }

  dom::Element* element_at(int x, int y) const override {
    return control_->DOM() ? geometry().element_at(*control_->DOM(), x, y) : nullptr;
  }
  std::pair<int, int> place_of(int source_index) const override {
    return {0, source_index * headless::FixedGeometry::row_height};
  }

 private:
  void key_in_code_view(const browser::KeyInput& key, bool down) {
    const auto held =
        static_cast<std::int16_t>((key.shift ? 1 : 0) | (key.control ? 2 : 0) | (key.alt ? 4 : 0));
    control_->txtCode().TextBox1();
    control_->txtCode().plain_box().key(static_cast<std::int16_t>(key.key_code), held, key.text, down);
  }

  bool can_print() override { return true; }
  void print(bool with_dialog) override { print_(with_dialog); }

  std::function<void(bool)> print_;
  headless::Container container_;
  std::shared_ptr<core::HTMLed> control_;
  std::optional<core::ShownDocument> shown_;  // until the end
};

}  // namespace

std::unique_ptr<Stage> headless_stage(StageParts parts, const InstanceOptions& options) {
  return std::make_unique<HeadlessStage>(std::move(parts), options);
}

}  // namespace tvx::automation
