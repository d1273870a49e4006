#pragma once

#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"
#include "display/ParameterMap.h"
#include "image/ZorImage.h"

#include <cstdint>

/// A closed viewer. Only the named operations are known; the reserved ones keep each at its place in the
/// class. Made and destroyed by the factories of ZorDisplayQt.h alone.
class ZorDisplayProcessor
{
public:
    virtual void reserved0() = 0;
    virtual void reserved1() = 0;

    /// Runs a command. How the answer is judged depends on the command. `parameters` may be null where the
    /// command takes none.
    virtual std::int32_t command(const char* name, ParameterMap* parameters) = 0;

    /// The viewer's settings; may be null.
    virtual DisplaySettings* settings() = 0;

    /// Prepares for images of a geometry and pixel type, given by a record without pixels, which may be null.
    /// Status in the low 16 bits, 0 for success.
    virtual std::int32_t configure(const _ZorImage* header) = 0;

    /// Shows an image, which the caller may free on return. Status in the low 16 bits, 0 for success.
    virtual std::int32_t display(const _ZorImage* image) = 0;

    virtual void reserved6() = 0;

    /// What is shown; may be null.
    virtual DisplayStage* stage() = 0;

    virtual void reserved8() = 0;
    virtual void reserved9() = 0;

    /// Shows two images side by side. 0 for failure.
    virtual std::int32_t displayPair(const _ZorImage* first, const _ZorImage* second) = 0;

protected:
    ~ZorDisplayProcessor() = default;
};
