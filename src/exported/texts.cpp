#include "tvx/exported/texts.h"

#include <limits>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>

#include "tvx/base/error.h"

namespace tvx::exported {

namespace {

class Pool {
 public:
  const tvx_char* add(std::u16string_view text) {
    auto copy = std::make_unique<tvx_char[]>(text.size());
    std::copy(text.begin(), text.end(), copy.get());
    const std::lock_guard lock(mutex_);
    const tvx_char* characters = copy.get();
    texts_.emplace(characters, std::move(copy));
    return characters;
  }
  void remove(const tvx_char* characters) {
    const std::lock_guard lock(mutex_);
    texts_.erase(characters);
  }

 private:
  std::mutex mutex_;
  std::unordered_map<const tvx_char*, std::unique_ptr<tvx_char[]>> texts_;
};

Pool& pool() {
  static Pool pool;
  return pool;
}

}  // namespace

tvx_text new_text(std::u16string_view text) {
  if (text.empty()) return {nullptr, 0};
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
  return {pool().add(text), static_cast<std::uint32_t>(text.size())};
}

void free_text(tvx_text& text) {
  if (text.characters) pool().remove(text.characters);
  text = {nullptr, 0};
}

std::u16string_view view_of(const tvx_text& text) {
  if (text.length == 0) return {};
  if (!text.characters) throw RuntimeError(errors::invalid_call, u"A text has a length and no characters");
  return {reinterpret_cast<const char16_t*>(text.characters), text.length};
}

void clear_value(tvx_value& value) {
  if (value.type == TVX_TEXT) free_text(value.as.text);
  if (value.type == TVX_OBJECT && value.as.object) value.as.object->functions->Release(value.as.object);
  value = {};
}

void set_text(tvx_value& value, std::u16string_view text) {
  const tvx_text copy = new_text(text);  // first, for it may be of the value's own text
  clear_value(value);
  value.type = TVX_TEXT;
  value.as.text = copy;
}

}  // namespace tvx::exported
