#pragma once

#include "image/ZorImage.h"
#include "image/ZorImageApi.h"

#include <utility>

namespace zor::viewer {
/// Owner of a record that the closed image libraries made.
class RecordSlot
{
public:
    RecordSlot() = default;
    RecordSlot(const RecordSlot&) = delete;
    RecordSlot& operator=(const RecordSlot&) = delete;
    ~RecordSlot() { release(); }

    /// Where a library function puts a record, or finds one to use again.
    _ZorImage** place() { return &m_record; }
    _ZorImage* get() const { return m_record; }
    void swap(RecordSlot& other) { std::swap(m_record, other.m_record); }
    void release()
    {
        if (m_record)
            ZorReleaseImage(&m_record);
        m_record = nullptr;
    }

private:
    _ZorImage* m_record = nullptr;
};
} // namespace zor::viewer
