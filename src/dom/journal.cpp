#include "tvx/dom/journal.h"

#include <cassert>
#include <memory>
#include <utility>

#include "tvx/base/interruption.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

namespace detail {
void restore_attribute_place(Element& element, std::size_t index);
}

namespace {

/// A mutation as it is kept. A command on a whole document moves a hundred thousand nodes: what a move
/// doesn't need stands apart.
struct Record {
  explicit Record(Mutation&& mutation)
      : type(mutation.type), node(mutation.node), parent(mutation.parent), before(mutation.before) {
    if (type == Mutation::Type::ReplaceData || type == Mutation::Type::SetAttribute)
      content = std::make_unique<Mutation>(std::move(mutation));
  }

  Mutation::Type type;
  Ref<Node> node, parent, before;
  std::unique_ptr<Mutation> content;  // of what is neither put in nor taken out
};

}  // namespace

struct Journal::Step {
  std::u16string label;
  bool typing = false;
  std::vector<Record> mutations;
  SelectionRecord before, after;
};

namespace {

// Each of these styles before it leaps: a record that no longer fits is an alarm in a debug build and
// a dropped record in a release, never a garbled document.

bool unfit() {
  assert(false && "a journal record doesn't fit the tree");
  return false;
}

// A record that held its own document would keep it alive for ever: no parent is the document.
Node& parent_of(const Record& mutation, Document& document) {
  return mutation.parent ? *mutation.parent : document;
}

bool put_in(const Record& mutation, Document& document) {
  Node& parent = parent_of(mutation, document);
  Node* before = mutation.before.get();
  if (mutation.node->parent() || (before && before->parent() != &parent)) return unfit();
  insert(parent, mutation.node, before);
  return true;
}

bool take_out(const Record& mutation, Document& document) {
  if (mutation.node->parent() != &parent_of(mutation, document)) return unfit();
  remove(*mutation.node);
  return true;
}

bool exchange_data(const Mutation& mutation, const std::u16string& present, const std::u16string& wanted) {
  auto& node = static_cast<CharacterData&>(*mutation.node);
  if (node.data().compare(std::min(mutation.offset, node.length()), present.size(), present) != 0)
    return unfit();
  replace_data(node, mutation.offset, present.size(), wanted);
  return true;
}

bool write_attribute(const Mutation& mutation, const std::optional<std::u16string>& value) {
  auto& element = static_cast<Element&>(*mutation.node);
  if (!value) {
    remove_attribute(element, mutation.attribute);
    return true;
  }
  const bool was_there = element.has_attribute(mutation.attribute);
  set_attribute(element, mutation.attribute, *value, mutation.attribute_namespace);
  if (!was_there && mutation.old_value) detail::restore_attribute_place(element, mutation.attribute_index);
  return true;
}

bool take_back(const Record& mutation, Document& document) {
  switch (mutation.type) {
    case Mutation::Type::Insert: return take_out(mutation, document);
    case Mutation::Type::Remove: return put_in(mutation, document);
    case Mutation::Type::ReplaceData:
      return exchange_data(*mutation.content, mutation.content->inserted, mutation.content->removed);
    case Mutation::Type::SetAttribute: return write_attribute(*mutation.content, mutation.content->old_value);
  }
  return false;
}

bool make_again(const Record& mutation, Document& document) {
  switch (mutation.type) {
    case Mutation::Type::Insert: return put_in(mutation, document);
    case Mutation::Type::Remove: return take_out(mutation, document);
    case Mutation::Type::ReplaceData:
      return exchange_data(*mutation.content, mutation.content->removed, mutation.content->inserted);
    case Mutation::Type::SetAttribute: return write_attribute(*mutation.content, mutation.content->new_value);
  }
  return false;
}

// Typing makes one small record a key; a run of keys in one text is one record.
bool merge_typing(Record& record, const Mutation& next) {
  if (record.type != Mutation::Type::ReplaceData || next.type != record.type ||
      next.node != record.node.get())
    return false;
  Mutation& last = *record.content;
  if (!next.removed.empty() || next.offset != last.offset + last.inserted.size()) return false;
  last.inserted += next.inserted;
  return true;
}

}  // namespace

Journal::Journal(Document& document) : document_(document) {}
Journal::~Journal() = default;

bool Journal::can_undo() const { return !done_.empty() && depth_ == 0; }
bool Journal::can_redo() const { return !undone_.empty() && depth_ == 0; }
std::size_t Journal::depth() const { return done_.size(); }
std::u16string_view Journal::undo_label() const {
  return done_.empty() ? u"" : std::u16string_view(done_.back()->label);
}
std::u16string_view Journal::redo_label() const {
  return undone_.empty() ? u"" : std::u16string_view(undone_.back()->label);
}

// As the records of mutations, one of the selection doesn't hold the document.
SelectionRecord Journal::capture() const {
  SelectionRecord record = selection_ ? selection_->capture() : SelectionRecord{};
  record.anchor_in_document = record.anchor_node == &document_;
  record.focus_in_document = record.focus_node == &document_;
  if (record.anchor_in_document) record.anchor_node = nullptr;
  if (record.focus_in_document) record.focus_node = nullptr;
  return record;
}

void Journal::restore(SelectionRecord record) {
  if (!selection_) return;
  if (record.anchor_in_document) record.anchor_node = document_;
  if (record.focus_in_document) record.focus_node = document_;
  selection_->restore(record);
}

