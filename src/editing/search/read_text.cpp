#include "tvx/editing/search/read_text.h"

#include <algorithm>

#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {
namespace {

/// Units that show nothing between two letters: a word is found wherever a line may be broken within it.
bool is_unseen(char16_t unit) { return unit == 0xAD || unit == 0x200B; }

}  // namespace

class ReadText::Reading {
 public:
  explicit Reading(ReadText& read) : text_(read.text_), runs_(read.runs_) {}

  void take(const Content& met) {
    if (met.kind != ContentKind::Text) return end_line();
    dom::Text& node = met.text();
    if (node.parent() != parent_) {
      parent_ = node.parent();
      collapsing_ = collapses(node);
    }
    take_text(node, node.data(), met.from, met.to);
  }
  void end_line() {
    // A blank at the end of a line isn't seen.
    if (after_blank_) {
      text_.pop_back();
      if (--runs_.back().length == 0) runs_.pop_back();
    }
    after_blank_ = false;
    if (!text_.empty() && text_.back() != u'\n') text_ += u'\n';
  }

 private:
  void take_text(dom::Text& node, const std::u16string& data, Offset from, Offset to) {
    bool open = false;  // the last run goes on
    for (Offset at = from; at < to; ++at) {
      char16_t unit = data[at];
      if (!collapsing_ && unit == u'\n') {
        text_ += unit;
        open = after_blank_ = false;
        continue;
      }
      const bool blank = collapsing_ && is_ascii_space(unit);
      if (is_unseen(unit) || (blank && (after_blank_ || text_.empty() || text_.back() == u'\n'))) {
        open = false;
        continue;
      }
      if (!open) runs_.push_back({&node, at, text_.size(), 0});
      open = true;
      text_ += blank ? u' ' : unit;
      ++runs_.back().length;
      after_blank_ = blank;
    }
  }

  std::u16string& text_;
  std::vector<Run>& runs_;
  const dom::Node* parent_ = nullptr;
  bool collapsing_ = true;
  bool after_blank_ = false;
};

ReadText::ReadText(dom::Node& top) {
  Reading reading(*this);
  ContentWalk walk({&top, 0}, Direction::Forward, &top, ContentWalk::Words::Read);
  for (Content met = walk.next(); met.kind != ContentKind::End; met = walk.next()) reading.take(met);
  reading.end_line();
}

struct ReadInTurns::State {
  explicit State(dom::Node& top)
      : reading(read), walk({&top, 0}, Direction::Forward, &top, ContentWalk::Words::Read) {}
  ReadText read;
  ReadText::Reading reading;
  ContentWalk walk;
};

ReadInTurns::ReadInTurns(dom::Node& top) : top_(top) { start(); }

ReadInTurns::~ReadInTurns() = default;

void ReadInTurns::start() {
  version_ = dom::document_of(*top_).version();
  state_ = std::make_unique<State>(*top_);
}

bool ReadInTurns::go_on(std::size_t things) {
  const dom::Document* document = top_->document();
  if (!document) return true;
  if (document->version() != version_) start();
  for (; things > 0; --things) {
    const Content met = state_->walk.next();
    if (met.kind == ContentKind::End) {
      state_->reading.end_line();
      return true;
    }
    state_->reading.take(met);
  }
  return false;
}

const std::u16string& ReadInTurns::text() const { return state_->read.text(); }
std::u16string ReadInTurns::take_text() { return std::move(state_->read.text_); }

const ReadText::Run& ReadText::run_of(Offset unit) const {
  return *std::prev(std::ranges::upper_bound(runs_, unit, {}, &Run::start));
}

dom::Range ReadText::range_of(Offset from, Offset to) const {
  const Run &first = run_of(from), &last = run_of(to - 1);
  return {{first.node, first.from + from - first.start}, {last.node, last.from + to - last.start}};
}

std::vector<ReadText::Piece> ReadText::pieces_of(Offset from, Offset to) const {
  std::vector<Piece> pieces;
  for (auto run = std::prev(std::ranges::upper_bound(runs_, from, {}, &Run::start));
       run != runs_.end() && run->start < to; ++run) {
    const Offset begin = run->from + std::max(from, run->start) - run->start;
    const Offset end = run->from + std::min(to - run->start, run->length);
    if (!pieces.empty() && pieces.back().node == run->node)
      pieces.back().to = end;
    else
      pieces.push_back({run->node, begin, end});
  }
  return pieces;
}

Offset ReadText::unit_at(const dom::Boundary& place) const {
  const auto run = std::ranges::partition_point(runs_, [&](const Run& earlier) {
    return dom::compare({earlier.node, earlier.from + earlier.length}, place) <= 0;
  });
  if (run == runs_.end()) return text_.size();
  const bool within = run->node == place.node && place.offset > run->from;
  return within ? run->start + place.offset - run->from : run->start;
}

}  // namespace tvx::editing
