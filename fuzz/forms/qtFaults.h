#pragma once

#include <QtCore/QByteArray>

//! Whether \a form runs into what is known of Qt alone, whoever loads it; such forms teach nothing here.
bool meetsQtFault(QByteArrayView form);
