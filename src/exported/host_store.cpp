#include "tvx/exported/host_store.h"

#include "tvx/base/error.h"
#include "tvx/exported/texts.h"

namespace tvx::exported {

namespace {

using platform::PropertyValue;

/// A value as long as this lives.
struct Given {
  tvx_value value = {};

  explicit Given(const PropertyValue& stored) {
    if (const auto* text = std::get_if<std::u16string>(&stored)) {
      set_text(value, *text);
    } else if (const auto* flag = std::get_if<bool>(&stored)) {
      value.type = TVX_BOOLEAN;
      value.as.boolean = *flag ? TVX_TRUE : TVX_FALSE;
    } else if (const auto* small = std::get_if<std::int16_t>(&stored)) {
      value.type = TVX_INTEGER16;
      value.as.integer16 = *small;
    } else {
      value.type = TVX_INTEGER32;
      value.as.integer32 = std::get<std::int32_t>(stored);
    }
  }
  ~Given() { clear_value(value); }
  Given(const Given&) = delete;
  Given& operator=(const Given&) = delete;
};

PropertyValue stored_value(const tvx_value& value) {
  switch (value.type) {
    case TVX_TEXT: return std::u16string(view_of(value.as.text));
    case TVX_BOOLEAN: return value.as.boolean != 0;
    case TVX_INTEGER16: return value.as.integer16;
    case TVX_INTEGER32: return value.as.integer32;
    default: throw RuntimeError(errors::type_mismatch, u"A store holds texts, booleans and whole numbers");
  }
}

tvx_text key_of(std::u16string_view key) {
  return {reinterpret_cast<const tvx_char*>(key.data()), static_cast<std::uint32_t>(key.size())};
}

}  // namespace

PropertyValue HostStore::ReadProperty(std::u16string_view key, const PropertyValue& otherwise) const {
  Given given(otherwise);
  const tvx_text name = key_of(key);
  return store_.functions->ReadProperty(&store_, &name, &given.value) == TVX_OK ? stored_value(given.value)
                                                                                : otherwise;
}

void HostStore::WriteProperty(std::u16string_view key, const PropertyValue& value,
                              const PropertyValue& standard) {
  const Given given(value);
  const tvx_text name = key_of(key);
  store_.functions->WriteProperty(&store_, &name, &given.value,
                                  platform::equal_in_store(value, standard) ? TVX_TRUE : TVX_FALSE);
}

}  // namespace tvx::exported
