#pragma once

#include <functional>
#include <string>

#include "tvx/dom/document.h"

/// What is copied leaves its page: the addresses that were written as seen from there have to lead to the
/// same pictures and pages from elsewhere.
namespace tvx::browser {

/// Gives every relative address below a node to `meant`, and writes what that returns. An address within the
/// page ("#part") stays.
void rewrite_relative_addresses(dom::Node& content,
                                const std::function<std::u16string(const std::u16string&)>& meant);

/// Markup for others: its relative addresses as seen from `base`. As it came where the base leads nowhere.
std::u16string with_absolute_addresses(const std::u16string& html, std::u16string_view base);

}  // namespace tvx::browser
