#pragma once

/// The settings of a closed viewer. Only the named operations are known; the reserved ones keep each at its
/// place in the class. Owned by the viewer.
class DisplaySettings
{
public:
    virtual void reserved0() = 0;
    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;

    /// Stores a text, for example the "%p" text of a ZorImgProcessor under "processor".
    virtual int setText(const char* key, const char* value) = 0;

    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;

    /// Reads a number, for example "display.view.scale"; false and the slot untouched for an unknown key.
    virtual bool getDouble(const char* key, double* value) = 0;

    virtual void reserved14() = 0;
    virtual void reserved15() = 0;

    /// Runs an action: "processing.proc.add" or "processing.proc.del".
    virtual int run(const char* action) = 0;

protected:
    ~DisplaySettings() = default;
};
