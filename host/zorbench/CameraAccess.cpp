#include "host/zorbench/CameraAccess.h"

#include "host/camera/CameraError.h"
#include "host/camera/CameraSource.h"
#include "host/zorbench/BackgroundWork.h"

#include <QStringList>

#include <algorithm>
#include <optional>
#include <utility>

namespace zor {

CameraAccess::CameraAccess(CameraSource& source, BackgroundWork& work, QObject* parent)
    : QObject(parent)
    , m_source(source)
    , m_work(work)
{
}

void CameraAccess::change(const QString& name, Change change)
{
    // Only the last: the same name is another setting after a selector was set.
    if (!m_waiting.empty() && m_waiting.back().isToRead && m_waiting.back().name == name)
        m_waiting.pop_back();
    m_waiting.push_back({name, std::move(change), true});
    goOn();
}

void CameraAccess::perform(Change action)
{
    m_waiting.push_back({{}, std::move(action), false});
    goOn();
}

void CameraAccess::read()
{
    m_areControlsOld = true;
    m_areFeaturesOld = true;
    goOn();
}

void CameraAccess::goOn()
{
    if (m_isBusy)
        return;
    m_isBusy = true;
    if (!m_waiting.empty())
        changeAll();
    else if (m_areControlsOld)
        readControls();
    else if (m_areFeaturesOld)
        readFeatures();
    else
        m_isBusy = false;
}

void CameraAccess::changeAll()
{
    const auto isToRead = [](const Waiting& one) { return one.isToRead; };
    if (std::any_of(m_waiting.begin(), m_waiting.end(), isToRead))
        m_areControlsOld = m_areFeaturesOld = true;
    m_work.start(this, [this, &source = m_source, changes = std::exchange(m_waiting, {})] {
        QStringList refusals;
        for (const Waiting& one : changes) {
            try {
                one.change(source);
            } catch (const CameraError& error) {
                refusals.append(QString::fromUtf8(error.what()));
            }
        }
        return [this, refusals] {
            m_isBusy = false;
            goOn();
            for (const QString& sentence : refusals)
                emit refused(sentence);
        };
    });
}

void CameraAccess::readControls()
{
    m_areControlsOld = false;
    m_work.start(this, [this, &source = m_source] {
        std::optional<CameraControls> controls;
        try {
            controls = source.controls();
        } catch (const CameraError&) {
            // It is lost: its controls say so, and it is read again when it is back.
        }
        return [this, controls] {
            m_isBusy = false;
            if (controls)
                m_controls = *controls;
            goOn();
            // What the operator sets next must not jump back meanwhile.
            if (m_waiting.empty() && !m_areControlsOld)
                emit controlsRead(m_controls);
        };
    });
}

void CameraAccess::readFeatures()
{
    m_areFeaturesOld = false;
    m_work.start(this, [this, &source = m_source] {
        std::optional<CameraFeature> features;
        try {
            features = source.features();
        } catch (const CameraError&) {
            // As for the controls.
        }
        return [this, features] {
            m_isBusy = false;
            if (features)
                m_features = *features;
            goOn();
            if (!m_areFeaturesOld)
                emit featuresRead(m_features);
        };
    });
}

} // namespace zor
