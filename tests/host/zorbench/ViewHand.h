#pragma once

#include <QPoint>
#include <QStringList>

class Bench;

/// The operator's hand on the view of a workbench. Places are image pixels.
class ViewHand
{
public:
    explicit ViewHand(Bench& bench)
        : m_bench(bench)
    {
    }

    void press(const QPoint& pixel, Qt::KeyboardModifiers keys = Qt::NoModifier);
    void moveTo(const QPoint& pixel);
    void release(const QPoint& pixel, Qt::KeyboardModifiers keys = Qt::NoModifier);
    /// Press, two moves, release.
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys = Qt::NoModifier);

    /// Opens the context menu over a pixel and chooses the entry with these words; without words, or where it
    /// is not offered, the menu is closed.
    void chooseInMenu(const QPoint& pixel, const QString& entry);

    /// The last menu: the words of the visible entries, and the image pixel under its corner.
    QStringList entries;
    QPoint corner;

    /// The rectangle of an overlay, by its objectID; empty while it is not shown.
    QRect overlay(const char* id) const;

private:
    QPoint inWindow(QPoint pixel) const;

    Bench& m_bench;
};
