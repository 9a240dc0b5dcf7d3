#pragma once

#include <cstdint>
#include <string>

namespace tvx::dom::test {

/// A text of tags, text, comments and references, about that many pieces long: nested as people nest them
/// and as they should not. The same seed gives the same text on every machine.
std::u16string generated_html(std::uint64_t seed, std::size_t pieces);

}  // namespace tvx::dom::test
