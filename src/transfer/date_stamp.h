#pragma once

#include <string>

namespace tvx::transfer {

/// Year, month, day, hour and minute of a date in days since 1899-12-30: "202611220730". Such texts sort as
/// the dates do.
std::u16string date_stamp(double date);

}  // namespace tvx::transfer
