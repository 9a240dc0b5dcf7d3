#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "tvx/browser/html_document.h"
#include "tvx/browser/loading/resources.h"

namespace tvx::browser {

/// Loads the sheets that a document links to, and what they and its `style` elements import. Sheets arrive as
/// they like; the document's order decides which counts. A sheet is put into the document when all that it
/// imports has come or failed; one that can't be had is an empty one.
class SheetLoader {
 public:
  /// `resources` outlives this.
  explicit SheetLoader(Resources& resources) : resources_(resources) {}
  ~SheetLoader();

  /// From now on the sheets of this document, or none. What is on its way for the one before is dropped, and
  /// nobody hears of its end.
  void set_document(std::shared_ptr<HTMLDocument> document);

  enum class LocalFiles : std::uint8_t { Allowed, OfLocalPages };
  /// Loads what these elements ask for. `done` is called once, when all has been dealt with: before this
  /// returns if nothing lies elsewhere, else from the message loop. An element that is asked for again while
  /// its sheet is on its way gets the newer one alone.
  void load(const std::vector<dom::Ref<dom::Element>>& owners, LocalFiles local_files,
            std::function<void()> done);
  /// The elements whose sheets, or what these import, the document may not bring in so far.
  std::vector<dom::Ref<dom::Element>> take_withheld();

 private:
  class Request;
  struct Batch;

  Resources& resources_;
  std::shared_ptr<HTMLDocument> document_;
  std::map<dom::NodeId, std::shared_ptr<Request>> requests_;
  std::map<dom::NodeId, dom::Ref<dom::Element>> withheld_;
  int imports_ = 0;  // of the document, in all
};

}  // namespace tvx::browser
