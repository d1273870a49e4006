#pragma once

#include "host/camera/CameraFeature.h"

#include <QValidator>

namespace zor {

/// Lets through what a numeric feature can be set to, with a decimal point in every locale. fixup() brings a
/// number outside of the range to its end, and a whole one down to the feature's steps.
class FeatureValidator : public QValidator
{
    Q_OBJECT

public:
    explicit FeatureValidator(const CameraFeature& feature, QObject* parent = nullptr);

    State validate(QString& text, int& position) const override;
    void fixup(QString& text) const override;

private:
    const CameraFeature m_feature;
};

} // namespace zor
