#include "tvx/settings_store.h"

#include "tvx/base/error.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {

using platform::PropertyValue;

PropertyValue SettingsStore::ReadProperty(std::u16string_view key, const PropertyValue& otherwise) const {
  const QVariant stored = settings_.value(to_qt(key));
  if (!stored.isValid()) return otherwise;
  switch (stored.typeId()) {
    case QMetaType::Bool: return stored.toBool();
    case QMetaType::Int: return std::int32_t(stored.toInt());
    case QMetaType::QString: return from_qt(stored.toString());
    // In a settings file a text with a comma in it that was written by hand reads as a list.
    case QMetaType::QStringList: return from_qt(stored.toStringList().join(QStringLiteral(", ")));
    default: throw RuntimeError(errors::type_mismatch, u"Type mismatch");
  }
}

void SettingsStore::WriteProperty(std::u16string_view key, const PropertyValue& value,
                                  const PropertyValue& standard) {
  if (platform::equal_in_store(value, standard)) return settings_.remove(to_qt(key));
  struct ToVariant {
    QVariant operator()(const std::u16string& text) const { return to_qt(text); }
    QVariant operator()(bool truth) const { return truth; }
    QVariant operator()(std::int16_t number) const { return int(number); }
    QVariant operator()(std::int32_t number) const { return int(number); }
  };
  settings_.setValue(to_qt(key), std::visit(ToVariant{}, value));
}

}  // namespace tvx::qt
