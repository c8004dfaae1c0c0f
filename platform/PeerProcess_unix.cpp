#include "PeerProcess.h"

#include <sys/socket.h>

std::optional<qint64> peerProcess(qintptr socketDescriptor)
{
    ucred credentials = {};
    socklen_t size = sizeof credentials;
    if (getsockopt(static_cast<int>(socketDescriptor), SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0)
        return std::nullopt;
    return credentials.pid;
}
