#pragma once

#include <cstddef>
#include <cstdint>

namespace tvx::browser {

/// What a page is made of, beside itself.
enum class ResourceKind : std::uint8_t { Image, StyleSheet, Font, Media, Frame };

/// What a document may bring in by itself. It counts for what the control loads (sheets with their imports,
/// frames) and for what the view is painted with. Each request to another machine tells that the page is
/// being looked at.
struct ResourcePolicy {
  bool remote_images = true;
  bool remote_style_sheets = true;  // and what they import
  bool remote_fonts = false;
  bool remote_media = false;
  bool remote_frames = false;  // nobody sees their documents
  bool local_files = true;     // which a page from elsewhere never may

  bool allows_remote(ResourceKind kind) const;
  friend bool operator==(const ResourcePolicy&, const ResourcePolicy&) = default;

  static ResourcePolicy nothing_remote();
  static ResourcePolicy everything();
};

/// How much one page may bring in at most, whatever it asks for: of the control and of the view each.
struct ResourceBudget {
  int requests = 2000;
  int imports = 512;
  std::size_t bytes = std::size_t{256} << 20;  // of what the control loads; nobody knows it of the view
};

}  // namespace tvx::browser
