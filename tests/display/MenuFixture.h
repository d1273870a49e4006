#pragma once

#include "display/ParameterText.h"
#include "tests/display/AdapterFixture.h"

#include <QAction>
#include <QMenu>

/// With a menu that the fake viewer offers as its own, for tests of the context menu.
class MenuFixture : protected AdapterFixture
{
protected:
    void setUp()
    {
        AdapterFixture::setUp();
        menu = std::make_unique<QMenu>();
        FakeViewer::script().answers["cmd.system.menu.create"] = [this](ParameterMap* map) {
            offerMenu(map);
            return 1;
        };
    }

    void tearDown()
    {
        adapter.reset();
        menu.reset();
        AdapterFixture::tearDown();
    }

    /// What a viewer answers to "cmd.system.menu.create".
    void offerMenu(ParameterMap* map) const
    {
        paramSetText(map, "qmenu", textFromPointer(menu.get()).c_str());
        paramSetText(map, "qmenuWidget", textFromPointer(view.get()).c_str());
    }

    void start(std::uint32_t features) { AdapterFixture::start(false, features); }

    /// Asks the adapter for the menu with its own event. True when the adapter took it.
    bool openMenu()
    {
        QEvent request(DisplayEvContextMenu);
        return QCoreApplication::sendEvent(view.get(), &request);
    }

    /// The texts of the menu's entries, "---" for a separator.
    QStringList entryTexts() const
    {
        QStringList texts;
        for (const QAction* action : menu->actions())
            texts << (action->isSeparator() ? QString("---") : action->text());
        return texts;
    }

    /// True when a notification of the viewer reaches the view at the moment.
    bool isHeard()
    {
        view->seen.clear();
        ParameterMap parameters = {{"code", "view.changed"}};
        FakeViewer::notify("notification.view", &parameters);
        QCoreApplication::sendPostedEvents();
        return !view->seen.empty();
    }

    std::unique_ptr<QMenu> menu;
};
