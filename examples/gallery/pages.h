#pragma once

#include <QtCore/QList>

class Page;

//! A page for each widget class that the library exports, without a parent; the caller owns them.
QList<Page*> createPages();
