#pragma once

#include "plugin/ZBKInterfacePlugIn.h"

#include <QObject>

class CFFCUtility;

/// The plug-in object: owns the dialog from Init to Release and hands the host's calls on to it. The dialog
/// goes with the application at the latest, as with the object.
class ZorFFCUtility : public QObject, public ZBKInterfacePlugIn
{
    Q_OBJECT
    Q_INTERFACES(ZBKInterfacePlugIn)

public:
    ZorFFCUtility();
    ~ZorFFCUtility() override;

    int Init(ZBKHostCallback callback, void* context) override;
    int Release() override;
    int Show(bool visible) override;
    int SetImage(_ZorImage* image) override;
    void SetHostInfo(ZBKHostInfo info) override;
    int Update() override;
    int GetResult(void** result) override;
    bool HasResult() override;
    void Reset() override;

private:
    CFFCUtility* m_dialog = nullptr; ///< owned, null when bare
};
