#include "tvx/core/content/remote_content.h"

#include "tvx/core/properties.h"

namespace tvx::core {

browser::ResourcePolicy policy_of(const Properties& properties) {
  switch (properties.RemoteContent) {
    case remote_content_on: return {};
    case remote_content_all: return browser::ResourcePolicy::everything();
    default: return browser::ResourcePolicy::nothing_remote();  // a number from a store may be any
  }
}

}  // namespace tvx::core
