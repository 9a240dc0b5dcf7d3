#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "tvx/browser/browser.h"
#include "tvx/browser/loading/resources.h"

namespace tvx::browser {

/// The frames of a page. They are shown as a box with a label, so nobody needs their documents; but hosts
/// hear of them, and may refuse them: each loads what it names, with the events of a navigation, and the
/// frames in it after it. Then its document is dropped.
class FrameLoader {
 public:
  /// How events reach the host.
  using Tell = std::function<void(const std::function<void(BrowserEvents&)>&)>;

  /// `resources` outlives this.
  FrameLoader(Resources& resources, Tell tell);
  ~FrameLoader();

  /// From now on the frames of this document, or none. What is on its way for the one before is dropped; the
  /// downloads that were reported as begun are reported as over.
  void set_document(std::shared_ptr<HTMLDocument> document);

  /// Loads all frames of the document. `done` is called when the last is complete, has failed, was refused or
  /// has left the document; not at all once another document is set.
  void load_all(std::function<void()> done);
  /// A link or a host lets one frame go elsewhere.
  void navigate(const Navigation& navigation);
  /// The frame that a link's target names; null if there is none.
  dom::Element* frame_named(std::u16string_view name) const;

 private:
  struct Run;
  struct Frame;
  std::shared_ptr<Frame> make_frame(const std::shared_ptr<Frame>& parent, const dom::Element& element,
                                    const HTMLDocument& document) const;
  void load_within(const std::shared_ptr<Frame>& parent, const HTMLDocument& document);
  void start(const std::shared_ptr<Frame>& frame);
  void take(const std::shared_ptr<Frame>& frame, const HttpAnswer& answer);
  void end_download(Run& run);
  void close(std::shared_ptr<Frame> frame);

  Resources& resources_;
  Tell tell_;
  std::shared_ptr<HTMLDocument> document_;
  std::shared_ptr<Run> run_;  // of the present document
};

}  // namespace tvx::browser
