#pragma once

#include <cstddef>
#include <string>

namespace tvx::bench {

/// An article of about `units` 16-bit units (a little more): headings, paragraphs with inline formatting
/// and links, lists, tables and images, in the proportions of written pages. The same size gives the same
/// text on every machine.
std::u16string article(std::size_t units);

}  // namespace tvx::bench
