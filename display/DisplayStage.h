#pragma once

#include "image/ZorImage.h"

#include <cstdint>

/// A named part of a closed viewer's stage. Only the named operations are known. Owned by the viewer.
class DisplayStageItem
{
public:
    virtual void reserved0() = 0;
    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;

    virtual std::int64_t value() = 0;

    virtual void reserved6() = 0;

    virtual void setValue(std::uint8_t value) = 0;

protected:
    ~DisplayStageItem() = default;
};

/// What a closed viewer shows at the moment. Only the named operations are known. Owned by the viewer.
class DisplayStage
{
public:
    virtual void reserved0() = 0;
    virtual void reserved1() = 0;

    /// The item of that name, for example "image.coloration"; null when there is none.
    virtual DisplayStageItem* find(const char* name) = 0;

    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;

    /// A value of the stage itself.
    virtual std::int64_t value() = 0;

    /// The record that the stage holds, owned by the viewer; null when there is none.
    virtual _ZorImage* image(std::uint8_t which) = 0;

protected:
    ~DisplayStage() = default;
};
