#pragma once

#include <string>
#include <vector>

namespace tvx::browser {

/// What another program gives when it is dropped on the document; the first that isn't empty counts: files,
/// then markup, then text.
struct DroppedData {
  std::vector<std::u16string> files;  // paths
  std::u16string html, text;
};

}  // namespace tvx::browser
