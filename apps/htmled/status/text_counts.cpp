#include "htmled/status/text_counts.h"

#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/range.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/search/read_text.h"
#include "tvx/editing/tables/selected_cells.h"
#include "tvx/htmled_widget.h"

namespace tvx::htmled {

namespace {

/// Read as the whole page is, so that it is never more than that.
editing::TextCount count_within(const dom::Range& range) {
  dom::Node* top = editing::block_around({dom::common_ancestor(*range.start.node, *range.end.node), 0});
  if (!top) return {};
  const editing::ReadText read(*top);
  const Offset from = read.unit_at(range.start), to = read.unit_at(range.end);
  return from < to ? editing::count_text(read.text().substr(from, to - from)) : editing::TextCount{};
}

/// Cells are selected whole, wherever the mouse went in the first and in the last.
editing::TextCount count_selected(const editing::Editor& editor) {
  const auto cells = editing::selected_cells(editor);
  if (cells.empty()) return count_within(editor.selection().range());
  editing::TextCount count;
  for (const auto& cell : cells) {
    const editing::TextCount more = editing::count_text(editing::ReadText(*cell).text());
    count.words += more.words;
    count.characters += more.characters;
  }
  return count;
}

}  // namespace

void TextCounts::set_editor(qt::HTMLedWidget* editor) {
  if (editor_) editor_->disconnect(this);
  editor_ = editor;
  if (!turn_.isSingleShot()) {
    constexpr int pause = 400, selection_pause = 150;
    for (QTimer* timer : {&pause_, &turn_, &selection_pause_}) timer->setSingleShot(true);
    pause_.setInterval(pause);
    selection_pause_.setInterval(selection_pause);
    connect(&pause_, &QTimer::timeout, this, &TextCounts::begin);
    connect(&turn_, &QTimer::timeout, this, &TextCounts::go_on);
    connect(&selection_pause_, &QTimer::timeout, this, &TextCounts::count_selection);
  }
  of_document_ = {};
  of_selection_.reset();
  emit counted();
  if (!editor_) return;
  const auto later = [this] { pause_.start(); };
  connect(editor_, &qt::HTMLedWidget::property_changed, this, later);
  connect(editor_, &qt::HTMLedWidget::documentLoaded, this, later);
  connect(editor_, &qt::HTMLedWidget::selectionChanged, this, [this] { selection_pause_.start(); });
  pause_.start();
  selection_pause_.start();
}

void TextCounts::begin() {
  emit paused();
  const auto document = editor_ ? editor_->control().DOM() : nullptr;
  if (!document || !document->body()) return;
  reading_ = std::make_unique<editing::ReadInTurns>(*document->body());
  go_on();
}

// The text first, then its words. True when the text is there.
bool TextCounts::read_on() {
  constexpr std::size_t things_a_turn = 10'000;
  if (!reading_->go_on(things_a_turn)) return false;
  text_ = reading_->take_text();
  reading_.reset();
  counter_.begin(text_);
  return true;
}

void TextCounts::go_on() {
  constexpr std::size_t units_a_turn = 32 * 1024;
  if (reading_ && !read_on()) return turn_.start();
  if (!counter_.go_on(units_a_turn)) return turn_.start();
  if (counter_.count() == of_document_) return;
  of_document_ = counter_.count();
  emit counted();
}

void TextCounts::count_selection() {
  const auto document = editor_ ? editor_->control().DOM() : nullptr;
  std::optional<editing::TextCount> now;
  if (document && document->editor().selection().type() == editing::SelectionType::Text &&
      !document->editor().selection().collapsed())
    now = count_selected(document->editor());
  if (now == of_selection_) return;
  of_selection_ = now;
  emit counted();
}

}  // namespace tvx::htmled
