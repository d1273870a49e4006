#pragma once

#include <QString>

namespace zor {

/// Where the program finds what belongs to it. Both folders are absolute.
struct Places
{
    /// The working directory: named ZorBench, so that the view finds "../ZorBench/Resources/ZoomFull.png".
    QString home;
    QString plugIns;
};

/// The places of the program that is in this folder: in an installation's bin/ they are ../lib/ZorBench and
/// its Plugins, in a build tree's bin/ ../ZorBench and ../Plugins.
Places placesOf(const QString& programFolder);

} // namespace zor
