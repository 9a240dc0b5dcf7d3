#pragma once

#include "tvx/page_setup.h"

namespace tvx::htmled {

/// How pages stand on paper, from one start of the program to the next: one setup for all documents.
qt::PageSetup kept_page_setup();
void keep_page_setup(const qt::PageSetup& setup);

}  // namespace tvx::htmled
