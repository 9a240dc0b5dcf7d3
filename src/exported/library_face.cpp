#include "tvx/exported/library_face.h"

#include <algorithm>
#include <string>

#include "tvx/base/strings.h"
#include "tvx/exported/object_faces.h"
#include "tvx/exported/texts.h"

namespace tvx::exported {

namespace {

std::uint32_t get_version(tvx_library*) { return TVX_INTERFACE_VERSION; }

tvx_result pump(tvx_library*, std::int32_t milliseconds) {
  return guarded([&] {
    Module::only().pump(std::max(milliseconds, 0));
    return TVX_OK;
  });
}

/// Texts may be made in any thread.
template <class Make>
tvx_result made(Make&& make) noexcept {
  try {
    make();
    return TVX_OK;
  } catch (...) {
    return TVX_NO_MEMORY;
  }
}

std::u16string_view characters_of(const tvx_char* characters, std::uint32_t length) {
  return {reinterpret_cast<const char16_t*>(characters), length};
}

tvx_result make_text(tvx_library*, const tvx_char* characters, std::uint32_t length, tvx_text* text) {
  if (!text || (!characters && length > 0)) return TVX_POINTER;
  *text = {};
  return made([&] { *text = new_text(characters_of(characters, length)); });
}

tvx_result make_text_from_utf8(tvx_library*, const char* bytes, std::int64_t length, tvx_text* text) {
  if (!text || (!bytes && length != 0)) return TVX_POINTER;
  *text = {};
  return made([&] {
    const std::string_view all =
        length < 0 ? std::string_view(bytes) : std::string_view(bytes, static_cast<std::size_t>(length));
    *text = new_text(from_utf8(all));
  });
}

std::uint64_t text_to_utf8(tvx_library*, const tvx_text* text, char* bytes, std::uint64_t size) {
  if (bytes && size > 0) *bytes = '\0';
  std::string all;
  if (!text || made([&] { all = to_utf8(view_of(*text)); }) != TVX_OK) return 0;
  if (!bytes || size == 0) return all.size();
  std::size_t end = std::min<std::size_t>(all.size(), size - 1);
  while (end > 0 && end < all.size() && (all[end] & 0xC0) == 0x80) --end;
  std::copy_n(all.begin(), end, bytes);
  bytes[end] = '\0';
  return all.size();
}

void give_text_back(tvx_library*, tvx_text* text) {
  if (text) free_text(*text);
}

tvx_result set_value_text(tvx_library*, tvx_value* value, const tvx_char* characters, std::uint32_t length) {
  if (!value || (!characters && length > 0)) return TVX_POINTER;
  return made([&] { set_text(*value, characters_of(characters, length)); });
}

void give_value_back(tvx_library*, tvx_value* value) {
  if (value) clear_value(*value);
}

tvx_result get_error(tvx_library*, tvx_error* error) {
  if (!error) return TVX_POINTER;
  *error = {};
  return guarded([&] {
    const auto& failure = Module::only().last_failure();
    if (!failure) return TVX_NOTHING;
    *error = {failure->number, 0, new_text(failure->text)};
    return TVX_OK;
  });
}

}  // namespace

const tvx_library_functions library_functions = {query_interface<tvx_library>,
                                                 add_reference<tvx_library>,
                                                 release_reference<tvx_library>,
                                                 get_version,
                                                 pump,
                                                 make_text,
                                                 make_text_from_utf8,
                                                 text_to_utf8,
                                                 give_text_back,
                                                 set_value_text,
                                                 give_value_back,
                                                 get_error};

}  // namespace tvx::exported
