#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "tvx/browser/geometry.h"
#include "tvx/browser/view/mark_display.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::browser {

class View;
struct ViewFacts;

/// Shows a document in a view and brings the user's input back to it.
///
/// DocumentOutput is what goes out, DocumentInput what comes in. Here is what both need: which document it
/// is, and what becomes of it when the view's process dies.
class DocumentView final : public Geometry {
 public:
  /// Both outlive this, and so does `fixed`, which answers for documents where things are, if the view
  /// doesn't.
  DocumentView(View& view, platform::MessageLoop& loop, const Geometry* fixed = nullptr);
  ~DocumentView() override;
  DocumentView(const DocumentView&) = delete;
  DocumentView& operator=(const DocumentView&) = delete;

  /// Shows another document, or none. Input that waited for the one before is dropped.
  void show(std::shared_ptr<HTMLDocument> document);
  const std::shared_ptr<HTMLDocument>& document() const;
  void set_editable(bool editable);

  /// Everything is sent, laid out, and no input waits.
  bool settled() const;
  /// Something that the user did waits for the page, or for its turn.
  bool input_waits() const;
  /// The window is filled, though more may follow.
  bool filled() const;
  /// Whether the view gave up on this document after dying of it twice.
  bool shows_notice() const;
  const ViewFacts& facts() const;
  /// What is marked in a text, as it was told last.
  std::vector<MarkedStretch> marked(MarkKind kind, const dom::Text& text) const;
  /// Called when the view takes or loses the keyboard.
  void set_on_focus(std::function<void(bool)> on_focus);
  /// What was asked for last counts, the selection's position included. It is done when the view has what it
  /// means.
  void scroll_into_view(dom::Element& element, bool at_top);

  // Geometry: as the view last reported.
  dom::Element* element_at(const HTMLDocument& document, int x, int y) const override;
  std::pair<int, int> caret_place(const HTMLDocument& document) const override;

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
  const Geometry& geometry_;
};

}  // namespace tvx::browser
