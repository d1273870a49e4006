#pragma once

#include "host/camera/CameraInterfaces.h"

#include <QDialog>

#include <memory>
#include <vector>

class QLabel;
class QPushButton;
class QTableWidget;

namespace zor {

class BackgroundWork;
class CameraSource;

/// Asks which camera to connect to, and connects. Looks for cameras when it is asked to, at no other time.
class CameraDialog : public QDialog
{
    Q_OBJECT

public:
    /// Looks and connects in `work`, which outlives the dialog.
    CameraDialog(const CameraInterfaces& interfaces, BackgroundWork& work, QWidget* parent = nullptr);

    /// Opens the dialog and looks for cameras. The camera of this id is selected when it is there, else the
    /// first.
    void ask(const QString& preferredId);

    void done(int result) override;

signals:
    /// The dialog is closed.
    void connected(const QString& id, const std::shared_ptr<zor::CameraSource>& source);

private:
    void search();
    void showFound(const std::vector<CameraInfo>& found);
    void connectToChosen();
    void takeSource(int question, const QString& id, std::shared_ptr<CameraSource> source);
    /// Something is being done: the dialog can only be closed.
    void setBusy(const QString& what);
    /// `problem` is one sentence, empty when there is none.
    void setIdle(const QString& problem);

    const CameraInterfaces m_interfaces;
    BackgroundWork& m_work;
    QTableWidget* m_cameras;
    QLabel* m_state;
    QPushButton* m_connect;
    QPushButton* m_searchAgain;
    std::vector<CameraInfo> m_found; ///< the rows of the table
    QString m_preferredId;
    int m_question = 0; ///< another one after each time that the dialog was closed
};

} // namespace zor
