#pragma once

#include "host/camera/CameraError.h"

#include <arv.h>

#include <memory>
#include <string>
#include <type_traits>

namespace zor {

struct ObjectRelease
{
    void operator()(void* object) const { g_object_unref(object); }
};

/// Owns one reference to an object of the camera library.
template <typename T> using ObjectPtr = std::unique_ptr<T, ObjectRelease>;

/// The library's text, empty for none.
inline std::string textOf(const char* text)
{
    return text ? text : std::string();
}

/// Takes the error of one call of the camera library.
class ErrorSlot
{
public:
    ErrorSlot() = default;
    ErrorSlot(const ErrorSlot&) = delete;
    ErrorSlot& operator=(const ErrorSlot&) = delete;
    ~ErrorSlot() { g_clear_error(&m_error); }

    operator GError**() { return &m_error; }
    bool isSet() const { return m_error != nullptr; }
    std::string text() const { return m_error ? m_error->message : std::string(); }

    /// Throws CameraError, with `what` before the library's own words, when the call has failed.
    void check(const std::string& what) const
    {
        if (m_error)
            throw CameraError(what + ": " + m_error->message);
    }

private:
    GError* m_error = nullptr;
};

/// The value that a call of the camera library answers, with its error as the last argument. Throws as
/// ErrorSlot::check().
template <typename Function, typename... Arguments>
auto checked(const std::string& what, Function function, Arguments... arguments)
{
    ErrorSlot error;
    if constexpr (std::is_void_v<decltype(function(arguments..., nullptr))>) {
        function(arguments..., error);
        error.check(what);
    } else {
        auto answer = function(arguments..., error);
        error.check(what);
        return answer;
    }
}

} // namespace zor
