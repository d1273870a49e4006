// The start-up of DisplayAdapterQT's viewer, at every change of geometry or pixel type.

#include "display/DisplayEvents.h"
#include "display/ParameterText.h"
#include "display/ZorDisplayProcessor.h"
#include "display/ZorDisplayQt.h"
#include "image/ZorImageApi.h"

namespace {

bool sameShape(const _ZorImage& one, const _ZorImage& other)
{
    return one.width == other.width && one.height == other.height && one.pixelType == other.pixelType;
}

} // namespace

bool DisplayAdapterQT::prepareImage(const _ZorImage* image, bool force)
{
    errorCode = 0;
    if (!image)
        return fail(DisplayErrArgument);
    const bool changed = !imageHeader || !sameShape(*imageHeader, *image);
    if (!force && !changed)
        return false;
    if (changed) {
        if (imageHeader)
            ZorReleaseImageHeader(&imageHeader);
        imageHeader = nullptr;
        // Without a header, after an empty image or a failure, the next image counts as changed again.
        if (image->width != 0 && image->height != 0 && image->pixelType != 0) {
            const std::uint64_t size = image->width | static_cast<std::uint64_t>(image->height) << 32;
            ZorCreateImageHeader(&imageHeader, size, image->pixelType, 0, 0, 0);
        }
    }
    postToViewAndWait(new QEvent(DisplayEvStart));
    return changed;
}

bool DisplayAdapterQT::startViewer()
{
    // One map for all commands, never cleared: later ones carry the keys of earlier ones, and a viewer reads
    // only those of its command.
    ParameterMap parameters;
    errorCode = 0;
    if (!processor)
        createViewer();

    DisplayMessageEv message(gpu ? QStringLiteral("Initializing GPU viewer...")
                                 : QStringLiteral("Initializing CPU viewer..."));
    sendToView(message);

    if (processor)
        configureViewer(parameters);
    else
        errorCode = DisplayErrNoViewer;

    if (errorCode == 0) {
        // Nothing removes an earlier registration: the viewer knows the address by then.
        paramSetText(&parameters, "proc", textFromPointer(notification.object()).c_str());
        processor->command("cmd.system.notification.add", &parameters);
    }

    setOverlayDefaults();

    if (processor && (features & DisplayFeatureViewEvents)) {
        paramSetInt(&parameters, "flags", 7);
        // Spelt so by the viewers.
        processor->command("cmd.display.view.nofication", &parameters);
    }
    if (processor && (features & DisplayFeatureImageEvents)) {
        paramSetText(&parameters, "name", "image.notification.flags.set");
        paramSetText(&parameters, "value", "1");
        processor->command("cmd.parameter.set", &parameters);
    }

    message.message.clear();
    sendToView(message);
    return errorCode == 0;
}

void DisplayAdapterQT::createViewer()
{
    processor = gpu ? ZorDisplayQGL::CreateComponent(view) : ZorDisplayCPU::CreateComponent(view);
}

void DisplayAdapterQT::configureViewer(ParameterMap& parameters)
{
    for (const auto& [name, value] : viewerParameters) {
        paramSetText(&parameters, "name", name.c_str());
        paramSetText(&parameters, "value", value.c_str());
        processor->command("cmd.parameter.set", &parameters);
    }
    errorCode = static_cast<std::uint32_t>(processor->configure(imageHeader)) & 0xFFFF;
}
