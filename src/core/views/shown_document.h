#pragma once

#include "tvx/core/observer.h"

namespace tvx::browser {
class DocumentView;
}

namespace tvx::core {

class HTMLed;

/// As long as it lives, a view shows the document that the control has at the time, and lets nobody edit it
/// while the editor is disabled. After that the view shows none.
class ShownDocument final : private HTMLedObserver {
 public:
  /// Both outlive this.
  ShownDocument(HTMLed& control, browser::DocumentView& view);
  ~ShownDocument() override;
  ShownDocument(const ShownDocument&) = delete;
  ShownDocument& operator=(const ShownDocument&) = delete;

 private:
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override;
  void editor_enabled_changed(bool enabled) override;

  HTMLed& control_;
  browser::DocumentView& view_;
};

}  // namespace tvx::core
