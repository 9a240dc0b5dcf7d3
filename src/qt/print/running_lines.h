#pragma once

#include <QByteArray>
#include <QPageLayout>

#include "tvx/page_setup.h"

namespace tvx::qt {

/// The layout with room for the header and the footer in its margins.
QPageLayout layout_with_lines(const PageSetup& setup);

/// A PDF of as many sheets, on which nothing stands but header and footer. Empty if there is neither.
QByteArray running_lines(const PageSetup& setup, const QString& title, int count);

}  // namespace tvx::qt
