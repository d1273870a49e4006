#include "platform/viewer/commands/ViewerSettings.h"

#include "platform/viewer/Viewer.h"
#include "platform/viewer/commands/CommandText.h"

namespace zor::viewer {
int ViewerSettings::setText(const char* key, const char* value)
{
    if (!key)
        return 0;
    m_texts[key] = value ? value : "";
    return 1;
}

bool ViewerSettings::getDouble(const char* key, double* value)
{
    if (!key || !value)
        return false;
    if (std::string(key) == "display.view.scale") {
        if (!m_viewer.scene().geometry.hasImage())
            return false;
        *value = m_viewer.scene().geometry.scale();
        return true;
    }
    const std::optional<double> number = realOf(m_texts, key);
    if (number)
        *value = *number;
    return number.has_value();
}

// The address is used up: a second run without a new one must not take over the same processor again after
// it was deleted.
bool ViewerSettings::addProcessor()
{
    auto* processor = static_cast<ZorImgProcessor*>(pointerFromText(textOf(m_texts, "processor")));
    m_texts.erase("processor");
    if (!processor)
        return false;
    m_viewer.processors().add(processor);
    return true;
}

int ViewerSettings::run(const char* action)
{
    const std::string name = action ? action : "";
    if (name == "processing.proc.add")
        return addProcessor() ? 1 : 0;
    if (name != "processing.proc.del")
        return 0;
    m_viewer.processors().clear();
    return 1;
}
} // namespace zor::viewer
