#pragma once

#include <cstdint>

#include "tvx/browser/view/messages.h"

namespace tvx::browser {

class HTMLDocument;
class Mirror;
class View;

/// The document's selection in the view's terms; of type None where the view doesn't have it yet.
ViewSelection wanted_selection(HTMLDocument& document, const Mirror& mirror);

/// The selection as the view shows it: sent where it differs from what is wanted.
class ShownSelection {
 public:
  explicit ShownSelection(View& view) : view_(view) {}

  /// A fresh page shows none.
  void page_began();
  /// Whether the next one that is sent scrolls into sight.
  void reveal(bool reveal) { reveal_ = reveal; }
  /// The page has drawn this by itself.
  void drawn(const ViewPlace& anchor, const ViewPlace& focus);
  /// The page may show something else: the selection is to be sent again.
  void unsure() { unsure_ = true; }
  /// This press or release has been dealt with, and those before it.
  void mouse_dealt_with(std::uint32_t number);

  /// `moved`: the tree has changed so that the page's own selection may have moved.
  void send(ViewSelection wanted, bool moved);

 private:
  View& view_;
  ViewSelection shown_;
  bool reveal_ = false, unsure_ = false;
  std::uint32_t mouse_ = 0;  // the last press or release that is dealt with
};

}  // namespace tvx::browser
