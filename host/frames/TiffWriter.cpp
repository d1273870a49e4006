#include "host/frames/Tiff.h"

#include "host/frames/PictureRows.h"
#include "host/frames/TiffHandle.h"

#include <stdexcept>

#include <sys/mman.h>
#include <unistd.h>

namespace zor {

namespace {

/// A file without a name in any folder, gone with this object.
class MemoryFile
{
public:
    MemoryFile()
        : m_descriptor(::memfd_create("tiff", MFD_CLOEXEC))
    {
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(m_descriptor); }

    int descriptor() const { return m_descriptor; }

    /// All that is in it. Throws std::runtime_error: half a file must not pass for a whole one.
    std::string bytes() const
    {
        const off_t size = ::lseek(m_descriptor, 0, SEEK_END);
        std::string bytes(size < 0 ? 0 : static_cast<std::size_t>(size), '\0');
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t count =
                ::pread(m_descriptor, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
            if (count <= 0)
                throw std::runtime_error(
                    "the picture's TIFF file cannot be read back from memory; choose another kind of file");
            done += static_cast<std::size_t>(count);
        }
        return bytes;
    }

private:
    int m_descriptor;
};

bool writePicture(TIFF* tiff, const _ZorImage& frame)
{
    PictureRows rows(frame);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, frame.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, frame.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8 * rows.sampleBytes());
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, rows.channels());
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, rows.channels() == 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    TIFFSetField(tiff, TIFFTAG_MAXSAMPLEVALUE, rows.fullScale());
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        if (TIFFWriteScanline(tiff, rows.row(y), y, 0) != 1)
            return false;
    }
    return TIFFFlush(tiff) == 1;
}

} // namespace

std::string tiffBytes(const _ZorImage& frame)
{
    const MemoryFile file;
    const TiffHandle tiff(file.descriptor());
    if (!tiff.get() || !writePicture(tiff.get(), frame))
        throw std::runtime_error("the picture cannot be made into a TIFF file (" +
                                 tiff.reason("the lines cannot be written") +
                                 "); choose another kind of file");
    return file.bytes();
}

} // namespace zor
