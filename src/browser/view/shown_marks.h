#pragma once

#include <map>
#include <set>
#include <utility>
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

  void set(MarkKind kind, const dom::Text& text, std::vector<MarkedStretch> stretches);
  /// Of all texts, as before another document.
  void clear();
  void clear(MarkKind kind);
  /// Null: there are none.
  const std::vector<MarkedStretch>* find(MarkKind kind, const dom::Text& text) const;
  /// A fresh page shows none.
  void page_began();
  /// What has changed, as far as the view knows the texts; a bounded number at a time. True: more can be
  /// sent.
  bool send(const Mirror& mirror);
  /// The view gets these: their marks wait no longer.
  void came(const std::vector<PatchOperation>& operations);

 private:
  using Key = std::pair<std::uint32_t, MarkKind>;  // the text's id
  View& view_;
  std::map<Key, std::vector<MarkedStretch>> all_;
  std::set<Key> unsent_;
  std::set<Key> waiting_;  // unsent, of texts that the view didn't have when they were to be sent
};

}  // namespace tvx::browser
