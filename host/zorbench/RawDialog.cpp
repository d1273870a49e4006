#include "host/zorbench/RawDialog.h"

#include "host/frames/FormatName.h"
#include "host/frames/FrameLimits.h"
#include "host/zorbench/NumberBox.h"
#include "host/zorbench/WindowTitle.h"
#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include <limits>

namespace zor {

RawDialog::RawDialog(const QString& file, std::uint64_t bytes, const RawLayout& layout, QWidget* parent)
    : QDialog(parent)
    , m_fileBytes(bytes)
    , m_format(new QComboBox(this))
    , m_packedOrder(new QComboBox(this))
    , m_bytes(new QLabel(this))
{
    setWindowTitle(plainTitle(tr("Raw dump %1").arg(QFileInfo(file).fileName())));
    auto* form = new QFormLayout(this);
    form->addRow(new QLabel(tr("This file is no PGM, PPM, PNG or TIFF picture. As a raw dump it is:")));

    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        m_format->addItem(QLatin1String(row.name));
    m_format->setCurrentText(QString::fromStdString(layout.format));
    m_format->setAccessibleName(tr("Format"));
    form->addRow(tr("Format"), m_format);
    m_width = addNumber(form, tr("Width"), 1, MaxFrameSide, layout.width);
    m_height = addNumber(form, tr("Height"), 1, MaxFrameSide, layout.height);
    m_pitch = addNumber(form, tr("Pitch"), 0, std::numeric_limits<int>::max(), layout.pitch.value_or(0));
    m_pitch->setSpecialValueText(tr("no padding"));
    m_pitch->setToolTip(tr("Bytes from row to row"));
    addPackedOrder(form, layout.packedOrderRecord);
    form->addRow(m_bytes);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this);
    for (QAbstractButton* button : buttons->buttons())
        button->setAccessibleName(button->text().remove(QLatin1Char('&')));
    form->addRow(buttons);

    connect(m_format, &QComboBox::currentTextChanged, this, &RawDialog::updateFields);
    connect(buttons, &QDialogButtonBox::accepted, this, &RawDialog::chosen);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    updateFields();
}

void RawDialog::addPackedOrder(QFormLayout* form, bool isRecord)
{
    m_packedOrder->addItems({tr("Wire (GigE Vision)"), tr("Record")});
    m_packedOrder->setCurrentIndex(isRecord ? 1 : 0);
    m_packedOrder->setAccessibleName(tr("Packed order"));
    m_packedOrder->setToolTip(tr(
        "Where a Packed format has the even pixel's low bits:\nlow nibble (wire) or high nibble (record)"));
    form->addRow(tr("Packed order"), m_packedOrder);
}

QSpinBox* RawDialog::addNumber(QFormLayout* form, const QString& name, int least, int most,
                               std::uint32_t value)
{
    auto* box = new QSpinBox(this);
    box->setLocale(numberLocale());
    box->setRange(least, most);
    box->setValue(static_cast<int>(value));
    box->setAccessibleName(name);
    form->addRow(name, box);
    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, &RawDialog::updateFields);
    return box;
}

RawLayout RawDialog::rawLayout() const
{
    RawLayout layout;
    layout.format = m_format->currentText().toStdString();
    layout.width = static_cast<std::uint32_t>(m_width->value());
    layout.height = static_cast<std::uint32_t>(m_height->value());
    if (m_pitch->value() > 0)
        layout.pitch = static_cast<std::uint32_t>(m_pitch->value());
    layout.packedOrderRecord = m_packedOrder->currentIndex() == 1;
    return layout;
}

void RawDialog::updateFields()
{
    const RawLayout now = rawLayout();
    const std::uint32_t code = ZorPixelTypeTable[m_format->currentIndex()].code;
    const std::uint64_t pitch = now.pitch.value_or(static_cast<std::uint32_t>(tightPitch(code, now.width)));
    m_packedOrder->setEnabled(pixelTypePackingClass(code) == PackingClass::Packed);
    m_bytes->setText(tr("This takes %1 bytes, the file has %2.").arg(pitch * now.height).arg(m_fileBytes));
}

} // namespace zor
