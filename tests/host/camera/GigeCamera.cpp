// A GigE Vision camera without hardware, for tests, on the loopback interface of the network that it is
// started in:
//   gige_camera SERIAL_NUMBER LOST_PACKETS
// LOST_PACKETS is the share of its packets that are never sent. It offers `Packed` formats as well. A pixel
// of these and of Mono8 is its column number plus its row number plus the frame's identifier, modulo the
// format's range. It writes "ready" when it can be found, runs until its standard input ends, and
// writes how many frames it has sent.

#include <arv.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

namespace {

/// Low bits of the first pixel in the low half of the middle byte.
void fillPacked(std::uint8_t* pixels, unsigned width, unsigned height, unsigned frame, unsigned bits)
{
    const unsigned low = bits - 8;
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; x += 2) {
            const unsigned mask = (1u << bits) - 1;
            const unsigned first = (x + y + frame) & mask;
            const unsigned second = (x + 1 + y + frame) & mask;
            *pixels++ = static_cast<std::uint8_t>(first >> low);
            *pixels++ =
                static_cast<std::uint8_t>((first & ((1u << low) - 1)) | (second & ((1u << low) - 1)) << 4);
            *pixels++ = static_cast<std::uint8_t>(second >> low);
        }
    }
}

std::atomic<unsigned long> sentFrames{0};

/// Called for each frame that is sent.
void fill(ArvBuffer* buffer, void*, guint32, guint32, ArvPixelFormat format)
{
    ++sentFrames;
    auto* pixels = static_cast<std::uint8_t*>(const_cast<void*>(arv_buffer_get_data(buffer, nullptr)));
    const auto width = static_cast<unsigned>(arv_buffer_get_image_width(buffer));
    const auto height = static_cast<unsigned>(arv_buffer_get_image_height(buffer));
    const auto frame = static_cast<unsigned>(arv_buffer_get_frame_id(buffer));
    if (format == ARV_PIXEL_FORMAT_MONO_12_PACKED || format == ARV_PIXEL_FORMAT_BAYER_RG_12_PACKED)
        fillPacked(pixels, width, height, frame, 12);
    else if (format == ARV_PIXEL_FORMAT_MONO_10_PACKED)
        fillPacked(pixels, width, height, frame, 10);
    else if (format == ARV_PIXEL_FORMAT_MONO_8)
        for (unsigned i = 0; i < width * height; ++i)
            pixels[i] = static_cast<std::uint8_t>(i % width + i / width + frame);
}

/// The library's own description of a camera, with more pixel formats.
std::string description()
{
    ArvFakeCamera* plain = arv_fake_camera_new("1");
    std::size_t size = 0;
    std::string text(arv_fake_camera_get_genicam_xml(plain, &size));
    text.resize(size);
    g_object_unref(plain);
    // A place within the size, as most cameras have it.
    const std::size_t offset = text.find("<Integer Name=\"OffsetX\"");
    const std::string atMost = "<pMax>SensorWidth</pMax>";
    const std::size_t most = text.find(atMost, offset);
    const std::string before = "<EnumEntry Name=\"Mono8\"";
    if (offset == std::string::npos || most == std::string::npos || text.find(before) == std::string::npos)
        return {};
    text.replace(most, atMost.size(), "<pMax>OffsetXMax</pMax>");
    text.insert(
        offset,
        "<IntSwissKnife Name=\"OffsetXMax\"><pVariable Name=\"SENSOR\">SensorWidth</pVariable>"
        "<pVariable Name=\"WIDTH\">Width</pVariable><Formula>SENSOR - WIDTH</Formula></IntSwissKnife>\n");
    const std::size_t place = text.find(before);
    const auto entry = [](const char* name, unsigned code) {
        return "<EnumEntry Name=\"" + std::string(name) + "\" NameSpace=\"Standard\"><Value>" +
               std::to_string(code) + "</Value></EnumEntry>\n";
    };
    text.insert(place, entry("Mono10Packed", ARV_PIXEL_FORMAT_MONO_10_PACKED) +
                           entry("Mono12Packed", ARV_PIXEL_FORMAT_MONO_12_PACKED) +
                           entry("BayerRG12Packed", ARV_PIXEL_FORMAT_BAYER_RG_12_PACKED));
    return text;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3) {
        std::fputs("usage: gige_camera SERIAL_NUMBER LOST_PACKETS\n", stderr);
        return 2;
    }
    char file[] = "/tmp/gige_camera_XXXXXX";
    const int descriptor = mkstemp(file);
    const std::string text = description();
    if (descriptor < 0 || write(descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        return 1;
    close(descriptor);
    ArvGvFakeCamera* camera = arv_gv_fake_camera_new_full("lo", arguments[1], file);
    unlink(file);
    g_object_set(camera, "gvsp-lost-ratio", g_ascii_strtod(arguments[2], nullptr), nullptr);
    arv_fake_camera_set_fill_pattern(arv_gv_fake_camera_get_fake_camera(camera), fill, nullptr);
    if (!arv_gv_fake_camera_is_running(camera))
        return 1;
    std::puts("ready");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    std::printf("%lu\n", sentFrames.load());
    std::fflush(stdout);
    g_object_unref(camera);
    return 0;
}
