#pragma once

#include "host/camera/CameraFeature.h"

#include <string>
#include <utility>
#include <vector>

/// A feature that can be set.
inline zor::CameraFeature featureOf(zor::CameraFeature::Kind kind, const char* name, const char* value)
{
    zor::CameraFeature feature;
    feature.kind = kind;
    feature.name = name;
    feature.label = std::string("The ") + name;
    feature.value = value;
    feature.isWritable = true;
    return feature;
}

inline zor::CameraFeature categoryOf(const char* name, std::vector<zor::CameraFeature> children)
{
    zor::CameraFeature category = featureOf(zor::CameraFeature::Kind::Category, name, "");
    category.isWritable = false;
    category.children = std::move(children);
    return category;
}

/// A root with a feature of each kind: "Image" with Width, Gain, Reverse, Format, Name, Reset, and "Device"
/// with Version, which can only be read.
inline zor::CameraFeature someFeatures()
{
    using Kind = zor::CameraFeature::Kind;
    zor::CameraFeature width = featureOf(Kind::Integer, "Width", "640");
    width.toolTip = "Columns, <at most> 4096";
    width.minimum = "16";
    width.maximum = "4096";
    width.increment = "16";
    width.unit = "px";
    zor::CameraFeature gain = featureOf(Kind::Float, "Gain", "1.5");
    gain.minimum = "0";
    gain.maximum = "23.98";
    zor::CameraFeature format = featureOf(Kind::Enumeration, "Format", "Mono8");
    format.entries = {"Mono8", "Mono12"};
    zor::CameraFeature version = featureOf(Kind::Text, "Version", "1.0");
    version.isWritable = false;
    return categoryOf("Root", {categoryOf("Image", {width, gain, featureOf(Kind::Boolean, "Reverse", "false"),
                                                    format, featureOf(Kind::Text, "Name", "left"),
                                                    featureOf(Kind::Command, "Reset", "")}),
                               categoryOf("Device", {version})});
}
