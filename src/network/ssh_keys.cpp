#include "tvx/network/ssh_keys.h"

#include <curl/curl.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "tvx/base/base64.h"
#include "tvx/base/strings.h"

namespace tvx::network {
namespace {

constexpr std::size_t longest_key = 16'384;

std::string text_of(const std::string& path) {
  std::string text(longest_key, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  return text;
}

/// What stands between the lines that mark a key of that kind; empty if there are none.
std::string_view body_of(std::string_view text, std::string_view kind) {
  const std::string first = "-----BEGIN " + std::string(kind) + "-----";
  const std::size_t start = text.find(first);
  if (start == text.npos) return {};
  const std::size_t end = text.find("-----END", start);
  return end == text.npos ? std::string_view()
                          : text.substr(start + first.size(), end - start - first.size());
}

/// The library's version, where it is one that signs with RSA keys by SHA-1 only: up to 1.10.
std::string version_of_old_library() {
  const curl_version_info_data* versions = curl_version_info(CURLVERSION_NOW);
  const char* library = versions ? versions->libssh_version : nullptr;
  int major = 0, minor = 0;
  if (!library || std::sscanf(library, "libssh2/%d.%d", &major, &minor) != 2) return {};
  return major > 1 || minor > 10 ? std::string() : library;
}

}  // namespace

std::string home_file(const std::string& name) {
  const char* home = std::getenv("HOME");
  return home && *home == '/' ? std::string(home) + "/" + name : std::string();
}

std::string usual_key() {
  for (const char* name : {".ssh/id_ed25519", ".ssh/id_ecdsa", ".ssh/id_rsa"}) {
    std::error_code error;
    if (const std::string path = home_file(name); !path.empty() && std::filesystem::exists(path, error))
      return path;
  }
  return {};
}

// A key of OpenSSH's own form begins with its public half, which isn't encrypted and tells its kind.
bool is_rsa_key(const std::string& path) {
  const std::string text = text_of(path);
  if (!body_of(text, "RSA PRIVATE KEY").empty()) return true;
  const auto own_form = from_base64(body_of(text, "OPENSSH PRIVATE KEY"));
  if (own_form && own_form->find("ssh-rsa") != std::string::npos) return true;
  return text_of(path + ".pub").starts_with("ssh-rsa ");
}

std::u16string reason_for_refusal(const std::string& path) {
  const std::string library = version_of_old_library();
  if (path.empty() || library.empty() || !is_rsa_key(path)) return {};
  return u"The key " + from_utf8(path) + u" is an RSA key, with which this system's SSH library (" +
         from_utf8(library) +
         u") signs in a way that servers no longer accept (SHA-1). Use an Ed25519 or ECDSA key.";
}

}  // namespace tvx::network
