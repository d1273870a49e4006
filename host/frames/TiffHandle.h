#pragma once

#include <string>
#include <tiffio.h>

namespace zor {

/// An open TIFF file that keeps the library's last texts to itself instead of printing them.
class TiffHandle
{
public:
    /// `get` is null when the file cannot be opened as TIFF.
    explicit TiffHandle(const std::string& path);
    /// For a new file, little-endian, through a copy of the descriptor.
    explicit TiffHandle(int descriptor);
    ~TiffHandle();
    TiffHandle(const TiffHandle&) = delete;
    TiffHandle& operator=(const TiffHandle&) = delete;

    TIFF* get() const { return m_tiff; }

    /// Why the library failed: its error, else the `failure` itself and what it warned of before.
    std::string reason(const std::string& failure) const;

    /// Whether a decoder went on with made up samples: JPEG's only warns of broken data.
    bool madeUpSamples() const { return m_madeUpSamples; }

    /// The value of a 16-bit tag; `otherwise` when the file does not have it.
    std::uint16_t tag16(std::uint32_t tag, std::uint16_t otherwise) const;
    /// The same for 32 bits.
    std::uint32_t tag32(std::uint32_t tag, std::uint32_t otherwise) const;

private:
    /// What both ways of opening share: `open` gets the options and gives the file.
    template <typename Open> void openWith(Open open);

    static int onError(TIFF*, void* self, const char* module, const char* format, va_list arguments);
    static int onWarning(TIFF*, void* self, const char* module, const char* format, va_list arguments);

    std::string m_error;
    std::string m_warning;
    bool m_madeUpSamples = false;
    TIFF* m_tiff = nullptr;
};

} // namespace zor
