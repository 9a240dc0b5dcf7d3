#pragma once

#include <QIcon>
#include <string_view>

namespace tvx::qt {

/// The picture of that image key ("Align Left"); null if there is none.
///
/// A drawing of one colour, which is that of the application's button text at the time of painting: it
/// follows the user to a dark desktop. Sharp at every size and scale; paler where the button is disabled.
QIcon icon(std::u16string_view image_key);

}  // namespace tvx::qt
