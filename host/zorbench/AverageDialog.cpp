#include "host/zorbench/AverageDialog.h"

#include "host/average/FrameSum.h"
#include "host/zorbench/KeptSwitch.h"
#include "host/zorbench/NumberBox.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

#include <cmath>

namespace zor {

namespace {

// The names of the settings.
const char* const FramesKey = "Average/Frames";
const char* const DarkFramesKey = "Average/DarkFrames";
const char* const SlidingKey = "Average/Sliding";
const char* const AccuracyKey = "Average/Accuracy";

constexpr int FirstFrames = 16;
constexpr double FirstAccuracy = 0.1; // in %
constexpr double BestAccuracy = 0.001;
constexpr double WorstAccuracy = 10.0;

} // namespace

AverageDialog::AverageDialog(Purpose purpose, QSettings& settings, QWidget* parent)
    : QDialog(parent)
    , m_settings(settings)
    , m_purpose(purpose)
    , m_frames(new QSpinBox)
{
    const bool isDark = purpose == Purpose::Dark;
    setWindowTitle(isDark ? tr("Dark frame") : tr("Average"));
    auto* form = new QFormLayout(this);
    auto* words = new QLabel(
        isDark ? tr("Cover the lens, so that no light reaches the sensor. The dark frame is subtracted "
                    "from all frames that are taken with the same settings.")
               : tr("An average has less noise than a single frame, so that less noise gets into the "
                    "gains."));
    words->setWordWrap(true);
    form->addRow(words);

    m_frames->setLocale(numberLocale());
    m_frames->setRange(1, static_cast<int>(MostAveragedFrames));
    m_frames->setValue(
        settings.value(QLatin1String(isDark ? DarkFramesKey : FramesKey), FirstFrames).toInt());
    m_frames->setAccessibleName(tr("Frames"));
    form->addRow(tr("Frames"), m_frames);
    if (!isDark) {
        m_accuracy = new RealBox;
        m_accuracy->setDecimals(3);
        m_accuracy->setRange(BestAccuracy, WorstAccuracy);
        m_accuracy->setSuffix(QStringLiteral(" %"));
        m_accuracy->setValue(wantedAccuracy(settings));
        m_accuracy->setAccessibleName(tr("Wanted gain accuracy"));
        m_accuracy->setToolTip(tr("\"Frames needed\" beside the judgement goes by it"));
        form->addRow(tr("Wanted gain accuracy"), m_accuracy);
        m_sliding = new QCheckBox;
        m_sliding->setChecked(keptSwitch(settings, QLatin1String(SlidingKey), false));
        m_sliding->setAccessibleName(tr("While frames come"));
        m_sliding->setToolTip(tr("Each frame of the stream is shown as the average of the last ones"));
        form->addRow(tr("While frames come"), m_sliding);
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Take"));
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &AverageDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &AverageDialog::reject);
}

int AverageDialog::frames() const
{
    return m_frames->value();
}

bool AverageDialog::isSliding() const
{
    return m_sliding && m_sliding->isChecked();
}

double AverageDialog::wantedAccuracy(const QSettings& settings)
{
    bool isNumber = false;
    const double kept = settings.value(QLatin1String(AccuracyKey)).toDouble(&isNumber);
    return isNumber && kept >= BestAccuracy && kept <= WorstAccuracy ? kept : FirstAccuracy;
}

void AverageDialog::accept()
{
    if (m_purpose == Purpose::Dark) {
        m_settings.setValue(QLatin1String(DarkFramesKey), frames());
    } else {
        m_settings.setValue(QLatin1String(FramesKey), frames());
        m_settings.setValue(QLatin1String(SlidingKey), isSliding());
        m_settings.setValue(QLatin1String(AccuracyKey), m_accuracy->value());
    }
    QDialog::accept();
}

} // namespace zor
