#pragma once

#include <cstdint>

namespace tvx::dom {
class Document;
}

namespace tvx::files {

/// A number that tells whether two states of a document would be written as the same text, without writing
/// either. It holds within one run of the program.
std::uint64_t page_digest(const dom::Document& document);

}  // namespace tvx::files
