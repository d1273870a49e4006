#include "host/camera/CameraFeature.h"

#include "host/camera/GLibTools.h"

#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <set>

namespace zor {

namespace {

using Kind = CameraFeature::Kind;

std::string numberText(gint64 value)
{
    return std::to_string(value);
}

/// The shortest text that reads back as the value, with a decimal point in every locale.
std::string numberText(double value)
{
    std::array<char, G_ASCII_DTOSTR_BUF_SIZE> text{};
    for (const char* format : {"%.6g", "%.9g", "%.17g"}) {
        g_ascii_formatd(text.data(), text.size(), format, value);
        if (g_ascii_strtod(text.data(), nullptr) == value)
            break;
    }
    return text.data();
}

bool isLimit(gint64 value)
{
    return value != std::numeric_limits<gint64>::min() && value != std::numeric_limits<gint64>::max();
}

bool isLimit(double value)
{
    return std::fabs(value) < DBL_MAX;
}

/// The answer of a getter as text; empty when it failed or means that there is no limit.
template <typename Node, typename Getter> std::string limitOf(Node* node, Getter getter)
{
    ErrorSlot error;
    const auto value = getter(node, error);
    return error.isSet() || !isLimit(value) ? std::string() : numberText(value);
}

void readRange(ArvGcFeatureNode* node, CameraFeature& feature)
{
    if (feature.kind == Kind::Integer) {
        ArvGcInteger* number = ARV_GC_INTEGER(node);
        feature.minimum = limitOf(number, arv_gc_integer_get_min);
        feature.maximum = limitOf(number, arv_gc_integer_get_max);
        feature.increment = limitOf(number, arv_gc_integer_get_inc);
        feature.unit = textOf(arv_gc_integer_get_unit(number));
    } else if (feature.kind == Kind::Float) {
        ArvGcFloat* number = ARV_GC_FLOAT(node);
        feature.minimum = limitOf(number, arv_gc_float_get_min);
        feature.maximum = limitOf(number, arv_gc_float_get_max);
        feature.unit = textOf(arv_gc_float_get_unit(number));
    } else if (feature.kind == Kind::Enumeration) {
        ErrorSlot error;
        guint count = 0;
        const char** names =
            arv_gc_enumeration_dup_available_string_values(ARV_GC_ENUMERATION(node), &count, error);
        for (guint i = 0; names && i < count; ++i)
            feature.entries.push_back(textOf(names[i]));
        g_free(names);
    }
}

Kind kindOf(ArvGcNode* node)
{
    if (ARV_IS_GC_CATEGORY(node))
        return Kind::Category;
    if (ARV_IS_GC_COMMAND(node))
        return Kind::Command;
    // An enumeration counts as an integer as well.
    if (ARV_IS_GC_ENUMERATION(node))
        return Kind::Enumeration;
    if (ARV_IS_GC_BOOLEAN(node))
        return Kind::Boolean;
    if (ARV_IS_GC_FLOAT(node))
        return Kind::Float;
    if (ARV_IS_GC_INTEGER(node))
        return Kind::Integer;
    return ARV_IS_GC_STRING(node) ? Kind::Text : Kind::Other;
}

void readValue(ArvGcFeatureNode* node, CameraFeature& feature)
{
    ErrorSlot error;
    const bool isAvailable = arv_gc_feature_node_is_available(node, error) != FALSE;
    feature.isAvailable = isAvailable && !error.isSet();
    if (!feature.isAvailable)
        return;
    ErrorSlot unknown;
    const bool isLocked = arv_gc_feature_node_is_locked(node, unknown) != FALSE;
    const ArvGcAccessMode access = arv_gc_feature_node_get_actual_access_mode(node);
    feature.isWritable = !isLocked && (access == ARV_GC_ACCESS_MODE_RW || access == ARV_GC_ACCESS_MODE_WO);
    if (feature.kind == Kind::Command || access == ARV_GC_ACCESS_MODE_WO)
        return;
    ErrorSlot unreadable;
    feature.value = textOf(arv_gc_feature_node_get_value_as_string(node, unreadable));
    feature.isAvailable = !unreadable.isSet();
    readRange(node, feature);
}

class Reader
{
public:
    Reader(ArvGc* description, const std::function<bool()>& isLost)
        : m_description(description)
        , m_isLost(isLost)
    {
    }

    /// Nothing is appended for a name that the description lacks, for an invisible feature, and for a
    /// category that holds itself.
    void append(const char* name, std::vector<CameraFeature>& to)
    {
        // Each question to a camera that is gone takes seconds.
        if (m_isLost())
            throw CameraError("the camera was lost while its features were read");
        ArvGcNode* node = arv_gc_get_node(m_description, name);
        if (!node || !ARV_IS_GC_FEATURE_NODE(node))
            return;
        ArvGcFeatureNode* described = ARV_GC_FEATURE_NODE(node);
        const ArvGcVisibility visibility = arv_gc_feature_node_get_visibility(described);
        if (visibility == ARV_GC_VISIBILITY_INVISIBLE || !m_open.insert(name).second)
            return;
        to.push_back(read(node, described, name));
        m_open.erase(name);
    }

private:
    CameraFeature read(ArvGcNode* node, ArvGcFeatureNode* described, const char* name)
    {
        CameraFeature feature;
        feature.kind = kindOf(node);
        feature.name = name;
        feature.label = textOf(arv_gc_feature_node_get_display_name(described));
        if (feature.label.empty())
            feature.label = feature.name;
        feature.toolTip = textOf(arv_gc_feature_node_get_description(described));
        if (feature.toolTip.empty())
            feature.toolTip = textOf(arv_gc_feature_node_get_tooltip(described));
        switch (arv_gc_feature_node_get_visibility(described)) {
        case ARV_GC_VISIBILITY_EXPERT:
            feature.visibility = CameraFeature::Visibility::Expert;
            break;
        case ARV_GC_VISIBILITY_GURU:
            feature.visibility = CameraFeature::Visibility::Guru;
            break;
        default:
            break;
        }
        if (feature.kind != Kind::Category) {
            readValue(described, feature);
            return feature;
        }
        for (const GSList* one = arv_gc_category_get_features(ARV_GC_CATEGORY(node)); one; one = one->next)
            append(static_cast<const char*>(one->data), feature.children);
        return feature;
    }

    ArvGc* m_description;
    const std::function<bool()>& m_isLost;
    std::set<std::string> m_open; ///< the categories around what is being read
};

} // namespace

CameraFeature readFeatures(ArvCamera& camera, const std::function<bool()>& isLost)
{
    std::vector<CameraFeature> roots;
    Reader(arv_device_get_genicam(arv_camera_get_device(&camera)), isLost).append("Root", roots);
    if (roots.empty())
        return {};
    return std::move(roots.front());
}

void setFeature(ArvCamera& camera, const std::string& name, const std::string& value)
{
    ArvGc* description = arv_device_get_genicam(arv_camera_get_device(&camera));
    ArvGcNode* node = arv_gc_get_node(description, name.c_str());
    if (!node || !ARV_IS_GC_FEATURE_NODE(node))
        throw CameraError("the camera has no feature " + name);
    checked(name, arv_gc_feature_node_set_value_from_string, ARV_GC_FEATURE_NODE(node), value.c_str());
}

} // namespace zor
