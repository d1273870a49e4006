#include "image/ChannelIndex.h"

namespace zor {

int channelIndexY(char16_t letter)
{
    return letter == u'Y' ? 0 : -1;
}

int channelIndexRgb(char16_t letter)
{
    switch (letter) {
    case u'R':
        return 0;
    case u'G':
        return 1;
    case u'B':
        return 2;
    default:
        return -1;
    }
}

int channelIndexBgr(char16_t letter)
{
    switch (letter) {
    case u'B':
        return 0;
    case u'G':
        return 1;
    case u'R':
        return 2;
    default:
        return -1;
    }
}

int channelIndexRgba(char16_t letter)
{
    return letter == u'A' ? 3 : channelIndexRgb(letter);
}

int channelIndexBgra(char16_t letter)
{
    return letter == u'A' ? 3 : channelIndexBgr(letter);
}

int channelIndexYuv(char16_t letter)
{
    switch (letter) {
    case u'Y':
        return 0;
    case u'U':
        return 1;
    case u'V':
        return 2;
    default:
        return -1;
    }
}

} // namespace zor
