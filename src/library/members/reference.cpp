#include "tvx/library/members/reference.h"

namespace tvx::library {

std::string reference() {
  return
#include "tvx/interface/reference_text.inc"
      ;
}

}  // namespace tvx::library
