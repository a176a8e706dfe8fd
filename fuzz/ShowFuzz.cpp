// Slide show files of every version, read as a show and as a screen saver show, then written.
#include "FuzzSupport.h"

#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    const QString path = fuzz::WriteScratch(QStringLiteral("FUZZ.KAV"), data, size);
    ResetSettings();
    ResetShow();
    if (ReadSlideShow(path))
        WriteSlideShow(fuzz::ScratchFolder() + QStringLiteral("OUT.KAV"));
    ResetShow();
    QString note;
    (void)ReadScreenSaverShow(path, &note);
    return 0;
}