// A step that joins the one before it isn't stopped: that one would go with it, and both are short.
void Journal::open(std::u16string_view label, StepJoin join, StepEnd end) {
  if (depth_++ > 0) return;
  uncover();
  begin_step(label, join);
  stoppable_ = end == StepEnd::WithScope && !joined_ && begin_stoppable();
}

void Journal::uncover() {
  if (overlay_) overlay_->take_off();
}

void Journal::cover() {
  if (overlay_) overlay_->put_back();
}

void Journal::close() {
  assert(depth_ > 0);
  if (--depth_ > 0) return;
  const bool given_up = stoppable_ && being_interrupted();
  if (std::exchange(stoppable_, false)) end_stoppable();
  given_up ? give_up() : finish_step();
  cover();
}

void Journal::give_up() {
  const MutationScope scope(document_, MutationKind::Step);
  roll_back();
  open_step_ = nullptr;
}

void Journal::begin_step(std::u16string_view label, StepJoin join) {
  const bool typing = join == StepJoin::TypingRun;
  keeps_redo_ = join == StepJoin::LastStep;
  // Runs of one kind join: typed text, letters taken one after the other by one key.
  const bool joins =
      !done_.empty() &&
      ((typing && run_open_ && undone_.empty() && done_.back()->label == label) || keeps_redo_);
  joined_ = joins;
  if (joins) {
    open_step_ = std::move(done_.back());
    done_.pop_back();
    return;
  }
  open_step_ = std::make_unique<Step>();
  open_step_->label = label;
  open_step_->typing = typing;
  open_step_->before = capture();
}

void Journal::finish_step() {
  std::unique_ptr<Step> step = std::move(open_step_);
  if (!step) return;  // the journal was cleared meanwhile
  // Attributes tidied by a read with no step before it: nothing to join, nothing to undo.
  if (step->mutations.empty() || (keeps_redo_ && !joined_)) return;
  if (!keeps_redo_) {
    undone_.clear();  // only now: a step that is rolled back leaves what can be done again
    step->after = capture();
    run_open_ = step->typing;
  }
  done_.push_back(std::move(step));
}

void Journal::before_mutation() {
  if (replaying_ || document_.mutation_kind() != MutationKind::Step) return;
  if (depth_ > 0) return stop_if_wanted();
  // A host writing to the tree outside any gesture: a step of its own, closed by record().
  uncover();
  begin_step(u"", StepJoin::Never);
  single_ = true;
}

void Journal::record(Mutation&& mutation) {
  if (replaying_ || mutation.kind != MutationKind::Step || !open_step_) return;
  if (mutation.parent == &document_) mutation.parent = nullptr;
  auto& mutations = open_step_->mutations;
  if (!open_step_->typing || mutations.empty() || !merge_typing(mutations.back(), mutation)) {
    mutations.emplace_back(std::move(mutation));
  }
  if (single_) {
    single_ = false;
    finish_step();
    run_open_ = false;
    cover();
  }
}

void Journal::roll_back() {
  if (!open_step_) return;
  replaying_ = true;
  auto& mutations = open_step_->mutations;
  for (auto mutation = mutations.rbegin(); mutation != mutations.rend(); ++mutation)
    take_back(*mutation, document_);
  mutations.clear();
  replaying_ = false;
  restore(open_step_->before);
}

void Journal::end_typing_run() { run_open_ = false; }

void Journal::clear() {
  done_.clear();
  undone_.clear();
  run_open_ = false;
  if (depth_ > 0) open_step_ = nullptr;
}

bool Journal::undo() { return replay(done_, undone_, true); }
bool Journal::redo() { return replay(undone_, done_, false); }

bool Journal::replay(std::vector<std::unique_ptr<Step>>& from, std::vector<std::unique_ptr<Step>>& to,
                     bool backward) {
  if (from.empty() || depth_ > 0) return false;
  uncover();
  const SelectionRecord stood = capture();
  std::unique_ptr<Step> step = std::move(from.back());
  from.pop_back();
  try {
    replay(*step, backward);
  } catch (const Interrupted&) {
    from.push_back(std::move(step));
    restore(stood);
    cover();
    throw;
  }
  run_open_ = false;
  restore(backward ? step->before : step->after);
  to.push_back(std::move(step));
  cover();
  return true;
}

// Stopped, it leaves the tree as it was.
void Journal::replay(const Step& step, bool backward) {
  const auto& mutations = step.mutations;
  const std::size_t count = mutations.size();
  const auto at = [&](std::size_t i) -> const Record& { return mutations[backward ? count - 1 - i : i]; };
  replaying_ = true;
  const MutationScope scope(document_, MutationKind::Step);
  const bool stoppable = begin_stoppable();
  std::size_t done = 0;
  try {
    for (; done < count; ++done) {
      stop_if_wanted();
      backward ? take_back(at(done), document_) : make_again(at(done), document_);
    }
  } catch (const Interrupted&) {
    while (done > 0) {
      --done;
      backward ? make_again(at(done), document_) : take_back(at(done), document_);
    }
    replaying_ = false;
    if (stoppable) end_stoppable();
    throw;
  }
  replaying_ = false;
  if (stoppable) end_stoppable();
}

}  // namespace tvx::dom
