#pragma once

#include <curl/curl.h>

#include <string>

#include "tvx/base/error.h"

namespace tvx::network {

class CurlDriver;

/// What the end of an exchange is called: a number that hosts know, and the words of the server where it has
/// refused something, else of the library.
RuntimeError failure_of_exchange(const CurlDriver& driver, CURLcode code);

/// The text without a password that a server repeats in its answer.
std::u16string without_password(std::u16string_view text, std::u16string_view password);

}  // namespace tvx::network
