#include "image/HighLightProcessor.h"

#include "image/ZimPixelAccessIterator.h"
#include "image/ZorImageApi.h"

namespace {

/// Of the sample as it is stored: not scaled to the depth.
constexpr int Threshold = 128;

// All samples are read from the source: of a run of bright pixels each stores its own value again after its
// left neighbour has cleared it.
void markBrightPixels(const _ZorImage* source, const _ZorImage* output)
{
    if (!source || !output)
        return;
    ZimPixelAccessIterator from(source, 0, 0);
    ZimPixelAccessIterator to(output, 0, 0);
    for (std::uint32_t y = 0; y < source->height; ++y) {
        for (std::uint32_t x = 0; x < source->width; ++x) {
            const int value = from.read(0, x);
            if (value >= Threshold) {
                to.write(0, value, x);
                to.write(1, 0, x);
                to.write(2, 0, x);
            }
            from.advance();
            to.advance();
        }
        from.nextRow(source->width);
        to.nextRow(source->width);
    }
}

} // namespace

HighLightProcessor::~HighLightProcessor()
{
    if (image)
        ZorReleaseImage(&image);
}

int HighLightProcessor::processImage(const _ZorImage* source)
{
    ZorCloneImage(&image, source);
    markBrightPixels(source, image);
    return 0;
}
