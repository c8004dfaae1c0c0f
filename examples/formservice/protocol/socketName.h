#pragma once

#include <QtCore/QString>

/*!
 * The socket that service and client use unless told otherwise: "zefui-formservice" in the folder
 * that the system keeps for the running programs of this user alone. Two users never meet on it.
 */
QString defaultSocketName();
