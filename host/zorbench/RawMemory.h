#pragma once

#include "host/frames/Frame.h"

class QSettings;

namespace zor {

/// How raw dumps were opened, kept in the settings: one layout for each size of file, because the dumps of a
/// camera are all of one size.
class RawMemory
{
public:
    /// The settings must outlive this object.
    explicit RawMemory(QSettings& settings);

    /// The layout with which a file of so many bytes was opened last, else one to start from.
    RawLayout layoutFor(std::uint64_t bytes) const;
    void remember(std::uint64_t bytes, const RawLayout& layout);

private:
    QSettings& m_settings;
};

} // namespace zor
