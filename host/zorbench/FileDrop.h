#pragma once

#include <QObject>
#include <QStringList>

class QDropEvent;
class QWidget;

namespace zor {

/// Takes files that are dropped on widgets. They are only read: what offers to move them is answered that
/// they were copied, so that it deletes none, and refused when it cannot leave them where they are.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The widget takes files from now on, also for its children.
    void watch(QWidget& widget);

signals:
    /// At least one file of this machine.
    void dropped(const QStringList& files);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    static void answer(QDropEvent& event);
};

} // namespace zor
