#include "htmled/keyring.h"

#ifdef TVX_KEYRING
#include <libsecret/secret.h>
#endif

/// No header of Qt here: what it calls "signals" GLib calls its own.
namespace tvx::htmled {
namespace {

#ifdef TVX_KEYRING

const SecretSchema* schema() {
  // Entries of this kind are ours alone.
  static const SecretSchema network_password = {"org.tvxhtml.htmled.Publish",
                                                SECRET_SCHEMA_NONE,
                                                {{"protocol", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                                 {"server", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                                 {"user", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                                 {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                                0,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr};
  return &network_password;
}

class DesktopKeyring final : public Keyring {
 public:
  std::optional<std::string> look_up(const KeyringEntry& entry) override {
    GError* failure = nullptr;
    gchar* found =
        secret_password_lookup_sync(schema(), nullptr, &failure, "protocol", entry.protocol.c_str(), "server",
                                    entry.server.c_str(), "user", entry.user.c_str(), nullptr);
    g_clear_error(&failure);
    if (!found) return std::nullopt;
    std::string password = found;
    secret_password_free(found);
    return password;
  }

  bool store(const KeyringEntry& entry, const std::string& password) override {
    GError* failure = nullptr;
    const std::string label = entry.user + " @ " + entry.server;
    const bool stored =
        password.empty()
            ? secret_password_clear_sync(schema(), nullptr, &failure, "protocol", entry.protocol.c_str(),
                                         "server", entry.server.c_str(), "user", entry.user.c_str(),
                                         nullptr) ||
                  !failure
            : secret_password_store_sync(schema(), SECRET_COLLECTION_DEFAULT, label.c_str(), password.c_str(),
                                         nullptr, &failure, "protocol", entry.protocol.c_str(), "server",
                                         entry.server.c_str(), "user", entry.user.c_str(), nullptr);
    g_clear_error(&failure);
    return stored;
  }
};

#else

class DesktopKeyring final : public Keyring {
 public:
  std::optional<std::string> look_up(const KeyringEntry&) override { return std::nullopt; }
  bool store(const KeyringEntry&, const std::string&) override { return false; }
};

#endif

}  // namespace

std::shared_ptr<Keyring> desktop_keyring() { return std::make_shared<DesktopKeyring>(); }

}  // namespace tvx::htmled
