#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tvx/dom/mutation.h"

namespace tvx::dom {

/// Where the user's selection stood at the edge of an undo step. The anchor stays while the focus moves.
/// Plain places on purpose: this speaks of a past moment, and a live range would have moved on.
struct SelectionRecord {
  Ref<Node> anchor_node;  // empty: no selection
  Offset anchor_offset = 0;
  Ref<Node> focus_node;
  Offset focus_offset = 0;
  bool control = false;  // one element selected as a whole
  // Of a record that the journal keeps: a position right in the document, whose node is then empty.
  bool anchor_in_document = false, focus_in_document = false;
};

/// Who has the selection: the editing layer.
class SelectionKeeper {
 public:
  virtual ~SelectionKeeper() = default;
  virtual SelectionRecord capture() const = 0;
  virtual void restore(const SelectionRecord& record) = 0;
};

/// Who has changes of kind Overlay in the tree. Steps are recorded and replayed against a tree without them,
/// so that no record holds a trace of one.
class OverlayKeeper {
 public:
  virtual ~OverlayKeeper() = default;
  virtual void take_off() = 0;
  virtual void put_back() = 0;
};

/// How a new step relates to the one before.
enum class StepJoin : std::uint8_t {
  Never,
  TypingRun,  // joins the last step if that was typing too and nothing has ended the run
  LastStep    // belongs to the last step whatever that was, and keeps redo (reads that tidy attributes)
};

/// Who closes a step.
enum class StepEnd : std::uint8_t { ByHand, WithScope };

/// The journal: primitive mutations, grouped in steps; one user gesture or one public operation is one
/// step. Steps nest, the outermost counts. Changes made outside any step (a host writing to the tree) are
/// steps of their own, so that undo can never meet a tree it doesn't know.
class Journal {
 public:
  explicit Journal(Document& document);
  ~Journal();

  bool can_undo() const;
  bool can_redo() const;
  /// Takes back the last step, selection included. False if there is none or a step is open. The user can
  /// stop it, and redo (base/interruption.h): the tree, the selection and the steps are then as they were.
  bool undo();
  bool redo();
  /// The label of the step that undo() would take back, empty if none.
  std::u16string_view undo_label() const;
  std::u16string_view redo_label() const;

  /// A step is closed by whoever opened it. One in a scope is closed even where an exception passes, so that
  /// the user can stop what runs in it (base/interruption.h): it is taken back then, and redo is what it was.
  void open(std::u16string_view label, StepJoin join = StepJoin::Never, StepEnd end = StepEnd::ByHand);
  void close();
  /// Takes back what the open step did so far, and leaves it open (a composition that is cancelled).
  void roll_back();
  bool is_open() const { return depth_ > 0; }
  /// The next typing begins a step of its own: the caret was moved, a command ran.
  void end_typing_run();
  void clear();
  /// Steps that can be undone.
  std::size_t depth() const;

  void set_selection_keeper(SelectionKeeper* keeper) { selection_ = keeper; }
  void set_overlay_keeper(OverlayKeeper* keeper) { overlay_ = keeper; }

 private:
  friend class MutationDoor;
  struct Step;
  void before_mutation();
  void uncover();
  void cover();
  void record(Mutation&& mutation);
  void begin_step(std::u16string_view label, StepJoin join);
  void finish_step();
  void give_up();
  SelectionRecord capture() const;
  void restore(SelectionRecord record);
  bool replay(std::vector<std::unique_ptr<Step>>& from, std::vector<std::unique_ptr<Step>>& to,
              bool backward);
  void replay(const Step& step, bool backward);

  Document& document_;
  SelectionKeeper* selection_ = nullptr;
  OverlayKeeper* overlay_ = nullptr;
  std::vector<std::unique_ptr<Step>> done_, undone_;
  std::unique_ptr<Step> open_step_;
  std::size_t depth_ = 0;
  bool replaying_ = false;
  bool run_open_ = false;    // the last step is typing, and more may join it
  bool keeps_redo_ = false;  // the open step is a LastStep
  bool joined_ = false;      // the open step was taken from done_
  bool single_ = false;      // the open step is one change outside any step
  bool stoppable_ = false;   // the open step may be stopped
};

/// Opens a step and closes it at the end of the scope, also when an exception passes.
class UndoStep {
 public:
  UndoStep(Journal& journal, std::u16string_view label, StepJoin join = StepJoin::Never) : journal_(journal) {
    journal_.open(label, join, StepEnd::WithScope);
  }
  ~UndoStep() { journal_.close(); }
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

 private:
  Journal& journal_;
};

}  // namespace tvx::dom
