#pragma once

class QWidget;
class ZorDisplayProcessor;

#if defined(__GNUC__)
#define ZOR_DISPLAY_QT_API __attribute__((visibility("default")))
#else
#define ZOR_DISPLAY_QT_API
#endif

/// Factory of the software viewer.
class ZOR_DISPLAY_QT_API ZorDisplayCPU
{
public:
    /// Makes a viewer that draws into the widget; null on failure. The caller gives it back with
    /// DeleteComponent of either factory.
    static ZorDisplayProcessor* CreateComponent(QWidget* widget);

    /// Destroys a viewer that either factory made. Null is ignored.
    static void DeleteComponent(ZorDisplayProcessor* component);
};

/// Factory of the GPU viewer.
class ZOR_DISPLAY_QT_API ZorDisplayQGL
{
public:
    /// Makes a viewer that draws into the widget; null on failure, as where no OpenGL context can be had.
    static ZorDisplayProcessor* CreateComponent(QWidget* widget);

    /// Destroys a viewer that either factory made. Null is ignored.
    static void DeleteComponent(ZorDisplayProcessor* component);
};
