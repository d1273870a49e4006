#include "host/zorbench/FrameOpener.h"

#include "host/zorbench/RawDialog.h"
#include "host/zorbench/Tell.h"

#include <QFile>
#include <QMessageBox>
#include <QPushButton>

namespace zor {

namespace {

std::shared_ptr<const Frame> read(const QString& file, const FrameOptions& options)
{
    return std::make_shared<const Frame>(readFrame(QFile::encodeName(file).toStdString(), options));
}

} // namespace

FrameOpener::FrameOpener(QWidget& window, QSettings& settings)
    : m_window(window)
    , m_memory(settings)
{
}

void FrameOpener::open(const QString& file)
{
    openAs(file, {});
}

void FrameOpener::openAs(const QString& file, const FrameOptions& options)
{
    try {
        const std::shared_ptr<const Frame> frame = read(file, options);
        emit opened(frame, file);
    } catch (const WhiteIsZeroAsked&) {
        askAboutWhite(file);
    } catch (const NoPicture&) {
        askForLayout(file);
    } catch (const FrameError& error) {
        tell(&m_window, textFor(error));
    }
}

void FrameOpener::askAboutWhite(const QString& file)
{
    auto* box = new QMessageBox(
        QMessageBox::Question, QStringLiteral("ZorBench"),
        file + QStringLiteral(": ") +
            tr("0 is white in this TIFF file. Take its samples as they are, or full scale less the sample?"),
        QMessageBox::Cancel, &m_window);
    // File names are no markup.
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    const auto offer = [this, box, file](const QString& words, WhiteIsZero samples) {
        FrameOptions options;
        options.whiteIsZero = samples;
        connect(box->addButton(words, QMessageBox::AcceptRole), &QAbstractButton::clicked, this,
                [this, file, options] { openAs(file, options); });
    };
    offer(tr("As they are"), WhiteIsZero::Stored);
    offer(tr("Inverted"), WhiteIsZero::Inverted);
    box->open();
}

void FrameOpener::askForLayout(const QString& file)
{
    const auto bytes = static_cast<std::uint64_t>(QFile(file).size());
    auto* dialog = new RawDialog(file, bytes, m_memory.layoutFor(bytes), &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &RawDialog::chosen, this, [this, dialog, file, bytes] {
        try {
            FrameOptions options;
            options.raw = dialog->rawLayout();
            const std::shared_ptr<const Frame> frame = read(file, options);
            m_memory.remember(bytes, *options.raw);
            dialog->accept();
            emit opened(frame, file);
        } catch (const FrameError& error) {
            tell(dialog, textFor(error));
        }
    });
    dialog->open();
}

} // namespace zor
