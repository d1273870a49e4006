// Read by the leak checker, which stands in a library of its own and finds the function by its exported name.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    // First the losses that are meant so, by the function that makes the block; then the screen that Qt's
    // offscreen platform leaves at its end.
    return "leak:zor::allocateGainCodes\n"
           "leak:ZimConvert\n"
           "leak:libqoffscreen.so\n";
}
