#include "host/frames/FileBytes.h"

#include "host/frames/Fail.h"
#include "host/frames/FrameLimits.h"

#include <filesystem>
#include <fstream>

namespace zor {

namespace {

std::vector<std::uint8_t> readCount(const std::string& path, std::size_t count)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        failFrame(path, "cannot be opened; check its permissions");
    std::vector<std::uint8_t> bytes(count);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(count));
    if (static_cast<std::size_t>(file.gcount()) != count)
        failFrame(path, "reading stopped after " + std::to_string(file.gcount()) + " of " +
                            std::to_string(count) + " bytes; copy the file to another disk and try again");
    return bytes;
}

} // namespace

std::uint64_t fileSize(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        failFrame(path, "there is no such file; check the name");
    if (!std::filesystem::status_known(status))
        failFrame(path,
                  "cannot be reached (" + error.message() + "); check the links and folders of its name");
    if (std::filesystem::is_directory(status))
        failFrame(path, "is a folder; name a file");
    if (!std::filesystem::is_regular_file(status))
        failFrame(path, "is not a regular file; copy its content into one");
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error)
        failFrame(path, "its size cannot be read (" + error.message() + "); copy the file elsewhere");
    if (size == 0)
        failFrame(path, "is empty; write or copy it again");
    return size;
}

std::vector<std::uint8_t> readStart(const std::string& path, std::size_t count)
{
    const std::uint64_t size = fileSize(path);
    return readCount(path, size < count ? static_cast<std::size_t>(size) : count);
}

std::vector<std::uint8_t> readBytes(const std::string& path)
{
    const std::uint64_t size = fileSize(path);
    if (size > MaxFrameBytes)
        failFrame(path, "has " + std::to_string(size) + " bytes; a frame's file has at most " +
                            std::to_string(MaxFrameBytes) + "; check the name");
    return readCount(path, static_cast<std::size_t>(size));
}

} // namespace zor
