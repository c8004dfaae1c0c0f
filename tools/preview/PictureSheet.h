#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QPixmap>

#include <utility>

//! Pictures beside each other, in rows, each under its caption, in the colours of the application.
QPixmap pictureSheet(const QList<std::pair<QString, QPixmap>>& pictures);
