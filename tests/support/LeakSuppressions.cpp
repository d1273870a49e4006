// Losses that are meant so, by the function that makes the block. Read by the leak checker when it is on.
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:allocateGainCodes\n"
           "leak:CFFCUtility::SetFrame\n";
}
