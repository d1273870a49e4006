#pragma once

#include "host/camera/CameraControls.h"
#include "host/camera/CameraFeature.h"

#include <QObject>
#include <QString>

#include <deque>
#include <functional>

namespace zor {

class BackgroundWork;
class CameraSource;

/// Sets and reads a camera for controls that must not wait for it: everything is done in the background, and
/// what the camera then is set to comes as signals.
class CameraAccess : public QObject
{
    Q_OBJECT

public:
    /// Throws CameraError when the camera refuses.
    using Change = std::function<void(CameraSource&)>;

    /// The source outlives what is done with it in `work`, and `work` this object.
    CameraAccess(CameraSource& source, BackgroundWork& work, QObject* parent = nullptr);

    /// Changes the camera and reads everything again. When the last change that waits has the same name, it
    /// is left out: of a control that is turned quickly only the newest value counts.
    void change(const QString& name, Change change);
    /// Does something after which nothing has to be read, each time that it is asked for.
    void perform(Change action);
    /// Reads everything again.
    void read();

signals:
    /// What the camera is set to, when nothing waits that changes it. When it cannot be read: as it was last.
    void controlsRead(const zor::CameraControls& controls);
    void featuresRead(const zor::CameraFeature& root);
    /// One sentence: what the camera did not take. controlsRead() and featuresRead() follow.
    void refused(const QString& sentence);

private:
    struct Waiting
    {
        QString name;
        Change change;
        bool isToRead;
    };

    /// The next piece of work, unless one is being done: what waits, else the controls, else the features,
    /// which take longest.
    void goOn();
    void changeAll();
    void readControls();
    void readFeatures();

    CameraSource& m_source;
    BackgroundWork& m_work;
    std::deque<Waiting> m_waiting;
    bool m_isBusy = false;
    bool m_areControlsOld = false;
    bool m_areFeaturesOld = false;
    CameraControls m_controls; ///< as they were last read
    CameraFeature m_features;  ///< likewise
};

} // namespace zor
