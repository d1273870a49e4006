#pragma once

#include <QColor>
#include <QRect>

#include <string>
#include <vector>

namespace zor::viewer {
/// A rectangle over the image, in image pixels.
struct Overlay
{
    std::string id;
    QRect rect;
    QColor colour = Qt::yellow;
    int lineWidth = 1; ///< device pixels
    bool isAdjustable = false;
};

/// The overlays of a view in the order of their adding, the last on top.
class Overlays
{
public:
    /// Replaces one of the same id.
    void add(const Overlay& overlay);
    bool remove(const std::string& id);
    Overlay* find(const std::string& id);
    const std::vector<Overlay>& all() const { return m_overlays; }

private:
    std::vector<Overlay> m_overlays;
};

/// x | y << 16 | width << 32 | height << 48, each cut to 0 .. 65535.
std::int64_t packedRect(const QRect& rect);
} // namespace zor::viewer
