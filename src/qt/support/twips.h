#pragma once

#include <cmath>

namespace tvx::qt {

/// The control's lengths are twips, a screen's are pixels of 96 to the inch. Converted here alone.
inline constexpr float twips_per_pixel = 15;
inline int to_pixels(float twips) { return static_cast<int>(std::lround(twips / twips_per_pixel)); }
inline float to_twips(int pixels) { return static_cast<float>(pixels) * twips_per_pixel; }

}  // namespace tvx::qt
