#include "host/camera/CameraInterfaces.h"

#include "host/camera/GLibTools.h"

#include <sstream>

namespace zor {

namespace {

struct Named
{
    CameraInterface which;
    const char* name;  ///< as the operator gives it
    const char* arvId; ///< as the library calls it
};

constexpr Named Interfaces[] = {
    {CameraInterface::Fake, "fake", "Fake"},
    {CameraInterface::GigEVision, "gige", "GigEVision"},
    {CameraInterface::Usb3Vision, "usb", "USB3Vision"},
};

CameraInterface interfaceOf(const std::string& name)
{
    for (const Named& one : Interfaces) {
        if (name == one.name)
            return one.which;
    }
    throw CameraError("\"" + name +
                      "\" is no interface of cameras; give fake, gige, usb, or some of them with commas");
}

} // namespace

std::string CameraInfo::name() const
{
    const std::string what = vendor.empty() || model.empty() ? vendor + model : vendor + ' ' + model;
    if (what.empty())
        return id;
    return serialNumber.empty() ? what : what + " (" + serialNumber + ')';
}

CameraInterfaces cameraInterfacesOf(const std::string& names)
{
    CameraInterfaces interfaces;
    std::istringstream parts(names + ',');
    for (std::string name; std::getline(parts, name, ',');)
        interfaces.insert(interfaceOf(name));
    return interfaces;
}

std::vector<CameraInfo> findCameras(const CameraInterfaces& interfaces)
{
    for (const Named& one : Interfaces) {
        if (interfaces.count(one.which) != 0)
            arv_enable_interface(one.arvId);
        else
            arv_disable_interface(one.arvId);
    }
    arv_update_device_list();
    std::vector<CameraInfo> found;
    const unsigned count = arv_get_n_devices();
    found.reserve(count);
    for (unsigned i = 0; i < count; ++i)
        found.push_back({textOf(arv_get_device_id(i)), textOf(arv_get_device_vendor(i)),
                         textOf(arv_get_device_model(i)), textOf(arv_get_device_serial_nbr(i)),
                         textOf(arv_get_device_address(i)), textOf(arv_get_device_protocol(i))});
    return found;
}

} // namespace zor
