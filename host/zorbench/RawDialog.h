#pragma once

#include "host/frames/Frame.h"

#include <QDialog>

class QComboBox;
class QFormLayout;
class QLabel;
class QSpinBox;

namespace zor {

/// Asks what the bytes of a raw dump are. It stays open until the one who asked closes it, so that a layout
/// which does not fit the file can be corrected.
class RawDialog : public QDialog
{
    Q_OBJECT

public:
    /// `bytes` is the size of the file, `layout` what the fields begin with.
    RawDialog(const QString& file, std::uint64_t bytes, const RawLayout& layout, QWidget* parent = nullptr);

    /// What the fields say now.
    RawLayout rawLayout() const;

signals:
    /// The file is to be opened as the fields say.
    void chosen();

private:
    void addPackedOrder(QFormLayout* form, bool isRecord);
    QSpinBox* addNumber(QFormLayout* form, const QString& name, int least, int most, std::uint32_t value);
    /// What follows from the fields.
    void updateFields();

    const std::uint64_t m_fileBytes;
    QComboBox* m_format;
    QComboBox* m_packedOrder;
    QSpinBox* m_width;
    QSpinBox* m_height;
    QSpinBox* m_pitch;
    QLabel* m_bytes;
};

} // namespace zor
