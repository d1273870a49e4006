#pragma once

#include <set>
#include <string>
#include <vector>

namespace zor {

/// Ways to cameras. `Fake` is a camera inside the program, for trying things and for tests.
enum class CameraInterface
{
    Fake,
    GigEVision,
    Usb3Vision,
};

using CameraInterfaces = std::set<CameraInterface>;

/// A camera that was found.
struct CameraInfo
{
    std::string id; ///< what it is opened by
    std::string vendor;
    std::string model;
    std::string serialNumber;
    std::string address; ///< of GigE Vision cameras the IP address
    std::string protocol;

    /// What a person chooses it by: "Vendor Model (serial number)".
    std::string name() const;
};

/// From the names "fake", "gige" and "usb", separated by commas. Throws CameraError for anything else.
CameraInterfaces cameraInterfacesOf(const std::string& names);

/// Looks for cameras on these interfaces and on no other, now and later, in the whole program. Asks the
/// network for about a second when GigE Vision is among them. May be called on any thread, one at a time.
std::vector<CameraInfo> findCameras(const CameraInterfaces& interfaces);

} // namespace zor
