#include "tvx/editing/walk/word_index.h"

#include "tvx/dom/tree.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Mutation;

namespace {

/// Where a change begins; nothing for one that stands in no document.
Boundary place_of(const Mutation& mutation) {
  switch (mutation.type) {
    case Mutation::Type::Insert: return dom::before(*mutation.node);
    case Mutation::Type::Remove:
      if (mutation.before && mutation.before->parent()) return dom::before(*mutation.before);
      return {mutation.parent.get(), dom::length_of(*mutation.parent)};
    case Mutation::Type::ReplaceData: return {mutation.node.get(), mutation.offset};
    case Mutation::Type::SetAttribute: break;
  }
  return {mutation.node.get(), 0};
}

}  // namespace

WordIndex::WordIndex(dom::Document& document) : document_(document), checkpoint_(document, {}) {
  document.add_observer(*this);
}

WordIndex::~WordIndex() { document_->remove_observer(*this); }

void WordIndex::read_from(Boundary place, std::size_t before) {
  reader_.emplace(place);
  before_reader_ = read_ = before;
  last_.reset();
}

std::optional<dom::Range> WordIndex::word(std::size_t number) {
  dom::Element* body = document_->body();
  if (!body || number == 0) return std::nullopt;
  if (reader_ && last_ && number == read_) return last_;
  if (!reader_ || number <= read_) {
    const Boundary place = checkpoint_.start();
    if (place && number > before_checkpoint_ && dom::is_inclusive_ancestor(*body, *place.node))
      read_from(place, before_checkpoint_);
    else
      read_from({body, 0}, 0);
  }
  while (read_ < number) {
    last_ = reader_->next();
    if (!last_) return std::nullopt;
    ++read_;
  }
  checkpoint_.set({reader_->checkpoint(), reader_->checkpoint()});
  before_checkpoint_ = read_ - reader_->given_since();
  return last_;
}

void WordIndex::mutated(const Mutation& mutation) {
  // The border of the current element moves no word.
  if (mutation.kind == dom::MutationKind::Overlay) return;
  reader_.reset();
  last_.reset();
  const Boundary place = checkpoint_.start(), changed = place_of(mutation);
  if (!place || &dom::root_of(*changed.node) != document_.get()) return;
  const bool after = dom::compare(changed, place) >= 0;
  if (!after) checkpoint_.set({});
}

}  // namespace tvx::editing
