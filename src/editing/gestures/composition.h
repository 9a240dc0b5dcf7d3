#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"
#include "tvx/editing/inline/recorded_values.h"

namespace tvx::editing {

class Editor;

/// Where composed text stands: a stretch of one text.
struct ComposedStretch {
  dom::Text* text;
  Offset start, length;
};

/// Text that an input method is composing. It stands in the document, inside an undo step that is open from
/// the first letter to the end, and takes the place of what was selected. Each change takes back what the one
/// before did and writes anew; what others have changed meanwhile stays.
///
/// The editor outlives it. Destroyed while text is being composed it leaves that as it stands.
class Composition final : private dom::MutationObserver {
 public:
  explicit Composition(Editor& editor) : editor_(editor) {}
  ~Composition() override { accept(); }
  Composition(const Composition&) = delete;
  Composition& operator=(const Composition&) = delete;

  bool active() const { return active_; }
  /// Shows a text, with the caret `cursor` units within it. Empty: as cancel().
  void update(std::u16string_view text, Offset cursor);
  /// What stands there stays, as text like any other.
  void accept();
  /// All is again as it was before.
  void cancel();
  /// None while nothing is composed, or while others have torn the text apart.
  std::optional<ComposedStretch> stretch() const;

 private:
  void mutated(const dom::Mutation& mutation) override;
  void begin();
  void end();
  void take_back();
  void write(std::u16string_view text, Offset cursor);

  Editor& editor_;
  bool active_ = false;
  bool writing_ = false;
  bool disturbed_ = false;  // others have changed the document: the step can't be taken back as a whole
  RecordedLook look_;
  std::unique_ptr<dom::LiveRange> range_;
  Offset length_ = 0;
};

}  // namespace tvx::editing
