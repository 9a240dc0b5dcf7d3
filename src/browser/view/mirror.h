#pragma once

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "tvx/browser/view/gap.h"
#include "tvx/browser/view/messages.h"
#include "tvx/dom/mutation.h"

namespace tvx::browser {

/// Keeps a view's tree equal to a document's, under mirror_rules.
///
/// It hears of every mutation and only marks nodes. What to send is worked out at the flush, from the tree
/// as it is then: what was made and removed in between is never sent, and a thousand edits of a text are
/// one operation.
///
/// A node is *known* when the view has it. A new document is sent in slices in tree order: an element whose
/// children aren't all known is *incomplete* and has gaps (gap.h), stretches of children of which nothing is
/// known; what changes there costs nothing. What is wanted in the window before its turn is sent first, and
/// leaves a gap before it. New parts that are too large for one flush have gaps too, or wait as *carried*
/// nodes.
class Mirror final : public dom::MutationObserver {
 public:
  explicit Mirror(dom::Document& document);
  ~Mirror() override;
  Mirror(const Mirror&) = delete;
  Mirror& operator=(const Mirror&) = delete;

  /// The view knows nothing: everything is to be sent anew.
  void reset();

  /// Edits wait to be sent.
  bool dirty() const;
  /// Parts of the tree, new ones or the whole, are still to be sent.
  bool loading() const { return !gaps_.empty() || !carried_.empty(); }
  /// What brings the view up to date: all edits, and up to `budget` of what is to be loaded. A node counts
  /// one, and one more for each 64 units of text. `wanted` comes first of what is to be loaded, with what
  /// stands around it.
  std::vector<PatchOperation> flush(std::size_t budget, dom::Node* wanted = nullptr);

  /// Where in the stream of patches a node was last changed; for messages about older trees.
  PatchNumber last_change(dom::NodeId id) const;
  /// The number that the next flush is sent under.
  void set_patch(PatchNumber number) { patch_ = number; }

  /// The node that the view knows by this id; null if none.
  dom::Node* node(dom::NodeId id) const;
  bool knows(const dom::Node& node) const { return this->node(node.id()) == &node; }
  /// Whether the view has the last node of the document.
  bool has_end() const;
  /// Whether the view has nodes after some that are still to be sent.
  bool is_torn() const;

  // --- positions among the children of a known node, some of which the view may not have ---
  /// None for one among children that are still to be sent.
  std::optional<Offset> offset_in_view(const dom::Node& parent, Offset offset) const;
  Offset offset_in_document(const dom::Node& parent, Offset offset) const;

  /// The view could not make this node: it is sent once more, and left out after a second failure. Returns
  /// false when it is left out.
  bool failed(dom::NodeId id);

  void mutated(const dom::Mutation& mutation) override;

 private:
  enum Flag : std::uint8_t {
    Touched = 1,     // was inserted, moved or removed: its position is to be sent
    Detached = 2,    // the view knows it, out of its tree
    Incomplete = 4,  // has gaps
    DirtyData = 8,
    LeftOut = 16
  };
  struct Entry {
    dom::Node* node = nullptr;  // known: alive, since only a removal could end it, and that is noted
    PatchNumber changed{};
    std::uint8_t flags = 0;
    std::uint8_t failures = 0;
  };
  struct DirtyText {
    dom::Ref<dom::CharacterData> node;
    Offset prefix, suffix;  // units at both ends that are as the view has them
    Offset old_length;
  };
  struct DirtyAttribute {
    dom::Ref<dom::Element> element;
    dom::Name name;
  };

  Entry& entry(const dom::Node& node);
  bool has(const dom::Node& node, Flag flag) const;
  bool in_place(const dom::Node& node) const;
  bool is_shown(const dom::Node& node) const;
  void touch(dom::Node& node);
  void note_data(const dom::Mutation& mutation);
  void step_aside(const dom::Mutation& removal);

  void detach_touched();
  void forget_hidden(std::vector<dom::Ref<dom::Node>>& nodes);
  void forget(dom::Node& root);
  void send_data();
  void send_attributes();
  void send_attributes_of(dom::Element& element, std::vector<std::u16string> names, bool all);
  void place_nodes(std::vector<dom::Ref<dom::Node>>& nodes, std::size_t gaps);
  void place_run(dom::Node& first, std::size_t gaps);
  void leave_to_the_cursor(dom::Node& first, const dom::Node* end);
  void place(dom::Node& node, const dom::Node* before);
  void make(dom::Node& node, const dom::Node* before);

  // --- gaps (mirror_gaps.cpp) ---
  void tidy_gaps();
  void drop_gaps(const dom::Node& element);
  void close_last_gap();
  bool is_open_ended(const dom::Node& element) const;
  void fill_gaps(std::size_t down_to);
  void lead_to(dom::Node& wanted);
  bool enter(dom::Node& child, std::size_t& fronts);
  std::size_t gap_around(const dom::Node& child) const;
  bool spent() const { return spent_ >= limit_; }

  PatchOperation& add(PatchOperation::Type type, dom::Node& node);
  dom::NodeId parent_id(const dom::Node& node) const;

  dom::Ref<dom::Document> document_;
  std::vector<Entry> entries_;  // by NodeId
  std::vector<dom::Ref<dom::Node>> fresh_, carried_, pending_forgets_;
  std::vector<Gap> gaps_;  // the last one is filled first
  std::unordered_map<dom::Node*, DirtyText> dirty_texts_;
  std::vector<DirtyAttribute> dirty_attributes_;
  std::vector<PatchOperation> operations_;
  std::size_t spent_ = 0, limit_ = 0;
  std::unordered_set<const dom::Node*> left_to_the_cursor_;  // in this flush, of those that the view knows
  bool removals_ = false;
  PatchNumber patch_{};
};

}  // namespace tvx::browser
