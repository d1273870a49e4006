#pragma once

#include "display/DisplayAdapterQT.h"

#include <QEvent>
#include <QPoint>
#include <QString>

/// The events between adapter and view, registered when the program is loaded.
extern const QEvent::Type DisplayEvStart;
extern const QEvent::Type DisplayEvReserved;
extern const QEvent::Type DisplayEvContextMenu;
extern const QEvent::Type DisplayEvViewChanged;
extern const QEvent::Type DisplayEvMouseDown;
extern const QEvent::Type DisplayEvMouseMove;
extern const QEvent::Type DisplayEvMouseUp;
extern const QEvent::Type DisplayEvHexDump;
extern const QEvent::Type DisplayEvHexDumpHere;
extern const QEvent::Type DisplayEvMessage;
extern const QEvent::Type DisplayEvImageProcessed;

/// An event with a place. Carries DisplayEvHexDumpHere.
class DisplayAdapterQT::DisplayEvent : public QEvent
{
public:
    using QEvent::QEvent;

    QPoint imagePos;  ///< image pixels
    QPoint windowPos; ///< widget pixels
};

/// Carries DisplayEvMouseDown, DisplayEvMouseMove and DisplayEvMouseUp.
class DisplayAdapterQT::DisplayMouseEv : public DisplayAdapterQT::DisplayEvent
{
public:
    using DisplayEvent::DisplayEvent;

    int result = 0; ///< a press hands it back to the viewer
};

/// Carries DisplayEvMessage: a text to show; an empty one takes the earlier one back.
class DisplayAdapterQT::DisplayMessageEv : public QEvent
{
public:
    explicit DisplayMessageEv(const QString& text)
        : QEvent(DisplayEvMessage)
        , message(text)
    {
    }

    QString message;
};

/// Carries DisplayEvImageProcessed.
class DisplayAdapterQT::DisplayImageProcessedEv : public QEvent
{
public:
    explicit DisplayImageProcessedEv(int outcome)
        : QEvent(DisplayEvImageProcessed)
        , result(outcome)
    {
    }

    int result;
};
