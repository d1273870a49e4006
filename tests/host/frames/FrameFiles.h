#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include "host/frames/Frame.h"

#include <vector>

/// A folder of its own for the files of a test, and what reading them gives.
class FrameFiles
{
public:
    /// Writes the bytes to a file and gives its path.
    std::string write(const QByteArray& bytes, const char* name = "frame");

    /// The message of the FrameError that reading the bytes ends with; empty when they are a frame.
    QString error(const QByteArray& bytes, const zor::FrameOptions& options = {});

    /// The frame that the bytes are; throws FrameError.
    zor::Frame read(const QByteArray& bytes, const zor::FrameOptions& options = {});

    std::string path(const char* name) const;

private:
    QTemporaryDir m_folder;
};

/// The samples of a frame in a plain mono or RGB format, row after row, those of a pixel side by side.
QList<int> samplesOf(const zor::Frame& frame);

/// Reads every shorter beginning of the bytes. Empty when each ends with a FrameError that names the file;
/// else the first length that does not.
QString firstTruncationThatIsNoError(FrameFiles& files, const QByteArray& bytes,
                                     const zor::FrameOptions& options = {});

/// Reads every shorter beginning of the bytes, whose frame has these samples. Each ends with a FrameError
/// that names the file, most of them at least, or takes only bytes that nothing needs and leaves the whole
/// frame.
void checkTruncations(FrameFiles& files, const QByteArray& bytes, const QList<int>& samples);

/// Flips each bit of the bytes in turn: what is left is refused in one line, or is a frame within the limits.
void checkFlippedBits(FrameFiles& files, const QByteArray& bytes);
