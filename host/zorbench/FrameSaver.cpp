#include "host/zorbench/FrameSaver.h"

#include "host/frames/WriteFrame.h"
#include "host/zorbench/Tell.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include <unistd.h>

namespace zor {

namespace {

/// A kind of file in the dialog, with its endings; the first one is given to a name that has none.
struct FileKind
{
    const char* name;
    std::vector<std::string> endings;
};

const FileKind FileKinds[] = {
    {QT_TRANSLATE_NOOP("FrameSaver", "PGM picture"), {".pgm"}},
    {QT_TRANSLATE_NOOP("FrameSaver", "PPM picture"), {".ppm"}},
    {QT_TRANSLATE_NOOP("FrameSaver", "PNG picture"), {".png"}},
    {QT_TRANSLATE_NOOP("FrameSaver", "TIFF picture"), {".tiff", ".tif"}},
    {QT_TRANSLATE_NOOP("FrameSaver", "Raw dump"), {".raw", ".bin"}},
};

/// "PGM picture (*.pgm)" for each kind that a frame in this format goes into.
QStringList filtersFor(std::uint32_t pixelType)
{
    const std::vector<std::string> possible = frameFileEndings(pixelType);
    QStringList filters;
    for (const FileKind& kind : FileKinds) {
        if (std::find(possible.begin(), possible.end(), kind.endings.front()) == possible.end())
            continue;
        QStringList patterns;
        for (const std::string& ending : kind.endings)
            patterns.append(QLatin1Char('*') + QString::fromStdString(ending));
        filters.append(FrameSaver::tr(kind.name) +
                       QStringLiteral(" (%1)").arg(patterns.join(QLatin1Char(' '))));
    }
    return filters;
}

/// The first ending that a filter names, without its dot.
QString suffixOf(const QString& filter)
{
    const int begin = filter.indexOf(QLatin1String("*.")) + 2;
    const int end = filter.indexOf(QRegExp(QStringLiteral("[ )]")), begin);
    return filter.mid(begin, end - begin);
}

/// A name that no file in the folder has: "flat.pgm", "flat-2.pgm" and so on. What is offered replaces
/// nothing.
QString freeName(const QString& folder, const QString& base, const QString& suffix)
{
    QString name = base + QLatin1Char('.') + suffix;
    for (int number = 2; QFileInfo::exists(QDir(folder).filePath(name)); ++number)
        name = base + QLatin1Char('-') + QString::number(number) + QLatin1Char('.') + suffix;
    return name;
}

/// Why the file cannot take a frame; empty when nothing speaks against it. A device would be written to or
/// replaced, so it is refused before anything is opened.
QString obstacle(const QString& file)
{
    const QFileInfo info(file);
    if (info.isDir())
        return FrameSaver::tr("is a folder; give a file name");
    if (info.exists() && !info.isFile())
        return FrameSaver::tr("is not a regular file; give another file name");
    if (info.exists() && !info.isWritable())
        return FrameSaver::tr("may not be written; change its permissions or give another file name");
    if (!info.absoluteDir().exists())
        return FrameSaver::tr("cannot be written: there is no folder %1; make it first")
            .arg(info.absolutePath());
    return {};
}

/// Writes all bytes and has them on the disk before the file gets its name. False: errno says why.
bool writeWhole(QSaveFile& file, const std::string& bytes)
{
    const auto size = static_cast<qint64>(bytes.size());
    if (file.write(bytes.data(), size) != size || !file.flush())
        return false;
    // File systems that cannot sync answer EINVAL or ENOTSUP, and then there is nothing to wait for.
    return ::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// What went wrong, as a sentence without the file's name; empty for success.
QString write(const QString& file, const std::string& bytes)
{
    if (const QString problem = obstacle(file); !problem.isEmpty())
        return problem;
    QSaveFile target(file);
    errno = 0;
    if (target.open(QIODevice::WriteOnly) && writeWhole(target, bytes) && target.commit())
        return {};
    const int error = errno;
    const QString reason = error != 0 ? QString::fromLocal8Bit(std::strerror(error)) : target.errorString();
    const bool isFull = error == ENOSPC || error == EDQUOT || error == EFBIG;
    const QString sentence = isFull
                                 ? FrameSaver::tr("cannot be written: %1; make room or choose another folder")
                                 : FrameSaver::tr("cannot be written: %1; choose another folder");
    return sentence.arg(reason);
}

/// Stays open, and says why, for a name that the frame cannot be saved under.
class SaveDialog : public QFileDialog
{
public:
    SaveDialog(QWidget* parent, const QString& title, const QString& folder, std::uint32_t pixelType)
        : QFileDialog(parent, title, folder)
        , m_pixelType(pixelType)
    {
    }

protected:
    void accept() override
    {
        try {
            const QStringList files = selectedFiles();
            if (!files.isEmpty() && !QFileInfo(files.first()).isDir())
                checkFrameFileEnding(QFile::encodeName(files.first()).toStdString(), m_pixelType);
            QFileDialog::accept();
        } catch (const FrameError& error) {
            tell(this, textFor(error));
        }
    }

private:
    std::uint32_t m_pixelType;
};

} // namespace

FrameSaver::FrameSaver(QWidget& window)
    : m_window(window)
{
}

void FrameSaver::ask(const std::shared_ptr<const Frame>& frame, const QString& folder, const QString& name)
{
    auto* dialog = new SaveDialog(&m_window, tr("Save frame"), folder, frame->pixelType);
    // Looks and works the same everywhere, also for an assistive client.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    const QStringList filters = filtersFor(frame->pixelType);
    dialog->setNameFilters(filters);
    dialog->setDefaultSuffix(suffixOf(filters.first()));
    connect(dialog, &QFileDialog::filterSelected, dialog,
            [dialog](const QString& filter) { dialog->setDefaultSuffix(suffixOf(filter)); });
    const QString base = QFileInfo(name).completeBaseName();
    dialog->selectFile(freeName(folder, base.isEmpty() ? tr("frame") : base, dialog->defaultSuffix()));
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, frame](const QString& file) { save(*frame, file); });
    dialog->open();
}

void FrameSaver::save(const Frame& frame, const QString& file)
{
    try {
        const std::string bytes = frameFileBytes(QFile::encodeName(file).toStdString(), frame.record());
        const QString problem = write(file, bytes);
        if (problem.isEmpty())
            emit saved(file);
        else
            tell(&m_window, file + QStringLiteral(": ") + problem);
    } catch (const FrameError& error) {
        tell(&m_window, textFor(error));
    } catch (const std::bad_alloc&) {
        tell(&m_window, file + QStringLiteral(": ") +
                            tr("there is not enough memory to make this file; close other programs"));
    }
}

} // namespace zor
