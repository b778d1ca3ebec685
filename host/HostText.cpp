#include "host/HostText.h"

#include <cstring>

void writeText(String text, uint32_t maxLength, char *hostBuffer)
{
    text.truncate(maxLength);
    std::memcpy(hostBuffer, text.c_str(), text.length() + 1);
}
