#include "host/zorbench/FrameOpener.h"

#include "host/zorbench/RawDialog.h"
#include "host/zorbench/Tell.h"

#include <QFile>

namespace zor {

namespace {

std::shared_ptr<const Frame> read(const QString& file, const FrameOptions& options = {})
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
    try {
        const std::shared_ptr<const Frame> frame = read(file);
        emit opened(frame, file);
    } catch (const NoPicture&) {
        askForLayout(file);
    } catch (const FrameError& error) {
        tell(&m_window, textFor(error));
    }
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
