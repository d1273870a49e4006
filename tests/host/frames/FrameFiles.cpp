#include "tests/host/frames/FrameFiles.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <stdexcept>

std::string FrameFiles::write(const QByteArray& bytes, const char* name)
{
    QFile file(QString::fromStdString(path(name)));
    // Some file systems write a file that is emptied and filled again to the disk at once, which takes its
    // time.
    file.remove();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("the test's file cannot be written");
    return file.fileName().toStdString();
}

QString FrameFiles::error(const QByteArray& bytes, const zor::FrameOptions& options)
{
    try {
        read(bytes, options);
        return {};
    } catch (const zor::FrameError& error) {
        return QString::fromUtf8(error.what());
    }
}

zor::Frame FrameFiles::read(const QByteArray& bytes, const zor::FrameOptions& options)
{
    return zor::readFrame(write(bytes), options);
}

std::string FrameFiles::path(const char* name) const
{
    return m_folder.filePath(name).toStdString();
}

QList<int> samplesOf(const zor::Frame& frame)
{
    QList<int> samples;
    const quint32 pixelBits = frame.pixelType >> 16 & 0xFF;
    const bool wide = pixelBits == 16 || pixelBits == 48;
    const std::size_t perRow = std::size_t{frame.width} * pixelBits / (wide ? 16 : 8);
    for (std::size_t y = 0; y < frame.height; ++y) {
        for (std::size_t i = 0; i < perRow; ++i) {
            const std::uint8_t* line = frame.pixels.data() + y * frame.pitch;
            samples.append(wide ? line[2 * i] + 256 * line[2 * i + 1] : line[i]);
        }
    }
    return samples;
}

QString firstTruncationThatIsNoError(FrameFiles& files, const QByteArray& bytes,
                                     const zor::FrameOptions& options)
{
    for (int length = 0; length < bytes.size(); ++length) {
        const QString text = files.error(bytes.left(length), options);
        if (!text.startsWith(QString::fromStdString(files.path("frame")) + ": "))
            return QString("%1 of %2 bytes: '%3'").arg(length).arg(bytes.size()).arg(text);
    }
    return {};
}

void checkTruncations(FrameFiles& files, const QByteArray& bytes, const QList<int>& samples)
{
    int errors = 0;
    for (int length = 0; length < bytes.size(); ++length) {
        const QString text = files.error(bytes.left(length));
        errors += text.isEmpty() ? 0 : 1;
        if (text.isEmpty())
            QCOMPARE(samplesOf(files.read(bytes.left(length))), samples);
        else
            QVERIFY2(text.startsWith(QString::fromStdString(files.path("frame")) + ": "), qPrintable(text));
    }
    QVERIFY(errors > bytes.size() / 2);
}

void checkFlippedBits(FrameFiles& files, const QByteArray& bytes)
{
    for (int bit = 0; bit < 8 * bytes.size(); ++bit) {
        QByteArray flipped = bytes;
        flipped[bit / 8] = char(flipped[bit / 8] ^ 1 << bit % 8);
        try {
            const zor::Frame frame = files.read(flipped);
            QVERIFY(frame.width >= 1 && frame.width <= 65535 && frame.height >= 1 && frame.height <= 65535);
            QCOMPARE(frame.pixels.size(), std::size_t{frame.pitch} * frame.height);
        } catch (const zor::FrameError& error) {
            QVERIFY(!QString(error.what()).contains('\n'));
        }
    }
}
