#include "Utf8Console.h"

// Terminals are told their encoding by the locale of their user.
Utf8Console::Utf8Console() = default;
Utf8Console::~Utf8Console() = default;
