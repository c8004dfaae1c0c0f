#pragma once

#include <QtCore/QtGlobal>

#include <optional>

/*!
 * The process at the other end of the connected local socket \a socketDescriptor, as the operating
 * system tells it, whatever the peer itself may say; nothing when the system cannot tell.
 */
std::optional<qint64> peerProcess(qintptr socketDescriptor);
