#pragma once

#include <string>
#include <vector>

#include "tvx/dom/document.h"
#include "tvx/platform/transfer_data.h"

namespace tvx::browser {

/// Pictures that pasted markup only names, by the temporary files of its program (`file:`) or as parts of a
/// mail (`cid:`): their bytes come along in other forms of the same content, as files, in its rich text, or
/// as the one picture that it is. They go into `folder`, or into the page itself where there is none. One
/// that can't be had stays named, with its alternative text or else its file's name, which is what shows
/// then.
///
/// `source` is asked for a rich text only where it's needed; null: there is none. Gives the addresses of
/// those that are files now.
std::vector<std::u16string> take_named_pictures(dom::DocumentFragment& content,
                                                const platform::TransferData& data,
                                                const platform::TransferSource* source,
                                                std::u16string_view folder);

}  // namespace tvx::browser
