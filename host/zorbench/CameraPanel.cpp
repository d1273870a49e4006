#include "host/zorbench/CameraPanel.h"

#include "host/camera/CameraSource.h"
#include "host/zorbench/CameraBoxes.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>

#include <algorithm>
#include <string>

namespace zor {

namespace {

QHBoxLayout* sideBySide(QWidget* first, QWidget* second)
{
    auto* row = new QHBoxLayout;
    row->addWidget(first, 1);
    row->addWidget(second, 1);
    return row;
}

/// Offers the texts, unless they are offered already: the box may be open.
/// The current one is the first where there is no such text. While the operator is choosing the box stays as
/// it is.
void offer(QComboBox& box, const QStringList& texts, const std::string& current)
{
    if (box.view()->isVisible())
        return;
    QStringList offered;
    for (int i = 0; i < box.count(); ++i)
        offered.append(box.itemText(i));
    if (offered != texts) {
        box.clear();
        box.addItems(texts);
    }
    box.setCurrentIndex(std::max(0, box.findText(QString::fromStdString(current))));
}

QStringList textsOf(const std::vector<std::string>& from)
{
    QStringList texts;
    for (const std::string& one : from)
        texts.append(QString::fromStdString(one));
    return texts;
}

} // namespace

CameraPanel::CameraPanel(QWidget* parent)
    : QWidget(parent)
{
    auto* form = new QFormLayout(this);
    form->setContentsMargins({});
    m_exposureTime = addNumber(form, tr("Exposure time"), QStringLiteral(" \u00b5s"), 1, 100.0,
                               &CameraSource::setExposureTime);
    m_gain = addNumber(form, tr("Gain"), {}, 2, 0.1, &CameraSource::setGain);
    m_frameRate =
        addNumber(form, tr("Frame rate"), QStringLiteral(" /s"), 2, 1.0, &CameraSource::setFrameRate);
    m_pixelFormat = addChoice(form, tr("Pixel format"));
    connect(m_pixelFormat, QOverload<int>::of(&QComboBox::activated), this, [this] {
        const std::string format = m_pixelFormat->currentText().toStdString();
        emit changed(m_pixelFormat->accessibleName(),
                     [format](CameraSource& camera) { camera.setPixelFormat(format); });
    });

    m_x = makeExtent(tr("Region x"));
    m_y = makeExtent(tr("Region y"));
    m_width = makeExtent(tr("Region width"));
    m_height = makeExtent(tr("Region height"));
    form->addRow(tr("Region x, y"), sideBySide(m_x, m_y));
    form->addRow(tr("Width, height"), sideBySide(m_width, m_height));
    m_fullSensor = new QPushButton(tr("Full sensor"), this);
    m_fullSensor->setAccessibleName(m_fullSensor->text());
    form->addRow(QString(), m_fullSensor);
    connect(m_fullSensor, &QPushButton::clicked, this, [this] {
        emit changed(m_fullSensor->accessibleName(), [](CameraSource& camera) { camera.setFullRegion(); });
    });

    m_triggerSource = addChoice(form, tr("Trigger source"));
    connect(m_triggerSource, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        // The first is "Off".
        const std::string source = index > 0 ? m_triggerSource->currentText().toStdString() : std::string();
        emit changed(m_triggerSource->accessibleName(),
                     [source](CameraSource& camera) { camera.setTrigger(source); });
    });
    m_trigger = new QPushButton(tr("Trigger"), this);
    m_trigger->setAccessibleName(m_trigger->text());
    m_trigger->setToolTip(tr("Takes a frame when the trigger source is the software"));
    form->addRow(QString(), m_trigger);
    connect(m_trigger, &QPushButton::clicked, this, &CameraPanel::triggered);
}

CameraNumberBox* CameraPanel::addNumber(QFormLayout* form, const QString& name, const QString& unit,
                                        int decimals, double step, void (CameraSource::*set)(double))
{
    auto* box = new CameraNumberBox(this);
    box->setAccessibleName(name);
    box->setSuffix(unit);
    box->setDecimals(decimals);
    box->setSingleStep(step);
    form->addRow(name, box);
    connect(box, &CameraNumberBox::chosen, this, [this, name, set](double value) {
        emit changed(name, [set, value](CameraSource& camera) { (camera.*set)(value); });
    });
    return box;
}

CameraExtentBox* CameraPanel::makeExtent(const QString& name)
{
    auto* box = new CameraExtentBox(this);
    box->setAccessibleName(name);
    connect(box, &CameraExtentBox::chosen, this, &CameraPanel::setRegion);
    return box;
}

QComboBox* CameraPanel::addChoice(QFormLayout* form, const QString& name)
{
    auto* box = new QComboBox(this);
    box->setAccessibleName(name);
    form->addRow(name, box);
    return box;
}

void CameraPanel::setRegion()
{
    emit changed(tr("Region"), [x = m_x->extent(), y = m_y->extent(), width = m_width->extent(),
                                height = m_height->extent()](CameraSource& camera) {
        camera.setRegion(x, y, width, height);
    });
}

void CameraPanel::showControls(const CameraControls& controls)
{
    m_exposureTime->showNumber(controls.exposureTime);
    m_gain->showNumber(controls.gain);
    m_frameRate->showNumber(controls.frameRate);
    offer(*m_pixelFormat, textsOf(controls.pixelFormats), controls.pixelFormat);
    m_pixelFormat->setEnabled(!controls.pixelFormats.empty());
    showRegion(controls);
    showTrigger(controls);
}

void CameraPanel::showRegion(const CameraControls& controls)
{
    const CameraRegion region = controls.region.value_or(CameraRegion());
    m_x->showExtent(region.x);
    m_y->showExtent(region.y);
    m_width->showExtent(region.width);
    m_height->showExtent(region.height);
    for (QWidget* widget :
         {static_cast<QWidget*>(m_x), static_cast<QWidget*>(m_y), static_cast<QWidget*>(m_width),
          static_cast<QWidget*>(m_height), static_cast<QWidget*>(m_fullSensor)})
        widget->setEnabled(controls.region.has_value());
}

void CameraPanel::showTrigger(const CameraControls& controls)
{
    offer(*m_triggerSource, QStringList(tr("Off")) + textsOf(controls.triggerSources), controls.trigger);
    m_triggerSource->setEnabled(!controls.triggerSources.empty());
    // The standard name, or one of several.
    m_trigger->setEnabled(controls.trigger.compare(0, 8, "Software") == 0);
}

} // namespace zor
