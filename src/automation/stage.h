#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "tvx/base/code_page.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/headless/property_bag.h"

namespace tvx::automation {

/// How a control begins.
struct InstanceOptions {
  bool design_mode = false;
  /// What it reads its properties from; none: it begins as a new control.
  std::optional<headless::PropertyBag> store = headless::PropertyBag();
  std::optional<CodePage> code_page;     // none: the process's
  std::optional<std::u16string> folder;  // of its temporary files; none: the system's
  platform::WindowHandle hwnd = platform::WindowHandle::none;
  float width = 12000, height = 9000;        // twips
  platform::Clipboard* clipboard = nullptr;  // all controls of a session share one
};

/// Where a control of a conversation lives: its container, its view, and the way of the user's hand to it.
/// The control is there from the stage's making and begins its life with begin().
class Stage {
 public:
  virtual ~Stage() = default;
  virtual const std::shared_ptr<core::HTMLed>& control() const = 0;
  /// Reads the properties and lays the control out, as its container does.
  virtual void begin(const InstanceOptions& options) = 0;
  /// The container shows it, also again.
  virtual void show() { control()->UserControl_Show(); }
  /// The control's life has ended.
  virtual void end() = 0;
  /// In twips.
  virtual void resize(float width, float height) = 0;
  /// A key of the user's, for the view in front. Throws RuntimeError(91) while there is none.
  virtual void key(browser::KeyInput key, bool down) = 0;
  /// Whether the input has all been dealt with.
  virtual bool settled() const = 0;
  /// The element at a point of the view, as far as that is known; and the point for one.
  virtual dom::Element* element_at(int x, int y) const = 0;
  virtual std::pair<int, int> place_of(int source_index) const = 0;
};

/// What a conversation gives its stages: the dialogs and menus that its expectations answer, and whom to tell
/// of a property that would be saved, and of printing.
struct StageParts {
  platform::MessageLoop& loop;
  platform::CommonDialogs& dialogs;
  platform::PopupMenus& popups;
  platform::Forms& forms;
  std::function<void(std::u16string_view key)> property_changed;
  std::function<void(bool with_dialog)> print;
};

using StageFactory = std::function<std::unique_ptr<Stage>(StageParts parts, const InstanceOptions& options)>;

/// A stage that nobody sees.
std::unique_ptr<Stage> headless_stage(StageParts parts, const InstanceOptions& options);

}  // namespace tvx::automation
