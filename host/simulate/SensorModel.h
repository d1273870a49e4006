#pragma once

#include <algorithm>
#include <cstdint>

namespace zor {

/// A sensor under even light, after the linear camera model of EMVA 1288: electrons follow the light, grey
/// values follow the electrons. Deviations are standard deviations.
struct SensorModel
{
    std::uint32_t width = 1280; ///< pixels
    std::uint32_t height = 960;
    std::uint32_t depth = 12;        ///< bits of a grey value: 8, 10, 12, 14 or 16
    double levelPercent = 70.0;      ///< mean electrons in the middle, % of fullWell
    double fullWell = 20000.0;       ///< electrons at the highest grey value
    double vignettingPercent = 15.0; ///< light lost in the corners, %
    double columnFpnPercent = 0.8;   ///< deviation of the columns' gains, %
    double rowFpnPercent = 0.4;      ///< deviation of the rows' gains, %
    double prnuPercent = 0.5;        ///< photo-response non-uniformity: deviation of the pixels' gains, %
    double dsnu = 0.0;               ///< dark-signal non-uniformity: deviation of the pixels' dark signal, e-
    double darkNoise = 8.0;          ///< temporal noise in the dark, e-
    double blackLevel = 0.0;         ///< grey value without light, DN
    bool shotNoise = true;           ///< electrons arrive at random (Poisson)
    std::uint64_t seed = 1;

    /// The highest grey value, DN.
    double saturation() const { return static_cast<double>((1u << depth) - 1u); }

    /// The overall system gain K in DN per electron.
    double systemGain() const { return (saturation() - blackLevel) / fullWell; }
};

/// From electrons to the grey values of a model.
class GreyScale
{
public:
    explicit GreyScale(const SensorModel& model)
        : m_blackLevel(model.blackLevel)
        , m_systemGain(model.systemGain())
        , m_limit(model.saturation() + 0.5)
    {
    }

    /// Rounded to whole DN, halves up, and limited to 0 and saturation().
    std::uint16_t greyValue(double electrons) const
    {
        // Nothing is negative any more when the fraction is cut off.
        return static_cast<std::uint16_t>(
            std::clamp(m_blackLevel + m_systemGain * electrons + 0.5, 0.0, m_limit));
    }

private:
    double m_blackLevel;
    double m_systemGain;
    double m_limit;
};

/// The share of light that reaches (x, y), 1 in the middle: the fourth power of the cosine of an angle whose
/// tangent grows with the distance from the middle, so chosen that the outermost corner loses
/// `vignettingPercent`.
double vignettingAt(const SensorModel& model, std::uint32_t x, std::uint32_t y);

} // namespace zor
