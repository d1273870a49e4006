#pragma once

#include <QPointF>
#include <QRect>
#include <QSize>

namespace zor::viewer {
/// Where an image lies in a view. Pure arithmetic on three spaces: image pixels, device pixels of the view
/// (integers are pixel corners, centres lie at halves), and fractions of the image. The scale is device
/// pixels per image pixel, so that 1 is one to one on every screen.
class ViewGeometry
{
public:
    enum Fit
    {
        NoFit = 0,
        FitWhole = 1,
        FitWidth = 2,
        FitHeight = 3
    };

    static constexpr double MaximumScale = 256.0;

    bool hasImage() const { return !m_image.isEmpty(); }
    QSize imageSize() const { return m_image; }
    QSize viewSize() const { return m_view; }
    double scale() const { return m_scale; }
    /// The image point in the middle of the view.
    QPointF centre() const { return m_centre; }
    int fitMode() const { return m_fit; }

    /// An image of another size keeps the fit, or without one the scale and the centre as a fraction. The
    /// first image is fitted whole.
    void setImageSize(const QSize& size);
    /// Size in device pixels, at least 1 by 1; keeps the fit, or without one scale and centre.
    void setViewSize(const QSize& size);

    /// Holds the image fitted until the next change of scale or centre.
    void fit(int mode);
    /// Changes the scale, cut to the limits, while the image point under the device point stays there.
    void setScale(double scale, const QPointF& anchor);
    /// Moves an image point, cut to the image, to the middle of the view.
    void setCentre(const QPointF& centre);

    /// The limits of scale: 256, and an image whose longer side takes 16 device pixels (or 1 : 1).
    double limitedScale(double scale) const;
    QPointF limitedCentre(const QPointF& centre) const;

    QPointF middle() const { return {m_view.width() * 0.5, m_view.height() * 0.5}; }
    QPointF toImage(const QPointF& device) const { return m_centre + (device - middle()) / m_scale; }
    QPointF toDevice(const QPointF& image) const { return middle() + (image - m_centre) * m_scale; }
    bool isOnImage(const QPoint& pixel) const;

    /// What the view shows in image pixels, not cut to the image: the rectangle of whole pixels whose middle
    /// is the nearest to the centre, at most a quarter of a pixel off. In views of every size that is the
    /// centre rounded to halves, so that views that follow each other agree on one lattice and come to rest.
    QRect visibleRect() const;
    /// The middle of visibleRect.
    QPointF reportedCentre() const;

    /// True when something in the view is more than half a device pixel away from its place in `other`.
    bool isElsewhere(const ViewGeometry& other) const;

private:
    void applyFit();

    QSize m_image;
    QSize m_view = QSize(1, 1);
    double m_scale = 1.0;
    QPointF m_centre;
    int m_fit = FitWhole;
};
} // namespace zor::viewer
