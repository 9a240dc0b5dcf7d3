#pragma once

#include "tvx/browser/browser.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/headless/view.h"

namespace tvx::headless {

/// The window of a page that nobody sees: its view, the document shown there, and where things are in it.
/// There is nothing to print on.
class PageWindow : public browser::BrowserWindow {
 public:
  explicit PageWindow(platform::MessageLoop& loop) : view_(loop), document_view_(view_, loop, &geometry_) {}

  View& view() { return view_; }
  browser::DocumentView& document_view() { return document_view_; }
  const browser::DocumentView& document_view() const { return document_view_; }
  FixedGeometry& geometry() { return geometry_; }
  const FixedGeometry& geometry() const { return geometry_; }

  void scroll_to(int x, int y) override { view_.scroll_to(x, y); }

 private:
  FixedGeometry geometry_;
  View view_;
  browser::DocumentView document_view_;
};

}  // namespace tvx::headless
