#pragma once

#include <set>
#include <unordered_map>
#include <vector>

#include "tvx/browser/view/mark_display.h"
#include "tvx/browser/view/messages.h"

namespace tvx::browser {

class Mirror;
class View;

/// The marks as the view shows them: those of a text are sent once the view has it.
class ShownMarks {
 public:
  explicit ShownMarks(View& view) : view_(view) {}

  void set(const dom::Text& text, std::vector<MarkedStretch> stretches);
  /// Of all texts, as before another document.
  void clear();
  /// A fresh page shows none.
  void page_began();
  /// What has changed, as far as the view knows the texts; a bounded number at a time. True: more can be
  /// sent.
  bool send(const Mirror& mirror);

 private:
  View& view_;
  std::unordered_map<std::uint32_t, std::vector<MarkedStretch>> all_;  // by the text's id
  std::set<std::uint32_t> unsent_;
};

}  // namespace tvx::browser
