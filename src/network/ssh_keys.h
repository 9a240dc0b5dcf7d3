#pragma once

#include <string>

namespace tvx::network {

/// A file in the user's home; empty where there is none.
std::string home_file(const std::string& name);
/// The user's key that is there, in the order in which they are usually made.
std::string usual_key();
bool is_rsa_key(const std::string& path);
/// Why a server that knows this key may have refused it all the same; empty where no reason is known.
std::u16string reason_for_refusal(const std::string& path);

}  // namespace tvx::network
