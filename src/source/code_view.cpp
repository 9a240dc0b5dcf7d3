#include "source/code_view.h"

#include <algorithm>
#include <utility>

#include "base/strings.h"

namespace tvx::source {
namespace {

/// CR, LF and CR LF alike become CR LF.
std::u16string with_crlf(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size() + text.size() / 32);
  for (Offset i = 0; i < text.size(); ++i) {
    if (text[i] != u'\r' && text[i] != u'\n') {
      result += text[i];
      continue;
    }
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    result += u"\r\n";
  }
  return result;
}

}  // namespace

OrvelCV::OrvelCV() : text_(std::make_shared<const std::u16string>()) {}
OrvelCV::~OrvelCV() = default;

std::u16string OrvelCV::Text() const { return with_crlf(*text_); }

void OrvelCV::set_Text(std::u16string_view text) { set_Text(std::make_shared<const std::u16string>(text)); }

void OrvelCV::set_Text(std::shared_ptr<const std::u16string> text) {
  text_ = std::move(text);
  edited_ = false;
  undo_.clear();
  redo_.clear();
  tell();
}

std::shared_ptr<const std::u16string> OrvelCV::untouched_text() const { return edited_ ? nullptr : text_; }

void OrvelCV::set_Enabled(bool enabled) {
  if (std::exchange(enabled_, enabled) != enabled) tell();
}

void OrvelCV::set_Visible(bool visible) {
  if (std::exchange(visible_, visible) != visible) tell();
}

void OrvelCV::edit(std::u16string_view text) {
  undo_.push_back(text_);
  redo_.clear();
  text_ = std::make_shared<const std::u16string>(text);
  edited_ = true;
}

bool OrvelCV::Undo() {
  if (undo_.empty()) return false;
  redo_.push_back(std::exchange(text_, undo_.back()));
  undo_.pop_back();
  edited_ = !undo_.empty();
  tell();
  return true;
}

bool OrvelCV::Redo() {
  if (redo_.empty()) return false;
  undo_.push_back(std::exchange(text_, redo_.back()));
  redo_.pop_back();
  edited_ = true;
  tell();
  return true;
}

void OrvelCV::SetFocus() {
  focused_ = true;
  tell();
}

void OrvelCV::DetachAllMessages() { focused_ = false; }

void OrvelCV::add_observer(CodeViewObserver& observer) { observers_.push_back(&observer); }
void OrvelCV::remove_observer(CodeViewObserver& observer) { std::erase(observers_, &observer); }

void OrvelCV::tell() {
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->code_view_changed();
}

}  // namespace tvx::source
