#pragma once

#include <QProcess>

/// A GigE Vision camera without hardware, in a program of its own: see GigeCamera.cpp.
class GigeCameraProcess
{
public:
    /// False when it does not begin.
    bool start(double lostPackets = 0.0)
    {
        m_process.start(GIGE_CAMERA, {"GV01", QString::number(lostPackets)});
        return m_process.waitForReadyRead() && m_process.readLine() == "ready\n";
    }

    /// At once, as when its cable is pulled.
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /// As when it is switched off. Answers how many frames it has sent, -1 when it does not say.
    int finish()
    {
        m_process.closeWriteChannel();
        const bool says = m_process.waitForReadyRead();
        const int sent = m_process.readLine().toInt();
        kill();
        return says ? sent : -1;
    }

    ~GigeCameraProcess() { kill(); }

    static constexpr const char* Id = "Aravis-Fake-GV01";

private:
    QProcess m_process;
};
