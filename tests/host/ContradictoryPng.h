#pragma once

#include <QByteArray>

/// A grey PNG file of one sample, 2049, whose sBIT entry states 10 significant bits.
inline QByteArray contradictoryPng()
{
    return QByteArray::fromHex(
        "89504e470d0a1a0a0000000d49484452000000010000000110000000006aee4716" // IHDR: 1 x 1, 16 bits
        "00000001734249540a08043ab5"                                         // sBIT: 10
        "0000000b49444154789c63e06004000014000afebc91d2"                     // IDAT
        "0000000049454e44ae426082");
}
