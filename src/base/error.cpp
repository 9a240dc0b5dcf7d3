#include "tvx/base/error.h"

#include "tvx/base/strings.h"

namespace tvx {

RuntimeError::RuntimeError(int number, std::u16string text)
    : number_(number), text_(std::move(text)), utf8_(to_utf8(text_)) {}

}  // namespace tvx
