#pragma once

#include <QtGui/QPalette>

//! How desktops look that people have changed to see better.
namespace Looks {

//! White on nearly black, with a light blue for what is selected.
QPalette darkPalette();

//! White and yellow on black, as the contrast themes of desktops have it.
QPalette highContrastPalette();

//! Makes \a palette that of the application, tool tips included.
void apply(const QPalette& palette);

//! The size of the application's font.
void setFontSize(double points);

} // namespace Looks
