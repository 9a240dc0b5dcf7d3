#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tvx::htmled {

/// Whose password it is.
struct KeyringEntry {
  std::string protocol, server, user;
};

/// Where passwords are kept between two starts. Calls may take their time: the desktop may ask the user for
/// the keyring's own password meanwhile. They come from threads of their own.
class Keyring {
 public:
  virtual ~Keyring() = default;
  /// Nothing where none is kept, or there is no keyring.
  virtual std::optional<std::string> look_up(const KeyringEntry& entry) = 0;
  /// False where it can't be kept.
  virtual bool store(const KeyringEntry& entry, const std::string& password) = 0;
};

/// The desktop's own (the Secret Service of freedesktop.org).
std::shared_ptr<Keyring> desktop_keyring();

}  // namespace tvx::htmled
