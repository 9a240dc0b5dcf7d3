#include "tvx/browser/resource_policy.h"

namespace tvx::browser {

bool ResourcePolicy::allows_remote(ResourceKind kind) const {
  switch (kind) {
    case ResourceKind::Image: return remote_images;
    case ResourceKind::StyleSheet: return remote_style_sheets;
    case ResourceKind::Font: return remote_fonts;
    case ResourceKind::Media: return remote_media;
    case ResourceKind::Frame: return remote_frames;
  }
  return false;
}

ResourcePolicy ResourcePolicy::nothing_remote() {
  ResourcePolicy policy;
  policy.remote_images = policy.remote_style_sheets = false;
  return policy;
}

ResourcePolicy ResourcePolicy::everything() {
  ResourcePolicy policy;
  policy.remote_fonts = policy.remote_media = policy.remote_frames = true;
  return policy;
}

}  // namespace tvx::browser
