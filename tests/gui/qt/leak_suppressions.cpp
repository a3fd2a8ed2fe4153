// The font library keeps a little memory to the end of the process; it is not ours to free.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig";
}
