#pragma once

class QSettings;
class QString;

namespace zor {

/// Whether a switch was on when it was kept. Anything but "true" and "false" is as good as nothing: anybody
/// can write to the settings.
bool keptSwitch(const QSettings& settings, const QString& key, bool otherwise);

} // namespace zor
