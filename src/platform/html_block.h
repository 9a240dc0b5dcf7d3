#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvx::platform {

/// A fragment in the form that programs exchange as "HTML Format": a header with positions counted in bytes,
/// a page around the fragment, marks at its edges; all of it UTF-8. `source` is the address of the page that
/// the fragment comes from, if it has one.
std::string html_block(std::u16string_view fragment, std::u16string_view source = {});

/// The page of such a block with the marks of the fragment in it, whoever wrote the block. Nothing if it is
/// none. The header's positions say where the fragment is if the page has no marks.
std::optional<std::u16string> page_of_html_block(std::string_view block);

/// The address of the page that it comes from; empty if the block doesn't say.
std::u16string source_of_html_block(std::string_view block);

}  // namespace tvx::platform
