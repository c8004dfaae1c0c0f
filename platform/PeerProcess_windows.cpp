#include "PeerProcess.h"

#include <windows.h>

std::optional<qint64> peerProcess(qintptr socketDescriptor)
{
    ULONG process = 0;
    if (!GetNamedPipeClientProcessId(reinterpret_cast<HANDLE>(socketDescriptor), &process))
        return std::nullopt;
    return process;
}
