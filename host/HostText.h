#pragma once
#include "PluginBase/Util/String.h"

/// Copies at most `maxLength` characters and the terminator to the host's buffer.
void writeText(String text, uint32_t maxLength, char *hostBuffer);
