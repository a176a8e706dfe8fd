// Sanitizer settings of every program (Kavori, run-kav, kav-export, the test program, the
// fuzz targets), built in only when they are built with the sanitizers, so a plain run checks
// leaks the same way wherever it runs.

// Full unwinding on every allocation: the fast unwinder stops at the first library built
// without frame pointers, and a leak's stack would then not show whose it is.
// (Not for the fuzz targets: it would slow every input down several times.)
#ifndef KAVORI_FUZZ_TARGET_BUILD
extern "C" const char* __asan_default_options()
{
    return "detect_leaks=1:fast_unwind_on_malloc=0:detect_stack_use_after_return=0";
}
#endif

// Leaks that are the libraries' own, kept for the life of the process by design and freed by
// no call we could make:
// - libpulse: Qt Multimedia's PulseAudio context keeps its mainloop's allocations until exit.
// - GLib: type registrations and the main context's sources are never freed (GStreamer and
//   Qt's event dispatcher both use it).
// - libemf2svg: its converter does not free some of the small strings it builds for an
//   EMF's records (seen with a 200-byte file under the fuzzer).
// - libx265 (through libheif's HEVC encoder, which the tests use to make HEIC files): each
//   encoder's block stays on a list that only x265_cleanup() frees, and libheif never calls it.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libpulse.so\n"
           "leak:libglib-2.0.so\n"
           "leak:libemf2svg.so\n"
           "leak:libx265.so\n";
}
