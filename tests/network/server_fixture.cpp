#include "network/server_fixture.h"

namespace tvx::network {

std::string script_of_tests(const std::string& name) { return TVX_SOURCE_DIR "/tests/network/" + name; }

}  // namespace tvx::network
