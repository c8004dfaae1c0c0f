#pragma once

#include <QtCore/QList>

class Page;

//! The context in which the texts of the widgets are translated.
inline constexpr char galleryContext[] = "Gallery";

//! A page for each widget class that the library exports, without a parent; the caller owns them.
QList<Page*> createPages();
