#include "host/frames/TiffHandle.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <string_view>

#include <unistd.h>

namespace zor {

namespace {

std::string textOf(const char* format, va_list arguments)
{
    std::array<char, 256> text = {};
    std::vsnprintf(text.data(), text.size(), format, arguments);
    return text.data();
}

} // namespace

template <typename Open> void TiffHandle::openWith(Open open)
{
    // A block of the file that asks for more than this is broken or hostile.
    constexpr tmsize_t MaxBlockBytes = tmsize_t{1} << 30;
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    if (!options)
        return;
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, MaxBlockBytes);
    TIFFOpenOptionsSetErrorHandlerExtR(options, onError, this);
    TIFFOpenOptionsSetWarningHandlerExtR(options, onWarning, this);
    m_tiff = open(options);
    TIFFOpenOptionsFree(options);
}

TiffHandle::TiffHandle(const std::string& path)
{
    openWith([&path](TIFFOpenOptions* options) { return TIFFOpenExt(path.c_str(), "r", options); });
}

TiffHandle::TiffHandle(int descriptor)
{
    const int copy = ::dup(descriptor);
    openWith([copy](TIFFOpenOptions* options) { return TIFFFdOpenExt(copy, "new", "wl", options); });
    if (!m_tiff && copy >= 0)
        ::close(copy);
}

TiffHandle::~TiffHandle()
{
    if (m_tiff)
        TIFFClose(m_tiff);
}

std::uint16_t TiffHandle::tag16(std::uint32_t tag, std::uint16_t otherwise) const
{
    std::uint16_t value = otherwise;
    TIFFGetField(m_tiff, tag, &value);
    return value;
}

std::uint32_t TiffHandle::tag32(std::uint32_t tag, std::uint32_t otherwise) const
{
    std::uint32_t value = otherwise;
    TIFFGetField(m_tiff, tag, &value);
    return value;
}

std::string TiffHandle::reason(const std::string& failure) const
{
    if (!m_error.empty())
        return m_error;
    return m_warning.empty() ? failure : failure + ": " + m_warning;
}

int TiffHandle::onError(TIFF*, void* self, const char*, const char* format, va_list arguments)
{
    static_cast<TiffHandle*>(self)->m_error = textOf(format, arguments);
    return 1;
}

int TiffHandle::onWarning(TIFF*, void* self, const char* module, const char* format, va_list arguments)
{
    auto* handle = static_cast<TiffHandle*>(self);
    handle->m_warning = textOf(format, arguments);
    if (module && std::string_view(module) == "JPEGLib")
        handle->m_madeUpSamples = true;
    return 1;
}

} // namespace zor
