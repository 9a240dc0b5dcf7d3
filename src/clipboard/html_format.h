#pragma once

#include <string>

#include "tvx/platform/clipboard.h"

/// An HTML fragment on the clipboard, in the registered format "HTML Format": a header of 105 characters with
/// four positions in it, a prefix, the fragment between two marks, and a suffix. Positions count characters
/// of the text, which is written in the system code page: where that needs several bytes for a character they
/// are right only for readers that count as this does. What is copied from a document has none of those.
namespace tvx::clipboard {

/// The format's number, registered once in a process; `none` while that has failed.
platform::ClipboardFormat GetHTMLFormatId();

/// Puts the fragment on the clipboard, alone but for "text/html" beside it. `prefix` and `suffix` come back
/// with the marks at their inner ends. Nothing is reported: a failure leaves the clipboard as it was.
void PutHTMLOnClipboard(platform::Clipboard& clipboard, const std::u16string& fragment,
                        std::u16string& prefix, std::u16string& suffix);

/// The fragment between the two positions that a header names; empty if there is none.
std::u16string GetHTMLFromClipboard(platform::Clipboard& clipboard);

}  // namespace tvx::clipboard
