#pragma once

#include <QMetaType>

#include <new>

namespace zor {

/// A type that Qt's meta-type system knows while this code is loaded.
///
/// Qt keeps the addresses of two functions of each type and never lets go of a type that was registered in
/// the usual way, so that a library that is unloaded leaves them behind. This one is taken back at the end of
/// the program or library. A type that somebody else has registered before stays as it is; one that somebody
/// registers later, in the usual way, can no longer be taken back.
template <typename Type> class UnloadableMetaType
{
public:
    UnloadableMetaType(const char* name, const QMetaObject* metaObject)
        : m_known(QMetaType::type(name))
        , m_id(m_known != QMetaType::UnknownType
                   ? m_known
                   : QMetaType::registerNormalizedType(
                         name, end, make, sizeof(Type),
                         QMetaType::TypeFlags(QtPrivate::QMetaTypeTypeFlags<Type>::Flags), metaObject))
    {
    }
    ~UnloadableMetaType()
    {
        if (m_known == QMetaType::UnknownType)
            QMetaType::unregisterType(m_id);
    }
    UnloadableMetaType(const UnloadableMetaType&) = delete;
    UnloadableMetaType& operator=(const UnloadableMetaType&) = delete;

    int id() const { return m_id; }

private:
    static void* make(void* where, const void* source)
    {
        return source ? new (where) Type(*static_cast<const Type*>(source)) : new (where) Type();
    }
    static void end(void* value) { static_cast<Type*>(value)->~Type(); }

    const int m_known;
    const int m_id;
};

} // namespace zor
